#pragma once

#include "koltx/NamePreparator.h"

#include <string>

namespace koltx {

// File names (KIND_FILE) keep letters, digits, "-", "_" and "."; every other character and every
// leading dot becomes the first separator. Unique file names keep their extension and get the
// second separator and a counter before it: "wall.png", "wall_1.png", ...
// Other kinds only lose control characters; their counter goes at the end.
class DefaultNamePreparator : public NamePreparator {
public:
    DefaultNamePreparator(std::wstring separator1, std::wstring separator2);
    ~DefaultNamePreparator() override;

    NamespacePtr newNamespace() override;
    void legalizeName(std::wstring& name, int32_t kind) const override;
    bool isLegalName(std::wstring const& name, int32_t kind) const override;
    void legalizeAndUniqueName(std::wstring& name, int32_t kind,
                               NamespacePtr const& nameSpace) override;
    void uniqueName(std::wstring& result, std::wstring const& name, int32_t kind,
                    NamespacePtr const& nameSpace) override;

    std::wstring const& getSeparator1() const { return separator1; }
    std::wstring const& getSeparator2() const { return separator2; }

private:
    std::wstring separator1;
    std::wstring separator2;
};

} // namespace koltx
