#include "EncodePreparatorImpl.h"

#include "kolt/AttributeMap.h"
#include "kolt/AttributeMapBuilder.h"
#include "kolt/StringUtils.h"
#include "koltx/Geometry.h"
#include "koltx/GeometryBuilder.h"
#include "koltx/InitialShape.h"
#include "koltx/LogFormatter.h"
#include "meshes/FaceTriangulator.h"
#include "meshes/MeshData.h"

#include <stdexcept>
#include <utility>

namespace koltx {

namespace {

bool isIdentity(Shape::Transform const& t) {
    return t == Shape::identity();
}

void copyAttributes(kolt::AttributeMap const& map, GeometryBuilder& builder) {
    size_t count = 0;
    wchar_t const* const* keys = map.getKeys(&count);
    for (size_t i = 0; i < count; ++i) {
        wchar_t const* key = keys[i];
        size_t n = 0;
        switch (map.getType(key)) {
        case kolt::PT_STRING: {
            wchar_t const* value = map.getString(key);
            builder.setString(key, value == nullptr ? L"" : value);
            break;
        }
        case kolt::PT_FLOAT:
            builder.setFloat(key, map.getFloat(key));
            break;
        case kolt::PT_BOOL:
            builder.setBool(key, map.getBool(key));
            break;
        case kolt::PT_INT:
            builder.setInt(key, map.getInt(key));
            break;
        case kolt::PT_STRING_ARRAY: {
            auto const* values = map.getStringArray(key, &n);
            std::vector<std::wstring> list;
            for (size_t k = 0; k < n; ++k)
                list.emplace_back(values[k] == nullptr ? L"" : values[k]);
            builder.setStringArray(key, list);
            break;
        }
        case kolt::PT_FLOAT_ARRAY: {
            auto const* values = map.getFloatArray(key, &n);
            builder.setFloatArray(key, std::vector<double>(values, values + n));
            break;
        }
        case kolt::PT_BOOL_ARRAY: {
            auto const* values = map.getBoolArray(key, &n);
            builder.setBoolArray(key, std::vector<bool>(values, values + n));
            break;
        }
        case kolt::PT_INT_ARRAY: {
            auto const* values = map.getIntArray(key, &n);
            builder.setIntArray(key, std::vector<int32_t>(values, values + n));
            break;
        }
        default:
            break; // blind data belongs to the shape, not to the encoded geometry
        }
    }
}

} // namespace

EncodePreparatorImpl::EncodePreparatorImpl(bool alwaysCopy, NamePreparator& namePreparator,
                                           NamePreparator::NamespacePtr instanceNames,
                                           NamePreparator::NamespacePtr meshNames)
    : alwaysCopy(alwaysCopy), namePreparator(namePreparator),
      instanceNames(std::move(instanceNames)), meshNames(std::move(meshNames)) {}

EncodePreparatorImpl::~EncodePreparatorImpl() = default;

void EncodePreparatorImpl::add(std::shared_ptr<Geometry> const& geometry,
                               Shape::Transform const& transform, ReportsPtr const& reports) {
    bool const identity = isIdentity(transform);
    pending.push_back(Item{geometry, transform, identity, reports});
    auto const& m = transform;
    for (auto const& mesh : geometry->getMeshes()) {
        if (!mesh)
            continue;
        auto const& coords = mesh->getVertexCoords();
        for (size_t v = 0; v + 2 < coords.size(); v += 3) {
            double const x = coords[v], y = coords[v + 1], z = coords[v + 2];
            if (identity) {
                box.add(x, y, z);
                continue;
            }
            double p[3] = {m[0] * x + m[4] * y + m[8] * z + m[12],
                           m[1] * x + m[5] * y + m[9] * z + m[13],
                           m[2] * x + m[6] * y + m[10] * z + m[14]};
            double const w = m[3] * x + m[7] * y + m[11] * z + m[15];
            if (w != 1.0 && w != 0.0)
                for (double& c : p)
                    c /= w;
            box.add(p);
        }
    }
}

void EncodePreparatorImpl::addFallbackShape(kolt::Cache*, InitialShape const* initialShape,
                                            size_t initialShapeIndex) {
    if (initialShape == nullptr)
        throw std::invalid_argument("addFallbackShape: null initial shape");
    pendingName = initialShape->getName();
    pendingHasIndex = true;
    pendingIndex = initialShapeIndex;
    if (!pendingAttributes && initialShape->getAttributeMap() != nullptr) {
        KOLTUtils::AttributeMapBuilderPtr copy(
            kolt::AttributeMapBuilder::createFromAttributeMap(initialShape->getAttributeMap()));
        pendingAttributes = KOLTUtils::share(copy->createAttributeMap());
    }
    if (initialShape->getGeometry())
        add(initialShape->getGeometry(), Shape::identity(), ReportsPtr());
}

void EncodePreparatorImpl::addLeafShape(kolt::Cache*, std::shared_ptr<Shape> const& leaf,
                                        kolt::AttributeMap const* initialShapeAttributes,
                                        ReportsPtr const& reports) {
    if (!leaf)
        throw std::invalid_argument("addLeafShape: null leaf");
    if (!leaf->getGeometry())
        throw std::invalid_argument("addLeafShape: leaf without geometry");
    if (!pendingAttributes && initialShapeAttributes != nullptr) {
        KOLTUtils::AttributeMapBuilderPtr copy(
            kolt::AttributeMapBuilder::createFromAttributeMap(initialShapeAttributes));
        pendingAttributes = KOLTUtils::share(copy->createAttributeMap());
    }
    add(leaf->takeGeometry(), leaf->getTransform(), reports ? reports : leaf->getReports());
}

std::shared_ptr<Mesh> EncodePreparatorImpl::finish(MeshData& data,
                                                   PreparationFlags const& flags) const {
    std::wstring warnings;
    HoleProcessor::Action holes = flags.getProcessHoles();
    if (flags.getTriangulate() && holes == HoleProcessor::PASS)
        holes = HoleProcessor::TRIANGULATE; // triangles cannot keep holes
    if (data.hasHoles() && holes != HoleProcessor::PASS)
        data = MeshData::fromMesh(*HoleProcessor::process(data.toMesh(), holes, &warnings));
    if (flags.getTriangulate())
        FaceTriangulator::triangulate(data, &warnings);
    if (flags.getMergeVertices())
        data.mergeVertices(static_cast<double>(flags.getMergeToleranceVertices()));
    if (flags.getCleanupUVs())
        data.cleanupUVs();
    if (!warnings.empty())
        LogFormatter(kolt::LOG_WARNING, "Encode preparation: %s") % warnings;
    return data.takeMesh();
}

std::shared_ptr<Mesh> EncodePreparatorImpl::prepare(std::shared_ptr<Mesh> mesh,
                                                    Shape::Transform const& transform,
                                                    bool identity,
                                                    PreparationFlags const& flags) const {
    bool const holesChange = mesh->hasHoles() && (flags.getProcessHoles() != HoleProcessor::PASS ||
                                                  flags.getTriangulate());
    bool const needed = alwaysCopy || !identity || holesChange || flags.getTriangulate() ||
                        flags.getMergeVertices() || flags.getCleanupUVs();
    if (!needed)
        return mesh;
    MeshData data = MeshData::take(mesh);
    if (!identity)
        data.transform(transform);
    return finish(data, flags);
}

std::shared_ptr<Geometry>
EncodePreparatorImpl::makeGeometry(std::vector<std::shared_ptr<Mesh>> const& meshes) const {
    GeometryBuilder builder;
    if (pendingAttributes)
        copyAttributes(*pendingAttributes, builder);
    for (auto const& mesh : meshes)
        builder.addMesh(mesh);
    return builder.createSharedAndReset(nullptr);
}

void EncodePreparatorImpl::fetchInstances(std::vector<FinalizedInstance>& instances,
                                          PreparationFlags const& flags, kolt::Status* status) {
    std::vector<Item> items;
    items.swap(pending);
    std::wstring baseName = pendingName.empty() ? std::wstring(L"shape") : pendingName;
    size_t const index = pendingHasIndex ? pendingIndex : fetches;
    box.reset();
    ++fetches;

    std::vector<FinalizedInstance> made;
    try {
        bool const merge = flags.getMeshMerging() == MeshMerging::MERGE;
        auto uniqueInstanceName = [&]() {
            std::wstring name;
            namePreparator.uniqueName(name, baseName, NamePreparator::KIND_SHAPE, instanceNames);
            return name;
        };
        // Merged meshes keep a name they all share; otherwise they get the instance's.
        auto mergedName = [&](std::vector<std::shared_ptr<Mesh>> const& meshes,
                              std::wstring const& instanceName) {
            bool same = !meshes.empty();
            for (auto const& mesh : meshes)
                same = same && mesh->getName() == meshes.front()->getName();
            if (same)
                return meshes.front()->getName();
            std::wstring name;
            namePreparator.uniqueName(name, instanceName, NamePreparator::KIND_MESH, meshNames);
            return name;
        };
        auto meshesOf = [](Item const& item) {
            std::vector<std::shared_ptr<Mesh>> list;
            for (auto const& mesh : item.geometry->getMeshes())
                if (mesh)
                    list.push_back(mesh);
            return list;
        };

        if (flags.getInstancing()) {
            for (Item const& item : items) {
                std::wstring const name = uniqueInstanceName();
                auto const meshes = meshesOf(item);
                std::vector<std::shared_ptr<Mesh>> prepared;
                if (merge && !meshes.empty()) {
                    MeshData data;
                    for (auto const& mesh : meshes)
                        data.append(MeshData::fromMesh(*mesh));
                    data.name = mergedName(meshes, name);
                    prepared.push_back(finish(data, flags));
                } else {
                    for (auto const& mesh : meshes)
                        prepared.push_back(prepare(mesh, Shape::identity(), true, flags));
                }
                made.emplace_back(makeGeometry(prepared), index, name, item.transform,
                                  item.reports);
            }
        } else if (!items.empty()) {
            std::wstring const name = uniqueInstanceName();
            ReportsPtr reports;
            for (Item const& item : items)
                if (!reports && item.reports)
                    reports = item.reports;
            std::vector<std::shared_ptr<Mesh>> prepared;
            if (merge) {
                MeshData data;
                std::vector<std::shared_ptr<Mesh>> all;
                for (Item const& item : items)
                    for (auto const& mesh : meshesOf(item)) {
                        MeshData part = MeshData::fromMesh(*mesh);
                        if (!item.identity)
                            part.transform(item.transform);
                        data.append(part);
                        all.push_back(mesh);
                    }
                if (!all.empty()) {
                    data.name = mergedName(all, name);
                    prepared.push_back(finish(data, flags));
                }
            } else {
                for (Item& item : items) {
                    auto meshes = meshesOf(item);
                    // Where nothing else holds the geometry (a handed-over leaf), each mesh is
                    // freed as soon as its prepared copy exists: one copy less at the peak.
                    item.geometry.reset();
                    for (auto& mesh : meshes) {
                        prepared.push_back(
                            prepare(std::move(mesh), item.transform, item.identity, flags));
                    }
                }
            }
            made.emplace_back(makeGeometry(prepared), index, name, Shape::identity(), reports);
        }
    } catch (std::exception const& e) {
        pendingAttributes.reset();
        pendingName.clear();
        pendingHasIndex = false;
        if (status == nullptr)
            throw;
        *status = kolt::STATUS_UNSPECIFIED_ERROR;
        LogFormatter(kolt::LOG_ERROR, "Encode preparation failed: ", e);
        return;
    }
    pendingAttributes.reset();
    pendingName.clear();
    pendingHasIndex = false;
    for (auto& instance : made)
        instances.push_back(std::move(instance));
    if (status != nullptr)
        *status = kolt::STATUS_OK;
}

void EncodePreparatorImpl::getBoundingBox(BoundingBox& out) const {
    out = box;
}

} // namespace koltx
