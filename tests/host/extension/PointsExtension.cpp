// A small but complete extension: a decoder of ".pts" files (one "x y z" point per line, every
// three points a triangle) and an encoder that writes a summary of the contents it gets.

#include "kolt/AttributeMapBuilder.h"
#include "kolt/Callbacks.h"
#include "koltx/DecoderFactory.h"
#include "koltx/EncoderFactory.h"
#include "koltx/EncoderInfoBuilder.h"
#include "koltx/ExtensionManager.h"
#include "koltx/Geometry.h"
#include "koltx/GeometryBuilder.h"
#include "koltx/GeometryDecoder.h"
#include "koltx/GeometryEncoder.h"
#include "koltx/KOLTUtils.h"
#include "koltx/MeshBuilder.h"
#include "koltx/Singleton.h"
#include "koltx/StatusException.h"
#include "koltx/Texture.h"

#include <atomic>
#include <sstream>
#include <stdexcept>
#include <string>

#ifndef TEST_EXTENSION_MAJOR
#error "TEST_EXTENSION_MAJOR must be defined"
#endif

namespace {

std::atomic<int> registrations{0};

class PointsDecoder : public koltx::GeometryDecoder {
public:
    void decode(std::vector<std::shared_ptr<koltx::Content>>& results, std::istream& stream,
                kolt::Cache* /*cache*/, std::wstring const& key,
                koltx::ResolveMap const* resolveMap, std::wstring& warnings) override {
        koltx::MeshBuilder mesh;
        mesh.setName(L"points");
        std::string line;
        int lineNumber = 0;
        uint32_t points = 0;
        uint32_t face = 0;
        while (std::getline(stream, line)) {
            ++lineNumber;
            std::istringstream fields(line);
            double xyz[3];
            if (!(fields >> xyz[0] >> xyz[1] >> xyz[2])) {
                warnings += L"line " + std::to_wstring(lineNumber) + L" is no point\n";
                continue;
            }
            if (points % 3 == 0)
                face = mesh.addFace();
            mesh.addFaceVertexIndex(face, mesh.addVertexCoords(xyz));
            ++points;
        }
        if (points == 0 || points % 3 != 0) {
            warnings += L"point count is not a multiple of three\n";
            return;
        }
        koltx::GeometryBuilder geometry;
        geometry.setURI(koltx::ResolveMap::resolveKeyWithURIFallback(resolveMap, key));
        geometry.setInt(L"/fields/points", static_cast<int32_t>(points));
        geometry.addMesh(mesh.createSharedAndReset(&warnings));
        results.push_back(geometry.createSharedAndReset(&warnings));
    }
};

class PointsDecoderFactory : public koltx::DecoderFactory,
                             public koltx::Singleton<PointsDecoderFactory> {
public:
    PointsDecoderFactory()
        : koltx::DecoderFactory(kolt::CT_GEOMETRY, L"com.example.kolt.test.PointsDecoder",
                                L"Points Decoder", L"Reads triangles from point lists",
                                koltx::FileExtensions(L".pts;.points"), nullptr,
                                koltx::DecoderFactory::ER_NONE) {}
    koltx::Extension* create() const override { return new PointsDecoder(); }
};

// Writes "<count> contents, <textures> textures" to an output named after the option "name".
class SummaryEncoder : public koltx::GeometryEncoder {
public:
    using koltx::GeometryEncoder::GeometryEncoder;

    void encode(std::vector<std::shared_ptr<koltx::Content>> const& contents) override {
        auto* output = dynamic_cast<kolt::SimpleOutputCallbacks*>(getCallbacks());
        if (output == nullptr)
            throw koltx::StatusException(kolt::STATUS_CALLBACKS_UNUSABLE);
        size_t textures = 0;
        for (auto const& content : contents)
            if (std::dynamic_pointer_cast<koltx::Texture>(content))
                ++textures;
        std::string const text = std::to_string(contents.size()) + " contents, " +
                                 std::to_string(textures) + " textures";
        wchar_t const* name = getOptions()->getString(L"name");
        kolt::Status status = kolt::STATUS_UNSPECIFIED_ERROR;
        uint64_t const handle =
            output->open(getID().c_str(), kolt::CT_GEOMETRY, name, 0, 0, &status);
        if (status != kolt::STATUS_OK)
            throw koltx::StatusException(status);
        output->write(handle, text.data(), text.size());
        output->close(handle, false, nullptr);
    }
};

class SummaryEncoderFactory : public koltx::EncoderFactory,
                              public koltx::Singleton<SummaryEncoderFactory> {
public:
    SummaryEncoderFactory() : koltx::EncoderFactory(makeInfo()) {}

    koltx::Encoder* create(kolt::AttributeMap const* options,
                           kolt::Callbacks* callbacks) const override {
        return new SummaryEncoder(getID(), options, callbacks);
    }

private:
    static kolt::EncoderInfo const* makeInfo() {
        koltx::KOLTUtils::AttributeMapBuilderPtr defaults(kolt::AttributeMapBuilder::create());
        defaults->setString(L"name", L"summary.txt");
        koltx::KOLTUtils::AttributeMapPtr map(defaults->createAttributeMap());
        koltx::EncoderInfoBuilder builder;
        builder.setID(L"com.example.kolt.test.SummaryEncoder")
            .setName(L"Summary Encoder")
            .setDescription(L"Writes how many contents it got")
            .setExtension(L".txt")
            .setType(kolt::CT_GEOMETRY)
            .setDefaultOptions(map.get());
        return builder.create(nullptr);
    }
};

} // namespace

extern "C" {

__attribute__((visibility("default"))) int32_t getVersionMajor() {
    return TEST_EXTENSION_MAJOR;
}

__attribute__((visibility("default"))) int32_t getVersionMinor() {
    return 1;
}

__attribute__((visibility("default"))) void
registerExtensionFactories(koltx::ExtensionManager* manager) {
#ifdef TEST_EXTENSION_THROWS
    (void)manager;
    throw std::runtime_error("no factories today");
#else
    ++registrations;
    if (PointsDecoderFactory::getInstance() == nullptr)
        PointsDecoderFactory::setInstance(new PointsDecoderFactory());
    manager->registerFactory(PointsDecoderFactory::getInstance());
    if (SummaryEncoderFactory::getInstance() == nullptr)
        SummaryEncoderFactory::setInstance(new SummaryEncoderFactory());
    manager->registerFactory(SummaryEncoderFactory::getInstance());
#endif
}

__attribute__((visibility("default"))) void unregisterExtensionFactories() {}

// How often the library registered itself, for the test that loads it from two threads at once.
__attribute__((visibility("default"))) int registrationCount() {
    return registrations;
}
}
