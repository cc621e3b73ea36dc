#ifndef QSV_TIN_BREAKLINE_H
#define QSV_TIN_BREAKLINE_H

#include "platform/afx_array.h"

/// A line that the surface must follow, as a chain of vertices of a TIN. A value: copies are deep.
struct CBreakLine {
    CArray<int> m_aVertexIndex;   ///< indices into CTin::m_aVertex, in the order of the line
    int m_bClose = 0;             ///< 1: a ring, whose last vertex joins the first, which is not repeated
};

#endif
