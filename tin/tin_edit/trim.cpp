#include <algorithm>
#include <functional>

#include "tin/internal/mesh.h"
#include "tin/internal/slots.h"
#include "tin/internal/triangle_removal.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

void Deselect(CArray<CTriangle>& aTri)
{
    for (int t = 0; t < aTri.GetSize(); ++t) {
        aTri[t].m_bSelect = 0;
    }
}

// The plan angles at both ends of the edge that lies across neighbour slot k.
struct BaseAngles {
    double dStart = 0.0, dEnd = 0.0;

    BaseAngles(CTin& tin, int nTri, int k)
    {
        tin.GetAngleXY(nTri, PrevSlot(k), dStart);
        tin.GetAngleXY(nTri, k, dEnd);
    }
    // Two tests, not one and its opposite: an angle that is not a number passes neither.
    bool BothExceed(double dAngle) const { return dStart > dAngle && dEnd > dAngle; }
    bool OneIsAtMost(double dAngle) const { return dStart <= dAngle || dEnd <= dAngle; }
};

// Takes outer triangles away one after the other, always the lowest in index order that qualifies, as if
// each were deleted on the spot and the search began anew. Records keep their places until the end, so an
// index stands for the same triangle throughout; deletions do not change the order of those that remain.
//
// Whether a triangle qualifies changes only when a neighbour goes. So all that may qualify wait in a heap,
// are tested when their turn comes, and enter it again with the next neighbour that goes: n log n in all.
class OutlineTrimmer
{
public:
    OutlineTrimmer(CTin& tin, double dAngle, bool bSingleOutside)
        : m_tin(tin), m_aTri(tin.m_aTri), m_dAngle(dAngle), m_bSingleOutside(bSingleOutside)
    {
        m_aDeletion.SetSize(m_aTri.GetSize(), -1);
        ListReferences();
    }

    // Triangle 0 is examined on the first pass only, and whoever stands first afterwards not at all.
    void Trim()
    {
        int nExempt = 0;
        if (Qualifies(0)) {
            Delete(0);
            nExempt = 1;
        }
        for (int t = nExempt + 1; t < m_aTri.GetSize(); ++t) {
            PushCandidate(t);
        }
        while (!m_aCandidate.IsEmpty()) {
            const int nTri = PopCandidate();
            if (nTri > nExempt && IsAlive(nTri) && Qualifies(nTri)) {
                Delete(nTri);
                for (int i = m_aFirstReference[nTri]; i < m_aFirstReference[nTri + 1]; ++i) {
                    PushCandidate(m_aReference[i]);
                }
            }
        }
    }

    // Closes the gaps. To be called once, after Trim.
    void Compact() { RemoveTriangles(m_aTri, m_tin.m_aTriNormal, m_aDeletion, m_nDeleted); }

private:
    // For every triangle, those that hold it as a neighbour, even where it does not hold them.
    void ListReferences()
    {
        const int n = m_aTri.GetSize();
        m_aFirstReference.SetSize(n + 1, -1);
        for (int t = 0; t < n; ++t) {
            for (int k = 0; k < 3; ++k) {
                const int nNeighbor = NeighborAt(m_aTri, t, k);
                m_aFirstReference[nNeighbor + 1] += nNeighbor >= 0 ? 1 : 0;
            }
        }
        for (int t = 0; t < n; ++t) {
            m_aFirstReference[t + 1] += m_aFirstReference[t];
        }
        Array<int> aNext(m_aFirstReference);
        m_aReference.SetSize(m_aFirstReference[n], -1);
        for (int t = 0; t < n; ++t) {
            for (int k = 0; k < 3; ++k) {
                const int nNeighbor = NeighborAt(m_aTri, t, k);
                if (nNeighbor >= 0) {
                    m_aReference[aNext[nNeighbor]++] = t;
                }
            }
        }
    }

    bool IsAlive(int nTri) const { return m_aDeletion[nTri] == 0; }

    bool IsOuter(int nTri, int k) const
    {
        const int nNeighbor = NeighborAt(m_aTri, nTri, k);
        return nNeighbor < 0 || !IsAlive(nNeighbor);
    }

    bool Qualifies(int nTri) const
    {
        const int nOuter = IsOuter(nTri, 0) + IsOuter(nTri, 1) + IsOuter(nTri, 2);
        if (nOuter == 0 || (nOuter > 1 && m_bSingleOutside)) {
            return false;
        }
        for (int k = 0; k < 3; ++k) {
            if (IsOuter(nTri, k) && !BaseAngles(m_tin, nTri, k).BothExceed(m_dAngle)) {
                return true;
            }
        }
        return false;
    }

    void Delete(int nTri) { m_aDeletion[nTri] = ++m_nDeleted; }

    void PushCandidate(int nTri)
    {
        if (IsOuter(nTri, 0) || IsOuter(nTri, 1) || IsOuter(nTri, 2)) {
            m_aCandidate.Add(nTri);
            std::push_heap(m_aCandidate.GetData(), m_aCandidate.GetData() + m_aCandidate.GetSize(),
                           std::greater<>());
        }
    }

    int PopCandidate()
    {
        std::pop_heap(m_aCandidate.GetData(), m_aCandidate.GetData() + m_aCandidate.GetSize(),
                      std::greater<>());
        const int nTri = m_aCandidate[m_aCandidate.GetUpperBound()];
        m_aCandidate.SetSize(m_aCandidate.GetUpperBound(), -1);
        return nTri;
    }

    CTin& m_tin;
    CArray<CTriangle>& m_aTri;
    const double m_dAngle;
    const bool m_bSingleOutside;
    CArray<int> m_aFirstReference, m_aReference;   // lists of references, one behind the other
    CArray<int> m_aCandidate;                      // a heap, lowest index first
    CArray<int> m_aDeletion;                       // 0: alive; else the number of the deletion, from 1
    int m_nDeleted = 0;
};

}   // namespace

int CTin::DelTriWithAngle(double dAngle, int bSingleOutside)
{
    if (dAngle == 0.0 || dAngle != dAngle || m_aTri.IsEmpty()) {
        return 1;
    }
    OutlineTrimmer trimmer(*this, dAngle, bSingleOutside != 0);
    trimmer.Trim();
    trimmer.Compact();
    if (m_aTri.IsEmpty()) {
        InitData();   // as DelTri does with the only triangle
    }
    return 1;
}

int CTin::SelectTriWithAngle(double dAngle)
{
    Deselect(m_aTri);
    int nSelected = 0;
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3 && m_aTri[t].m_bSelect == 0; ++k) {
            if (NeighborAt(m_aTri, t, k) < 0) {
                m_aTri[t].m_bSelect = BaseAngles(*this, t, k).OneIsAtMost(dAngle) ? 1 : 0;
            }
        }
        nSelected += m_aTri[t].m_bSelect;
    }
    return nSelected;
}

// Measured is edge k, the one after the outer edge, and triangle 0 measures 0: kept so, since hosts tuned
// their limits to it.
int CTin::SelectTriWithLength(double dLength)
{
    Deselect(m_aTri);
    int nSelected = 0;
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3 && m_aTri[t].m_bSelect == 0; ++k) {
            m_aTri[t].m_bSelect = NeighborAt(m_aTri, t, k) < 0 && GetLength(t, k) > dLength ? 1 : 0;
        }
        nSelected += m_aTri[t].m_bSelect;
    }
    return nSelected;
}
