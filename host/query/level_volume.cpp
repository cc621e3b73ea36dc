#include "host/query/level_volume.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

double PlanArea(const CXYZ& a, const CXYZ& b, const CXYZ& c)
{
    return 0.5 * std::fabs((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y));
}

void Add(LevelShare& share, double volume, double planArea)
{
    share.volume += volume;
    share.planArea += planArea;
}

// Adds a triangle with a corner alone on its side of the plane, as high over it (tip > 0) as the other two
// are not (a, b <= 0). The part on its side is a triangle whose sides are these shares of the whole's.
//            tip
//           /   \       sides from tip: tip / (tip - a) and tip / (tip - b)
//      ----x-----x----  the plane
//         a ----- b
void AddCut(double tip, double a, double b, double area, LevelShare& tipSide, LevelShare& otherSide)
{
    const double tipArea = area * (tip / (tip - a)) * (tip / (tip - b));
    const double tipVolume = tipArea * tip / 3.0;
    Add(tipSide, tipVolume, tipArea);
    Add(otherSide, tipVolume - area * ((tip + a + b) / 3.0), area - tipArea);
}

}   // namespace

LevelVolume MeasureAtLevel(const CTin& tin, double level)
{
    LevelVolume sum;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const int(&corner)[3] = tin.m_aTri[t].m_nVertex;
        const CXYZ &a = tin.m_aVertex[corner[0]], &b = tin.m_aVertex[corner[1]],
                   &c = tin.m_aVertex[corner[2]];
        const double area = PlanArea(a, b, c);
        std::array<double, 3> over = {a.z - level, b.z - level, c.z - level};
        std::sort(over.begin(), over.end());
        const auto [low, middle, high] = over;
        if (low >= 0.0) {
            Add(sum.above, area * ((low + middle + high) / 3.0), area);
        } else if (high <= 0.0) {
            Add(sum.below, -area * ((low + middle + high) / 3.0), area);
        } else if (middle <= 0.0) {
            AddCut(high, middle, low, area, sum.above, sum.below);
        } else {
            AddCut(-low, -middle, -high, area, sum.below, sum.above);
        }
    }
    return sum;
}

}   // namespace qsvtin
