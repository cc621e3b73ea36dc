#include <algorithm>
#include <cmath>
#include <numeric>

#include "tin/internal/edge_ring.h"
#include "tin/internal/edge_swap.h"
#include "tin/internal/mesh.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"
#include "tin/internal/triangle_removal.h"
#include "tin/tin.h"

using namespace qsv;

void CTin::SetRotForNV_Z(CXYZ& n, CRot& rot)
{
    CWPK wpk;
    wpk.w = -std::atan2(std::sqrt(n.x * n.x + n.y * n.y), n.z);
    wpk.p = -std::atan2(n.y, n.x);
    rot.I();
    rot.AddMatrix(ROT_ABOUT_Z, wpk);   // n into the plane of x and z
    rot.AddMatrix(ROT_ABOUT_Y, wpk);   // and from there onto z
}

namespace {

// What m_bSelect tells of a triangle while a vertex is deleted.
enum Mark {
    kUnmarked = 0,
    kFan = 1,      // uses the vertex
    kBeside = 2,   // borders the fan
    kFill = 3      // made to fill the hole
};

void ClearMarks(CTin& tin)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        if (tin.m_aTri[t].m_bSelect != kUnmarked) {   // asked first, since most are, and a write costs more
            tin.m_aTri[t].m_bSelect = kUnmarked;
        }
    }
    for (int i = 0; i < tin.m_aVertex.GetSize(); ++i) {
        if (tin.m_aVertex[i].m_nMark != 0) {
            tin.m_aVertex[i].m_nMark = 0;
        }
    }
}

void ClearMarks(CArray<CTriangle>& aTri, const CArray<int>& aMarked)
{
    for (int i = 0; i < aMarked.GetSize(); ++i) {
        aTri[aMarked[i]].m_bSelect = kUnmarked;
    }
}

struct VertexFan {
    Array<int> aTri;                 // the triangles that use the vertex, in ascending order
    Array<int> aBeside;              // those that border them, in ascending order
    Array<DirectedEdge> aOpposite;   // the edge of each triangle that faces the vertex
    bool bAtOutside = false;         // an edge that touches the vertex lies outside
};

VertexFan MarkFan(CTin& tin, int nVt)
{
    VertexFan fan;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        if (SlotOfVertex(tin.m_aTri[t], nVt) >= 0) {
            tin.m_aTri[t].m_bSelect = kFan;
            fan.aTri.Add(t);
        }
    }
    for (int i = 0; i < fan.aTri.GetSize(); ++i) {
        const CTriangle& tri = tin.m_aTri[fan.aTri[i]];
        const int nSlot = SlotOfVertex(tri, nVt);
        for (int k = 0; k < 3; ++k) {
            const int nNeighbor = NeighborAt(tin.m_aTri, fan.aTri[i], k);
            if (nNeighbor >= 0 && tin.m_aTri[nNeighbor].m_bSelect == kUnmarked) {
                tin.m_aTri[nNeighbor].m_bSelect = kBeside;
                fan.aBeside.Add(nNeighbor);
            }
            fan.bAtOutside = fan.bAtOutside || (nNeighbor < 0 && k != NeighborSlotOpposite(nSlot));
        }
        fan.aOpposite.Add({tri.m_nVertex[NextSlot(nSlot)], tri.m_nVertex[PrevSlot(nSlot)]});
    }
    std::sort(fan.aBeside.GetData(), fan.aBeside.GetData() + fan.aBeside.GetSize());
    return fan;
}

Array<int> AllTrianglesOf(const CTin& tin)
{
    Array<int> aTri;
    aTri.SetSize(tin.m_aTri.GetSize(), -1);
    std::iota(aTri.GetData(), aTri.GetData() + aTri.GetSize(), 0);
    return aTri;
}

// Mean normal of those triangles of a list that have one. Returns false, leaving the normal, without any.
bool MeanNormal(CTin& tin, const CArray<int>& aTri, CXYZ& normal)
{
    CXYZ sum;
    int nCount = 0;
    for (int i = 0; i < aTri.GetSize(); ++i) {
        CXYZ n;
        if (tin.GetNVec(aTri[i], n) && std::isfinite(n.x) && std::isfinite(n.y) && std::isfinite(n.z)) {
            sum += n;
            ++nCount;
        }
    }
    if (nCount == 0) {
        return false;
    }
    sum /= nCount;
    normal = sum;
    return true;
}

// Mean normal of the triangles beside the fan; of the fan itself where it stands alone; else straight up.
CXYZ NormalOfSurroundings(CTin& tin, const VertexFan& fan)
{
    CXYZ normal(0.0, 0.0, 1.0);
    if (!MeanNormal(tin, fan.aBeside, normal)) {
        MeanNormal(tin, fan.aTri, normal);
    }
    return normal;
}

void RotateAll(CArray<CXYZ>& aVertex, const CRot& rot)
{
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        rot.Rotate(aVertex[i], aVertex[i]);
    }
}

void TurnBack(CArray<CXYZ>& aVertex, CRot rot)
{
    rot.T();
    RotateAll(aVertex, rot);
}

// A TIN of the ring's vertices as they lie in the turned frame, with the ring as its boundary.
CTin TurnedRing(const CTin& tin, const CArray<int>& aRing, const CRot& rot)
{
    CTin hole;
    for (int i = 0; i < aRing.GetSize(); ++i) {
        hole.m_aVertex.Add(VertexAt(tin.m_aVertex, aRing[i]));
        hole.m_aBoundary.Add(i);
    }
    RotateAll(hole.m_aVertex, rot);
    return hole;
}

// An outer edge of a triangle, across its neighbour slot nSlot.
struct OpenEdge {
    DirectedEdge edge;
    int nTri;
    int nSlot;
};

bool StandsBefore(const OpenEdge& a, const OpenEdge& b)
{
    if (a.edge.nFrom != b.edge.nFrom) {
        return a.edge.nFrom < b.edge.nFrom;
    }
    if (a.edge.nTo != b.edge.nTo) {
        return a.edge.nTo < b.edge.nTo;
    }
    return a.nTri != b.nTri ? a.nTri < b.nTri : a.nSlot < b.nSlot;
}

// The edges of the triangles beside the fan that border the hole or the outside, sorted by their vertices.
Array<OpenEdge> EdgesBeside(const CArray<CTriangle>& aTri, const VertexFan& fan)
{
    Array<OpenEdge> aEdge;
    for (int i = 0; i < fan.aBeside.GetSize(); ++i) {
        const int t = fan.aBeside[i];
        for (int k = 0; k < 3; ++k) {
            const int nNeighbor = NeighborAt(aTri, t, k);
            if (nNeighbor < 0 || aTri[nNeighbor].m_bSelect == kFan) {
                aEdge.Add({{aTri[t].m_nVertex[PrevSlot(k)], aTri[t].m_nVertex[k]}, t, k});
            }
        }
    }
    std::sort(aEdge.GetData(), aEdge.GetData() + aEdge.GetSize(), StandsBefore);
    return aEdge;
}

// Links slot nSlot of triangle nTri, of the filling, to the first triangle beside the fan that holds the
// same edge in the other direction, and that one back to it.
void LinkToSurroundings(CArray<CTriangle>& aTri, const CArray<OpenEdge>& aBeside, int nTri, int nSlot)
{
    const OpenEdge reverse = {{aTri[nTri].m_nVertex[nSlot], aTri[nTri].m_nVertex[PrevSlot(nSlot)]}, -1, -1};
    const OpenEdge* const pEnd = aBeside.GetData() + aBeside.GetSize();
    const OpenEdge* const pFound = std::lower_bound(aBeside.GetData(), pEnd, reverse, StandsBefore);
    if (pFound != pEnd && pFound->edge.nFrom == reverse.edge.nFrom && pFound->edge.nTo == reverse.edge.nTo) {
        aTri[nTri].m_nNeighbor[nSlot] = pFound->nTri;
        aTri[pFound->nTri].m_nNeighbor[pFound->nSlot] = nTri;
    }
}

void StitchFill(CTin& tin, const VertexFan& fan, const CTin& fill, const CArray<int>& aRing)
{
    const int nFirst = tin.m_aTri.GetSize();
    const Array<OpenEdge> aBeside = EdgesBeside(tin.m_aTri, fan);
    for (int t = 0; t < fill.m_aTri.GetSize(); ++t) {
        CTriangle tri = fill.m_aTri[t];
        for (int k = 0; k < 3; ++k) {
            tri.m_nVertex[k] = aRing[tri.m_nVertex[k]];
            tri.m_nNeighbor[k] += tri.m_nNeighbor[k] >= 0 ? nFirst : 0;
        }
        tri.m_bSelect = kFill;
        tin.m_aTri.Add(tri);
    }
    for (int t = nFirst; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            if (tin.m_aTri[t].m_nNeighbor[k] < 0) {
                LinkToSurroundings(tin.m_aTri, aBeside, t, k);
            }
        }
    }
}

// Deletes the fan: the same as DelTri for each of its triangles, in index order.
void DropFan(CTin& tin, const VertexFan& fan)
{
    RemoveFewTriangles(tin.m_aTri, tin.m_aTriNormal, fan.aTri);
    if (!fan.aTri.IsEmpty() && tin.m_aTri.IsEmpty()) {
        tin.InitData();   // as DelTri does with the only triangle
    }
}

// The triangles with a mark once the fan is gone: those beside it and behind all others the filling.
Array<int> MarkedWithoutFan(const VertexFan& fan, int nFirstOfFill, int nTriangles)
{
    Array<int> aMarked;
    for (int i = 0, nBelow = 0; i < fan.aBeside.GetSize(); ++i) {
        while (nBelow < fan.aTri.GetSize() && fan.aTri[nBelow] < fan.aBeside[i]) {
            ++nBelow;
        }
        aMarked.Add(fan.aBeside[i] - nBelow);
    }
    for (int t = nFirstOfFill; t < nTriangles; ++t) {
        aMarked.Add(t);
    }
    return aMarked;
}

void RemoveFromList(CArray<int>& aIndex, int nVt)
{
    int nKept = 0;
    for (int i = 0; i < aIndex.GetSize(); ++i) {
        if (aIndex[i] != nVt) {
            aIndex[nKept++] = aIndex[i] > nVt ? aIndex[i] - 1 : aIndex[i];
        }
    }
    aIndex.SetSize(nKept, -1);
}

void RemoveVertex(CTin& tin, int nVt)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int& nCorner : tin.m_aTri[t].m_nVertex) {
            nCorner -= nCorner >= nVt ? 1 : 0;
        }
    }
    RemoveFromList(tin.m_aBoundary, nVt);
    for (int i = 0; i < tin.m_aBreakLine.GetSize(); ++i) {
        RemoveFromList(tin.m_aBreakLine[i].m_aVertexIndex, nVt);
    }
    if (IsIndexOf(tin.m_aVertex, nVt)) {
        tin.m_aVertex.RemoveAt(nVt);
    }
}

// Turns the corners of triangles as these are looked at, and at the end puts them back from copies, so that not a
// bit of them changes, also when memory runs out. A vertex that is turned has a mark.
class TurnedCorners final : public CornerWatcher
{
public:
    TurnedCorners(CTin& tin, const CRot& rot) : m_tin(tin), m_rot(rot) {}
    ~TurnedCorners()
    {
        for (int i = 0; i < m_aTurned.GetSize(); ++i) {
            m_tin.m_aVertex[m_aTurned[i].nVt] = m_aTurned[i].before;
        }
    }
    TurnedCorners(const TurnedCorners&) = delete;
    TurnedCorners& operator=(const TurnedCorners&) = delete;

    void WillLookAt(int nTri) override
    {
        for (const int nVt : m_tin.m_aTri[nTri].m_nVertex) {
            if (IsIndexOf(m_tin.m_aVertex, nVt) && m_tin.m_aVertex[nVt].m_nMark == 0) {
                CXYZ& vertex = m_tin.m_aVertex[nVt];
                m_aTurned.Add({nVt, vertex});
                m_rot.Rotate(vertex, vertex);
                vertex.m_nMark = 1;
            }
        }
    }

private:
    struct Turned {
        int nVt;
        CXYZ before;
    };
    CTin& m_tin;
    const CRot& m_rot;
    CArray<Turned> m_aTurned;
};

// Makes the filling and what borders it Delaunay as seen along their mean normal.
void RestoreDelaunay(CTin& tin, const CArray<int>& aMarked, const CRot& rot)
{
    TurnedCorners corners(tin, rot);
    for (int i = 0; i < aMarked.GetSize(); ++i) {
        for (int k = 0; k < 3; ++k) {
            LegalizeEdge({tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2}, aMarked[i], k,
                         tin.m_nOptimDepth, Turns::Rounded, &corners);
        }
    }
}

bool FacesAway(const CXYZ& a, const CXYZ& b)
{
    return a.Inn(b) / (a.Len() * b.Len()) < 0.0;
}

}   // namespace

int CTin::DelVertex(int nVt)
{
    ClearMarks(*this);
    if (!IsIndexOf(m_aVertex, nVt)) {
        return 1;
    }
    const VertexFan fan = MarkFan(*this, nVt);
    const Array<int> aRing = ChainIntoRing(fan.aOpposite);
    CXYZ normal = NormalOfSurroundings(*this, fan);
    CRot rot;
    SetRotForNV_Z(normal, rot);
    const int nFirstOfFill = m_aTri.GetSize() - fan.aTri.GetSize();
    if (aRing.GetSize() >= 3) {
        CTin fill = TurnedRing(*this, aRing, rot);
        CXYZ fillNormal;
        const bool bFilled = fill.MakeTinForBoundary() != 0;
        TurnBack(fill.m_aVertex, rot);
        if (bFilled ? !MeanNormal(fill, AllTrianglesOf(fill), fillNormal) : !fan.bAtOutside) {
            ClearMarks(m_aTri, fan.aTri);
            ClearMarks(m_aTri, fan.aBeside);
            return 0;
        }
        if (bFilled && !FacesAway(normal, fillNormal)) {
            StitchFill(*this, fan, fill, aRing);
        }
    }
    DropFan(*this, fan);
    RemoveVertex(*this, nVt);
    const Array<int> aMarked = MarkedWithoutFan(fan, nFirstOfFill, m_aTri.GetSize());
    ClearMarks(m_aTri, aMarked);
    RestoreDelaunay(*this, aMarked, rot);
    return 1;
}
