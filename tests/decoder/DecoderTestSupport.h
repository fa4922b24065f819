#pragma once

#include "decoder/CityGMLDecoder.h"

#include <kolt/AttributeMap.h>
#include <kolt/StringUtils.h>
#include <koltx/Geometry.h>
#include <koltx/Material.h>
#include <koltx/Mesh.h>
#include <koltx/Texture.h>
#include <koltx/URI.h>

#include <Describe.h>
#include <TestData.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace decodertest {

struct Decoded {
    std::vector<std::shared_ptr<koltx::Content>> results;
    std::wstring warnings;

    std::shared_ptr<koltx::Geometry> geometry() const {
        return results.empty() ? nullptr
                               : std::dynamic_pointer_cast<koltx::Geometry>(results.front());
    }
    std::vector<std::wstring> meshNames() const {
        std::vector<std::wstring> names;
        if (auto g = geometry())
            for (auto const& m : g->getMeshes())
                names.push_back(m->getName());
        return names;
    }
    koltx::Mesh const& mesh(std::size_t i) const { return *geometry()->getMeshes().at(i); }
};

// Decodes `file` (by default one of tests/data/decoder) under its own path as the key.
inline Decoded decodeFile(CityGMLDecoder& decoder, std::filesystem::path const& file) {
    Decoded out;
    std::ifstream stream(file, std::ios::binary);
    decoder.decode(out.results, stream, nullptr, file.wstring(), nullptr, out.warnings);
    return out;
}

inline std::filesystem::path dataFile(std::string const& name) {
    return testsupport::dataFile("decoder/" + name);
}

inline Decoded decodeData(CityGMLDecoder& decoder, std::string const& name) {
    return decodeFile(decoder, dataFile(name));
}

// Everything a decode gives, as text: results, warnings, attributes, and per mesh its vertices,
// faces (with holes, material and UVs) and materials. Objects shared between meshes carry the
// same #number; paths below the project are written relative to it.
inline std::string summarize(Decoded const& d) {
    std::map<void const*, int> numbers;
    auto const number = [&](void const* p) {
        return "#" + std::to_string(numbers.emplace(p, int(numbers.size()) + 1).first->second);
    };
    auto const text = [](std::wstring const& w) {
        std::string s = kolt::StringUtils::toUTF8(w);
        std::string const root = testsupport::sourceDir().string();
        for (std::size_t at; (at = s.find(root)) != std::string::npos;)
            s.replace(at, root.size(), "<source>");
        return s;
    };
    std::ostringstream out;
    out << std::setprecision(9);
    auto const list = [&](auto const& values) {
        for (auto const& v : values)
            out << " " << v;
    };
    out << "results " << d.results.size() << "\nwarnings:\n" << text(d.warnings);
    auto const g = d.geometry();
    if (!g)
        return out.str();
    out << "uri " << text(g->getURI()->getPath()) << "\n";
    out << testsupport::describeAttributes(*g->getAttributeMap());
    for (auto const& mesh : g->getMeshes()) {
        out << "mesh " << text(mesh->getName()) << "\n  vertices";
        list(mesh->getVertexCoords());
        out << "\n";
        for (std::uint32_t f = 0; f < mesh->getFaceCount(); ++f) {
            auto const* v = mesh->getFaceVertexIndices(f);
            out << "  face " << f << (mesh->isHoleFace(f) ? " hole" : "") << ":";
            list(std::vector<std::uint32_t>(v, v + mesh->getFaceVertexCount(f)));
            auto const* h = mesh->getFaceHoleIndices(f);
            if (mesh->getFaceHoleCount(f) > 0) {
                out << "; holes";
                list(std::vector<std::uint32_t>(h, h + mesh->getFaceHoleCount(f)));
            }
            out << "; material " << mesh->getFaceMaterialIndices().at(f);
            for (std::uint32_t s = 0; s < mesh->getUVSetCount(); ++s) {
                out << "; uv" << s << ":";
                auto const* uv = mesh->getFaceUVIndices(f, s);
                for (std::uint32_t k = 0; k < mesh->getFaceUVCount(f, s); ++k)
                    out << " " << mesh->getUVCoords(s)[2 * uv[k]] << " "
                        << mesh->getUVCoords(s)[2 * uv[k] + 1];
            }
            out << "\n";
        }
        for (auto const& m : mesh->getMaterials()) {
            out << "  material " << number(m.get()) << " " << text(m->getName()) << ": ambient";
            list(m->getAmbientColor());
            out << ", diffuse";
            list(m->getDiffuseColor());
            out << ", emissive";
            list(m->getEmissiveColor());
            out << ", specular";
            list(m->getSpecularColor());
            out << ", shininess " << m->getShininess() << ", opacity " << m->getOpacity() << "\n";
            for (std::size_t i = 0; i < m->getDiffuseMap().size(); ++i) {
                auto const& t = m->getDiffuseMap()[i];
                out << "    texture " << text(m->getDiffuseMapKeys().at(i)) << ": ";
                if (t)
                    out << number(t.get()) << " " << t->getWidth() << "x" << t->getHeight()
                        << (t->isValid() ? "" : " invalid") << "\n";
                else
                    out << "none\n";
            }
        }
    }
    return out.str();
}

} // namespace decodertest
