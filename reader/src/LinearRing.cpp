#include <citygml/LinearRing.h>

namespace citygml {

LinearRing::LinearRing(std::string id, bool exterior)
    : Object(std::move(id)), m_exterior(exterior) {}

} // namespace citygml
