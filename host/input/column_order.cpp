#include "host/input/column_order.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace qsvtin {

namespace {

enum class Column { Unknown, X, Y, Z, Point, Description };

struct ColumnName {
    std::string_view name;
    Column column;
};

constexpr std::array kNames = {
    ColumnName{"x", Column::X},
    ColumnName{"e", Column::X},
    ColumnName{"east", Column::X},
    ColumnName{"easting", Column::X},
    ColumnName{"eastings", Column::X},
    ColumnName{"rechtswert", Column::X},
    ColumnName{"ostwert", Column::X},
    ColumnName{"y", Column::Y},
    ColumnName{"n", Column::Y},
    ColumnName{"north", Column::Y},
    ColumnName{"northing", Column::Y},
    ColumnName{"northings", Column::Y},
    ColumnName{"hochwert", Column::Y},
    ColumnName{"nordwert", Column::Y},
    ColumnName{"z", Column::Z},
    ColumnName{"h", Column::Z},
    ColumnName{"elev", Column::Z},
    ColumnName{"elevation", Column::Z},
    ColumnName{"height", Column::Z},
    ColumnName{"level", Column::Z},
    ColumnName{"alt", Column::Z},
    ColumnName{"altitude", Column::Z},
    ColumnName{"rl", Column::Z},
    ColumnName{"p", Column::Point},
    ColumnName{"pt", Column::Point},
    ColumnName{"point", Column::Point},
    ColumnName{"no", Column::Point},
    ColumnName{"nr", Column::Point},
    ColumnName{"number", Column::Point},
    ColumnName{"id", Column::Point},
    ColumnName{"name", Column::Point},
    ColumnName{"d", Column::Description},
    ColumnName{"c", Column::Description},
    ColumnName{"code", Column::Description},
    ColumnName{"desc", Column::Description},
    ColumnName{"description", Column::Description},
    ColumnName{"feature", Column::Description},
    ColumnName{"remark", Column::Description},
};

Column ColumnNamed(std::string_view text)
{
    std::string word;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (!std::isalpha(byte)) break;
        word += static_cast<char>(std::tolower(byte));
    }
    const auto found =
        std::find_if(kNames.begin(), kNames.end(), [&](const ColumnName& n) { return n.name == word; });
    return found == kNames.end() ? Column::Unknown : found->column;
}

Column ColumnOfLetter(char letter)
{
    switch (std::tolower(static_cast<unsigned char>(letter))) {
    case 'x':
    case 'e': return Column::X;
    case 'y':
    case 'n': return Column::Y;
    case 'z':
    case 'h': return Column::Z;
    case 'p': return Column::Point;
    case 'd':
    case 'c': return Column::Description;
    default: return Column::Unknown;
    }
}

std::string_view NameOf(Column column)
{
    constexpr std::array<std::string_view, 6> kShown = {"-", "x", "y", "z", "point", "description"};
    return kShown[static_cast<std::size_t>(column)];
}

std::optional<ColumnOrder> OrderOf(const std::vector<Column>& columns)
{
    std::array<int, 6> count = {};
    ColumnOrder order;
    order.text.clear();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Column column = columns[i];
        const int position = static_cast<int>(i);
        ++count[static_cast<std::size_t>(column)];
        if (column == Column::X) order.x = position;
        if (column == Column::Y) order.y = position;
        if (column == Column::Z) order.z = position;
        order.text.append(i > 0 ? " " : "").append(NameOf(column));
    }
    const auto once = [&](Column column) { return count[static_cast<std::size_t>(column)] == 1; };
    if (!once(Column::X) || !once(Column::Y) || !once(Column::Z)) return std::nullopt;
    const auto described = std::find(columns.begin(), columns.end(), Column::Description);
    order.description =
        described == columns.end() ? order.Needed() : static_cast<int>(described - columns.begin());
    order.descriptionIsLast = described == columns.end() || described + 1 == columns.end();
    return order;
}

}   // namespace

int ColumnOrder::Needed() const
{
    return 1 + std::max({x, y, z});
}

std::optional<ColumnOrder> OrderFromLetters(std::string_view letters)
{
    std::vector<Column> columns;
    for (const char letter : letters) {
        if (letter == ',' || letter == ' ') continue;
        columns.push_back(ColumnOfLetter(letter));
        if (columns.back() == Column::Unknown && letter != '-') return std::nullopt;
    }
    return OrderOf(columns);
}

std::optional<ColumnOrder> OrderFromNames(const std::vector<std::string_view>& names)
{
    std::vector<Column> columns;
    std::transform(names.begin(), names.end(), std::back_inserter(columns), ColumnNamed);
    return OrderOf(columns);
}

std::optional<ColumnOrder> OrderFromComment(const std::vector<std::string_view>& words)
{
    std::vector<Column> columns;
    std::transform(words.begin(), words.end(), std::back_inserter(columns), ColumnNamed);
    columns.erase(std::find(columns.begin(), columns.end(), Column::Unknown), columns.end());
    return OrderOf(columns);
}

}   // namespace qsvtin
