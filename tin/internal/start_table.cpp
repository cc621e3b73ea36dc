#include "tin/internal/start_table.h"

namespace qsv {

StartTable::StartTable(int nRanks, int nFirstTri)
{
    while ((nRanks - 1) >> m_nShift > 0) {
        ++m_nShift;
    }
    int nMostRuns = 1;
    while (nMostRuns < nRanks / kVerticesPerRun) {
        nMostRuns *= 2;
    }
    m_aTri.SetSize(nMostRuns, -1);
    m_aTri[0] = nFirstTri;
}

// Every run becomes two, which begin with what it remembered.
void StartTable::Double()
{
    if (2 << m_nDoubled > m_aTri.GetSize()) {
        return;
    }
    for (int i = (1 << m_nDoubled) - 1; i >= 0; --i) {
        m_aTri[2 * i] = m_aTri[2 * i + 1] = m_aTri[i];
    }
    ++m_nDoubled;
    --m_nShift;
}

}   // namespace qsv
