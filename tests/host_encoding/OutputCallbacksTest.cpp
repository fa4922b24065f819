#include "koltx/FileOutputCallbacks.h"
#include "koltx/MemoryOutputCallbacks.h"

#include <Files.h>
#include <ScratchDir.h>
#include <gtest/gtest.h>

#include <algorithm>

#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;
using kolt::SimpleOutputCallbacks;
using koltx::FileOutputCallbacks;
using koltx::MemoryOutputCallbacks;

namespace {

// A scratch folder with the regular files below it, by relative path.
struct TempDir : testsupport::ScratchDir {
    TempDir() : ScratchDir("outputs") {}
    std::vector<std::string> entries() const {
        std::vector<std::string> names;
        for (auto const& entry : fs::recursive_directory_iterator(path()))
            if (entry.is_regular_file())
                names.push_back(fs::relative(entry.path(), path()).string());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string read(std::string const& name) const { return testsupport::readFile(path() / name); }
};

uint64_t openOut(SimpleOutputCallbacks& out, wchar_t const* name, kolt::Status& status,
                 int32_t mode = SimpleOutputCallbacks::OPEN_REPLACE) {
    status = 99;
    return out.open(L"test", 1, name, mode, 0, &status);
}

} // namespace

TEST(FileOutputCallbacks, WritesThroughATemporaryFileRenamedOnClose) {
    TempDir dir;
    FileOutputCallbacks out(dir.path().string());
    kolt::Status status;
    uint64_t const handle = openOut(out, L"city.gml", status);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(out.write(handle, "hello world", 11), 0);
    // Until close only a hidden temporary exists, never the target.
    auto during = dir.entries();
    ASSERT_EQ(during.size(), 1u);
    EXPECT_NE(during[0], "city.gml");
    EXPECT_EQ(during[0].rfind(".city.gml.", 0), 0u);
    EXPECT_FALSE(fs::exists(dir.path() / "city.gml"));

    EXPECT_EQ(out.tell(handle, &status), 11u);
    EXPECT_EQ(out.seek(handle, 6, SimpleOutputCallbacks::FROM_BEGIN), 0);
    EXPECT_EQ(out.write(handle, "there", 5), 0);
    EXPECT_EQ(out.seek(handle, 0, SimpleOutputCallbacks::FROM_END), 0);
    EXPECT_EQ(out.write(handle, "!", 1), 0);
    EXPECT_EQ(out.seek(handle, -1, SimpleOutputCallbacks::FROM_CURRENT), 0);
    EXPECT_EQ(out.tell(handle, nullptr), 11u);
    EXPECT_EQ(out.seek(handle, 0, 3), 1);

    uint64_t size = 0;
    EXPECT_EQ(out.close(handle, false, &size), 0);
    EXPECT_EQ(size, 12u);
    EXPECT_EQ(dir.entries(), std::vector<std::string>{"city.gml"});
    EXPECT_EQ(dir.read("city.gml"), "hello there!");
    // The handle is gone with the close.
    EXPECT_EQ(out.write(handle, "x", 1), SimpleOutputCallbacks::STATUS_BAD_HANDLE);
    EXPECT_EQ(out.close(handle, false, nullptr), SimpleOutputCallbacks::STATUS_BAD_HANDLE);

    // A second output of the same name replaces the first; subfolders are made.
    uint64_t const again = openOut(out, L"city.gml", status);
    out.write(again, "new", 3);
    EXPECT_EQ(out.close(again, false, nullptr), 0);
    EXPECT_EQ(dir.read("city.gml"), "new");
    uint64_t const nested = openOut(out, L"textures/wall.png", status);
    ASSERT_EQ(status, 0);
    out.write(nested, "png", 3);
    EXPECT_EQ(out.close(nested, false, nullptr), 0);
    EXPECT_EQ(dir.read("textures/wall.png"), "png");
    // Names are UTF-16; files get them in UTF-8.
    uint64_t const wide = openOut(out, L"w\u00e4nd.png", status);
    out.write(wide, "w", 1);
    EXPECT_EQ(out.close(wide, false, nullptr), 0);
    EXPECT_TRUE(fs::exists(dir.path() / "w\xc3\xa4nd.png"));
}

TEST(FileOutputCallbacks, RefusesNamesOutsideItsDirectory) {
    TempDir dir;
    FileOutputCallbacks out((dir.path() / "inner").string());
    kolt::Status status;
    for (wchar_t const* name : {L"/etc/passwd", L"../escape.gml", L"a/../../escape.gml", L"..",
                                L"a/..", L"", L"folder/", L".", L"a/./b"}) {
        EXPECT_EQ(openOut(out, name, status), 0u) << std::wstring(name).size();
        EXPECT_EQ(status, SimpleOutputCallbacks::STATUS_NAME_REFUSED);
    }
    EXPECT_EQ(out.open(L"test", 1, nullptr, 0, 0, &status), 0u);
    EXPECT_EQ(status, SimpleOutputCallbacks::STATUS_NAME_REFUSED);
    EXPECT_TRUE(dir.entries().empty());
    // Dots inside names are fine.
    uint64_t const handle = openOut(out, L"a..b/..c", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out.close(handle, false, nullptr), 0);
    EXPECT_EQ(dir.entries(), std::vector<std::string>{"inner/a..b/..c"});
}

TEST(FileOutputCallbacks, AnOutputThatIsNotClosedLeavesNothing) {
    TempDir dir;
    {
        FileOutputCallbacks out(dir.path().string());
        kolt::Status status;
        uint64_t const kept = openOut(out, L"kept.gml", status);
        uint64_t const dropped = openOut(out, L"dropped.gml", status);
        uint64_t const abandoned = openOut(out, L"abandoned.gml", status);
        out.write(kept, "k", 1);
        out.write(dropped, "d", 1);
        out.write(abandoned, "a", 1);
        EXPECT_EQ(out.close(kept, false, nullptr), 0);
        // The writer failed between open and close and discards its output.
        EXPECT_EQ(out.close(dropped, true, nullptr), 0);
        EXPECT_FALSE(fs::exists(dir.path() / "dropped.gml"));
        // `abandoned` is never closed: the callbacks go away with it open.
    }
    EXPECT_EQ(dir.entries(), std::vector<std::string>{"kept.gml"});
}

TEST(FileOutputCallbacks, KeepModeLeavesAnExistingFileAlone) {
    TempDir dir;
    FileOutputCallbacks out(dir.path().string());
    kolt::Status status;
    uint64_t handle = openOut(out, L"wall.png", status);
    out.write(handle, "first", 5);
    out.close(handle, false, nullptr);
    EXPECT_EQ(openOut(out, L"wall.png", status, SimpleOutputCallbacks::OPEN_KEEP), 0u);
    EXPECT_EQ(status, SimpleOutputCallbacks::STATUS_EXISTS);
    handle = openOut(out, L"other.png", status, SimpleOutputCallbacks::OPEN_KEEP);
    EXPECT_EQ(status, 0);
    out.close(handle, false, nullptr);
    EXPECT_EQ(dir.read("wall.png"), "first");
}

TEST(FileOutputCallbacks, UnwritableDirectoryFailsAtOpen) {
    TempDir dir;
    std::ofstream(dir.path() / "file") << "x";
    FileOutputCallbacks out((dir.path() / "file").string());
    kolt::Status status;
    EXPECT_EQ(openOut(out, L"a.gml", status), 0u);
    EXPECT_EQ(status, SimpleOutputCallbacks::STATUS_IO);
}

TEST(MemoryOutputCallbacks, KeepsClosedOutputsByName) {
    MemoryOutputCallbacks out;
    kolt::Status status;
    uint64_t const a = out.open(L"enc", 2, L"a.png", 0, 16, &status);
    ASSERT_EQ(status, 0);
    uint64_t const b = out.open(L"enc", 1, L"b.gml", 0, 0, &status);
    out.write(a, "abcdef", 6);
    out.seek(a, 2, SimpleOutputCallbacks::FROM_BEGIN);
    out.write(a, "XY", 2);
    EXPECT_EQ(out.tell(a, &status), 4u);
    out.seek(a, 2, SimpleOutputCallbacks::FROM_END);
    out.write(a, "Z", 1);
    EXPECT_EQ(out.seek(a, -100, SimpleOutputCallbacks::FROM_CURRENT), 1);
    EXPECT_EQ(out.find(L"a.png"), nullptr);
    EXPECT_EQ(out.getOpenCount(), 2u);
    EXPECT_EQ(out.close(a, false, nullptr), 0);
    EXPECT_EQ(out.close(b, true, nullptr), 0);
    EXPECT_EQ(out.getOpenCount(), 0u);
    EXPECT_EQ(out.getText(L"a.png"), std::string("abXYef\0\0Z", 9));
    ASSERT_NE(out.find(L"a.png"), nullptr);
    EXPECT_EQ(out.find(L"a.png")->contentType, 2);
    EXPECT_EQ(out.find(L"a.png")->encoderId, L"enc");
    EXPECT_EQ(out.getNames(), std::vector<std::wstring>{L"a.png"});
    EXPECT_THROW(out.getText(L"b.gml"), std::out_of_range);
    EXPECT_EQ(out.open(L"enc", 2, L"a.png", SimpleOutputCallbacks::OPEN_KEEP, 0, &status), 0u);
    EXPECT_EQ(status, SimpleOutputCallbacks::STATUS_EXISTS);
    EXPECT_EQ(out.write(12345, "x", 1), SimpleOutputCallbacks::STATUS_BAD_HANDLE);
    // A position beyond any memory is a write error, not an exception.
    uint64_t const far = out.open(L"enc", 2, L"far", 0, 0, &status);
    EXPECT_EQ(out.seek(far, int64_t(1) << 62, SimpleOutputCallbacks::FROM_BEGIN), 0);
    EXPECT_EQ(out.write(far, "x", 1), SimpleOutputCallbacks::STATUS_IO);
}
