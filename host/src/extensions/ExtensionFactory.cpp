#include "koltx/ExtensionFactory.h"

namespace koltx {

ExtensionFactory::ExtensionFactory(kolt::ContentType contentType, std::wstring id,
                                   std::wstring name, std::wstring description)
    : contentType(contentType), id(std::move(id)), name(std::move(name)),
      description(std::move(description)) {}

ExtensionFactory::~ExtensionFactory() = default;

} // namespace koltx
