#ifndef QSV_TIN_INTERNAL_START_TABLE_H
#define QSV_TIN_INTERNAL_START_TABLE_H

#include "platform/afx_array.h"

namespace qsv {

// Where to start a search from while vertices are inserted: each of a number of equal runs of ranks remembers the
// triangle of the vertex inserted there last. There are twice as many runs, half as long, when twice as many vertices
// have come in, so that a walk from there stays a few triangles long. An answer is a hint: edge swaps may
// have moved the triangle a little.
class StartTable
{
public:
    StartTable(int nRanks, int nFirstTri);

    int Near(int nRank) const { return m_aTri[nRank >> m_nShift]; }
    const void* AddressOf(int nRank) const { return &m_aTri[nRank >> m_nShift]; }
    void Remember(int nRank, int nTri)
    {
        m_aTri[nRank >> m_nShift] = nTri;
        if (++m_nRemembered > kVerticesPerRun << m_nDoubled && m_nShift > 0) {
            Double();
        }
    }

private:
    static constexpr int kVerticesPerRun = 2;   // more make the walks longer, fewer leave runs empty

    void Double();

    CArray<int> m_aTri;
    int m_nShift = 0;     // a run is 2 to this many ranks long
    int m_nDoubled = 0;   // there are 2 to this many runs
    int m_nRemembered = 0;
};

}   // namespace qsv

#endif
