#include "tin/mesh_check.h"

#include <climits>
#include <cmath>

#include "tin/internal/edge_uses.h"
#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

const char* GetMeshFaultText(MESH_FAULT eKind)
{
    switch (eKind) {
    case MESH_FAULT_VERTEX_INDEX: return "corner refers to no vertex";
    case MESH_FAULT_NEIGHBOR_INDEX: return "neighbour is not a triangle";
    case MESH_FAULT_ONE_WAY_LINK: return "neighbour does not link back";
    case MESH_FAULT_LINK_ACROSS_EDGES: return "neighbour links back across another edge";
    case MESH_FAULT_UNLINKED_EDGE: return "shared edge is not linked";
    case MESH_FAULT_EDGE_TWICE: return "edge is held twice in the same direction";
    case MESH_FAULT_COORDINATE: return "coordinate is not a finite number";
    case MESH_FAULT_BOUNDARY_INDEX: return "boundary refers to no vertex";
    case MESH_FAULT_BREAKLINE_INDEX: return "breakline refers to no vertex";
    case MESH_FAULT_CLOCKWISE: return "triangle runs clockwise";
    case MESH_FAULT_FLAT: return "triangle has no area in plan";
    case MESH_FAULT_TRI_NORMALS: return "number of triangle normals is wrong";
    case MESH_FAULT_VT_NORMALS: return "number of vertex normals is wrong";
    case MESH_FAULT_DEPTH_ORDER: return "drawing order is out of date";
    case MESH_FAULT_KINDS: break;
    }
    return "unknown fault";
}

namespace {

// Counts faults and keeps the first ones.
class FaultList
{
public:
    FaultList(CArray<CMeshFault>& aFault, int nMost) : m_aFault(aFault), m_nMost(nMost)
    {
        m_aFault.SetSize(0, -1);
    }

    void Report(MESH_FAULT eKind, int nTri, int nSlot, int nVertex)
    {
        m_nCount += m_nCount < INT_MAX ? 1 : 0;
        if (m_aFault.GetSize() < m_nMost) {
            m_aFault.Add({eKind, nTri, nSlot, nVertex});
        }
    }

    int Count() const { return m_nCount; }

private:
    CArray<CMeshFault>& m_aFault;
    const int m_nMost;
    int m_nCount = 0;
};

bool HasAllCorners(const CTin& tin, int nTri)
{
    const CTriangle& tri = tin.m_aTri[nTri];
    return IsIndexOf(tin.m_aVertex, tri.m_nVertex[0]) && IsIndexOf(tin.m_aVertex, tri.m_nVertex[1]) &&
           IsIndexOf(tin.m_aVertex, tri.m_nVertex[2]);
}

bool HasVertexFault(const CTin& tin, int nTri, int nSlot)
{
    return !IsIndexOf(tin.m_aVertex, tin.m_aTri[nTri].m_nVertex[nSlot]);
}

bool HasNeighborFault(const CTin& tin, int nTri, int nSlot)
{
    const int nNeighbor = tin.m_aTri[nTri].m_nNeighbor[nSlot];
    return nNeighbor != -1 && !IsIndexOf(tin.m_aTri, nNeighbor);
}

// How triangle nTri is linked to its neighbour, as seen from the neighbour.
enum class LinkBack { Sound, None, OtherEdge };

LinkBack LookBack(const CTin& tin, int nTri, int nSlot)
{
    const int nNeighbor = NeighborAt(tin.m_aTri, nTri, nSlot);
    if (nNeighbor < 0) {
        return LinkBack::Sound;
    }
    const CTriangle &t = tin.m_aTri[nTri], &u = tin.m_aTri[nNeighbor];
    LinkBack eBack = LinkBack::None;
    for (int k = 0; k < 3; ++k) {
        if (u.m_nNeighbor[k] != nTri) {
            continue;
        }
        const bool bSameEdge =
            u.m_nVertex[k] == t.m_nVertex[PrevSlot(nSlot)] && u.m_nVertex[PrevSlot(k)] == t.m_nVertex[nSlot];
        if (bSameEdge && nNeighbor != nTri) {
            return LinkBack::Sound;
        }
        eBack = LinkBack::OtherEdge;
    }
    return eBack;
}

// Reports every slot of every triangle that a test finds faulty.
template <class TEST>
void ReportSlots(const CTin& tin, FaultList& faults, MESH_FAULT eKind, TEST fnIsFaulty)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            if (fnIsFaulty(tin, t, k)) {
                faults.Report(eKind, t, k, tin.m_aTri[t].m_nVertex[k]);
            }
        }
    }
}

void CheckIndicesAndLinks(const CTin& tin, FaultList& faults)
{
    ReportSlots(tin, faults, MESH_FAULT_VERTEX_INDEX, HasVertexFault);
    ReportSlots(tin, faults, MESH_FAULT_NEIGHBOR_INDEX, HasNeighborFault);
    ReportSlots(tin, faults, MESH_FAULT_ONE_WAY_LINK,
                [](const CTin& m, int t, int k) { return LookBack(m, t, k) == LinkBack::None; });
    ReportSlots(tin, faults, MESH_FAULT_LINK_ACROSS_EDGES,
                [](const CTin& m, int t, int k) { return LookBack(m, t, k) == LinkBack::OtherEdge; });
}

// What the uses of one edge by several triangles show, for every slot.
struct EdgeFaults {
    Array<char> aUnlinked, aTwice;
};

EdgeFaults CompareEdgeUses(const CArray<CTriangle>& aTri)
{
    const Array<EdgeUse> aUse = SortedEdgeUses(aTri);
    EdgeFaults found;
    found.aUnlinked.SetSize(aUse.GetSize(), -1);
    found.aTwice.SetSize(aUse.GetSize(), -1);
    for (int nFirst = 0, nEnd = 0; nFirst < aUse.GetSize(); nFirst = nEnd) {
        nEnd = EndOfEdge(aUse, nFirst);
        if (aUse[nFirst].nLow == aUse[nFirst].nHigh) {
            continue;   // of a triangle that uses a vertex twice: that one is flat
        }
        int nUp = 0, nDown = 0;
        for (int i = nFirst; i < nEnd; ++i) {
            const int nSlot = 3 * aUse[i].nTri + NeighborSlotOfEdge(aUse[i].nEdge);
            found.aTwice[nSlot] = (aUse[i].bUpward ? nUp : nDown)++ > 0;
        }
        for (int i = nFirst; i < nEnd; ++i) {
            const int k = NeighborSlotOfEdge(aUse[i].nEdge);
            found.aUnlinked[3 * aUse[i].nTri + k] =
                (aUse[i].bUpward ? nDown : nUp) > 0 && aTri[aUse[i].nTri].m_nNeighbor[k] == -1;
        }
    }
    return found;
}

void CheckEdges(const CTin& tin, FaultList& faults)
{
    const EdgeFaults found = CompareEdgeUses(tin.m_aTri);
    ReportSlots(tin, faults, MESH_FAULT_UNLINKED_EDGE,
                [&found](const CTin&, int t, int k) { return found.aUnlinked[3 * t + k] != 0; });
    ReportSlots(tin, faults, MESH_FAULT_EDGE_TWICE,
                [&found](const CTin&, int t, int k) { return found.aTwice[3 * t + k] != 0; });
}

void CheckCoordinates(const CTin& tin, FaultList& faults)
{
    for (int i = 0; i < tin.m_aVertex.GetSize(); ++i) {
        const CXYZ& p = tin.m_aVertex[i];
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
            faults.Report(MESH_FAULT_COORDINATE, -1, -1, i);
        }
    }
}

void CheckList(const CTin& tin, FaultList& faults, MESH_FAULT eKind, int nList, const CArray<int>& aIndex)
{
    for (int i = 0; i < aIndex.GetSize(); ++i) {
        if (!IsIndexOf(tin.m_aVertex, aIndex[i])) {
            faults.Report(eKind, nList, i, aIndex[i]);
        }
    }
}

// Clockwise is a triangle that is turned over by more than the tolerance. One within it is flat, unless it
// really runs counter-clockwise: a thin sliver is no fault.
void CheckTurns(const CTin& tin, FaultList& faults, MESH_FAULT eKind)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        if (!HasAllCorners(tin, t)) {
            continue;
        }
        const CXYZ &a = tin.m_aVertex[tri.m_nVertex[0]], &b = tin.m_aVertex[tri.m_nVertex[1]];
        const CXYZ& c = tin.m_aVertex[tri.m_nVertex[2]];
        const Side eSide = SideOf(DoubledArea(a, b, c), tin.m_dEPS2);
        const bool bFlat = eSide == Side::On && ExactTurn(a, b, c) <= 0;
        if (eKind == MESH_FAULT_FLAT ? bFlat : eSide == Side::Right) {
            faults.Report(eKind, t, -1, -1);
        }
    }
}

void CheckDepthOrder(const CTin& tin, FaultList& faults)
{
    const CArray<int>& aOrder = tin.m_aDepthOrder;
    if (aOrder.IsEmpty()) {
        return;
    }
    CArray<char> aSeen;
    aSeen.SetSize(tin.m_aTri.GetSize(), -1);
    for (int i = 0; i < aOrder.GetSize(); ++i) {
        if (!IsIndexOf(aSeen, aOrder[i]) || aSeen[aOrder[i]]) {
            faults.Report(MESH_FAULT_DEPTH_ORDER, aOrder[i], i, -1);
            return;
        }
        aSeen[aOrder[i]] = 1;
    }
    if (aOrder.GetSize() < aSeen.GetSize()) {
        faults.Report(MESH_FAULT_DEPTH_ORDER, -1, aOrder.GetSize(), -1);
    }
}

bool IsParallel(int nNormals, int nElements)
{
    return nNormals == 0 || nNormals == nElements;
}

}   // namespace

int FindMeshFaults(const CTin& tin, CArray<CMeshFault>& aFault, int nMost)
{
    FaultList faults(aFault, nMost);
    CheckIndicesAndLinks(tin, faults);
    CheckEdges(tin, faults);
    CheckCoordinates(tin, faults);
    CheckList(tin, faults, MESH_FAULT_BOUNDARY_INDEX, -1, tin.m_aBoundary);
    for (int i = 0; i < tin.m_aBreakLine.GetSize(); ++i) {
        CheckList(tin, faults, MESH_FAULT_BREAKLINE_INDEX, i, tin.m_aBreakLine[i].m_aVertexIndex);
    }
    CheckTurns(tin, faults, MESH_FAULT_CLOCKWISE);
    CheckTurns(tin, faults, MESH_FAULT_FLAT);
    if (!IsParallel(tin.m_aTriNormal.GetSize(), tin.m_aTri.GetSize())) {
        faults.Report(MESH_FAULT_TRI_NORMALS, -1, -1, -1);
    }
    if (!IsParallel(tin.m_aVtNormal.GetSize(), tin.m_aVertex.GetSize())) {
        faults.Report(MESH_FAULT_VT_NORMALS, -1, -1, -1);
    }
    CheckDepthOrder(tin, faults);
    return faults.Count();
}
