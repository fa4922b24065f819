#include "Diagnostics.h"

namespace citygml {

Diagnostics::Diagnostics(std::shared_ptr<CityGMLLogger> logger)
    : m_logger(std::move(logger)),
      m_enabled(m_logger && m_logger->isEnabledFor(CityGMLLogger::LOGLEVEL::LL_WARNING)) {}

void Diagnostics::warn(std::string const& message, int line) const {
    if (m_enabled)
        m_logger->log(CityGMLLogger::LOGLEVEL::LL_WARNING, message, nullptr, line);
}

void Diagnostics::dropped(char const* unit, std::string_view documentId, std::string_view reason,
                          int line) const {
    if (!m_enabled)
        return;
    std::string message = unit;
    if (!documentId.empty())
        message += " '" + printable(documentId) + "'";
    message += " dropped: ";
    message += reason;
    m_logger->log(CityGMLLogger::LOGLEVEL::LL_WARNING, message, nullptr, line);
}

std::string Diagnostics::printable(std::string_view text) {
    constexpr std::size_t Longest = 64;
    std::string out(text.substr(0, Longest));
    for (char& c : out)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = '?';
    if (text.size() > Longest)
        out += "...";
    return out;
}

} // namespace citygml
