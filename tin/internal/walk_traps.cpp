#include "tin/internal/walk_traps.h"

namespace qsv {

WalkTraps::WalkTraps(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach)
    : m_mesh(mesh), m_dReach(dReach), m_dSlack(4.0 * tolerance.dEPS2)   // twice what the bound asks for
{
}

WalkTraps::~WalkTraps()
{
    for (int i = 0; i < m_aTrap.GetSize(); ++i) {
        m_mesh[m_aTrap[i].nTri].nNumber = m_aTrap[i].nNumber;
    }
}

void WalkTraps::Enter(int nTri, bool bFlat)
{
    const int nEntry = m_aTrap.Add({nTri, m_mesh[nTri].nNumber, bFlat});
    m_mesh[nTri].nNumber = ~nEntry;
    m_nFlat += bFlat ? 1 : 0;
}

void WalkTraps::StrikeOff(int nTri)
{
    const int nEntry = ~m_mesh[nTri].nNumber, nLast = m_aTrap.GetUpperBound();
    const Trap trap = m_aTrap[nEntry];
    m_aTrap[nEntry] = m_aTrap[nLast];
    m_mesh[m_aTrap[nEntry].nTri].nNumber = ~nEntry;
    m_mesh[nTri].nNumber = trap.nNumber;
    m_nFlat -= trap.bFlat ? 1 : 0;
    m_aTrap.SetSize(nLast);
}

}   // namespace qsv
