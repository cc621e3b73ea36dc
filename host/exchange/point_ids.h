#ifndef QSVTIN_EXCHANGE_POINT_IDS_H
#define QSVTIN_EXCHANGE_POINT_IDS_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qsvtin {

/// Finds points by the names that a file gave them. Names are usually small whole numbers, and those are looked
/// up in an array.
class PointIds
{
public:
    /// @return false when the name is taken
    bool Add(std::string_view id, int point);
    /// @return the point of this name, or -1
    int Find(std::string_view id) const;

private:
    std::optional<std::size_t> NumberOf(std::string_view id) const;

    std::vector<int> m_byNumber;
    std::unordered_map<std::string, int> m_byName;
    std::size_t m_count = 0;
};

}   // namespace qsvtin

#endif
