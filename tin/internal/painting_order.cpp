#include "tin/internal/painting_order.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>

#include "tin/internal/box_tree.h"
#include "tin/internal/occlusion.h"
#include "tin/internal/plan.h"

namespace qsv {

namespace {

// Notices that an order, changed by exchanges, is again as it was (Brent, "An improved Monte Carlo factorization
// algorithm", 1980): it remembers one state at a time, after 1, 2, 4, ... exchanges, by the places touched since.
class RepeatFinder
{
public:
    explicit RepeatFinder(const CArray<int>& aOrder) : m_aOrder(aOrder)
    {
        m_aWas.SetSize(aOrder.GetSize(), -1);
        for (int i = 0; i < m_aWas.GetSize(); ++i) {
            m_aWas[i] = kUntouched;
        }
    }

    void Start()
    {
        m_nSpan = 1;
        Remember();
    }

    // To be called before and after the exchange of the places i and j.
    void Before(int i, int j)
    {
        Touch(i);
        Touch(j);
        m_nDifferent -= Differs(i) + Differs(j);
    }
    // Returns the number of exchanges after which the order repeats itself; 0 when that is not known.
    int After(int i, int j)
    {
        ++m_nExchanges;
        m_nDifferent += Differs(i) + Differs(j);
        if (m_nDifferent == 0) {
            return m_nExchanges;
        }
        if (m_nExchanges == m_nSpan) {
            m_nSpan *= 2;
            Remember();
        }
        return 0;
    }

private:
    static constexpr int kUntouched = -1;

    void Remember()
    {
        for (int k = 0; k < m_aTouched.GetSize(); ++k) {
            m_aWas[m_aTouched[k]] = kUntouched;
        }
        m_aTouched.SetSize(0, -1);
        m_nDifferent = 0;
        m_nExchanges = 0;
    }

    void Touch(int i)
    {
        if (m_aWas[i] == kUntouched) {
            m_aWas[i] = m_aOrder[i];
            m_aTouched.Add(i);
        }
    }

    int Differs(int i) const { return m_aWas[i] != m_aOrder[i] ? 1 : 0; }

    const CArray<int>& m_aOrder;
    CArray<int> m_aWas;       // what stood at a place when the state was remembered
    CArray<int> m_aTouched;   // the places that may differ from it
    int m_nDifferent = 0;     // how many of them do
    int m_nExchanges = 0;     // since then
    std::int64_t m_nSpan = 1;
};

constexpr int kNone = -1;

// A triangle with all that tells whether it could hide another, or be hidden.
struct Candidate {
    Facet facet;
    PlanBox box;
    double dMinZ, dMaxZ;
};

bool CouldHide(const Candidate& p, const Candidate& q)
{
    return Touches(p.box, q.box) && p.dMaxZ >= q.dMinZ && p.facet.nTri != q.facet.nTri;
}

// The work on one painting order: where each triangle stands in it, and what lies over the same ground.
class Refinement
{
public:
    Refinement(const Mesh& mesh, CArray<int>& aOrder);
    void SettlePosition(int i);

private:
    static Array<PlanBox> PlanBoxes(const Mesh& mesh);
    Candidate CandidateOf(int t) const;
    void FindPairs();
    PlanBox GatherGroup(int nBegin, CArray<Candidate>& aGroup) const;
    std::int64_t AddPairsOf(const CArray<Candidate>& aGroup, const Candidate& q);
    void FindRivals(int i);
    bool MustFollow(const Facet& p, const Facet& q) const;
    int FirstOfPairs(int i) const;
    int FirstOfRivals(int i);
    void Exchange(int i, int j);

    const Mesh m_mesh;
    CArray<int>& m_aOrder;
    const Array<PlanBox> m_aBox;
    const BoxTree m_tree;
    CArray<int> m_aPlace;   // of each triangle in the order
    bool m_bPairsKnown = false;
    struct Hidden {
        int nTri;
        int nNext;   // in m_aHidden, of the same p; or kNone
    };
    CArray<Hidden> m_aHidden;     // the triangles that some p would wrongly hide if they came later
    CArray<int> m_aFirstHidden;   // of each triangle p, in m_aHidden; or kNone
    CArray<int> m_aRival;   // later places of triangles over the same ground; a heap, lowest place first
    RepeatFinder m_repeat;
};

Refinement::Refinement(const Mesh& mesh, CArray<int>& aOrder)
    : m_mesh(mesh), m_aOrder(aOrder), m_aBox(PlanBoxes(mesh)), m_tree(m_aBox), m_repeat(aOrder)
{
    const int n = aOrder.GetSize();
    m_aPlace.SetSize(n, -1);
    m_aFirstHidden.SetSize(n, -1);
    for (int i = 0; i < n; ++i) {
        m_aPlace[aOrder[i]] = i;
        m_aFirstHidden[i] = kNone;
    }
    FindPairs();
}

Array<PlanBox> Refinement::PlanBoxes(const Mesh& mesh)
{
    Array<PlanBox> aBox;
    aBox.SetSize(mesh.aTri.GetSize(), -1);
    for (int t = 0; t < aBox.GetSize(); ++t) {
        const CXYZ &a = CornerAt(mesh, t, 0), &b = CornerAt(mesh, t, 1), &c = CornerAt(mesh, t, 2);
        double x[3] = {a.x, b.x, c.x}, y[3] = {a.y, b.y, c.y};
        SortThree(x);
        SortThree(y);
        aBox[t] = {x[0], x[2], y[0], y[2]};
    }
    return aBox;
}

Candidate Refinement::CandidateOf(int t) const
{
    const Facet facet = FacetOf(m_mesh, t);
    double z[3] = {facet.aCorner[0].z, facet.aCorner[1].z, facet.aCorner[2].z};
    SortThree(z);
    return {facet, m_aBox[t], z[0], z[2]};
}

// Which triangle would wrongly hide which does not depend on the order, so all pairs are found in an order in
// which the triangles looked at are near at hand: each that may touch one of a group of the tree is compared with
// the whole group. On a terrain there are few pairs or none. Where much lies over the same ground this is given up:
// then pairs are looked at as the order brings them together.
void Refinement::FindPairs()
{
    constexpr std::int64_t kLooksPerTriangle = 600, kPairsPerTriangle = 4;
    const int n = m_aOrder.GetSize();
    const std::int64_t nMostPairs = kPairsPerTriangle * n;
    std::int64_t nLooksLeft = kLooksPerTriangle * n;
    const auto isTooMuch = [&] { return nLooksLeft <= 0 || m_aHidden.GetSize() >= nMostPairs; };
    CArray<Candidate> aGroup;
    for (int i = 0; i < m_tree.InTileOrder().GetSize() && !isTooMuch(); i += BoxTree::kGroup) {
        m_tree.ForEachTouching(GatherGroup(i, aGroup), [&](int nTri) {
            if (!isTooMuch()) {
                nLooksLeft -= AddPairsOf(aGroup, CandidateOf(nTri));
            }
        });
    }
    m_bPairsKnown = !isTooMuch();
    if (!m_bPairsKnown) {
        m_aHidden.RemoveAll();
    }
}

// The group of the tree that begins at a place in its order, and what it covers.
PlanBox Refinement::GatherGroup(int nBegin, CArray<Candidate>& aGroup) const
{
    const CArray<int>& aTriangle = m_tree.InTileOrder();
    PlanBox covered = m_aBox[aTriangle[nBegin]];
    aGroup.SetSize(0, -1);
    for (int i = nBegin; i < nBegin + BoxTree::kGroup && i < aTriangle.GetSize(); ++i) {
        aGroup.Add(CandidateOf(aTriangle[i]));
        covered = Joined(covered, m_aBox[aTriangle[i]]);
    }
    return covered;
}

// Notes which triangles of a group would wrongly hide q. Returns the number of looks that this took, a test counting as
// several.
std::int64_t Refinement::AddPairsOf(const CArray<Candidate>& aGroup, const Candidate& q)
{
    constexpr std::int64_t kLooksOfTest = 10;
    std::int64_t nLooks = aGroup.GetSize();
    for (int k = 0; k < aGroup.GetSize(); ++k) {
        const Candidate& p = aGroup[k];
        if (!CouldHide(p, q)) {
            continue;
        }
        nLooks += kLooksOfTest;
        if (MustFollow(p.facet, q.facet)) {
            m_aHidden.Add({q.facet.nTri, m_aFirstHidden[p.facet.nTri]});
            m_aFirstHidden[p.facet.nTri] = m_aHidden.GetUpperBound();
        }
    }
    return nLooks;
}

void Refinement::FindRivals(int i)
{
    const Candidate p = CandidateOf(m_aOrder[i]);
    m_aRival.SetSize(0, -1);
    m_tree.ForEachTouching(p.box, [&](int q) {
        if (m_aPlace[q] > i && CouldHide(p, CandidateOf(q))) {
            m_aRival.Add(m_aPlace[q]);
        }
    });
    std::make_heap(m_aRival.GetData(), m_aRival.GetData() + m_aRival.GetSize(), std::greater<>());
}

// Whether p hides what it should not: q is neither clear above p nor p clear below q, and p covers part of q.
bool Refinement::MustFollow(const Facet& p, const Facet& q) const
{
    return !IsAbovePlane(q, p) && !IsBelowPlane(p, q) && Obscures(p, q, m_mesh.dEPS);
}

// The first place after i whose triangle must be painted before that at i; -1.
int Refinement::FirstOfPairs(int i) const
{
    const int p = m_aOrder[i];
    int nFirst = -1;
    for (int k = m_aFirstHidden[p]; k != kNone; k = m_aHidden[k].nNext) {
        const int nPlace = m_aPlace[m_aHidden[k].nTri];
        if (nPlace > i && (nFirst < 0 || nPlace < nFirst)) {
            nFirst = nPlace;
        }
    }
    return nFirst;
}

// The same, when the pairs are not known.
int Refinement::FirstOfRivals(int i)
{
    FindRivals(i);
    const Facet facet = FacetOf(m_mesh, m_aOrder[i]);
    for (int nLeft = m_aRival.GetSize(); nLeft > 0; --nLeft) {
        const int j = m_aRival[0];
        if (MustFollow(facet, FacetOf(m_mesh, m_aOrder[j]))) {
            return j;
        }
        std::pop_heap(m_aRival.GetData(), m_aRival.GetData() + nLeft, std::greater<>());
    }
    return -1;
}

void Refinement::Exchange(int i, int j)
{
    std::swap(m_aOrder[i], m_aOrder[j]);
    m_aPlace[m_aOrder[i]] = i;
    m_aPlace[m_aOrder[j]] = j;
}

void Refinement::SettlePosition(int i)
{
    m_repeat.Start();
    for (int nExchangesLeft = m_aOrder.GetSize(); nExchangesLeft > 0;) {
        const int j = m_bPairsKnown ? FirstOfPairs(i) : FirstOfRivals(i);
        if (j < 0) {
            return;
        }
        m_repeat.Before(i, j);
        Exchange(i, j);
        --nExchangesLeft;
        const int nPeriod = m_repeat.After(i, j);
        if (nPeriod > 0) {
            nExchangesLeft %= nPeriod;   // whole rounds change nothing
        }
    }
}

}   // namespace

void RefinePaintingOrder(const Mesh& mesh, CArray<int>& aOrder)
{
    Refinement refinement(mesh, aOrder);
    for (int i = 0; i < aOrder.GetSize(); ++i) {
        refinement.SettlePosition(i);
    }
}

}   // namespace qsv
