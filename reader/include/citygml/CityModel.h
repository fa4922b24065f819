#pragma once

#include <citygml/CityObject.h>
#include <citygml/FeatureObject.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace citygml {

namespace detail {
class Access; // the reader, which fills these fields while it reads a document
}

class ObjectArena;
class PathIndex;

// The whole document: root city objects in document order plus the model's own envelope. The
// model owns every object, geometry, polygon and ring read from the document.
class CityModel : private OwnedId, public FeatureObject {
public:
    CityModel();
    ~CityModel() override;

    std::vector<CityObject const*> getRootCityObjects() const;
    unsigned int getNumRootCityObjects() const { return static_cast<unsigned int>(m_roots.size()); }
    CityObject const& getRootCityObject(unsigned int i) const { return *m_roots.at(i); }

    // Every appearance theme of the document, sorted.
    std::vector<std::string> const& themes() const { return m_themes; }
    // Namespace URI of the CityGML core module the document uses; tells the version.
    std::string const& getCityGMLNamespace() const { return m_coreNamespace; }
    // 1, 2 or 3; 0 when no CityGML namespace was seen.
    int getCityGMLVersion() const { return m_version; }

private:
    friend class detail::Access;
    // Declared first, so that it goes last: everything below may point into it.
    std::shared_ptr<ObjectArena> m_arena;
    std::unique_ptr<PathIndex> m_index;
    std::vector<CityObject*> m_roots;
    std::vector<std::string> m_themes;
    std::string m_coreNamespace;
    int m_version = 0;
    // Tags of application-domain features, which the shared tag table does not hold.
    std::deque<std::string> m_extraTags;
};

} // namespace citygml
