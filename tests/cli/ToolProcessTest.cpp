#include "Files.h"
#include "ScratchDir.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testsupport::filesIn;
using testsupport::readFile;
using testsupport::split;

namespace {

// Generous guards: they catch hangs and blow-ups, not noise. AddressSanitizer's shadow memory
// and quarantine multiply a process's footprint, and its checks slow it down.
#if defined(__SANITIZE_ADDRESS__)
constexpr long MaxKilobytes = 4 * 400 * 1024;
constexpr auto MaxTime = std::chrono::seconds(60);
#else
constexpr long MaxKilobytes = 400 * 1024;
constexpr auto MaxTime = std::chrono::seconds(20);
#endif

struct ToolRun {
    int code = -1;       // exit code, or -1 when a signal ended the tool
    int signal = 0;      // the signal that ended it
    bool bounded = true; // false when it outgrew the memory or time guard and was killed
    long kilobytes = 0;
    std::string out;
    std::string err;
};

long residentKilobytes(pid_t pid) {
    long pages = 0;
    std::ifstream("/proc/" + std::to_string(pid) + "/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

bool holdsTemporaryFile(fs::path const& folder) {
    std::error_code error;
    for (auto it = fs::directory_iterator(folder, error); !error && it != fs::directory_iterator();
         it.increment(error)) {
        std::string const name = it->path().filename().string();
        if (name[0] == '.' || name.find(".tmp") != std::string::npos)
            return true;
    }
    return false;
}

// Runs the tool as a child without a shell, watching its memory and time; `signal` is sent
// once `watched` holds a temporary file.
ToolRun runTool(std::vector<std::string> arguments, fs::path const& logs, int signal = 0,
                fs::path const& watched = {}) {
    fs::path const tool = fs::read_symlink("/proc/self/exe").parent_path() / "gmlcodec";
    arguments.insert(arguments.begin(), tool.string());
    pid_t const pid = fork();
    if (pid == 0) {
        dup2(open((logs / "out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 1);
        dup2(open((logs / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 2);
        std::vector<char*> argv;
        for (auto& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    ToolRun run;
    auto const start = std::chrono::steady_clock::now();
    for (bool sent = false;;) {
        int status = 0;
        rusage usage{};
        if (wait4(pid, &status, WNOHANG, &usage) == pid) {
            run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
            run.kilobytes = std::max(run.kilobytes, static_cast<long>(usage.ru_maxrss));
            break;
        }
        run.kilobytes = std::max(run.kilobytes, residentKilobytes(pid));
        if (run.kilobytes > MaxKilobytes || std::chrono::steady_clock::now() - start > MaxTime) {
            run.bounded = false;
            kill(pid, SIGKILL);
        }
        if (signal != 0 && !sent && holdsTemporaryFile(watched))
            sent = kill(pid, signal) == 0;
        usleep(2000);
    }
    run.out = readFile(logs / "out");
    run.err = readFile(logs / "err");
    return run;
}

// Size and time of every file below `folder`: what the tool may not touch.
std::map<std::string, std::pair<std::uintmax_t, fs::file_time_type>>
snapshot(fs::path const& folder) {
    std::map<std::string, std::pair<std::uintmax_t, fs::file_time_type>> files;
    for (auto const& entry : fs::recursive_directory_iterator(folder)) {
        std::error_code error;
        files[entry.path().string()] = {entry.is_regular_file(error) ? entry.file_size(error) : 0,
                                        entry.last_write_time(error)};
    }
    return files;
}

// Parses a written file back: CityGML with xmllint, OBJ line by line.
void expectWellFormed(fs::path const& file) {
    std::string const ext = fs::is_regular_file(file) ? file.extension().string() : "";
    if (ext == ".gml" || ext == ".xml" || ext == ".citygml") {
        std::string const lint = "xmllint --noout --nonet '" + file.string() + "' 2>/dev/null";
        EXPECT_EQ(std::system(lint.c_str()), 0) << file << " is not well-formed";
    } else if (ext == ".obj") {
        static std::regex const line(R"((#.*|mtllib \S+|o [^\x00-\x1f\x7f]*|v( -?[0-9.]+){3})"
                                     R"(|vt( -?[0-9.]+){2}|usemtl \S+|f( \d+(/\d+)?)+))");
        std::istringstream in(readFile(file));
        for (std::string text; std::getline(in, text);)
            EXPECT_TRUE(std::regex_match(text, line)) << file << ": " << text;
    }
}

std::string replaced(std::string text, std::string const& from, std::string const& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

class ToolProcess : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(dir / "logs");
        fs::create_directories(dir / "out");
    }

    ToolRun run(std::string const& arguments) const {
        return runTool(split(arguments), dir / "logs");
    }

    testsupport::ScratchDir scratch{"gmlcodec_tool"};
    fs::path const dir = scratch.path();
};

std::string example() {
    return (testsupport::sourceDir() / "examples" / "small_house.gml").string();
}

fs::path golden(std::string const& name) {
    return testsupport::sourceDir() / "tests" / "golden" / "cli" / name;
}

TEST_F(ToolProcess, HostileInputs) {
    fs::path const corpus = dir / "in";
    std::string const make =
        "python3 '" + (testsupport::sourceDir() / "tests/cli/make_hostile_corpus.py").string() +
        "' '" + testsupport::sourceDir().string() + "' '" + corpus.string() + "'";
    ASSERT_EQ(std::system(make.c_str()), 0);
    auto const before = snapshot(corpus);
    int cases = 0;
    for (auto const& line :
         testsupport::tableRows(testsupport::dataFile("cli/hostile_cases.txt"))) {
        std::vector<std::string> const field = split(line, " | ");
        ASSERT_EQ(field.size(), 8u) << line;
        SCOPED_TRACE(field[0]);
        ++cases;
        fs::path const out = dir / ("case" + std::to_string(cases));
        fs::create_directories(out);
        if (field[1] != "-")
            fs::copy(corpus / field[1], out, fs::copy_options::recursive);
        auto const preset = snapshot(out);
        if (field[2].find("{testdata}") != std::string::npos && !testsupport::haveTestData())
            continue;
        auto arguments = split(field[2]);
        for (auto& argument : arguments)
            argument = replaced(
                replaced(replaced(argument, "{in}", corpus.string()), "{out}", out.string()),
                "{testdata}", testsupport::testDataDir().string());
        int const signal = field[3] == "SIGINT" ? SIGINT : field[3] == "SIGTERM" ? SIGTERM : 0;
        ToolRun const r = runTool(arguments, dir / "logs", signal, out);

        EXPECT_TRUE(r.bounded) << r.kilobytes << " kB";
        EXPECT_LT(r.kilobytes, MaxKilobytes);
        EXPECT_EQ(signal != 0 ? r.signal : r.code, signal != 0 ? signal : std::stoi(field[3]))
            << r.err;
        EXPECT_TRUE(field[4] == "-" || std::regex_search(r.err, std::regex(field[4]))) << r.err;
        EXPECT_TRUE(field[5] == "-" || std::regex_search(r.out, std::regex(field[5]))) << r.out;
        std::vector<std::string> expected =
            field[6] == "-" ? std::vector<std::string>() : split(field[6]);
        for (auto const& [path, stamp] : preset) {
            expected.push_back(fs::path(path).filename().string());
            EXPECT_EQ(snapshot(out).at(path), stamp) << path << " was touched";
        }
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(filesIn(out), expected);
        for (auto const& name : filesIn(out))
            expectWellFormed(out / name);
        // FILE~regex must match, FILE!~regex must not, FILE#N~regex must match N times.
        for (auto const& check :
             field[7] == "-" ? std::vector<std::string>() : split(field[7], " && ")) {
            std::smatch part;
            ASSERT_TRUE(std::regex_match(check, part, std::regex(R"(([^~!#]+)(!|#\d+)?~(.*))")));
            std::string const text = readFile(out / part[1].str());
            std::regex const pattern(part[3].str());
            auto const found = static_cast<std::size_t>(std::distance(
                std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()));
            EXPECT_TRUE(part[2] == "!"  ? found == 0
                        : part[2] == "" ? found > 0
                                        : found == std::stoul(part[2].str().substr(1)))
                << check << " in\n"
                << text.substr(0, 2000);
        }
        EXPECT_EQ(snapshot(corpus), before) << "a file outside the output folder was touched";
    }
    EXPECT_GT(cases, 25);
}

TEST_F(ToolProcess, InfoOfTheExample) {
    ToolRun const r = run("info --json --names " + example());
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, readFile(golden("info_small_house.json")));
    ToolRun const text = run("info " + example());
    EXPECT_EQ(text.code, 0);
    EXPECT_EQ(text.out,
              "file:              " + example() + "\n" + readFile(golden("info_small_house.txt")));
}

TEST_F(ToolProcess, ConvertTheExampleToObj) {
    ToolRun const r =
        run("convert " + example() + " " + (dir / "out" / "small_house.obj").string());
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out, "wrote " + (dir / "out" / "small_house.obj").string() +
                         ": 5 meshes, 13 faces, 1 holes, 58 vertices, 3 materials, 1 textures\n");
    EXPECT_EQ(filesIn(dir / "out"),
              (std::vector<std::string>{"facade.png", "small_house.attributes.json",
                                        "small_house.mtl", "small_house.obj"}));
    for (std::string const name :
         {"small_house.obj", "small_house.mtl", "small_house.attributes.json"})
        EXPECT_EQ(readFile(dir / "out" / name), readFile(golden(name))) << name;
    EXPECT_EQ(readFile(dir / "out" / "facade.png"),
              readFile(testsupport::sourceDir() / "examples" / "facade.png"));
}

} // namespace
