#pragma once

#include "../AttributeList.h"
#include "../Diagnostics.h"
#include "../ElementTable.h"
#include "../IdTable.h"
#include "../ObjectArena.h"

#include <citygml/CityModel.h>
#include <citygml/Material.h>
#include <citygml/MaterialTargetDefinition.h>
#include <citygml/Texture.h>
#include <citygml/TextureTargetDefinition.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace citygml {

// Reads appearances: materials, textures, their targets and texture coordinates. Targets name
// polygons and geometries by id, so they are applied in resolve(), once the document is read.
class AppearanceCollector {
public:
    // What one open element of an appearance remembers until its end.
    struct Slot {
        bool ownsPending = false;
        std::string_view href; // in the model's storage
    };

    AppearanceCollector(ObjectArena& store, Diagnostics const& diagnostics);
    ~AppearanceCollector();

    static bool handles(ElementSym sym) {
        return sym >= ElementSym::Appearance && sym <= ElementSym::IsSmooth;
    }
    // Gives true when the element's text is wanted at its end.
    bool start(ElementInfo const& info, std::string_view documentId, AttributeList attributes,
               Slot& slot);
    // `hasText` when start() asked for the text and the element held no child element.
    void end(ElementInfo const& info, bool hasText, std::string_view text, Slot const& slot);

    // Whether any material or texture names a target.
    bool hasTargets() const;
    void resolve(IdTable<Polygon> const& polygons, IdTable<Geometry> const& geometries,
                 CityModel& model);

private:
    struct SurfaceData;
    struct PendingTarget;
    struct ThemeLink;

    std::string_view newId();
    void endProperty(ElementSym sym, std::string const& localName, std::string_view text);
    void endTarget(Slot const& slot, std::string_view text);
    void endTextureCoordinates(Slot const& slot, std::string_view text);
    void flushPendingTarget();
    void assign(AppearanceTarget& target, std::string_view theme, bool front,
                TextureTargetDefinition* texture, MaterialTargetDefinition* material);
    void assignToGeometry(Geometry& g, std::string_view theme, bool front,
                          TextureTargetDefinition* texture, MaterialTargetDefinition* material);

    ObjectArena& m_store;
    Diagnostics const& m_diagnostics;
    std::vector<SurfaceData> m_surfaceData;
    std::unordered_map<std::string, std::size_t> m_surfaceDataById;
    std::vector<std::size_t> m_appearanceData;
    std::vector<std::string_view> m_appearanceRefs;
    std::string m_theme;
    bool m_inAppearance = false;
    long m_currentData = -1;
    std::unique_ptr<PendingTarget> m_pending;
    std::vector<ThemeLink> m_themeLinks;
    std::vector<double> m_numbers;
};

} // namespace citygml
