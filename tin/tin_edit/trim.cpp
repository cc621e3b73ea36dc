#include <algorithm>
#include <functional>
#include <iterator>

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

// For every triangle, those that hold it as a neighbour, even where it does not hold them. As a rule it does: then
// how many there are tells that its own neighbours are all of them. Lists are made for a mesh where that fails.
class References
{
public:
    explicit References(const CArray<CTriangle>& aTri) : m_aTri(aTri)
    {
        m_aCount.SetSize(aTri.GetSize(), -1);
        ForEachLink([this](int, int nNeighbor) {
            if (m_aCount[nNeighbor] < kMany) {
                ++m_aCount[nNeighbor];
            }
        });
    }

    // Calls the action with each of them, or some more than once.
    template <class ACTION>
    void ForEachOf(int nTri, ACTION fnAction)
    {
        if (m_aFirst.IsEmpty() && CountAmongNeighbors(nTri) == m_aCount[nTri]) {
            for (int k = 0; k < 3; ++k) {
                if (NeighborAt(m_aTri, nTri, k) >= 0) {
                    fnAction(NeighborAt(m_aTri, nTri, k));
                }
            }
            return;
        }
        if (m_aFirst.IsEmpty()) {
            MakeLists();
        }
        for (int i = m_aFirst[nTri]; i < m_aFirst[nTri + 1]; ++i) {
            fnAction(m_aReference[i]);
        }
    }

private:
    static constexpr unsigned char kMany = 255;   // or more

    template <class ACTION>
    void ForEachLink(ACTION fnAction) const
    {
        for (int t = 0; t < m_aTri.GetSize(); ++t) {
            for (int k = 0; k < 3; ++k) {
                const int nNeighbor = NeighborAt(m_aTri, t, k);
                if (nNeighbor >= 0) {
                    fnAction(t, nNeighbor);
                }
            }
        }
    }

    // How often its neighbours hold a triangle, each of them counted once.
    int CountAmongNeighbors(int nTri) const
    {
        const int aNeighbor[] = {NeighborAt(m_aTri, nTri, 0), NeighborAt(m_aTri, nTri, 1),
                                 NeighborAt(m_aTri, nTri, 2)};
        int nCount = 0;
        for (int k = 0; k < 3; ++k) {
            if (aNeighbor[k] >= 0 && std::find(aNeighbor, aNeighbor + k, aNeighbor[k]) == aNeighbor + k) {
                const auto& aBack = m_aTri[aNeighbor[k]].m_nNeighbor;
                nCount += static_cast<int>(std::count(std::begin(aBack), std::end(aBack), nTri));
            }
        }
        return nCount;
    }

    void MakeLists()
    {
        const int n = m_aTri.GetSize();
        m_aFirst.SetSize(n + 1, -1);
        ForEachLink([this](int, int nNeighbor) { ++m_aFirst[nNeighbor + 1]; });
        for (int t = 0; t < n; ++t) {
            m_aFirst[t + 1] += m_aFirst[t];
        }
        Array<int> aNext(m_aFirst);
        m_aReference.SetSize(m_aFirst[n], -1);
        ForEachLink([&](int t, int nNeighbor) { m_aReference[aNext[nNeighbor]++] = t; });
    }

    const CArray<CTriangle>& m_aTri;
    CArray<unsigned char> m_aCount;
    CArray<int> m_aFirst, m_aReference;   // lists, one behind the other; none as long as counts do
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
        : m_tin(tin), m_aTri(tin.m_aTri), m_dAngle(dAngle), m_bSingleOutside(bSingleOutside),
          m_references(m_aTri)
    {
        m_aDeletion.SetSize(m_aTri.GetSize(), -1);
    }

    // Triangle 0 is examined on the first pass only, and whoever stands first afterwards not at all.
    void Trim()
    {
        for (int t = 1; t < m_aTri.GetSize(); ++t) {
            PushCandidate(t);
        }
        int nExempt = 0;
        if (Qualifies(0)) {
            Delete(0);
            nExempt = 1;
        }
        while (!m_aCandidate.IsEmpty()) {
            const int nTri = PopCandidate();
            if (nTri > nExempt && IsAlive(nTri) && Qualifies(nTri)) {
                Delete(nTri);
            }
        }
    }

    // Closes the gaps. To be called once, after Trim.
    void Compact() { RemoveTriangles(m_aTri, m_tin.m_aTriNormal, m_aDeletion, m_nDeleted); }

private:
    bool IsAlive(int nTri) const { return m_aDeletion[nTri] == 0; }

    bool IsOuter(int nTri, int k) const
    {
        const int nNeighbor = NeighborAt(m_aTri, nTri, k);
        return nNeighbor < 0 || (m_nDeleted > 0 && !IsAlive(nNeighbor));
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

    void Delete(int nTri)
    {
        m_aDeletion[nTri] = ++m_nDeleted;
        m_references.ForEachOf(nTri, [this](int t) { PushCandidate(t); });
    }

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
    References m_references;
    CArray<int> m_aCandidate;   // a heap, lowest index first
    CArray<int> m_aDeletion;    // 0: alive; else the number of the deletion, from 1
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
