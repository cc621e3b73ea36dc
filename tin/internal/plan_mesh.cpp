#include "tin/internal/plan_mesh.h"

#include <cassert>
#include <cstddef>

#include "tin/internal/limits.h"
#include "tin/internal/mesh.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

template <class T>
std::unique_ptr<T[]> Uninitialised(int n)
{
    return std::unique_ptr<T[]>(new T[static_cast<std::size_t>(n)]);
}

constexpr std::size_t kCacheLine = 64;
static_assert(2 * sizeof(PlanTriangle) == kCacheLine, "no triangle lies in two lines");

std::size_t BytesFor(int nTriangles)
{
    return static_cast<std::size_t>(nTriangles) * sizeof(PlanTriangle) + kCacheLine;
}

// Triangles in a block of bytes, left as they are.
PlanTriangle* FirstIn(unsigned char* pBlock, int nTriangles)
{
    void* p = pBlock;
    std::size_t nBytes = BytesFor(nTriangles);
    auto* const pFirst = static_cast<PlanTriangle*>(std::align(kCacheLine, nBytes - kCacheLine, p, nBytes));
    std::uninitialized_default_construct_n(pFirst, nTriangles);
    return pFirst;
}

// Edge k of triangle nTri as the triangle across it has it, seats in place of numbers.
EdgeRef LinkOf(const CArray<CTriangle>& aTri, int nTri, int k, const CArray<int>& aSeat)
{
    const int nOther = NeighborAt(aTri, nTri, NeighborSlotOfEdge(k));
    if (nOther < 0) {
        return EdgeRef::Outside();
    }
    const int nFrom = aTri[nTri].m_nVertex[k], nTo = aTri[nTri].m_nVertex[NextSlot(k)];
    const int nSlot = SlotOfNeighbor(aTri[nOther], nTri, {nTo, nFrom});
    assert(nSlot >= 0 && aTri[nOther].m_nVertex[nSlot] == nFrom);
    return EdgeRef(aSeat[nOther], PrevSlot(nSlot));
}

}   // namespace

PlanMesh::PlanMesh(const CArray<CXYZ>& aVertex, const CArray<int>& aRank)
    : m_nSeats(kTrianglesPerVertex * aVertex.GetSize()), m_pBlock(new unsigned char[BytesFor(m_nSeats)]),
      m_pTri(FirstIn(m_pBlock.get(), m_nSeats)), m_pPlace(Uninitialised<PlanPlace>(aVertex.GetSize())),
      m_pVertex(Uninitialised<int>(aVertex.GetSize()))
{
    for (int nVt = 0; nVt < aVertex.GetSize(); ++nVt) {
        m_pPlace.get()[aRank[nVt]] = {aVertex[nVt].x, aVertex[nVt].y};
        m_pVertex.get()[aRank[nVt]] = nVt;
    }
    for (int t = 0; t < m_nSeats; ++t) {
        m_pTri[t].aRank[0] = kEmptySeat;
    }
}

void PlanMesh::Load(const CArray<CTriangle>& aTri, const CArray<int>& aSeat, const CArray<int>& aRank)
{
    for (int i = 0; i < aTri.GetSize(); ++i) {
        PlanTriangle& tri = m_pTri[aSeat[i]];
        for (int k = 0; k < 3; ++k) {
            tri.aRank[k] = aRank[aTri[i].m_nVertex[k]];
            tri.aLink[k] = LinkOf(aTri, i, k, aSeat);
        }
        Number(aSeat[i]);
    }
}

void PlanMesh::Store(CArray<CTriangle>& aTri) const
{
    aTri.SetSize(m_nTriangles, -1);
    for (int t = 0; t < m_nSeats; ++t) {
        const PlanTriangle& from = m_pTri[t];
        if (from.aRank[0] == kEmptySeat) {
            continue;
        }
        CTriangle& tri = aTri[from.nNumber];
        for (int k = 0; k < 3; ++k) {
            const EdgeRef across = from.aLink[k];
            tri.m_nVertex[k] = m_pVertex.get()[from.aRank[k]];
            tri.m_nNeighbor[NeighborSlotOfEdge(k)] = across.IsOutside() ? -1 : m_pTri[across.Tri()].nNumber;
        }
        tri.m_bSelect = 0;
    }
}

}   // namespace qsv
