#ifndef QSV_TIN_INTERNAL_PLAN_MESH_H
#define QSV_TIN_INTERNAL_PLAN_MESH_H

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/xyz.h"
#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// A corner of a triangle of a PlanMesh. It also stands for the edge that it faces.
class Corner
{
public:
    Corner() = default;   // nothing yet, so that an array of them costs nothing
    Corner(int nTri, int nSlot)
        : m_nCode(8 * static_cast<std::uint32_t>(nTri) + static_cast<std::uint32_t>(nSlot))
    {
    }
    static Corner Outside() { return Corner(0u); }

    bool IsOutside() const { return m_nCode == 0; }
    int Tri() const { return static_cast<int>(m_nCode / 8); }
    int Slot() const { return static_cast<int>(m_nCode % 8); }
    // The others of its triangle, counter-clockwise. Slots come in no order that a processor could guess, so this must
    // not branch: two bits for each slot.
    Corner Next() const { return Corner((m_nCode & ~7u) + ((0b001001u >> 2 * (m_nCode % 8)) & 3)); }
    Corner Prev() const { return Corner((m_nCode & ~7u) + ((0b010010u >> 2 * (m_nCode % 8)) & 3)); }
    Corner InSlot0() const { return Corner(m_nCode & ~7u); }
    // From the corner in slot 0 to the one in another slot.
    Corner InSlot(unsigned nSlot) const { return Corner(m_nCode + nSlot); }
    bool operator==(Corner other) const { return m_nCode == other.m_nCode; }

private:
    friend class PlanMesh;
    explicit Corner(std::uint32_t nCode) : m_nCode(nCode) {}

    std::uint32_t m_nCode;
};

struct PlanPlace {
    double x, y;
};

// The mesh of a TIN while vertices are inserted, laid out for the caches of a processor: a table of corners (Rossignac
// 2001). Vertices are known by their rank in an order that keeps neighbours together, and are no more than a place; a
// triangle stands beside the vertex that it was made for, and two fill a cache line. Triangles have the numbers of the
// TIN, and its slots but for where counting begins.
class PlanMesh
{
public:
    // aRank holds the rank of each vertex, every number below their count once.
    PlanMesh(const CArray<CXYZ>& aVertex, const CArray<int>& aRank);

    // Takes over the triangles of a TIN, whose links are mutual, each to stand at a seat of its own.
    void Load(const CArray<CTriangle>& aTri, const CArray<int>& aSeat, const CArray<int>& aRank);
    // Writes all triangles in the order of their numbers, not selected.
    void Store(CArray<CTriangle>& aTri) const;

    // Triangles are counted by their seats; the vertex of a rank has two to give. In the first two seats is the
    // outside: corners like others, so that nobody need ask, at a place that is nowhere.
    static int FirstSeatOf(int nRank) { return 2 * nRank + kFirstSeat; }
    static int RankOfSeat(int nTri) { return (nTri - kFirstSeat) / 2; }
    int Seats() const { return m_nSeats; }
    // The seats of all triangles in the order of their numbers.
    void ListSeats(CArray<int>& aSeat) const;
    const void* AddressOf(Corner corner) const { return &m_pWord[corner.m_nCode]; }

    const PlanPlace& PlaceOf(int nRank) const { return m_pPlace.get()[static_cast<std::uint32_t>(nRank)]; }
    const PlanPlace& PlaceAt(Corner corner) const { return m_pPlace.get()[m_pWord[corner.m_nCode]]; }
    int RankAt(Corner corner) const { return static_cast<int>(m_pWord[corner.m_nCode]); }
    void SetRank(Corner corner, int nRank) { m_pWord[corner.m_nCode] = static_cast<std::uint32_t>(nRank); }

    // The corner that faces the same edge from the other side.
    Corner Across(Corner corner) const { return Corner(m_pWord[WordOf(corner) + kAcross]); }
    // Lets two corners face the same edge; either may be outside.
    void Link(Corner corner, Corner across)
    {
        m_pWord[WordOf(corner) + kAcross] = across.m_nCode;
        m_pWord[WordOf(across) + kAcross] = corner.m_nCode;
    }

    // The corner in the first slot that the TIN counts.
    Corner FirstCorner(int nTri) const
    {
        return Corner(nTri, static_cast<int>(m_pWord[kWords * nTri + kFirst]));
    }
    void SetFirstSlot(int nTri, int nSlot)
    {
        m_pWord[kWords * nTri + kFirst] = static_cast<std::uint32_t>(nSlot);
    }
    // To be called before the corners of a triangle, given by slot 0, move so many slots down.
    void TurnFirstSlot(Corner slot0, int nSlots)
    {
        const int nFirst = static_cast<int>(m_pWord[WordOf(slot0) + kFirst]) - nSlots;
        m_pWord[WordOf(slot0) + kFirst] = static_cast<std::uint32_t>(nFirst < 0 ? nFirst + 3 : nFirst);
    }
    // The number in the TIN; below 0: ~ the triangle's entry in WalkTraps, which keeps the number.
    int NumberOf(int nTri) const { return static_cast<int>(m_pWord[kWords * nTri + kNumber]); }
    void SetNumber(int nTri, int nNumber)
    {
        m_pWord[kWords * nTri + kNumber] = static_cast<std::uint32_t>(nNumber);
    }
    // Gives a new triangle, which the caller fills in, the next number.
    void Number(int nTri) { SetNumber(nTri, m_nTriangles++); }

private:
    // Words of a triangle: the ranks at its corners, the corners across from them, and two of its own.
    static constexpr int kFirstSeat = 2;
    static constexpr long long kWords = 8;
    static constexpr int kAcross = 3, kNumber = 6, kFirst = 7;
    static constexpr std::uint32_t kEmptySeat = 0xFFFFFFFFu;   // in place of the first rank

    // As wide as an address, so that what is added to it can be a part of the address.
    static std::size_t WordOf(Corner corner) { return corner.m_nCode; }

    const int m_nSeats;
    int m_nTriangles = 0;
    const std::unique_ptr<unsigned char[]> m_pBlock;   // holds the words, from the start of a cache line
    std::uint32_t* const m_pWord;
    const std::unique_ptr<PlanPlace[]> m_pPlace;   // by rank
    const std::unique_ptr<int[]> m_pVertex;        // by rank
};

}   // namespace qsv

#endif
