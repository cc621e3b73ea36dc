#ifndef QSV_TIN_INTERNAL_NEAREST_TRIANGLE_H
#define QSV_TIN_INTERNAL_NEAREST_TRIANGLE_H

#include "tin/internal/mesh.h"

namespace qsv {

// Finds the triangle at a place when the walk could not: slivers that are flat within the tolerance can
// turn a walk away, but not this search, which visits triangles in the order of their distance from the
// place, none of them twice, and decides with exact turns.
//
// A walk leads close first. Cost: about as many triangles as lie on the way from the start.
class NearestTriangle
{
public:
    struct Place {
        int nTri = -1;            // -1: nothing found (the place is not finite)
        int nEdge = -1;           // the edge, by its first slot, on which the place lies or which it faces
        bool bOutside = true;     // beyond the outer edge nEdge, not in nTri
        double dDistance = 0.0;   // outside: from that edge
    };

    // The first nTriCount triangles of the mesh are searched; both may grow between searches.
    NearestTriangle(const Mesh& mesh, const int& nTriCount) : m_mesh(mesh), m_nTriCount(nTriCount) {}

    // The triangle that holds p, edges included; failing that the nearest outer edge that has p on its
    // outer side. dSlack: by how much the outline may deviate from a convex one.
    Place Find(const CXYZ& p, int nStartTri, double dSlack);

private:
    struct Candidate {
        double dDistance;
        int nTri;
    };
    static bool IsFarther(const Candidate& a, const Candidate& b);

    int WalkCloser(const CXYZ& p, int nTri) const;
    void Visit(const CXYZ& p, int nTri);
    bool Holds(const CXYZ& p, int nTri, int& nEdge) const;
    void TakeOuterEdges(const CXYZ& p, int nTri, Place& best) const;

    const Mesh m_mesh;
    const int& m_nTriCount;
    CArray<Candidate> m_aQueue;   // a heap, nearest first
    CArray<int> m_aVisit;         // number of the search that last visited a triangle
    int m_nSearch = 0;
};

}   // namespace qsv

#endif
