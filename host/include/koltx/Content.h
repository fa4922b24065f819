#pragma once

#include "kolt/ContentType.h"
#include "koltx/URI.h"

#include <memory>
#include <vector>

namespace koltx {

// Anything that decoders produce and encoders consume: geometries and textures.
class Content {
public:
    Content(Content const&) = delete;
    Content& operator=(Content const&) = delete;
    virtual ~Content();

    virtual kolt::ContentType getContentType() const = 0;
    // Where the content came from; may be null.
    std::shared_ptr<URI> getURI() const { return uri; }

protected:
    explicit Content(std::shared_ptr<URI> uri);

private:
    std::shared_ptr<URI> uri;
};

using ContentPtr = std::shared_ptr<Content>;
using ContentPtrVector = std::vector<ContentPtr>;

} // namespace koltx
