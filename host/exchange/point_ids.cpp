#include "host/exchange/point_ids.h"

#include <charconv>

namespace qsvtin {

bool PointIds::Add(std::string_view id, int point)
{
    // The array stays in proportion to the points, whatever the numbers are. A name once refused a place in it
    // is looked for among the names too.
    constexpr std::size_t kSpare = 1000, kRoomPerPoint = 8;
    if (Find(id) >= 0) return false;
    ++m_count;
    const auto number = NumberOf(id);
    if (!number || *number >= kSpare + kRoomPerPoint * m_count) {
        m_byName.emplace(id, point);
        return true;
    }
    if (m_byNumber.size() <= *number) m_byNumber.resize(*number + *number / 2 + 1, -1);
    m_byNumber[*number] = point;
    return true;
}

int PointIds::Find(std::string_view id) const
{
    const auto number = NumberOf(id);
    if (number && *number < m_byNumber.size() && m_byNumber[*number] >= 0) return m_byNumber[*number];
    if (m_byName.empty()) return -1;
    const auto found = m_byName.find(std::string(id));
    return found == m_byName.end() ? -1 : found->second;
}

// Only a number written in the usual way, so that 7 and 007 stay two names.
std::optional<std::size_t> PointIds::NumberOf(std::string_view id) const
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), number);
    if (error != std::errc() || end != id.data() + id.size()) return std::nullopt;
    if (id.size() > 1 && id.front() == '0') return std::nullopt;
    return number;
}

}   // namespace qsvtin
