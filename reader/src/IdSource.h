#pragma once

#include <string>

namespace citygml {

// Ids for objects the document gives none. A space cannot occur in a gml:id, so these never
// collide with the document's ids. The counter is shared by all loads of the process, because
// callers cache appearances by id across files.
class IdSource {
public:
    static std::string next();
};

} // namespace citygml
