#include "GmlEncodeCommand.h"

#include "CodecHost.h"
#include "CoordinateDecimals.h"
#include "EncodeOptions.h"
#include "FileDecoder.h"
#include "GeometrySummary.h"
#include "MeshNameRepair.h"
#include "ObjReader.h"
#include "TrackedFileOutputs.h"

#include <kolt/AttributeMap.h>
#include <kolt/AttributeMapBuilder.h>
#include <kolt/Cache.h>
#include <kolt/EncoderInfo.h>
#include <kolt/StringUtils.h>
#include <koltx/ExtensionManager.h>
#include <koltx/GenerateContext.h>
#include <koltx/Geometry.h>
#include <koltx/GeometryBuilder.h>
#include <koltx/InitialShape.h>
#include <koltx/KOLTUtils.h>
#include <koltx/Material.h>
#include <koltx/Mesh.h>
#include <koltx/Shape.h>
#include <koltx/Texture.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace {

std::wstring const encoderId = L"com.morvane.kolt.codecs.CityGMLEncoder";
std::wstring const fieldsPrefix = L"/fields/";
std::wstring const metaDataPrefix = L"/enc/metaData/";
int const defaultDecimals = 3; // the encoder's default precision of 0.001

namespace fs = std::filesystem;

std::string lowerExtension(std::string const& path) {
    std::string ext = fs::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

struct Input {
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    std::shared_ptr<kolt::AttributeMap const> attributes; // the initial shape's
    std::wstring srsName;
    bool fromCityGML = false;
};

// The decoded file's fields become metadata of the initial shape, which the encoder writes as
// the attributes of the first feature again.
std::shared_ptr<kolt::AttributeMap const> metaDataOf(kolt::AttributeMap const* fields,
                                                     std::wstring& srsName) {
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    size_t count = 0;
    wchar_t const* const* keys = fields != nullptr ? fields->getKeys(&count) : nullptr;
    for (size_t i = 0; i < count; ++i) {
        std::wstring const key = keys[i];
        if (key == L"/georef/spatialReference" && fields->getType(keys[i]) == kolt::PT_STRING) {
            srsName = fields->getString(keys[i]);
            continue;
        }
        if (key.compare(0, fieldsPrefix.size(), fieldsPrefix) != 0)
            continue;
        std::wstring const target = metaDataPrefix + key.substr(fieldsPrefix.size());
        switch (fields->getType(keys[i])) {
        case kolt::PT_STRING:
            builder->setString(target.c_str(), fields->getString(keys[i]));
            break;
        case kolt::PT_FLOAT:
            builder->setFloat(target.c_str(), fields->getFloat(keys[i]));
            break;
        case kolt::PT_INT:
            builder->setInt(target.c_str(), fields->getInt(keys[i]));
            break;
        case kolt::PT_BOOL:
            builder->setBool(target.c_str(), fields->getBool(keys[i]));
            break;
        default:
            break; // arrays have no attribute form in the document
        }
    }
    return koltx::KOLTUtils::share(builder->createAttributeMap());
}

Input readInput(koltx::ExtensionManager& manager, std::string const& path, kolt::Cache* cache,
                std::wstring& warnings) {
    Input input;
    std::string const ext = lowerExtension(path);
    if (ext == ".obj") {
        input.meshes = ObjReader::read(path, cache, warnings);
        input.attributes = metaDataOf(nullptr, input.srsName);
        return input;
    }
    input.fromCityGML = true;
    DecodedFile decoded = FileDecoder(manager).decode(path, true);
    warnings += decoded.warnings;
    if (!decoded.loaded) {
        std::string message = "cannot read " + path;
        auto const lines = GeometrySummary(nullptr, decoded.warnings).warnings;
        if (!lines.empty())
            message += ": " + lines.front();
        warnings.clear();
        throw std::runtime_error(message);
    }
    if (decoded.geometry)
        input.meshes = decoded.geometry->getMeshes();
    input.attributes =
        metaDataOf(decoded.geometry ? decoded.geometry->getAttributeMap() : nullptr, input.srsName);
    return input;
}

// Gives the meshes the names that keep all their faces in the document.
std::size_t repairNames(std::vector<std::shared_ptr<koltx::Mesh>>& meshes) {
    std::vector<std::wstring> names;
    for (auto const& mesh : meshes)
        names.push_back(mesh->getName());
    std::size_t const changed = MeshNameRepair::repair(names);
    for (std::size_t i = 0; i < meshes.size() && changed > 0; ++i)
        if (names[i] != meshes[i]->getName())
            meshes[i] = MeshNameRepair::renamed(*meshes[i], names[i]);
    return changed;
}

std::shared_ptr<koltx::Geometry> geometryOf(std::vector<std::shared_ptr<koltx::Mesh>> const& m) {
    koltx::GeometryBuilder builder;
    for (auto const& mesh : m)
        builder.addMesh(mesh);
    return builder.createSharedAndReset(nullptr);
}

void checkOutputFolder(fs::path const& target) {
    fs::path const folder = target.parent_path();
    std::error_code error;
    if (fs::is_directory(target, error))
        throw std::runtime_error("output " + target.string() + " is a folder");
    if (!fs::is_directory(folder, error))
        throw std::runtime_error("output folder " + folder.string() + " does not exist");
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        throw std::runtime_error("output folder " + folder.string() + " cannot be written");
}

std::string formatPrecision(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

} // namespace

GmlEncodeCommand::Result GmlEncodeCommand::convert(koltx::ExtensionManager& manager,
                                                   std::string const& inputPath,
                                                   std::string const& outputPath,
                                                   EncodeOptions const& options,
                                                   std::wstring& warnings) {
    fs::path const target = fs::absolute(outputPath);
    checkOutputFolder(target);

    auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
    Input input = readInput(manager, inputPath, cache.get(), warnings);

    Result result;
    // OBJ objects named by mesh paths (as gmlcodec writes them) meet the same way.
    result.renamedMeshes = repairNames(input.meshes);
    result.meshes = input.meshes.size();
    for (auto const& mesh : input.meshes)
        result.faces += mesh->getFaceCount();

    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    options.apply(*builder);
    if (!options.baseName)
        builder->setString(L"baseName", kolt::StringUtils::toUTF16(target.stem().string()).c_str());
    if (!options.srsName && !input.srsName.empty())
        builder->setString(L"srsName", input.srsName.c_str());
    result.decimals = CoordinateDecimals::needed(input.meshes);
    if (!options.vertexPrecision) {
        int const decimals = std::max(defaultDecimals, result.decimals);
        builder->setFloat(L"vertexPrecision", std::pow(10.0, -decimals));
        result.precisionChosen = true;
    }
    koltx::KOLTUtils::AttributeMapPtr const given(builder->createAttributeMap());

    koltx::KOLTUtils::ObjectPtr<kolt::EncoderInfo const> info(manager.createEncoderInfo(encoderId));
    kolt::AttributeMap const* validatedRaw = nullptr;
    kolt::Status status = kolt::STATUS_OK;
    info->createValidatedOptions(given.get(), &validatedRaw, &status);
    koltx::KOLTUtils::AttributeMapPtr const validated(validatedRaw);
    if (!validated)
        throw std::runtime_error("the encoder refused the options (status " +
                                 std::to_string(status) + ")");
    result.vertexPrecision = validated->getFloat(L"vertexPrecision");

    // One initial shape; each OBJ object or the decoded geometry is a leaf of it. The whole
    // input is also the shape's own geometry, which the encoder falls back to ("errorFallback")
    // when the leaves cannot be prepared.
    auto const whole = geometryOf(input.meshes);
    std::vector<std::shared_ptr<koltx::Shape>> leaves;
    if (input.fromCityGML) {
        leaves.push_back(std::make_shared<koltx::Shape>(whole));
    } else {
        for (auto const& mesh : input.meshes)
            leaves.push_back(std::make_shared<koltx::Shape>(geometryOf({mesh})));
    }
    auto const shape = std::make_shared<koltx::InitialShape>(
        kolt::StringUtils::toUTF16(fs::path(inputPath).filename().string()), input.attributes,
        leaves, whole);

    TrackedFileOutputs outputs(target.parent_path().string());
    for (auto const& mesh : input.meshes)
        for (auto const& material : mesh->getMaterials())
            for (auto const& texture : material ? material->getDiffuseMap()
                                                : std::vector<std::shared_ptr<koltx::Texture>>())
                if (texture && texture->getURI() && texture->getURI()->isFile())
                    outputs.protect(texture->getURI()->getNativePath());
    try {
        koltx::GenerateContext context({shape}, cache.get(), &outputs);
        auto const encoder = manager.createEncoder(encoderId, validated.get(), &outputs);
        encoder->init(context);
        encoder->encode(context, 0);
        encoder->finish(context);

        std::string const written =
            outputs.targetPath(std::wstring(validated->getString(L"baseName")) + L".gml");
        result.document = written;
        if (!options.baseName && fs::path(written) != target) {
            fs::rename(written, target);
            result.document = target.string();
        }
    } catch (...) {
        outputs.removeWritten();
        if (!outputs.refused().empty())
            throw std::runtime_error("the texture images would replace the input's own " +
                                     outputs.refused() + "; write to another folder");
        throw;
    }
    for (auto const& file : outputs.written())
        if (fs::path(file).extension() != ".gml")
            result.images.push_back(file);
    return result;
}

int GmlEncodeCommand::run(CodecHost const& host, std::string const& input,
                          std::string const& output, EncodeOptions const& options,
                          std::ostream& out, std::ostream& err) {
    std::wstring warnings;
    Result result;
    try {
        result = convert(host.manager(), input, output, options, warnings);
    } catch (std::exception const& e) {
        for (auto const& line : GeometrySummary(nullptr, warnings).warnings)
            err << "warning: " << line << "\n";
        err << "gmlcodec: " << e.what() << "\n";
        return 1;
    }
    for (auto const& line : GeometrySummary(nullptr, warnings).warnings)
        err << "warning: " << line << "\n";
    if (result.renamedMeshes > 0)
        err << "note: " << result.renamedMeshes
            << " mesh names were made distinct so that the encoder keeps all their faces\n";
    if (result.precisionChosen && result.decimals > defaultDecimals)
        err << "note: vertex precision " << formatPrecision(result.vertexPrecision)
            << " keeps the input's coordinates (" << result.decimals
            << " decimals); give --vertex-precision to choose another\n";
    out << "wrote " << result.document << ": " << result.meshes << " meshes, " << result.faces
        << " faces, " << result.images.size() << " texture images, vertex precision "
        << formatPrecision(result.vertexPrecision)
        << (result.precisionChosen ? " (chosen to keep the input's coordinates)" : "") << "\n";
    return 0;
}
