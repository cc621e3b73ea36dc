#include "tin/internal/walk_traps.h"

#include <cmath>

namespace qsv {

WalkTraps::WalkTraps(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach, const CXYZ& lower,
                     double dSide)
    : m_mesh(mesh), m_dReach(dReach), m_dSlack(4.0 * tolerance.dEPS2),   // twice what the bound asks for
      m_index(lower, dSide)
{
}

WalkTraps::~WalkTraps()
{
    for (int i = 0; i < m_aTrap.GetSize(); ++i) {
        if (m_aTrap[i].nTri != kFree) {
            m_mesh.SetNumber(m_aTrap[i].nTri, m_aTrap[i].nNumber);
        }
    }
}

// The triangle by its doubled area and the sum of the squares of its edges.
WalkTraps::Measures WalkTraps::Measure(int nTri) const
{
    const Corner corner(nTri, 0);
    const PlanPlace &a = m_mesh.PlaceAt(corner), &b = m_mesh.PlaceAt(corner.Next()),
                    &c = m_mesh.PlaceAt(corner.Prev());
    return {-RightOf(a, b, c), Distance2(a, b) + Distance2(b, c) + Distance2(c, a)};
}

void WalkTraps::Update(int nTri)
{
    const auto [dArea, dLength2] = Measure(nTri);
    Update(nTri, !(Roundness(dArea, dLength2) > 0.0 && Room(dArea, dLength2) > 0.0));
}

// The rectangle about a triangle, wider by a margin.
RegionIndex::Region WalkTraps::RegionOf(int nTri, double dMargin) const
{
    const PlanPlace &a = m_mesh.PlaceAt(Corner(nTri, 0)), &b = m_mesh.PlaceAt(Corner(nTri, 1)),
                    &c = m_mesh.PlaceAt(Corner(nTri, 2));
    const auto least = [](double d, double e, double f) { return std::fmin(std::fmin(d, e), f); };
    const auto most = [](double d, double e, double f) { return std::fmax(std::fmax(d, e), f); };
    return {least(a.x, b.x, c.x) - dMargin, least(a.y, b.y, c.y) - dMargin, most(a.x, b.x, c.x) + dMargin,
            most(a.y, b.y, c.y) + dMargin};
}

void WalkTraps::Enter(int nTri)
{
    const auto [dArea, dLength2] = Measure(nTri);
    const bool bFlat = !(Roundness(dArea, dLength2) > 0.0);
    const Trap trap = {nTri, m_mesh.NumberOf(nTri), bFlat};
    int nEntry = m_aFree.GetUpperBound();
    if (nEntry < 0) {
        nEntry = m_aTrap.Add(trap);
    } else {
        nEntry = m_aFree[nEntry];
        m_aFree.SetSize(m_aFree.GetUpperBound());
        m_aTrap[nEntry] = trap;
    }
    m_mesh.SetNumber(nTri, ~nEntry);
    if (bFlat) {
        ++m_nFlat;
    } else {
        const double dPast = std::sqrt(dLength2) * (m_dSlack + kRounding * dLength2) / dArea;
        m_index.Add(nEntry, RegionOf(nTri, std::fmax(dPast, m_dReach)));
    }
}

void WalkTraps::StrikeOff(int nTri)
{
    const int nEntry = ~m_mesh.NumberOf(nTri);
    Trap& trap = m_aTrap[nEntry];
    m_mesh.SetNumber(nTri, trap.nNumber);
    if (trap.bFlat) {
        --m_nFlat;
    } else {
        m_index.Remove(nEntry);
    }
    trap.nTri = kFree;
    m_aFree.Add(nEntry);
}

}   // namespace qsv
