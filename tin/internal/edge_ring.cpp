#include "tin/internal/edge_ring.h"

#include <algorithm>

namespace qsv {

namespace {

// The edges that are left, by one of their ends; the first of those at a vertex is taken first.
class EdgesByEnd
{
public:
    EdgesByEnd(const CArray<DirectedEdge>& aEdge, int DirectedEdge::*pEnd) : m_aEdge(aEdge), m_pEnd(pEnd)
    {
        for (int i = 0; i < aEdge.GetSize(); ++i) {
            m_aOrder.Add(i);
            m_aTried.Add(0);
        }
        std::sort(m_aOrder.GetData(), m_aOrder.GetData() + m_aOrder.GetSize(),
                  [this](int i, int j) { return EndOf(i) != EndOf(j) ? EndOf(i) < EndOf(j) : i < j; });
    }

    // The first edge at a vertex that is not yet used; -1 when none is left.
    int FirstAt(int nVt, const CArray<char>& aUsed)
    {
        const int* const pBegin = m_aOrder.GetData();
        const int* const pFirst = std::lower_bound(pBegin, pBegin + m_aOrder.GetSize(), nVt,
                                                   [this](int i, int nSought) { return EndOf(i) < nSought; });
        const int nFirst = static_cast<int>(pFirst - pBegin);
        if (nFirst == m_aOrder.GetSize()) {
            return -1;
        }
        int& nTried = m_aTried[nFirst];
        for (; nFirst + nTried < m_aOrder.GetSize(); ++nTried) {
            const int nEdge = m_aOrder[nFirst + nTried];
            if (EndOf(nEdge) != nVt) {
                return -1;
            }
            if (!aUsed[nEdge]) {
                return nEdge;
            }
        }
        return -1;
    }

private:
    int EndOf(int nEdge) const { return m_aEdge[nEdge].*m_pEnd; }

    const CArray<DirectedEdge>& m_aEdge;
    int DirectedEdge::*const m_pEnd;
    CArray<int> m_aOrder;   // the edges, sorted by that end
    CArray<int> m_aTried;   // at the first of those with one end: how many of them were found used
};

}   // namespace

Array<int> ChainIntoRing(const CArray<DirectedEdge>& aEdge)
{
    Array<int> aRing;
    if (aEdge.IsEmpty()) {
        return aRing;
    }
    EdgesByEnd byStart(aEdge, &DirectedEdge::nFrom), byEnd(aEdge, &DirectedEdge::nTo);
    CArray<char> aUsed;
    aUsed.SetSize(aEdge.GetSize(), -1);
    Array<int> aInFront;   // from the start of the ring backwards
    aUsed[0] = 1;
    aRing.Add(aEdge[0].nTo);
    aInFront.Add(aEdge[0].nFrom);
    for (;;) {
        int nEdge = byStart.FirstAt(aRing[aRing.GetUpperBound()], aUsed);
        if (nEdge >= 0) {
            aRing.Add(aEdge[nEdge].nTo);
        } else {
            nEdge = byEnd.FirstAt(aInFront[aInFront.GetUpperBound()], aUsed);
            if (nEdge < 0) {
                break;
            }
            aInFront.Add(aEdge[nEdge].nFrom);
        }
        aUsed[nEdge] = 1;
    }
    std::reverse(aInFront.GetData(), aInFront.GetData() + aInFront.GetSize());
    aInFront.Append(aRing);
    if (aInFront[0] == aInFront[aInFront.GetUpperBound()]) {
        aInFront.SetSize(aInFront.GetUpperBound(), -1);
    }
    return aInFront;
}

}   // namespace qsv
