#ifndef QSV_TIN_BREAKLINE_H
#define QSV_TIN_BREAKLINE_H

#include "platform/afx_array.h"

/// A line that the surface must follow, as a chain of vertices of a TIN. A value: copies are deep.
struct CBreakLine {
    CBreakLine() = default;
    /// Copies the line.
    CBreakLine(const CBreakLine& src) : m_bClose(src.m_bClose) { m_aVertexIndex.Copy(src.m_aVertexIndex); }
    /// Takes the line over; src is left empty.
    CBreakLine(CBreakLine&& src) noexcept : m_bClose(src.m_bClose)
    {
        qsv::MoveInto(m_aVertexIndex, src.m_aVertexIndex);
    }
    /// Copies the line.
    CBreakLine& operator=(const CBreakLine& src)
    {
        m_aVertexIndex.Copy(src.m_aVertexIndex);
        m_bClose = src.m_bClose;
        return *this;
    }
    /// Takes the line over; src is left empty.
    CBreakLine& operator=(CBreakLine&& src) noexcept
    {
        qsv::MoveInto(m_aVertexIndex, src.m_aVertexIndex);
        m_bClose = src.m_bClose;
        return *this;
    }
    ~CBreakLine() = default;

    CArray<int> m_aVertexIndex;   ///< indices into CTin::m_aVertex, in the order of the line
    int m_bClose = 0;             ///< 1: a ring, whose last vertex joins the first, which is not repeated
};

#endif
