#pragma once

#include "kolt/ContentType.h"
#include "koltx/Extension.h"

#include <string>

namespace koltx {

// Describes an extension and makes instances of it.
class ExtensionFactory {
public:
    ExtensionFactory(ExtensionFactory const&) = delete;
    ExtensionFactory& operator=(ExtensionFactory const&) = delete;
    virtual ~ExtensionFactory();

    // A new extension, owned by the caller.
    virtual Extension* create() const = 0;
    virtual std::wstring const& getID() const { return id; }
    virtual std::wstring const& getName() const { return name; }
    virtual std::wstring const& getDescription() const { return description; }
    virtual kolt::ContentType getContentType() const { return contentType; }
    virtual Extension::ExtensionType getExtensionType() const = 0;
    // Preference among factories that can handle the same thing; higher wins. 0 unless set.
    virtual float getMerit() const { return merit; }
    // True if the extension can handle the file named by the path or URI.
    virtual bool canHandleURI(std::wstring const& uri) const = 0;

protected:
    ExtensionFactory(kolt::ContentType contentType, std::wstring id, std::wstring name,
                     std::wstring description);
    void setMerit(float value) { merit = value; }

private:
    kolt::ContentType contentType;
    std::wstring id;
    std::wstring name;
    std::wstring description;
    float merit = 0.0f;
};

} // namespace koltx
