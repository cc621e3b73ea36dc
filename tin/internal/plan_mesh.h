#ifndef QSV_TIN_INTERNAL_PLAN_MESH_H
#define QSV_TIN_INTERNAL_PLAN_MESH_H

#include <cstdint>
#include <memory>

#include "base/xyz.h"
#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// An edge as one triangle of a PlanMesh has it: edge k runs from corner k to the next.
class EdgeRef
{
public:
    EdgeRef() = default;   // nothing yet, so that an array of them costs nothing
    EdgeRef(int nTri, int k) : m_nCode(4 * static_cast<std::uint32_t>(nTri) + static_cast<std::uint32_t>(k))
    {
    }
    static EdgeRef Outside()
    {
        EdgeRef edge;
        edge.m_nCode = kOutside;
        return edge;
    }

    bool IsOutside() const { return m_nCode == kOutside; }
    int Tri() const { return static_cast<int>(m_nCode >> 2); }
    int Edge() const { return static_cast<int>(m_nCode & 3); }

private:
    static constexpr std::uint32_t kOutside = 0xFFFFFFFFu;
    std::uint32_t m_nCode;
};

struct PlanPlace {
    double x, y;
};

// Two of them fill a cache line.
struct PlanTriangle {
    int aRank[3];       // the corners, by the rank of their vertices
    EdgeRef aLink[3];   // edge k as the triangle across it has it
    int nNumber;        // in the TIN; below 0: ~ its entry in WalkTraps, which keeps the number
    int nUnused;
};

// The mesh of a TIN while vertices are inserted, laid out for the caches of a processor: vertices are known by their
// rank in an order that keeps neighbours together, and are no more than a place; a triangle stands beside the
// vertex that it was made for. Slots and numbers are those of the TIN.
class PlanMesh
{
public:
    // aRank holds the rank of each vertex, every number below their count once.
    PlanMesh(const CArray<CXYZ>& aVertex, const CArray<int>& aRank);

    // Takes over the triangles of a TIN, whose links are mutual, each to stand at a seat of its own.
    void Load(const CArray<CTriangle>& aTri, const CArray<int>& aSeat, const CArray<int>& aRank);
    // Writes all triangles in the order of their numbers, not selected.
    void Store(CArray<CTriangle>& aTri) const;

    // Triangles are counted by their seats; the vertex of a rank has two to give.
    static int FirstSeatOf(int nRank) { return 2 * nRank; }
    int Seats() const { return m_nSeats; }
    PlanTriangle& operator[](int nTri) { return m_pTri[nTri]; }
    const PlanTriangle& operator[](int nTri) const { return m_pTri[nTri]; }

    const PlanPlace& PlaceOf(int nRank) const { return m_pPlace.get()[nRank]; }
    const PlanPlace& Corner(const PlanTriangle& tri, int k) const { return m_pPlace.get()[tri.aRank[k]]; }

    // Gives a new triangle, which the caller fills in, the next number.
    void Number(int nTri) { m_pTri[nTri].nNumber = m_nTriangles++; }
    // Lets edge k of a triangle and the edge across it refer to each other.
    void Link(int nTri, int k, EdgeRef across)
    {
        m_pTri[nTri].aLink[k] = across;
        if (!across.IsOutside()) {
            m_pTri[across.Tri()].aLink[across.Edge()] = EdgeRef(nTri, k);
        }
    }

private:
    static constexpr int kEmptySeat = -1;   // in place of the first corner

    const int m_nSeats;
    int m_nTriangles = 0;
    const std::unique_ptr<unsigned char[]> m_pBlock;   // holds the triangles, from the start of a cache line
    PlanTriangle* const m_pTri;
    const std::unique_ptr<PlanPlace[]> m_pPlace;   // by rank
    const std::unique_ptr<int[]> m_pVertex;        // by rank
};

}   // namespace qsv

#endif
