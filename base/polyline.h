#ifndef QSV_BASE_POLYLINE_H
#define QSV_BASE_POLYLINE_H

#include "platform/afx_array.h"
#include "platform/export.h"

/// One vertex of a polyline.
class QSV_API CVertex
{
public:
    /// @param nCode  survey code of the vertex; 32 marks a plain one. The library never reads it.
    CVertex(int nCode = 32);
    CVertex(const CVertex&) = default;              ///< a copy, code included
    CVertex& operator=(const CVertex&) = default;   ///< a copy, code included
    ~CVertex() = default;

    double x = 0.0;   ///< east, or to the right
    double y = 0.0;   ///< north, or up in plan
    double z = 0.0;   ///< height
    int m_nCode;      ///< as given to the constructor
};

/// Ordered list of vertices, open or closed. A closed polyline joins its last vertex to its first,
/// which need not be repeated at the end.
class QSV_API CPolyline
{
public:
    /// @param nGrowBy  vertices reserved at a time
    /// @param nCode    survey code of the line; 0 marks a plain one. The library never reads it.
    CPolyline(int nGrowBy = 8, int nCode = 0);
    CPolyline(const CPolyline& src);              ///< a copy of vertices, code and closing
    CPolyline& operator=(const CPolyline& src);   ///< a copy of vertices, code and closing
    ~CPolyline();

    /// Number of vertices.
    int GetVertexSize() const;
    /// The i-th vertex, valid until the polyline changes; null when i is out of range.
    CVertex* GetVertex(unsigned i);
    const CVertex* GetVertex(unsigned i) const;   ///< the same, to read only
    /// Appends a copy. @return index of the new vertex
    int AddVertex(CVertex& vertex);
    /// Removes every vertex; the polyline stays open or closed as it was.
    void DelAllVertex();

    /// Survey code of the line, as given to the constructor.
    int GetCode() const;

    /// Marks the polyline closed.
    void Close();
    /// Nonzero when closed.
    int IsClose() const;

    /// Turning sense in plan (x to the right, y up) of the ring through all vertices, whether or not
    /// the polyline is marked closed: -1 counter-clockwise, 1 clockwise, 0 when it encloses no area, has
    /// fewer than 3 vertices or a coordinate that is not a number. The sign of the shoelace sum, taken
    /// relative to vertex 0 so that large coordinates keep their digits.
    int CheckTurn() const;
    /// Reverses the order of the vertices.
    void Reverse();

private:
    CArray<CVertex> m_aVertex;
    int m_nCode;
    int m_bClose = 0;
};

#endif
