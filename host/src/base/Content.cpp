#include "koltx/Content.h"

namespace koltx {

Content::Content(std::shared_ptr<URI> uri) : uri(std::move(uri)) {}

Content::~Content() = default;

} // namespace koltx
