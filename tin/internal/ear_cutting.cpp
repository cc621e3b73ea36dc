#include "tin/internal/ear_cutting.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "tin/internal/box_tree.h"
#include "tin/internal/lines.h"
#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"

namespace qsv {

namespace {

// Up to this size the products that CalCrossPointXY forms of four coordinates are finite.
constexpr double kMaxIndexedCoordinate = 1e70;

// Rounding of a meeting point against the segments that were found to meet there, relative to the largest
// coordinate: some 10 roundings of 1.1e-16 each, and a margin of ten times that.
constexpr double kMeetingRounding = 1e-14;

constexpr PlanBox kNowhere = {HUGE_VAL, -HUGE_VAL, HUGE_VAL, -HUGE_VAL};
constexpr PlanBox kEverywhere = {-HUGE_VAL, HUGE_VAL, -HUGE_VAL, HUGE_VAL};

// A binary tree of boxes over the edges of a ring, in ring order. Edges that follow each other lie close
// together, so an edge meets few boxes but those around it. Where the boxes of two edges are apart, the
// point that CalCrossPointXY computes cannot lie within the extents of both, and it is not called.
class RingEdges
{
public:
    RingEdges(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS)
        : m_aVertex(aVertex), m_aRing(aRing), m_dEPS(dEPS)
    {
        while (m_nLeaves < aRing.GetSize()) {
            m_nLeaves *= 2;
        }
        m_aBox.SetSize(2 * m_nLeaves, -1);
        const double dMargin = Margin();
        for (int i = 0; i < m_nLeaves; ++i) {
            m_aBox[m_nLeaves + i] = i < aRing.GetSize() ? BoxOf(i, dMargin) : kNowhere;
        }
        for (int nNode = m_nLeaves - 1; nNode > 0; --nNode) {
            m_aBox[nNode] = Joined(m_aBox[2 * nNode], m_aBox[2 * nNode + 1]);
        }
    }

    // Whether edge nEdge meets one of the edges nFirst .. nLast.
    bool MeetsAny(int nEdge, int nFirst, int nLast) const
    {
        return MeetsAny(nEdge, nFirst, nLast, 1, 0, m_nLeaves);
    }

private:
    const CXYZ& Corner(int nPos) const { return VertexAt(m_aVertex, m_aRing[nPos % m_aRing.GetSize()]); }

    // By how much a box is larger than its edge; without bounds where products could overflow.
    double Margin() const
    {
        double dLargest = 0.0;
        for (int i = 0; i < m_aRing.GetSize(); ++i) {
            const double dCorner = std::max(std::fabs(Corner(i).x), std::fabs(Corner(i).y));
            if (!(dCorner <= kMaxIndexedCoordinate)) {
                return HUGE_VAL;
            }
            dLargest = std::max(dLargest, dCorner);
        }
        const double dReach = m_dEPS > 0.0 ? m_dEPS : 0.0;
        return dReach + kMeetingRounding * (dLargest + dReach);
    }

    PlanBox BoxOf(int nEdge, double dMargin) const
    {
        if (dMargin == HUGE_VAL) {
            return kEverywhere;
        }
        const CXYZ &a = Corner(nEdge), &b = Corner(nEdge + 1);
        return {std::min(a.x, b.x) - dMargin, std::max(a.x, b.x) + dMargin, std::min(a.y, b.y) - dMargin,
                std::max(a.y, b.y) + dMargin};
    }

    // The part of the search below a node whose leaves are the edges from nBegin on, nCount of them.
    bool MeetsAny(int nEdge, int nFirst, int nLast, int nNode, int nBegin, int nCount) const
    {
        if (nBegin > nLast || nBegin + nCount <= nFirst ||
            !Touches(m_aBox[nNode], m_aBox[m_nLeaves + nEdge])) {
            return false;
        }
        if (nCount == 1) {
            return Meets(nEdge, nBegin);
        }
        const int nHalf = nCount / 2;
        return MeetsAny(nEdge, nFirst, nLast, 2 * nNode, nBegin, nHalf) ||
               MeetsAny(nEdge, nFirst, nLast, 2 * nNode + 1, nBegin + nHalf, nHalf);
    }

    bool Meets(int i, int j) const
    {
        const CXYZ &a = Corner(i), &b = Corner(i + 1), &c = Corner(j), &d = Corner(j + 1);
        double x = 0.0, y = 0.0, z = 0.0;
        return CalCrossPointXY(a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, d.x, d.y, x, y, z, 0, 0, m_dEPS) != 0;
    }

    const CArray<CXYZ>& m_aVertex;
    const CArray<int>& m_aRing;
    const double m_dEPS;
    int m_nLeaves = 1;        // a power of two
    CArray<PlanBox> m_aBox;   // 1 is the root, 2n and 2n + 1 are below n, the leaves come last
};

}   // namespace

// Each pair is looked at once: with the segments exchanged CalCrossPointXY forms the same numbers, some with
// the other sign, so its answer is the same to the bit.
bool IsSimpleRing(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS)
{
    const int n = aRing.GetSize();
    if (n < 3) {
        return true;
    }
    const RingEdges edges(aVertex, aRing, dEPS);
    for (int i = 0; i < n - 2; ++i) {
        if (edges.MeetsAny(i, i + 2, i == 0 ? n - 2 : n - 1)) {
            return false;
        }
    }
    return true;
}

namespace {

// The corners of a ring while ears are cut off. A corner goes by the ring position of its vertex a; b and
// c are the two that follow.
class EarCutter
{
public:
    EarCutter(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS2)
        : m_aVertex(aVertex), m_aRing(aRing), m_dEPS2(dEPS2), m_nLeft(aRing.GetSize())
    {
        m_aCorner.SetSize(m_nLeft, -1);
        for (int i = 0; i < m_nLeft; ++i) {
            m_aCorner[i].nPrev = i == 0 ? m_nLeft - 1 : i - 1;
            m_aCorner[i].nNext = i == m_nLeft - 1 ? 0 : i + 1;
        }
        for (int i = 0; i < m_nLeft; ++i) {
            Offer(i);
        }
    }

    int CornersLeft() const { return m_nLeft; }

    // The corner to cut next; -1 when none can be cut.
    int TakeBest()
    {
        while (!m_aHeap.IsEmpty()) {
            std::pop_heap(m_aHeap.GetData(), m_aHeap.GetData() + m_aHeap.GetSize(), IsWorse);
            const Candidate best = m_aHeap[m_aHeap.GetUpperBound()];
            m_aHeap.SetSize(m_aHeap.GetUpperBound(), -1);
            if (best.nVersion == m_aCorner[best.nPos].nVersion) {
                return best.nPos;
            }
        }
        return -1;
    }

    Ear EarAt(int nPos) const
    {
        const int b = m_aCorner[nPos].nNext;
        return {m_aRing[nPos], m_aRing[b], m_aRing[m_aCorner[b].nNext]};
    }

    // Takes the middle vertex of the corner out of the ring, which changes the corner and the one before.
    void Cut(int nPos)
    {
        const int b = m_aCorner[nPos].nNext, c = m_aCorner[b].nNext;
        m_aCorner[nPos].nNext = c;
        m_aCorner[c].nPrev = nPos;
        m_aCorner[b].nVersion = kCutOff;
        --m_nLeft;
        Offer(nPos);
        Offer(m_aCorner[nPos].nPrev);
    }

    int FirstCorner() const
    {
        int nPos = 0;
        while (m_aCorner[nPos].nVersion == kCutOff) {
            ++nPos;
        }
        return nPos;
    }

private:
    static constexpr int kCutOff = -1;
    struct Corner {
        int nPrev, nNext;
        int nVersion;   // counts the changes of the corner; outdates its older candidates
    };
    struct Candidate {
        double dChord2;
        int nPos;
        int nVersion;
    };

    static bool IsWorse(const Candidate& x, const Candidate& y)
    {
        return x.dChord2 != y.dChord2 ? x.dChord2 > y.dChord2 : x.nPos > y.nPos;
    }

    void Offer(int nPos)
    {
        const Ear ear = EarAt(nPos);
        const CXYZ &a = VertexAt(m_aVertex, ear.a), &c = VertexAt(m_aVertex, ear.c);
        const double dx = c.x - a.x, dy = c.y - a.y;
        const double dChord2 = dx * dx + dy * dy;
        ++m_aCorner[nPos].nVersion;
        if (SideOf(DoubledArea(a, VertexAt(m_aVertex, ear.b), c), m_dEPS2) != Side::Right &&
            dChord2 < DBL_MAX) {
            m_aHeap.Add({dChord2, nPos, m_aCorner[nPos].nVersion});
            std::push_heap(m_aHeap.GetData(), m_aHeap.GetData() + m_aHeap.GetSize(), IsWorse);
        }
    }

    const CArray<CXYZ>& m_aVertex;
    const CArray<int>& m_aRing;
    const double m_dEPS2;
    int m_nLeft;
    CArray<Corner> m_aCorner;    // by ring position
    CArray<Candidate> m_aHeap;   // best first; outdated ones are passed over when taken
};

}   // namespace

bool CutEars(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS2, CArray<Ear>& aEar)
{
    aEar.SetSize(0, -1);
    if (aRing.GetSize() < 3) {
        return true;
    }
    EarCutter cutter(aVertex, aRing, dEPS2);
    while (cutter.CornersLeft() > 3) {
        const int nPos = cutter.TakeBest();
        if (nPos < 0) {
            return false;
        }
        aEar.Add(cutter.EarAt(nPos));
        cutter.Cut(nPos);
    }
    aEar.Add(cutter.EarAt(cutter.FirstCorner()));
    return true;
}

}   // namespace qsv
