#include "GmlEncodeCommand.h"

#include "CodecHost.h"
#include "CoordinateDecimals.h"
#include "EncodeOptions.h"
#include "FileDecoder.h"
#include "FileNames.h"
#include "MeshNameRepair.h"
#include "ObjReader.h"
#include "ReaderDiagnostics.h"
#include "TextureAccess.h"
#include "TrackedFileOutputs.h"
#include "XmlSafe.h"

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
#include <koltx/Log.h>
#include <koltx/Material.h>
#include <koltx/MemoryLogSink.h>
#include <koltx/Mesh.h>
#include <koltx/MeshBuilder.h>
#include <koltx/Shape.h>
#include <koltx/Texture.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstring>
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

struct Input {
    std::vector<std::shared_ptr<koltx::Mesh>> meshes;
    std::shared_ptr<kolt::AttributeMap const> attributes; // the initial shape's
    std::wstring srsName;                                 // safe for XML
    bool fromCityGML = false;
};

// The decoded file's fields become metadata of the initial shape, which the encoder writes as
// the attributes of the first feature again. Names and texts are made safe for XML here.
std::shared_ptr<kolt::AttributeMap const> metaDataOf(kolt::AttributeMap const* fields,
                                                     std::wstring& srsName) {
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    size_t count = 0;
    wchar_t const* const* keys = fields != nullptr ? fields->getKeys(&count) : nullptr;
    for (size_t i = 0; i < count; ++i) {
        std::wstring const key = keys[i];
        if (key == L"/georef/spatialReference" && fields->getType(keys[i]) == kolt::PT_STRING) {
            srsName = XmlSafe::text(fields->getString(keys[i]));
            continue;
        }
        if (key.compare(0, fieldsPrefix.size(), fieldsPrefix) != 0)
            continue;
        std::wstring const target =
            metaDataPrefix + XmlSafe::attributeName(key.substr(fieldsPrefix.size()));
        switch (fields->getType(keys[i])) {
        case kolt::PT_STRING:
            builder->setString(target.c_str(), XmlSafe::text(fields->getString(keys[i])).c_str());
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

// Step 1: the input's meshes, attributes and spatial reference. A file that does not load or
// holds no polygon stops the conversion here.
Input readInput(koltx::ExtensionManager& manager, std::string const& path, kolt::Cache* cache,
                std::wstring& warnings, GmlEncodeCommand::Context const& context) {
    Input input;
    if (FileNames::lowerExtension(path) == ".obj") {
        input.meshes = ObjReader::read(path, cache, warnings);
        input.attributes = metaDataOf(nullptr, input.srsName);
        if (std::none_of(input.meshes.begin(), input.meshes.end(),
                         [](auto const& mesh) { return mesh->getFaceCount() > 0; }))
            throw std::runtime_error(path + " holds no polygon; nothing to convert");
        return input;
    }
    input.fromCityGML = true;
    // Not kept to the end of the process: the meshes are renamed in place and handed to the
    // encoder, which frees each one once it has prepared its copy.
    DecodedFile decoded = FileDecoder(manager).decode(path, true, false);
    if (!decoded.loaded)
        throw std::runtime_error(decoded.error);
    warnings += decoded.warnings;
    if (context.diagnostics != nullptr)
        decoded.reader->report(*context.diagnostics, context.verbose);
    std::string const nothing = FileDecoder::nothingToConvert(decoded, path);
    if (!nothing.empty())
        throw std::runtime_error(nothing + "; nothing to convert");
    input.meshes = decoded.geometry->getMeshes();
    input.attributes = metaDataOf(decoded.geometry->getAttributeMap(), input.srsName);
    return input;
}

// Step 2: mesh names that keep all their faces in the document and are safe in it. The meshes
// are renamed in place: the decoded file holds them no longer.
std::size_t repairNames(std::vector<std::shared_ptr<koltx::Mesh>>& meshes) {
    std::vector<std::wstring_view> names;
    names.reserve(meshes.size());
    for (auto const& mesh : meshes)
        names.push_back(mesh->getName());
    return MeshNameRepair::repair(names, [&meshes](std::size_t m, std::wstring&& name) {
        meshes[m] = koltx::MeshBuilder::renamed(std::move(meshes[m]), std::move(name));
    });
}

// Step 3: the encoder's options, validated by the encoder itself.
koltx::KOLTUtils::AttributeMapPtr buildOptions(koltx::ExtensionManager& manager,
                                               EncodeOptions const& options, Input const& input,
                                               fs::path const& target,
                                               GmlEncodeCommand::Result& result) {
    koltx::KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    options.apply(*builder);
    if (!options.srsName && !input.srsName.empty())
        builder->setString(L"srsName", input.srsName.c_str());
    if (!options.baseName)
        builder->setString(L"baseName", kolt::StringUtils::toUTF16(target.stem().string()).c_str());
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
    koltx::KOLTUtils::AttributeMapPtr validated(validatedRaw);
    if (!validated)
        throw std::runtime_error("the encoder refused the options (status " +
                                 std::to_string(status) + ")");
    result.vertexPrecision = validated->getFloat(L"vertexPrecision");
    return validated;
}

std::shared_ptr<koltx::Geometry> geometryOf(std::vector<std::shared_ptr<koltx::Mesh>> const& m) {
    koltx::GeometryBuilder builder;
    for (auto const& mesh : m)
        builder.addMesh(mesh);
    return builder.createSharedAndReset(nullptr);
}

// Step 4: one initial shape; each OBJ object or the decoded geometry is a leaf of it. The whole
// OBJ input is also the shape's own geometry, which the encoder falls back to ("errorFallback")
// when the leaves cannot be prepared; a decoded file's one leaf is its whole geometry already.
// The meshes leave `input`: the decoded ones are handed over, so that each is freed as soon as
// the encoder has prepared its copy.
std::shared_ptr<koltx::InitialShape> buildShape(Input& input, std::string const& path) {
    std::vector<std::shared_ptr<koltx::Shape>> leaves;
    std::shared_ptr<koltx::Geometry> fallback;
    if (input.fromCityGML) {
        leaves.push_back(std::make_shared<koltx::Shape>(geometryOf(input.meshes)));
        leaves.back()->handOver();
    } else {
        fallback = geometryOf(input.meshes);
        for (auto const& mesh : input.meshes)
            leaves.push_back(std::make_shared<koltx::Shape>(geometryOf({mesh})));
    }
    input.meshes.clear();
    return std::make_shared<koltx::InitialShape>(
        kolt::StringUtils::toUTF16(fs::path(path).filename().string()), input.attributes, leaves,
        fallback);
}

// Step 5: the encoder's run. The host log is captured around it: when the encoder fails, the
// reason stands there, while the exception that reaches the tool may say no more than
// "std::exception". Returns the encoder, which still holds its tree.
std::shared_ptr<void> runEncoder(koltx::ExtensionManager& manager,
                                 std::shared_ptr<koltx::InitialShape> const& shape,
                                 kolt::AttributeMap const* options, kolt::Cache* cache,
                                 TrackedFileOutputs& outputs) {
    auto const log = std::make_shared<koltx::MemoryLogSink>();
    std::string failure;
    std::shared_ptr<void> done;
    {
        koltx::Log::Scope const capture(log, kolt::LOG_WARNING);
        try {
            koltx::GenerateContext context({shape}, cache, &outputs);
            auto const encoder = manager.createEncoder(encoderId, options, &outputs);
            encoder->init(context);
            encoder->encode(context, 0);
            encoder->finish(context);
            done = encoder;
        } catch (std::exception const& e) {
            failure = e.what();
        }
    }
    std::string logged;
    for (auto const& [level, message] : log->getEntries()) {
        if (level >= kolt::LOG_ERROR && !failure.empty())
            logged = message;
        else
            koltx::Log::write(level, message);
    }
    if (failure.empty())
        return done;
    if (!outputs.refused().empty())
        throw std::runtime_error("cannot write over " + outputs.refused() +
                                 ": the conversion reads that file; write to another folder");
    if (!outputs.failure().empty())
        throw std::runtime_error(outputs.failure());
    throw std::runtime_error("the encoder failed: " +
                             (logged.empty() || failure != "std::exception" ? failure : logged));
}

void checkOutputFolder(fs::path const& target) {
    fs::path const folder = target.parent_path();
    std::error_code error;
    if (fs::is_directory(target, error))
        throw std::runtime_error("cannot write " + target.string() + ": it is a folder");
    if (!fs::is_directory(folder, error))
        throw std::runtime_error(
            "cannot write " + target.string() + ": " + folder.string() +
            (fs::exists(folder, error) ? " is not a folder" : " does not exist"));
    if (::access(folder.c_str(), W_OK | X_OK) != 0)
        throw std::runtime_error("cannot write " + target.string() + ": " + std::strerror(errno));
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
                                                   std::wstring& warnings, Context const& context) {
    fs::path const target = fs::absolute(outputPath);
    checkOutputFolder(target);
    auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
    Input input = readInput(manager, inputPath, cache.get(), warnings, context);

    Result result;
    // OBJ objects named by mesh paths (as gmlcodec writes them) meet the same way.
    result.renamedMeshes = repairNames(input.meshes);
    result.meshes = input.meshes.size();
    for (auto const& mesh : input.meshes)
        result.faces += mesh->getFaceCount();
    auto const validated = buildOptions(manager, options, input, target, result);
    auto const shape = buildShape(input, inputPath);

    TrackedFileOutputs outputs(target.parent_path().string());
    std::wstring const document = std::wstring(validated->getString(L"baseName")) + L".gml";
    if (!options.baseName)
        outputs.renameOutput(document, target.filename().wstring());
    outputs.protect(fs::absolute(inputPath).string());
    if (context.textures != nullptr)
        for (auto const& file : context.textures->readFiles())
            outputs.protect(file.string());
    try {
        result.encoded = runEncoder(manager, shape, validated.get(), cache.get(), outputs);
        // Step 6: the outputs are complete; the document learns the names its images got.
        result.document = options.baseName ? outputs.targetPath(document) : target.string();
        outputs.fixDocument(result.document);
    } catch (...) {
        outputs.removeWritten();
        throw;
    }
    for (auto const& file : outputs.written())
        if (!FileNames::sameFile(file, result.document))
            result.images.push_back(file);
    return result;
}

int GmlEncodeCommand::run(CodecHost const& host, std::string const& input,
                          std::string const& output, EncodeOptions const& options,
                          std::ostream& out, std::ostream& err, Context context) {
    std::wstring warnings;
    Result result;
    context.diagnostics = &err;
    try {
        result = convert(host.manager(), input, output, options, warnings, context);
        // The outputs are committed and the tool exits next: the operating system reclaims the
        // tree and its meshes far faster than freeing them node by node would.
        static auto* const keptToExit = new std::vector<std::shared_ptr<void>>();
        if (!FileDecoder::inBatch())
            keptToExit->push_back(std::move(result.encoded));
        result.encoded.reset();
    } catch (std::exception const& e) {
        for (auto const& line : FileNames::lines(warnings))
            err << "warning: " << line << "\n";
        err << "gmlcodec: " << e.what() << "\n";
        return 1;
    }
    for (auto const& line : FileNames::lines(warnings))
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
