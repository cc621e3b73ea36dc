#ifndef QSV_TIN_MESH_CHECK_H
#define QSV_TIN_MESH_CHECK_H

#include "platform/afx_array.h"
#include "platform/export.h"

class CTin;

/// What can be wrong with a TIN, the gravest first. CreateTin leaves none before MESH_FAULT_CLOCKWISE, unless points
/// lie in line but for rounding, whose slivers may fold. Editing can: DelVertex may fill a hole over triangles that
/// lie there already, and normals and drawing order are out of date after every edit until they are made anew.
enum MESH_FAULT : int {
    MESH_FAULT_VERTEX_INDEX = 0,    ///< a corner of a triangle refers to no vertex
    MESH_FAULT_NEIGHBOR_INDEX,      ///< a neighbour is neither -1 nor a triangle
    MESH_FAULT_ONE_WAY_LINK,        ///< the neighbour does not link back
    MESH_FAULT_LINK_ACROSS_EDGES,   ///< the neighbour links back, but not across the same edge
    MESH_FAULT_UNLINKED_EDGE,       ///< the edge counts as outer, yet another triangle holds its other side
    MESH_FAULT_EDGE_TWICE,          ///< a triangle before this one holds the edge in the same direction
    MESH_FAULT_COORDINATE,          ///< a vertex has a coordinate that is not finite
    MESH_FAULT_BOUNDARY_INDEX,      ///< an entry of m_aBoundary refers to no vertex
    MESH_FAULT_BREAKLINE_INDEX,     ///< an entry of a breakline refers to no vertex
    MESH_FAULT_CLOCKWISE,           ///< a triangle runs clockwise in plan
    MESH_FAULT_FLAT,                ///< a triangle has no area in plan, or is turned over by rounding
    MESH_FAULT_TRI_NORMALS,         ///< m_aTriNormal is neither empty nor as long as m_aTri
    MESH_FAULT_VT_NORMALS,          ///< m_aVtNormal is neither empty nor as long as m_aVertex
    MESH_FAULT_DEPTH_ORDER,         ///< m_aDepthOrder is neither empty nor an order of all triangles
    MESH_FAULT_KINDS                ///< how many kinds there are
};

/// One fault and its place. Fields that say nothing about a kind are -1.
struct CMeshFault {
    MESH_FAULT m_eKind = MESH_FAULT_VERTEX_INDEX;   ///< what is wrong
    /// The triangle; of a breakline fault the breakline; of a drawing order the entry that is wrong.
    int m_nTri = -1;
    /// The slot in the triangle, of an edge its neighbour slot: the edge that ends at this vertex slot. Of
    /// a boundary, breakline or drawing order the position in the list.
    int m_nSlot = -1;
    /// The vertex: what stands in that slot or position, in range or not.
    int m_nVertex = -1;
};

/// Looks for everything that a mesh must not have, without changing it.
/// @param aFault  receives the first faults, by kind and then by place
/// @param nMost   how many at most; 0 only counts
/// @return how many there are in all; 0 for a sound mesh
/// A drawing order counts as one fault. Clockwise and flat triangles are faults of a terrain; walls (AddVPlane)
/// and surfaces around a centre (CreateTinObal) have them by nature.
/// Cost: n log n in the triangles. Reads only; when memory runs out, std::bad_alloc.
QSV_API int FindMeshFaults(const CTin& tin, CArray<CMeshFault>& aFault, int nMost);

/// A kind of fault in plain words, such as "neighbour does not link back"; never null.
QSV_API const char* GetMeshFaultText(MESH_FAULT eKind);

#endif
