#include <algorithm>
#include <cfloat>
#include <cmath>

#include "tin/internal/lines.h"
#include "tin/internal/mesh.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// The candidate nearest in plan to (x, y) so far; the earlier one of equals.
struct NearestPlace {
    const double x, y;
    CXYZ place;
    double dSquare = DBL_MAX;
    bool bFound = false;

    void Offer(const CXYZ& p)
    {
        const double dx = p.x - x, dy = p.y - y;
        const double d = dy * dy + dx * dx;
        if (d < dSquare) {
            dSquare = d;
            place = p;
            bFound = true;
        }
    }
};

bool IsInPlanBox(const CXYZ& p, const CXYZ& a, const CXYZ& b)
{
    return p.x >= std::min(a.x, b.x) && p.x <= std::max(a.x, b.x) && p.y >= std::min(a.y, b.y) &&
           p.y <= std::max(a.y, b.y);
}

}   // namespace

int CTin::NearestOutsideTin(const double& x, const double& y, double& ox, double& oy, double& oz,
                            double& dist)
{
    NearestPlace nearest = {x, y, CXYZ()};
    const int n = m_aBoundary.GetSize();
    for (int i = 0; i < n; i += 2) {
        const CXYZ& a = VertexAt(m_aVertex, m_aBoundary[i]);
        const CXYZ& b = VertexAt(m_aVertex, m_aBoundary[(i + 1) % n]);   // an odd last entry closes the list
        nearest.Offer(a);
        nearest.Offer(b);
        CXYZ foot;
        double dUnused;
        if (CalcFootOnLine(a.x, a.y, a.z, b.x, b.y, b.z, x, y, 0.0, foot.x, foot.y, foot.z, dUnused) != 0 &&
            IsInPlanBox(foot, a, b)) {
            nearest.Offer(foot);
        }
    }
    if (!nearest.bFound) {
        return 0;
    }
    ox = nearest.place.x;
    oy = nearest.place.y;
    oz = nearest.place.z;
    dist = std::sqrt(nearest.dSquare);
    return 1;
}
