#include "tin/internal/hull_candidates.h"

#include <algorithm>
#include <cmath>

#include "tin/internal/hull.h"
#include "tin/internal/plan.h"

namespace qsv {

namespace {

constexpr int kSectors = 4096;
constexpr int kSectorsPerQuarter = kSectors / 4;
constexpr int kFewVertices = 2000;   // not worth the effort
constexpr int kSampleStride = 16;    // a first guess of the hull needs no more of the vertices
// How much nearer to the centre than the hull a vertex must be to take no part, and how near it still may be. Parts of
// the distance of the hull's edges from the centre, which is not below kThinnest of the range.
constexpr double kOuterPart = 0.999, kInnerPart = 0.05, kThinnest = 0.01;

// The plan divided into sectors about a centre.
class Sectors
{
public:
    explicit Sectors(const CXYZ& centre) : m_centre(centre) {}

    // Rises with the direction; at the centre any number.
    int Of(const CXYZ& p) const
    {
        const double dx = p.x - m_centre.x + 0.0, dy = p.y - m_centre.y;   // no zero below 0
        const double d = dy / (std::fabs(dx) + std::fabs(dy));   // -1 .. 1, as in the directions from -pi/2
        const double dTurn =
            2.0 + std::copysign(1.0, dx) * (d - 1.0);   // d + 1 or 3 - d, without a guess: 0 .. 4
        return dTurn > 0.0 ? std::min(static_cast<int>(dTurn * kSectorsPerQuarter), kSectors - 1) : 0;
    }
    double Distance2(const CXYZ& p) const
    {
        return (p.x - m_centre.x) * (p.x - m_centre.x) + (p.y - m_centre.y) * (p.y - m_centre.y);
    }
    // A place in the direction at which a sector begins.
    CXYZ Border(int nSector) const
    {
        const double dTurn = 4.0 * (nSector % kSectors) / kSectors;
        const double d = dTurn <= 2.0 ? dTurn - 1.0 : 3.0 - dTurn;
        const double dAside = dTurn <= 2.0 ? 1.0 - std::fabs(d) : std::fabs(d) - 1.0;
        return CXYZ(m_centre.x + dAside, m_centre.y + d, 0.0);
    }

private:
    const CXYZ m_centre;
};

double Cross(const CXYZ& a, const CXYZ& b)
{
    return a.x * b.y - a.y * b.x;
}

CXYZ Between(const CXYZ& from, const CXYZ& to)
{
    return CXYZ(to.x - from.x, to.y - from.y, 0.0);
}

double PlanLength(const CXYZ& v)
{
    return std::sqrt(v.x * v.x + v.y * v.y);
}

// A counter-clockwise ring of hull corners as seen from the centre.
class SeenHull
{
public:
    SeenHull(const CArray<CXYZ>& aVertex, const CArray<int>& aHull, const CXYZ& centre)
        : m_aVertex(aVertex), m_aHull(aHull), m_centre(centre)
    {
    }

    int Size() const { return m_aHull.GetSize(); }
    const CXYZ& Corner(int i) const { return m_aVertex[m_aHull[i % Size()]]; }

    // The smallest distance of the line through an edge from the centre, below 0 when the centre is outside.
    double Thinness() const
    {
        double dLeast = HUGE_VAL;
        for (int i = 0; i < Size(); ++i) {
            const CXYZ edge = Between(Corner(i), Corner(i + 1));
            const double d = Cross(edge, Between(Corner(i), m_centre)) / PlanLength(edge);
            dLeast = d < dLeast ? d : std::isnan(d) ? -1.0 : dLeast;
        }
        return dLeast;
    }

    // For each sector, the square of a distance from the centre within which the hull is not, in any direction.
    Array<double> ClearDistances2(const Sectors& sectors) const
    {
        Array<double> aClear;
        aClear.SetSize(kSectors, -1);
        int i = EdgeTowards(sectors.Border(0));
        double dBefore = DistanceTowards(sectors.Border(0), i);
        for (int s = 0; s < kSectors; ++s) {
            double dLeast = dBefore;
            const CXYZ border = sectors.Border(s + 1);
            for (int nSteps = 0; nSteps < Size() && !IsEdgeTowards(border, i); ++nSteps) {
                i = (i + 1) % Size();
                dLeast = std::fmin(dLeast, PlanLength(Between(m_centre, Corner(i))));
            }
            dBefore = DistanceTowards(border, i);
            dLeast = std::fmin(dLeast, dBefore);
            aClear[s] = dLeast * dLeast;
        }
        return aClear;
    }

private:
    bool IsEdgeTowards(const CXYZ& place, int i) const
    {
        const CXYZ to = Between(m_centre, place);
        return Cross(Between(m_centre, Corner(i)), to) >= 0.0 &&
               Cross(to, Between(m_centre, Corner(i + 1))) > 0.0;
    }
    int EdgeTowards(const CXYZ& place) const
    {
        int i = 0;
        while (i + 1 < Size() && !IsEdgeTowards(place, i)) {
            ++i;
        }
        return i;
    }
    double DistanceTowards(const CXYZ& place, int i) const
    {
        const CXYZ to = Between(m_centre, place), edge = Between(Corner(i), Corner(i + 1));
        return Cross(Between(m_centre, Corner(i)), edge) / Cross(to, edge) * PlanLength(to);
    }

    const CArray<CXYZ>& m_aVertex;
    const CArray<int>& m_aHull;
    const CXYZ m_centre;
};

// The vertices on one side of a corner, up to the next corner: how near they come to the line from the centre to
// the corner, and to the corner itself.
struct Flank {
    double dToLine;
    double dToCorner;

    void Add(double dLine, double dCorner)
    {
        dToLine = dLine < dToLine || std::isnan(dLine) ? dLine : dToLine;
        dToCorner = dCorner < dToCorner || std::isnan(dCorner) ? dCorner : dToCorner;
    }
};

// Whether the scan of a ring of any more vertices, which are all nearer to the centre and farther from the corners'
// directions than others gives the same hull; others is what can be said of them.
class HullProof
{
public:
    HullProof(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, const CArray<int>& aHull,
              const CXYZ& centre, const Flank& others)
        : m_aVertex(aVertex), m_aRing(aRing), m_aHull(aHull), m_centre(centre)
    {
        m_aBefore.SetSize(aHull.GetSize(), -1);
        m_aAfter.SetSize(aHull.GetSize(), -1);
        for (int i = 0; i < aHull.GetSize(); ++i) {
            m_aBefore[i] = m_aAfter[i] = others;
        }
    }

    // dRounding is what rounding can make of a distance, dEPS2 the tolerance of the scan.
    bool Holds(double dRounding, double dEPS2)
    {
        const double dDepth = dRounding * (1.0 + 0.01 * m_aVertex.GetSize());   // it adds up along a chain
        int nPos = 0;
        while (m_aRing[nPos] != m_aHull[0]) {
            ++nPos;
        }
        for (int i = 0; i < m_aHull.GetSize(); ++i) {
            const int nEnd = m_aHull[(i + 1) % m_aHull.GetSize()];
            AddBetween(i, m_aVertex[nEnd]);
            AddBetween(i, m_aVertex[m_aHull[i]]);
            for (nPos = (nPos + 1) % m_aRing.GetSize(); m_aRing[nPos] != nEnd;
                 nPos = (nPos + 1) % m_aRing.GetSize()) {
                const CXYZ& p = m_aVertex[m_aRing[nPos]];
                if (!IsNoCorner(i, p, dDepth)) {
                    return false;
                }
                AddBetween(i, p);
            }
        }
        for (int i = 0; i < m_aHull.GetSize(); ++i) {
            if (!StaysCorner(i, dRounding, dEPS2)) {
                return false;
            }
        }
        return true;
    }

private:
    const CXYZ& Corner(int i) const { return m_aVertex[m_aHull[i % m_aHull.GetSize()]]; }

    // Takes note of a vertex in the wedge between corner i and the next; each corner is itself in the other's flank.
    void AddBetween(int i, const CXYZ& p)
    {
        const int nNext = (i + 1) % m_aHull.GetSize();
        const CXYZ from = Between(m_centre, Corner(i)), to = Between(m_centre, Corner(nNext)),
                   at = Between(m_centre, p);
        if (&p != &Corner(i)) {
            m_aAfter[i].Add(Cross(from, at) / PlanLength(from), PlanLength(Between(Corner(i), p)));
        }
        if (&p != &Corner(nNext)) {
            m_aBefore[nNext].Add(Cross(at, to) / PlanLength(to), PlanLength(Between(Corner(nNext), p)));
        }
    }

    // Deep enough inside the edge after corner i that no chain of left turns leads by way of it, or exactly on an
    // edge along an axis.
    bool IsNoCorner(int i, const CXYZ& p, double dDepth) const
    {
        const CXYZ &a = Corner(i), &b = Corner(i + 1);
        const CXYZ edge = Between(a, b);
        return Cross(edge, Between(a, p)) / PlanLength(edge) > dDepth || (p.x == a.x && p.x == b.x) ||
               (p.y == a.y && p.y == b.y);
    }

    // Whether the ring turns left at corner i between any vertex before and any after it.
    bool StaysCorner(int i, double dRounding, double dEPS2) const
    {
        const CXYZ before = Between(Corner(i + m_aHull.GetSize() - 1), Corner(i)),
                   after = Between(Corner(i), Corner(i + 1));
        const double dSine = Cross(before, after) / (PlanLength(before) * PlanLength(after));
        const Flank &b = m_aBefore[i], &a = m_aAfter[i];
        const double dAside = std::fmin(b.dToLine, b.dToCorner * dSine);
        const double dAsideAfter = std::fmin(a.dToLine, a.dToCorner * dSine);
        return (dAside > dRounding && dAside * a.dToCorner > 8.0 * dEPS2) ||
               (dAsideAfter > dRounding && dAsideAfter * b.dToCorner > 8.0 * dEPS2);
    }

    const CArray<CXYZ>& m_aVertex;
    const CArray<int>&m_aRing, &m_aHull;
    const CXYZ m_centre;
    CArray<Flank> m_aBefore, m_aAfter;   // of each corner
};

// All vertices, in the sectors about the centre.
class Candidates
{
public:
    Candidates(const CArray<CXYZ>& aVertex, const CXYZ& centre) : m_aVertex(aVertex), m_sectors(centre) {}

    const Sectors& GetSectors() const { return m_sectors; }

    // One of every nStride vertices is looked at: of each sector in which any of those lies, the farthest.
    Array<int> Farthest(int nStride) const
    {
        Array<int> aFarthest, aFound;
        Array<double> aDistance2;
        aFarthest.SetSize(kSectors, -1);
        aDistance2.SetSize(kSectors, -1);
        for (int i = 0; i < m_aVertex.GetSize(); i += nStride) {
            const int nSector = m_sectors.Of(m_aVertex[i]);
            const double d = m_sectors.Distance2(m_aVertex[i]);
            if (d > aDistance2[nSector]) {
                aDistance2[nSector] = d;
                aFarthest[nSector] = i;
            }
        }
        for (int s = 0; s < kSectors; ++s) {
            if (aDistance2[s] > 0.0) {
                aFound.Add(aFarthest[s]);
            }
        }
        return aFound;
    }

    // Those not nearer to the centre than the square given for their sector, or nearer than dInner2.
    Array<int> Outside(const CArray<double>& aClear2, double dInner2) const
    {
        Array<int> aFound;
        for (int i = 0; i < m_aVertex.GetSize(); ++i) {
            const CXYZ& v = m_aVertex[i];
            const double d = m_sectors.Distance2(v);
            if (!(d < aClear2[m_sectors.Of(v)] * (kOuterPart * kOuterPart) && d >= dInner2)) {
                aFound.Add(i);
            }
        }
        return aFound;
    }

private:
    const CArray<CXYZ>& m_aVertex;
    const Sectors m_sectors;
};

bool AreEqual(const CArray<int>& a, const CArray<int>& b)
{
    return a.GetSize() == b.GetSize() && std::equal(a.GetData(), a.GetData() + a.GetSize(), b.GetData());
}

bool IsWide(const SeenHull& hull, double dSide)
{
    return hull.Size() >= 3 && hull.Thinness() > kThinnest * dSide;
}

// The candidates, or nothing when it is not certain that they do.
Array<int> FewCandidates(const CArray<CXYZ>& aVertex, const CXYZ& centre, double dSide, double dEPS2)
{
    const Candidates all(aVertex, centre);
    const auto hullOf = [&](const CArray<int>& aFrom) {
        return ScanHull(aVertex, StarRing(aVertex, aFrom, centre), dEPS2);
    };
    Array<int> aRough = hullOf(all.Farthest(kSampleStride));
    if (!IsWide(SeenHull(aVertex, aRough, centre), dSide)) {
        aRough = hullOf(all.Farthest(1));
    }
    const SeenHull rough(aVertex, aRough, centre);
    if (!IsWide(rough, dSide)) {
        return {};
    }
    const Array<int> aHull = hullOf(all.Outside(rough.ClearDistances2(all.GetSectors()), 0.0));
    const SeenHull hull(aVertex, aHull, centre);
    if (!IsWide(hull, dSide)) {
        return {};
    }
    Array<double> aClear2 = hull.ClearDistances2(all.GetSectors());
    for (int i = 0; i < hull.Size(); ++i) {   // around the direction of a corner all are candidates
        const int nSector = all.GetSectors().Of(hull.Corner(i));
        for (const int s : {nSector + kSectors - 1, nSector, nSector + 1}) {
            aClear2[s % kSectors] = 0.0;
        }
    }
    const double dInner = kInnerPart * hull.Thinness();
    const Array<int> aFound = all.Outside(aClear2, dInner * dInner);
    const Array<int> aRing = StarRing(aVertex, aFound, centre);
    const double dNarrowest = 3.0 / kSectors;   // angle of a sector, at least
    const Flank others = {dInner * dNarrowest / 2.0, (1.0 - kOuterPart) / 2.0 * hull.Thinness()};
    HullProof proof(aVertex, aRing, aHull, centre, others);
    return AreEqual(ScanHull(aVertex, aRing, dEPS2), aHull) && proof.Holds(1e-12 * dSide, dEPS2)
               ? aFound
               : Array<int>();
}

}   // namespace

Array<int> HullCandidates(const CArray<CXYZ>& aVertex, const CXYZ& lower, const CXYZ& upper, double dEPS2)
{
    const double dSide = std::fmax(upper.x - lower.x, upper.y - lower.y);
    Array<int> aFound;
    if (aVertex.GetSize() > kFewVertices && dSide > 1e-60 && dSide < 1e60) {
        aFound = FewCandidates(aVertex, MiddleOf(lower, upper), dSide, dEPS2);
    }
    if (aFound.IsEmpty()) {
        aFound.SetSize(aVertex.GetSize(), -1);
        for (int i = 0; i < aFound.GetSize(); ++i) {
            aFound[i] = i;
        }
    }
    return aFound;
}

}   // namespace qsv
