#include "host/terrain/local_origin.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

double WholeUnitsTowardsZero(double lowest, double highest)
{
    if (lowest > 0.0) return std::floor(lowest);
    if (highest < 0.0) return std::ceil(highest);
    return 0.0;
}

}   // namespace

LocalOrigin ChooseOrigin(const std::vector<Position>& positions)
{
    if (positions.empty()) return {};
    const auto [west, east] = std::minmax_element(
        positions.begin(), positions.end(), [](const Position& a, const Position& b) { return a.x < b.x; });
    const auto [south, north] = std::minmax_element(
        positions.begin(), positions.end(), [](const Position& a, const Position& b) { return a.y < b.y; });
    return {WholeUnitsTowardsZero(west->x, east->x), WholeUnitsTowardsZero(south->y, north->y)};
}

}   // namespace qsvtin
