#include "MeshNameRepair.h"

#include <koltx/Mesh.h>
#include <koltx/MeshBuilder.h>

#include "XmlSafe.h"
#include "vocabulary/GmlGeometryTags.h"

#include <cwctype>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>

namespace {

struct Step {
    std::wstring tag;
    std::wstring id;
};

// Components "tag[id]\" or "tag\" as the encoder reads them; the rest after the last
// backslash plays no part.
std::vector<Step> splitPath(std::wstring_view path) {
    std::vector<Step> steps;
    std::size_t start = 0;
    for (;;) {
        auto const end = path.find(L'\\', start);
        if (end == std::wstring_view::npos)
            break;
        if (end == start)
            break; // a doubled backslash: leave such paths alone
        std::wstring_view const text = path.substr(start, end - start);
        auto const bracket = text.find(L'[');
        if (bracket == std::wstring_view::npos)
            steps.push_back({std::wstring(text), L""});
        else
            steps.push_back({std::wstring(text.substr(0, bracket)),
                             std::wstring(text.substr(bracket + 1, text.size() - bracket - 2))});
        start = end + 1;
    }
    return steps;
}

bool isGeometryTag(std::wstring const& tag) {
    return isGmlGeometryTag(tag);
}

// The document tree as far as the placement of meshes goes: ids, tags, where polygons are.
struct Node {
    std::wstring id;
    std::wstring tag;
    std::vector<std::unique_ptr<Node>> children;
    // The first child of each id (the one the encoder finds), once there are many children;
    // the views point into the children's own ids.
    std::unordered_map<std::wstring_view, Node*> byId;
    // Ids given to steps without one that met a sibling of another tag, by tag, so that the
    // later steps of that element find it again.
    std::map<std::wstring, std::wstring> aliases;

    static constexpr std::size_t indexFrom = 16;

    Node* find(std::wstring const& childId) const {
        if (children.size() < indexFrom) {
            for (auto const& child : children)
                if (child->id == childId)
                    return child.get();
            return nullptr;
        }
        auto const found = byId.find(childId);
        return found == byId.end() ? nullptr : found->second;
    }
    Node* add(std::wstring const& childId, std::wstring const& childTag) {
        children.push_back(std::make_unique<Node>());
        Node* child = children.back().get();
        child->id = childId;
        child->tag = childTag;
        if (children.size() == indexFrom) {
            for (auto const& each : children)
                byId.emplace(each->id, each.get());
        } else if (children.size() > indexFrom) {
            byId.emplace(child->id, child);
        }
        return child;
    }
};

std::size_t innermostGeometry(std::vector<Step> const& steps) {
    std::size_t found = steps.size();
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (isGeometryTag(steps[i].tag))
            found = i;
    return found;
}

// A property element (lower-case local name, such as "bldg:boundedBy" or "bldg:lod2Solid")
// holds one object; a second one needs a property element of its own.
bool isProperty(std::wstring const& tag) {
    auto const colon = tag.find(L':');
    std::size_t const local = colon == std::wstring::npos ? 0 : colon + 1;
    return local < tag.size() && std::iswlower(static_cast<wint_t>(tag[local]));
}

std::size_t const noFix = static_cast<std::size_t>(-1);

std::size_t shallowestWithoutId(std::vector<bool> const& idless, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i <= to && i < idless.size(); ++i)
        if (idless[i])
            return i;
    return noFix;
}

// The first step of the run of steps without id that ends at `i`; noFix if step `i` has one.
std::size_t runWithoutId(std::vector<bool> const& idless, std::size_t i) {
    if (!idless[i])
        return noFix;
    while (i > 0 && idless[i - 1])
        --i;
    return i;
}

// Rule "foreign sibling": a step without id reaches a node that an element of another tag made,
// e.g. "bldg:Building[]\bldg:lod1Solid[]\gml:Solid[]\" after
// "gen:GenericCityObject[]\gen:lod1Geometry[]\gml:MultiSurface[]\": the step takes the id its
// element got before, or a new one ("bldg:Building[gmlcodec_1]\..."). Returns the node the
// step reaches now, or null when the rest of the path makes new nodes anyway.
template <typename FreshId>
Node* foreignSibling(Node& node, Step& step, FreshId const& freshId, bool& changed) {
    auto const alias = node.aliases.find(step.tag);
    if (alias == node.aliases.end()) {
        step.id = freshId();
        node.aliases[step.tag] = step.id;
        changed = true;
        return nullptr;
    }
    step.id = alias->second;
    changed = true;
    return node.find(step.id);
}

// Rule "exact repeat": the path's innermost geometry exists already, so it would add no polygon,
// e.g. "bldg:Building[b]\bldg:lod2MultiSurface[]\gml:MultiSurface[]\" twice: the run of steps
// without id that ends at the geometry is split off at its first step
// ("bldg:lod2MultiSurface[gmlcodec_1]"); within a geometry aggregate
// ("gml:Solid[s]\gml:CompositeSurface[]\" twice) the repeated member becomes a member of its
// own; failing both, the shallowest step without id is split off.
std::size_t exactRepeat(std::vector<Step> const& steps, std::vector<bool> const& idless,
                        std::size_t geometry) {
    std::size_t outer = geometry;
    while (outer > 0 && isGeometryTag(steps[outer - 1].tag))
        --outer;
    std::size_t fix = shallowestWithoutId(idless, outer + 1, geometry);
    if (fix == noFix)
        fix = runWithoutId(idless, geometry);
    return fix != noFix ? fix : shallowestWithoutId(idless, 0, geometry);
}

// Rule "second object": a property element holds one object, so a path that would put a second
// one into it, e.g. "bldg:Building[b]\bldg:boundedBy[]\bldg:RoofSurface[r]\..." after
// "bldg:Building[b]\bldg:boundedBy[]\bldg:WallSurface[w]\...", is split off at the first step
// of the run without id that leads to it ("bldg:boundedBy[gmlcodec_1]").
bool secondObject(std::vector<Step> const& steps, std::vector<bool> const& idless,
                  Node const& child, std::size_t i) {
    bool const property =
        isProperty(steps[i].tag) || (i + 1 < steps.size() && steps[i + 1].tag == steps[i].tag);
    if (!property || !idless[i] || i + 1 >= steps.size() || child.children.empty())
        return false;
    Node const* next = child.find(steps[i + 1].id);
    return next == nullptr || next->tag != steps[i + 1].tag;
}

// Rule "safe for XML": ids and tags are written into the document as they stand, so an id is
// escaped like text and a tag made a valid element name, e.g. "bldg:Building[a&b]\" becomes
// "bldg:Building[a&amp;b]\" and "my tag[x]\" becomes "my_tag[x]\". True if a step changed.
bool safeForXml(std::vector<Step>& steps) {
    bool changed = false;
    for (auto& step : steps) {
        std::wstring id = XmlSafe::text(step.id);
        std::wstring tag = XmlSafe::name(step.tag);
        changed = changed || id != step.id || tag != step.tag;
        step.id = std::move(id);
        step.tag = std::move(tag);
    }
    return changed;
}

// Walks `steps` as the encoder would and applies the rules above where the path meets a node
// that another mesh made; true if any step changed.
template <typename FreshId>
bool placePath(Node& root, std::vector<Step>& steps, FreshId const& freshId) {
    std::size_t const geometry = innermostGeometry(steps);
    if (geometry == steps.size())
        return false; // no polygons anyway
    // Whether each step came without an id; ids given here don't change that.
    std::vector<bool> idless;
    for (auto const& step : steps)
        idless.push_back(step.id.empty());
    bool changed = false;
    auto split = [&](std::size_t at) {
        if (at == noFix)
            return changed;
        steps[at].id = freshId();
        return changed = true;
    };
    Node* node = &root;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        Node* child = node->find(steps[i].id);
        if (child != nullptr && child->tag != steps[i].tag && steps[i].id.empty())
            child = foreignSibling(*node, steps[i], freshId, changed);
        if (child == nullptr || child->tag != steps[i].tag)
            return changed;
        if (i == geometry)
            return split(exactRepeat(steps, idless, geometry));
        if (secondObject(steps, idless, *child, i))
            return split(runWithoutId(idless, i));
        node = child;
    }
    return changed;
}

// A geometry that several features share by reference comes once per feature; each copy that
// makes a new element needs an id of its own, as ids are unique in a document. True if any
// step changed.
template <typename FreshId>
bool distinctGeometryIds(Node& root, std::vector<Step>& steps, std::set<std::wstring> const& placed,
                         FreshId const& freshId) {
    Node* node = &root;
    std::size_t i = 0;
    for (; i < steps.size(); ++i) {
        Node* child = node->find(steps[i].id);
        if (child == nullptr)
            break;
        node = child;
    }
    bool changed = false;
    for (; i < steps.size(); ++i) {
        if (!steps[i].id.empty() && isGeometryTag(steps[i].tag) && placed.count(steps[i].id)) {
            steps[i].id += L"_" + freshId();
            changed = true;
        }
    }
    return changed;
}

void insert(Node& root, std::vector<Step> const& steps, std::set<std::wstring>& placed) {
    Node* node = &root;
    for (auto const& step : steps) {
        Node* child = node->find(step.id);
        if (child == nullptr) {
            child = node->add(step.id, step.tag);
            if (!step.id.empty() && isGeometryTag(step.tag))
                placed.insert(step.id);
        }
        node = child;
    }
}

std::wstring join(std::vector<Step> const& steps) {
    std::wstring path;
    for (auto const& step : steps)
        path += step.tag + L"[" + step.id + L"]\\";
    return path;
}

} // namespace

std::size_t MeshNameRepair::repair(std::vector<std::wstring>& names) {
    std::set<std::wstring> usedIds;
    std::vector<std::vector<Step>> paths;
    paths.reserve(names.size());
    for (auto const& name : names) {
        paths.push_back(splitPath(name));
        // Only ids of the form this repair makes can collide with the ones it makes.
        for (auto const& step : paths.back())
            if (step.id.rfind(L"gmlcodec_", 0) == 0)
                usedIds.insert(step.id);
    }
    std::size_t counter = 0;
    auto freshId = [&] {
        std::wstring id;
        do
            id = L"gmlcodec_" + std::to_wstring(++counter);
        while (usedIds.count(id) != 0);
        usedIds.insert(id);
        return id;
    };

    Node root;
    std::set<std::wstring> placedGeometries;
    std::size_t changed = 0;
    for (std::size_t m = 0; m < names.size(); ++m) {
        auto& steps = paths[m];
        if (steps.empty())
            continue; // not a mesh path: the encoder gives it a default one
        bool renamedHere = safeForXml(steps);
        // Rule "no geometry": a path without a geometry step would give no polygons, so an
        // unterminated one is closed ("bldg:Building[b]\\gml:Solid" becomes
        // "bldg:Building[b]\\gml:Solid[]\\") or a surface is added for the faces.
        if (innermostGeometry(steps) == steps.size()) {
            std::wstring const& name = names[m];
            std::wstring const rest = name.substr(name.rfind(L'\\') + 1);
            steps.push_back({isGeometryTag(rest) ? rest : L"gml:MultiSurface", L""});
            renamedHere = true;
        }
        if (placePath(root, steps, freshId))
            renamedHere = true;
        if (distinctGeometryIds(root, steps, placedGeometries, freshId))
            renamedHere = true;
        if (renamedHere) {
            names[m] = join(steps);
            ++changed;
        }
        insert(root, steps, placedGeometries);
    }
    return changed;
}

std::shared_ptr<koltx::Mesh> MeshNameRepair::renamed(koltx::Mesh const& mesh,
                                                     std::wstring const& name) {
    koltx::MeshBuilder builder;
    builder.setName(name);
    auto const& coords = mesh.getVertexCoords();
    builder.reserve(mesh.getVertexCount(), mesh.getFaceCount(), mesh.getVertexIndices().size());
    for (std::size_t v = 0; v + 2 < coords.size(); v += 3)
        builder.addVertexCoords(&coords[v]);
    for (auto const& material : mesh.getMaterials())
        builder.addMaterial(material);
    for (std::uint32_t set = 0; set < mesh.getUVSetCount(); ++set) {
        auto const& uvs = mesh.getUVCoords(set);
        for (std::size_t t = 0; t + 1 < uvs.size(); t += 2)
            builder.addUVCoords(set, &uvs[t]);
    }
    auto const& materials = mesh.getFaceMaterialIndices();
    for (std::uint32_t f = 0; f < mesh.getFaceCount(); ++f) {
        std::uint32_t const face = builder.addFace();
        std::uint32_t const* indices = mesh.getFaceVertexIndices(f);
        for (std::uint32_t k = 0; k < mesh.getFaceVertexCount(f); ++k)
            builder.addFaceVertexIndex(face, indices[k]);
        for (std::uint32_t set = 0; set < mesh.getUVSetCount(); ++set) {
            std::uint32_t const* uv = mesh.getFaceUVIndices(f, set);
            for (std::uint32_t k = 0; k < mesh.getFaceUVCount(f, set); ++k)
                builder.addFaceUVIndex(face, set, uv[k]);
        }
        std::uint32_t const* holes = mesh.getFaceHoleIndices(f);
        for (std::uint32_t k = 0; k < mesh.getFaceHoleCount(f); ++k)
            builder.addFaceHoleIndex(face, holes[k]);
        if (f < materials.size())
            builder.setFaceMaterialIndex(face, materials[f]);
    }
    return builder.createSharedAndReset(nullptr);
}
