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

// The work on one painting order: where each triangle stands in it, and what lies over the same ground.
class Refinement
{
public:
    Refinement(const Mesh& mesh, CArray<int>& aOrder);
    void SettlePosition(int i);

private:
    static Array<PlanBox> PlanBoxes(const Mesh& mesh);
    void FindPairs();
    void FindRivals(int i);
    bool CouldHide(int p, int q) const { return p != q && m_aMaxZ[p] >= m_aMinZ[q]; }
    bool MustFollow(int p, int q) const;
    int FirstOfPairs(int i) const;
    int FirstOfRivals(int i);
    void Exchange(int i, int j);

    const Mesh m_mesh;
    CArray<int>& m_aOrder;
    const Array<PlanBox> m_aBox;
    const BoxTree m_tree;
    CArray<double> m_aMinZ, m_aMaxZ;
    CArray<int> m_aPlace;   // of each triangle in the order
    bool m_bPairsKnown = false;
    CArray<int> m_aFirstPair, m_aEndPair;   // by triangle p: where in m_aHidden
    CArray<int> m_aHidden;                  // the triangles that p would wrongly hide if they came later
    CArray<int> m_aRival;   // later places of triangles over the same ground; a heap, lowest place first
    RepeatFinder m_repeat;
};

Refinement::Refinement(const Mesh& mesh, CArray<int>& aOrder)
    : m_mesh(mesh), m_aOrder(aOrder), m_aBox(PlanBoxes(mesh)), m_tree(m_aBox), m_repeat(aOrder)
{
    const int n = aOrder.GetSize();
    m_aMinZ.SetSize(n, -1);
    m_aMaxZ.SetSize(n, -1);
    m_aPlace.SetSize(n, -1);
    for (int t = 0; t < n; ++t) {
        double z[3] = {CornerAt(mesh, t, 0).z, CornerAt(mesh, t, 1).z, CornerAt(mesh, t, 2).z};
        SortThree(z);
        m_aMinZ[t] = z[0];
        m_aMaxZ[t] = z[2];
        m_aPlace[aOrder[t]] = t;
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

// Which triangle would wrongly hide which does not depend on the order, so all pairs are found in an order in
// which the triangles looked at are near at hand. On a terrain there are few or none. Where much lies over the
// same ground this is given up: then pairs are looked at as the order brings them together.
void Refinement::FindPairs()
{
    constexpr std::int64_t kTestsPerTriangle = 40, kPairsPerTriangle = 4;
    const int n = m_aOrder.GetSize();
    std::int64_t nTestsLeft = kTestsPerTriangle * n, nPairsLeft = kPairsPerTriangle * n;
    m_aFirstPair.SetSize(n, -1);
    m_aEndPair.SetSize(n, -1);
    const CArray<int>& aTriangle = m_tree.InTileOrder();
    for (int i = 0; i < aTriangle.GetSize() && nTestsLeft > 0 && nPairsLeft > 0; ++i) {
        const int p = aTriangle[i];
        m_aFirstPair[p] = m_aHidden.GetSize();
        m_tree.ForEachTouching(m_aBox[p], [&](int q) {
            if (nTestsLeft > 0 && nPairsLeft > 0 && CouldHide(p, q)) {
                --nTestsLeft;
                if (MustFollow(p, q)) {
                    --nPairsLeft;
                    m_aHidden.Add(q);
                }
            }
        });
        m_aEndPair[p] = m_aHidden.GetSize();
    }
    m_bPairsKnown = nTestsLeft > 0 && nPairsLeft > 0;
    if (!m_bPairsKnown) {
        m_aHidden.RemoveAll();
    }
}

void Refinement::FindRivals(int i)
{
    const int p = m_aOrder[i];
    m_aRival.SetSize(0, -1);
    m_tree.ForEachTouching(m_aBox[p], [&](int q) {
        if (m_aPlace[q] > i && CouldHide(p, q)) {
            m_aRival.Add(m_aPlace[q]);
        }
    });
    std::make_heap(m_aRival.GetData(), m_aRival.GetData() + m_aRival.GetSize(), std::greater<>());
}

// Whether p hides what it should not: q is neither clear above p nor p clear below q, and p covers part of q.
bool Refinement::MustFollow(int p, int q) const
{
    return !IsAbovePlane(m_mesh, q, p) && !IsBelowPlane(m_mesh, p, q) && Obscures(m_mesh, p, q);
}

// The first place after i whose triangle must be painted before that at i; -1.
int Refinement::FirstOfPairs(int i) const
{
    const int p = m_aOrder[i];
    int nFirst = -1;
    for (int k = m_aFirstPair[p]; k < m_aEndPair[p]; ++k) {
        const int nPlace = m_aPlace[m_aHidden[k]];
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
    for (int nLeft = m_aRival.GetSize(); nLeft > 0; --nLeft) {
        const int j = m_aRival[0];
        if (MustFollow(m_aOrder[i], m_aOrder[j])) {
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
