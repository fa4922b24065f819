#pragma once

#include "gml/AppearanceMemberNode.h"
#include "gml/CityElementNode.h"

#include <koltx/NamePreparator.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace kolt {
class SimpleOutputCallbacks;
}

namespace koltx {
class DefaultNamePreparator;
class EncodePreparator;
} // namespace koltx

// What an encoder gathers from init to finish: the top-level nodes of each shape, the
// appearance members, the namespace prefixes that occurred and the CityGML version.
class CityModelDocument {
public:
    using NodeGroup = std::vector<std::shared_ptr<gml::CityElementNode>>;

    CityModelDocument(std::int32_t levelOfDetail,
                      std::shared_ptr<koltx::EncodePreparator>& preparator,
                      koltx::DefaultNamePreparator& namePreparator,
                      koltx::NamePreparator::NamespacePtr textureNamespace,
                      kolt::SimpleOutputCallbacks* callbacks);

    // The version that the document is written in; without a vote it is 3.
    std::int32_t effectiveVersion() const { return version.value_or(3); }

    std::vector<NodeGroup> memberGroups;
    std::vector<std::shared_ptr<gml::AppearanceMemberNode>> appearanceMembers;
    std::int32_t levelOfDetail;
    std::set<std::wstring> usedPrefixes;
    std::optional<std::int32_t> version;
    std::shared_ptr<koltx::EncodePreparator>& preparator;
    koltx::DefaultNamePreparator& namePreparator;
    koltx::NamePreparator::NamespacePtr textureNamespace;
    kolt::SimpleOutputCallbacks* callbacks;
};

// Writes the whole document: declaration, root element, one city object member per top-level
// node, the appearance and the end of the root. Children are sorted in place on the way.
void writeCityModel(CityModelDocument const& document, std::ostream& stream,
                    std::int32_t coordinatePrecision);
