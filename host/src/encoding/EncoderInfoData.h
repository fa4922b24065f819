#pragma once

#include "koltx/EncodeOptionsValidator.h"
#include "koltx/KOLTUtils.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kolt {
class AttributeMap;
}

namespace koltx {

// The fields of an encoder's information while it is built, and inside the finished object.
struct EncoderInfoData {
    struct Annotation {
        std::wstring key;
        std::wstring label;
        std::wstring description;
        std::wstring group;
        bool hasLabel = false;
        bool hasDescription = false;
        bool hasGroup = false;
        bool hasOrder = false;
        double order = 0.0;
        double groupOrder = 0.0;
        bool hidden = false;
        bool hasRange = false;
        double rangeMin = 0.0;
        double rangeMax = 0.0;
    };

    std::wstring id;
    std::wstring name;
    std::wstring description;
    std::wstring extensions;
    int32_t type = 0;
    std::string icon;
    std::shared_ptr<kolt::AttributeMap const> defaultOptions;
    std::shared_ptr<EncodeOptionsValidator> validator;
    std::vector<Annotation> annotations;

    Annotation& annotation(std::wstring const& key) {
        for (auto& entry : annotations)
            if (entry.key == key)
                return entry;
        annotations.emplace_back();
        annotations.back().key = key;
        return annotations.back();
    }
};

} // namespace koltx
