#pragma once

#include "../Diagnostics.h"
#include "../ObjectArena.h"

#include <citygml/FeatureObject.h>

#include <string_view>

namespace citygml {

// Reads the gml:Envelope of a feature's or the model's gml:boundedBy.
class EnvelopeCollector {
public:
    EnvelopeCollector(ObjectArena& store, Diagnostics const& diagnostics)
        : m_store(store), m_diagnostics(diagnostics) {}

    bool active() const { return m_owner != nullptr; }
    // A gml:boundedBy starts; a null owner keeps the current one.
    void start(FeatureObject* owner);
    void end() { m_owner = nullptr; }

    void srsName(std::string_view srs);
    void lowerCorner(std::string_view text) { corner(Corner::Lower, text); }
    void upperCorner(std::string_view text) { corner(Corner::Upper, text); }
    // The first gml:pos is the lower corner, the next the upper one.
    void pos(std::string_view text) {
        corner(m_positions++ == 0 ? Corner::Lower : Corner::Upper, text);
    }
    // Both corners in one gml:coordinates.
    void coordinates(std::string_view text);
    // Read for the warnings only: a gml:posList never makes two corners of 2 or 3 values.
    void posList(std::string_view text) { corner(Corner::None, text); }

private:
    enum class Corner { Lower, Upper, None };
    void corner(Corner which, std::string_view text);
    void set(Corner which, double const* values, int dimension);

    ObjectArena& m_store;
    Diagnostics const& m_diagnostics;
    FeatureObject* m_owner = nullptr;
    int m_positions = 0;
};

} // namespace citygml
