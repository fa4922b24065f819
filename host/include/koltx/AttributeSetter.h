#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace koltx {

// The attribute interface of objects that collect named values.
class AttributeSetter {
public:
    virtual ~AttributeSetter();
    virtual void setBool(std::wstring const& key, bool value) = 0;
    virtual void setInt(std::wstring const& key, int32_t value) = 0;
    virtual void setFloat(std::wstring const& key, double value) = 0;
    virtual void setString(std::wstring const& key, std::wstring const& value) = 0;
    virtual void setBoolArray(std::wstring const& key, std::vector<bool> const& values) = 0;
    virtual void setIntArray(std::wstring const& key, std::vector<int32_t> const& values) = 0;
    virtual void setFloatArray(std::wstring const& key, std::vector<double> const& values) = 0;
    virtual void setStringArray(std::wstring const& key,
                                std::vector<std::wstring> const& values) = 0;
};

} // namespace koltx
