#ifndef QSV_TIN_TRIANGLE_H
#define QSV_TIN_TRIANGLE_H

/// One triangle of a TIN: three vertices, three neighbours, a flag.
///
/// The slots 0, 1, 2 run counter-clockwise in plan. The neighbour in slot k lies across the edge that
/// ENDS at vertex k, the edge from vertex (k+2) mod 3 to vertex k:
///
///                    vertex 2
///                     /    \             y
///       neighbour 0  /      \  neighbour 2
///                   /        \           |
///            vertex 0 ------ vertex 1    +-- x
///                  neighbour 1
struct CTriangle {
    int m_nVertex[3] = {-1, -1, -1};     ///< indices into CTin::m_aVertex
    int m_nNeighbor[3] = {-1, -1, -1};   ///< indices into CTin::m_aTri; -1 where the edge lies outside
    int m_bSelect = 0;                   ///< selection flag, 0 or 1; scratch mark of CTin::DelVertex
};

#endif
