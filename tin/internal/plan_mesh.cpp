#include "tin/internal/plan_mesh.h"

#include <cassert>
#include <cstddef>
#include <limits>
#include <new>

#include "tin/internal/mesh.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

template <class T>
std::unique_ptr<T[]> Uninitialised(long long n)
{
    const auto nElements = static_cast<std::size_t>(n);
    if (static_cast<long long>(nElements) != n) {   // more bytes than an address of 32 bits can tell apart
        throw std::bad_alloc();
    }
    return std::unique_ptr<T[]>(new T[nElements]);
}

constexpr std::size_t kCacheLine = 64;

long long BytesFor(long long nWords)
{
    return nWords * static_cast<long long>(sizeof(std::uint32_t)) + static_cast<long long>(kCacheLine);
}

// Words in a block of bytes, left as they are.
std::uint32_t* FirstIn(unsigned char* pBlock, long long nWords)
{
    void* p = pBlock;
    auto nBytes = static_cast<std::size_t>(BytesFor(nWords));
    auto* const pFirst = static_cast<std::uint32_t*>(std::align(kCacheLine, nBytes - kCacheLine, p, nBytes));
    std::uninitialized_default_construct_n(pFirst, nWords);
    return pFirst;
}

// What faces the edge opposite corner k of triangle nTri from the other side, seats in place of numbers.
Corner CornerAcross(const CArray<CTriangle>& aTri, int nTri, int k, const CArray<int>& aSeat)
{
    const int nOther = NeighborAt(aTri, nTri, NeighborSlotOpposite(k));
    if (nOther < 0) {
        return Corner::Outside();
    }
    const int nFrom = aTri[nTri].m_nVertex[NextSlot(k)], nTo = aTri[nTri].m_nVertex[PrevSlot(k)];
    const int nSlot = SlotOfNeighbor(aTri[nOther], nTri, {nTo, nFrom});
    assert(nSlot >= 0 && aTri[nOther].m_nVertex[nSlot] == nFrom);
    return Corner(aSeat[nOther], NextSlot(nSlot));
}

}   // namespace

PlanMesh::PlanMesh(const CArray<CXYZ>& aVertex, const CArray<int>& aRank)
    : m_nSeats(FirstSeatOf(aVertex.GetSize())),
      m_pBlock(Uninitialised<unsigned char>(BytesFor(kWords * m_nSeats))),
      m_pWord(FirstIn(m_pBlock.get(), kWords * m_nSeats)),
      m_pPlace(Uninitialised<PlanPlace>(aVertex.GetSize() + 1)),
      m_pVertex(Uninitialised<int>(aVertex.GetSize()))
{
    for (int nVt = 0; nVt < aVertex.GetSize(); ++nVt) {
        m_pPlace.get()[aRank[nVt]] = {aVertex[nVt].x, aVertex[nVt].y};
        m_pVertex.get()[aRank[nVt]] = nVt;
    }
    const int nNowhere = aVertex.GetSize();
    constexpr double dNaN = std::numeric_limits<double>::quiet_NaN();
    m_pPlace.get()[nNowhere] = {dNaN, dNaN};
    for (int k = 0; k < 3; ++k) {
        SetRank(Corner(0, k), nNowhere);
        Link(Corner(0, k), Corner::Outside());
    }
    for (int t = kFirstSeat; t < m_nSeats; ++t) {
        m_pWord[kWords * t] = kEmptySeat;
    }
}

void PlanMesh::Load(const CArray<CTriangle>& aTri, const CArray<int>& aSeat, const CArray<int>& aRank)
{
    for (int i = 0; i < aTri.GetSize(); ++i) {
        for (int k = 0; k < 3; ++k) {
            const Corner corner(aSeat[i], k);
            SetRank(corner, aRank[aTri[i].m_nVertex[k]]);
            Link(corner, CornerAcross(aTri, i, k, aSeat));
        }
        SetFirstSlot(aSeat[i], 0);
        Number(aSeat[i]);
    }
}

void PlanMesh::Store(CArray<CTriangle>& aTri) const
{
    aTri.SetSize(m_nTriangles, -1);
    for (int t = kFirstSeat; t < m_nSeats; ++t) {
        if (m_pWord[kWords * t] == kEmptySeat) {
            continue;
        }
        CTriangle& tri = aTri[NumberOf(t)];
        Corner corner = FirstCorner(t);
        for (int k = 0; k < 3; ++k, corner = corner.Next()) {
            const Corner across = Across(corner);
            tri.m_nVertex[k] = m_pVertex.get()[RankAt(corner)];
            tri.m_nNeighbor[NeighborSlotOpposite(k)] = across.IsOutside() ? -1 : NumberOf(across.Tri());
        }
        tri.m_bSelect = 0;
    }
}

void PlanMesh::ListSeats(CArray<int>& aSeat) const
{
    aSeat.SetSize(m_nTriangles, -1);
    for (int t = kFirstSeat; t < m_nSeats; ++t) {
        if (m_pWord[kWords * t] != kEmptySeat) {
            aSeat[NumberOf(t)] = t;
        }
    }
}

}   // namespace qsv
