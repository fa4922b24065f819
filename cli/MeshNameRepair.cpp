#include "MeshNameRepair.h"

#include "XmlSafe.h"
#include "vocabulary/GmlGeometryTags.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cwctype>
#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace {

std::uint32_t hashOfId(std::wstring_view id) {
    std::size_t const full = std::hash<std::wstring_view>()(id);
    return static_cast<std::uint32_t>(full ^ (full >> 32));
}

// A step of a path; the views point into the given names or into the repair's own strings,
// both of which outlive the repair. The id's hash is kept, as a path is looked up several times.
struct Step {
    Step(std::wstring_view tag, std::wstring_view id, bool geometry = false)
        : tag(tag), id(id), idHash(hashOfId(id)), geometry(geometry) {}

    void setId(std::wstring_view newId) {
        id = newId;
        idHash = hashOfId(newId);
    }

    std::wstring_view tag;
    std::wstring_view id;
    std::uint32_t idHash;
    bool geometry;
};

using Steps = std::vector<Step>;

// Component `text` ("tag[id]" or "tag") of a path as the encoder reads it.
Step stepOf(std::wstring_view text) {
    auto const bracket = text.find(L'[');
    if (bracket == std::wstring_view::npos)
        return Step(text, std::wstring_view());
    return Step(text.substr(0, bracket), text.substr(bracket + 1, text.size() - bracket - 2));
}

// Calls `each(step, end)` for the components "tag[id]\" or "tag\" of `path` from `start` on,
// as the encoder reads them, `end` being just past the component's backslash; the rest after
// the last backslash plays no part.
template <typename Each> void forEachStep(std::wstring_view path, std::size_t start, Each each) {
    for (;;) {
        auto const end = path.find(L'\\', start);
        if (end == std::wstring_view::npos || end == start)
            break; // a doubled backslash: leave such paths alone
        each(stepOf(path.substr(start, end - start)), end + 1);
        start = end + 1;
    }
}

bool isGeometryTag(std::wstring_view tag) {
    return isGmlGeometryTag(tag);
}

std::uint32_t const noNode = static_cast<std::uint32_t>(-1);

// The document tree as far as the placement of meshes goes: ids, tags, where polygons are.
// Nodes live in one array and are found by (parent, id) in one open-addressing table, so that
// a tree of hundreds of thousands of nodes costs a few large blocks, not a heap block per node.
class Tree {
public:
    // Room for about `expected` nodes without growing.
    explicit Tree(std::size_t expected = 0)
        : slots(std::max<std::size_t>(1024, roomFor(expected))) {
        nodes.reserve(expected + 1);
        nodes.push_back({});
    }

    static constexpr std::uint32_t root = 0;

    std::wstring_view tag(std::uint32_t node) const { return nodes[node].tag; }
    bool hasChildren(std::uint32_t node) const { return nodes[node].children > 0; }

    // The first child of `parent` with exactly the step's id (the one the encoder finds).
    std::uint32_t find(std::uint32_t parent, Step const& step) const {
        return slots[slotOf(parent, step.id, hashOf(parent, step.idHash))].value;
    }
    std::uint32_t add(std::uint32_t parent, Step const& step) {
        auto const node = static_cast<std::uint32_t>(nodes.size());
        nodes.push_back({step.tag, 0});
        ++nodes[parent].children;
        claim(parent, step, node);
        return node;
    }
    // Ids of geometries that have an element already, kept in the same table under a parent
    // that no node has.
    bool placed(Step const& step) const { return find(placedMark, step) != noNode; }
    void place(Step const& step) { claim(placedMark, step, 0); }

private:
    struct Node {
        std::wstring_view tag;
        std::uint32_t children = 0;
    };
    // A slot keeps its key's hash, so that a probe compares ids only when the hashes match and
    // a growing table hashes nothing again; it takes 24 bytes, as the table is large.
    struct Slot {
        std::uint32_t parent = noNode;
        std::uint32_t value = noNode;
        wchar_t const* idData = nullptr;
        std::uint32_t idSize = 0;
        std::uint32_t hash = 0;

        std::wstring_view id() const { return std::wstring_view(idData, idSize); }
    };
    static constexpr std::uint32_t placedMark = noNode - 1;

    static std::size_t roomFor(std::size_t entries) {
        std::size_t size = 1;
        while (size < 2 * entries)
            size *= 2;
        return size;
    }
    static std::uint32_t hashOf(std::uint32_t parent, std::uint32_t idHash) {
        std::uint64_t const mixed = (idHash ^ parent) * std::uint64_t(0x9E3779B97F4A7C15ull);
        return static_cast<std::uint32_t>(mixed >> 32);
    }
    // The slot that holds (parent, id), or the empty one where it would go.
    std::size_t slotOf(std::uint32_t parent, std::wstring_view id, std::uint32_t hash) const {
        std::size_t const mask = slots.size() - 1;
        for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
            Slot const& slot = slots[i];
            if (slot.value == noNode ||
                (slot.hash == hash && slot.parent == parent && slot.id() == id))
                return i;
        }
    }
    // Keeps the first value of a key.
    void claim(std::uint32_t parent, Step const& step, std::uint32_t value) {
        if (2 * (used + 1) > slots.size())
            grow();
        std::uint32_t const hash = hashOf(parent, step.idHash);
        Slot& slot = slots[slotOf(parent, step.id, hash)];
        if (slot.value != noNode)
            return;
        slot = {parent, value, step.id.data(), static_cast<std::uint32_t>(step.id.size()), hash};
        ++used;
    }
    void grow() {
        std::vector<Slot> old(slots.size() * 2);
        old.swap(slots);
        std::size_t const mask = slots.size() - 1;
        for (Slot const& slot : old) {
            if (slot.value == noNode)
                continue;
            std::size_t i = slot.hash & mask;
            while (slots[i].value != noNode)
                i = (i + 1) & mask;
            slots[i] = slot;
        }
    }

    std::vector<Node> nodes;
    std::vector<Slot> slots;
    std::size_t used = 0;
};

struct ViewPairHash {
    std::size_t operator()(std::pair<std::uint32_t, std::wstring_view> const& key) const {
        return std::hash<std::wstring_view>()(key.second) ^ key.first;
    }
};

// What one repair run keeps between paths.
struct Repair {
    Tree tree;
    // Ids given to steps without one that met a sibling of another tag, by parent and tag, so
    // that the later steps of that element find it again.
    std::unordered_map<std::pair<std::uint32_t, std::wstring_view>, std::wstring_view, ViewPairHash>
        aliases;
    // Ids of the form this repair makes that the names hold already.
    std::unordered_set<std::wstring> usedIds;
    std::size_t counter = 0;
    std::vector<char> idless;

    // Copies `text` into blocks that stay in place while views point into them.
    std::wstring_view keep(std::wstring_view text) {
        if (text.size() > left) {
            left = std::max<std::size_t>(text.size(), 1 << 16);
            blocks.emplace_back(new wchar_t[left]);
            next = blocks.back().get();
        }
        std::copy(text.begin(), text.end(), next);
        std::wstring_view const kept(next, text.size());
        next += text.size();
        left -= text.size();
        return kept;
    }
    std::wstring_view freshId() {
        wchar_t id[32] = L"gmlcodec_";
        std::size_t const prefix = 9;
        std::size_t size;
        do {
            char digits[24];
            auto const end = std::to_chars(digits, digits + sizeof digits, ++counter).ptr;
            size = static_cast<std::size_t>(std::copy(digits, end, id + prefix) - id);
        } while (!usedIds.empty() && usedIds.count(std::wstring(id, size)) != 0);
        return keep(std::wstring_view(id, size));
    }

private:
    std::vector<std::unique_ptr<wchar_t[]>> blocks;
    wchar_t* next = nullptr;
    std::size_t left = 0;
};

std::size_t innermostGeometry(Steps const& steps) {
    std::size_t found = steps.size();
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (steps[i].geometry)
            found = i;
    return found;
}

// A property element (lower-case local name, such as "bldg:boundedBy" or "bldg:lod2Solid")
// holds one object; a second one needs a property element of its own.
bool isProperty(std::wstring_view tag) {
    auto const colon = tag.find(L':');
    std::size_t const local = colon == std::wstring_view::npos ? 0 : colon + 1;
    return local < tag.size() && std::iswlower(static_cast<wint_t>(tag[local]));
}

std::size_t const noFix = static_cast<std::size_t>(-1);

std::size_t shallowestWithoutId(std::vector<char> const& idless, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i <= to && i < idless.size(); ++i)
        if (idless[i])
            return i;
    return noFix;
}

// The first step of the run of steps without id that ends at `i`; noFix if step `i` has one.
std::size_t runWithoutId(std::vector<char> const& idless, std::size_t i) {
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
// step reaches now, or noNode when the rest of the path makes new nodes anyway.
std::uint32_t foreignSibling(Repair& repair, std::uint32_t node, Step& step, bool& changed) {
    changed = true;
    auto const [alias, added] = repair.aliases.try_emplace({node, step.tag});
    if (added) {
        alias->second = repair.freshId();
        step.setId(alias->second);
        return noNode;
    }
    step.setId(alias->second);
    return repair.tree.find(node, step);
}

// Rule "exact repeat": the path's innermost geometry exists already, so it would add no polygon,
// e.g. "bldg:Building[b]\bldg:lod2MultiSurface[]\gml:MultiSurface[]\" twice: the run of steps
// without id that ends at the geometry is split off at its first step
// ("bldg:lod2MultiSurface[gmlcodec_1]"); within a geometry aggregate
// ("gml:Solid[s]\gml:CompositeSurface[]\" twice) the repeated member becomes a member of its
// own; failing both, the shallowest step without id is split off.
std::size_t exactRepeat(Steps const& steps, std::vector<char> const& idless, std::size_t geometry) {
    std::size_t outer = geometry;
    while (outer > 0 && steps[outer - 1].geometry)
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
bool secondObject(Tree const& tree, Steps const& steps, std::vector<char> const& idless,
                  std::uint32_t child, std::size_t i) {
    bool const property =
        isProperty(steps[i].tag) || (i + 1 < steps.size() && steps[i + 1].tag == steps[i].tag);
    if (!property || !idless[i] || i + 1 >= steps.size() || !tree.hasChildren(child))
        return false;
    std::uint32_t const next = tree.find(child, steps[i + 1]);
    return next == noNode || tree.tag(next) != steps[i + 1].tag;
}

// Reads each name into its steps. Rule "safe for XML": ids and tags are written into the
// document as they stand, so an id is escaped like text and a tag made a valid element name,
// e.g. "bldg:Building[a&b]\" becomes "bldg:Building[a&amp;b]\" and "my tag[x]\" becomes
// "my_tag[x]\" in the new name. A feature's meshes come one after another and share their
// leading steps: the steps a name shares with the one before are taken as they were read then,
// and each of the few tags is checked once.
class StepReader {
public:
    // True if a step changed.
    bool read(Repair& repair, std::wstring_view name, Steps& steps) {
        steps.clear();
        std::size_t start = 0;
        std::size_t kept = 0;
        for (; kept < clean.size(); ++kept) {
            std::size_t const end = clean[kept].end;
            if (end > name.size() ||
                name.substr(start, end - start) != previous.substr(start, end - start))
                break;
            // A renamed path's steps must view its own name, which outlives the one before.
            Step& step = clean[kept].step;
            step.tag = moved(step.tag, name);
            step.id = moved(step.id, name);
            steps.push_back(step);
            start = end;
        }
        clean.erase(clean.begin() + static_cast<std::ptrdiff_t>(kept), clean.end());
        previous = name;
        bool changed = false;
        forEachStep(name, start, [&](Step step, std::size_t end) {
            bool safe = true;
            if (!XmlSafe::isText(step.id)) {
                step.setId(repair.keep(XmlSafe::text(step.id)));
                safe = false;
            }
            Tag const& tag = lookUp(step.tag);
            if (tag.name) {
                step.geometry = tag.geometry;
            } else {
                step.tag = repair.keep(XmlSafe::name(step.tag));
                step.geometry = isGeometryTag(step.tag);
                safe = false;
            }
            steps.push_back(step);
            changed |= !safe;
            // Only an unbroken run of unchanged steps from the start can be taken again.
            if (safe && clean.size() + 1 == steps.size())
                clean.push_back({step, end});
        });
        return changed;
    }

private:
    struct Clean {
        Step step;
        std::size_t end; // just past the step's backslash
    };
    struct Tag {
        std::wstring_view text;
        bool name = false;
        bool geometry = false;
    };

    // The same part of `name` as `text` is of the previous name.
    std::wstring_view moved(std::wstring_view text, std::wstring_view name) const {
        if (text.data() == nullptr)
            return text;
        return name.substr(static_cast<std::size_t>(text.data() - previous.data()), text.size());
    }
    Tag const& lookUp(std::wstring_view text) {
        std::size_t const size = text.size();
        std::size_t const slot = size == 0
                                     ? 0
                                     : (size * 31 + static_cast<std::size_t>(text[size - 1]) * 7 +
                                        static_cast<std::size_t>(text[size / 2])) %
                                           tags.size();
        Tag& tag = tags[slot];
        if (tag.text.data() == nullptr || tag.text != text)
            tag = {text, XmlSafe::isName(text), isGeometryTag(text)};
        return tag;
    }

    std::wstring_view previous;
    std::vector<Clean> clean; // the previous name's leading steps that needed no change
    std::array<Tag, 64> tags{};
};

// Walks `steps` as the encoder would and applies the rules above where the path meets a node
// that another mesh made; true if any step changed.
bool placePath(Repair& repair, Steps& steps) {
    std::size_t const geometry = innermostGeometry(steps);
    if (geometry == steps.size())
        return false; // no polygons anyway
    // Whether each step came without an id; ids given here don't change that.
    auto& idless = repair.idless;
    idless.clear();
    for (auto const& step : steps)
        idless.push_back(step.id.empty());
    bool changed = false;
    auto split = [&](std::size_t at) {
        if (at == noFix)
            return changed;
        steps[at].setId(repair.freshId());
        return changed = true;
    };
    Tree const& tree = repair.tree;
    std::uint32_t node = Tree::root;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::uint32_t child = tree.find(node, steps[i]);
        if (child != noNode && tree.tag(child) != steps[i].tag && steps[i].id.empty())
            child = foreignSibling(repair, node, steps[i], changed);
        if (child == noNode || tree.tag(child) != steps[i].tag)
            return changed;
        if (i == geometry)
            return split(exactRepeat(steps, idless, geometry));
        if (secondObject(tree, steps, idless, child, i))
            return split(runWithoutId(idless, i));
        node = child;
    }
    return changed;
}

// Where a path leaves the tree: the last node it reaches and the first step that is not there.
struct Reach {
    std::uint32_t node = Tree::root;
    std::size_t step = 0;
};

Reach reach(Tree const& tree, Steps const& steps) {
    Reach at;
    for (; at.step < steps.size(); ++at.step) {
        std::uint32_t const child = tree.find(at.node, steps[at.step]);
        if (child == noNode)
            break;
        at.node = child;
    }
    return at;
}

// A geometry that several features share by reference comes once per feature; each copy that
// makes a new element needs an id of its own, as ids are unique in a document. Only steps from
// `from` on make new elements. True if any step changed.
bool distinctGeometryIds(Repair& repair, Steps& steps, Reach const& from) {
    bool changed = false;
    for (std::size_t i = from.step; i < steps.size(); ++i) {
        if (!steps[i].id.empty() && steps[i].geometry && repair.tree.placed(steps[i])) {
            std::wstring id(steps[i].id);
            steps[i].setId(repair.keep(id + L"_" + std::wstring(repair.freshId())));
            changed = true;
        }
    }
    return changed;
}

// Adds the path's steps from `from` on; the steps before it are in the tree already. Below a
// node added here there is nothing to find.
void insert(Tree& tree, Steps const& steps, Reach const& from) {
    std::uint32_t node = from.node;
    bool added = false;
    for (std::size_t i = from.step; i < steps.size(); ++i) {
        Step const& step = steps[i];
        std::uint32_t child = added ? noNode : tree.find(node, step);
        if (child == noNode) {
            child = tree.add(node, step);
            added = true;
            if (!step.id.empty() && step.geometry)
                tree.place(step);
        }
        node = child;
    }
}

std::wstring join(Steps const& steps) {
    std::size_t size = 0;
    for (auto const& step : steps)
        size += step.tag.size() + step.id.size() + 3;
    std::wstring path;
    path.reserve(size);
    for (auto const& step : steps) {
        path += step.tag;
        path += L'[';
        path += step.id;
        path += L"]\\";
    }
    return path;
}

} // namespace

std::size_t MeshNameRepair::repair(std::vector<std::wstring>& names) {
    return repair(std::vector<std::wstring_view>(names.begin(), names.end()),
                  [&names](std::size_t m, std::wstring&& name) { names[m] = std::move(name); });
}

std::size_t MeshNameRepair::repair(std::vector<std::wstring_view> const& names,
                                   std::function<void(std::size_t, std::wstring&&)> const& rename) {
    Repair repair;
    Steps steps;
    // Only ids of the form this repair makes can collide with the ones it makes.
    for (auto const& name : names) {
        if (name.find(L"[gmlcodec_") == std::wstring::npos)
            continue;
        forEachStep(name, 0, [&repair](Step const& step, std::size_t) {
            if (step.id.substr(0, 9) == L"gmlcodec_")
                repair.usedIds.emplace(step.id);
        });
    }

    // The names stay as given until the end: the tree holds views of them. A renamed path is
    // kept as its steps, which view only its own name and the repair's strings.
    std::vector<std::pair<std::size_t, std::size_t>> renamed; // name, end of its steps
    Steps kept;
    StepReader reader;
    // A decoded city's names add about five nodes each and most of them are renamed; growing
    // would move everything several times.
    repair.tree = Tree(5 * names.size());
    renamed.reserve(names.size());
    kept.reserve(6 * names.size());
    for (std::size_t m = 0; m < names.size(); ++m) {
        std::wstring_view const name = names[m];
        bool renamedHere = reader.read(repair, name, steps);
        if (steps.empty())
            continue; // not a mesh path: the encoder gives it a default one
        // Rule "no geometry": a path without a geometry step would give no polygons, so an
        // unterminated one is closed ("bldg:Building[b]\\gml:Solid" becomes
        // "bldg:Building[b]\\gml:Solid[]\\") or a surface is added for the faces.
        if (innermostGeometry(steps) == steps.size()) {
            std::wstring_view const rest = name.substr(name.rfind(L'\\') + 1);
            steps.emplace_back(isGeometryTag(rest) ? rest : L"gml:MultiSurface", L"", true);
            renamedHere = true;
        }
        if (placePath(repair, steps))
            renamedHere = true;
        Reach const from = reach(repair.tree, steps);
        if (distinctGeometryIds(repair, steps, from))
            renamedHere = true;
        insert(repair.tree, steps, from);
        if (renamedHere) {
            kept.insert(kept.end(), steps.begin(), steps.end());
            renamed.emplace_back(m, kept.size());
        }
    }
    repair.tree = Tree();
    std::size_t begin = 0;
    for (auto const& [m, end] : renamed) {
        steps.assign(kept.begin() + begin, kept.begin() + end);
        rename(m, join(steps));
        begin = end;
    }
    return renamed.size();
}
