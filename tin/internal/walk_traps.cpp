#include "tin/internal/walk_traps.h"

namespace qsv {

WalkTraps::WalkTraps(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach)
    : m_mesh(mesh), m_dReach(dReach), m_dSlack(4.0 * tolerance.dEPS2)   // twice what the bound asks for
{
}

WalkTraps::~WalkTraps()
{
    for (int i = 0; i < m_aTrap.GetSize(); ++i) {
        m_mesh.SetNumber(m_aTrap[i].nTri, m_aTrap[i].nNumber);
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

void WalkTraps::Enter(int nTri)
{
    const auto [dArea, dLength2] = Measure(nTri);
    const bool bFlat = !(Roundness(dArea, dLength2) > 0.0);
    const int nEntry = m_aTrap.Add({nTri, m_mesh.NumberOf(nTri), bFlat});
    m_mesh.SetNumber(nTri, ~nEntry);
    m_nFlat += bFlat ? 1 : 0;
}

void WalkTraps::StrikeOff(int nTri)
{
    const int nEntry = ~m_mesh.NumberOf(nTri), nLast = m_aTrap.GetUpperBound();
    const Trap trap = m_aTrap[nEntry];
    m_aTrap[nEntry] = m_aTrap[nLast];
    m_mesh.SetNumber(m_aTrap[nEntry].nTri, ~nEntry);
    m_mesh.SetNumber(nTri, trap.nNumber);
    m_nFlat -= trap.bFlat ? 1 : 0;
    m_aTrap.SetSize(nLast);
}

}   // namespace qsv
