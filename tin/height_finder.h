#ifndef QSV_TIN_HEIGHT_FINDER_H
#define QSV_TIN_HEIGHT_FINDER_H

#include "base/xyz.h"
#include "platform/afx_array.h"
#include "platform/export.h"

class CTin;

/// What CTin::InterpolateForPlane tells of one position.
struct CHeightAnswer {
    double m_dHeight = 0.0;   ///< height of the surface; 0 when there is none
    int m_nTri = -1;          ///< the triangle that holds the position, or -1
    int m_nResult = 0;        ///< 1; 0 off the surface, or when the triangle is vertical
};

/// Finds the heights of many positions on a finished TIN.
///
/// It keeps a grid of triangles to walk from, so that every walk is a few triangles long. Each answer is that of
/// `tin.InterpolateForPlane(finder.GetStartTri(x, y), x, y, z, nTri)`, to the last bit: it depends on the TIN
/// and the position alone, not on other positions, their order or how they are dealt out to threads. Inside a
/// triangle, other starts lead to the same answer; on a common edge or vertex they may name another of the
/// triangles there, whose height can differ by rounding. As with any walk, in a TIN whose outline is notched
/// a position on the surface may count as off it, when the walk leaves the surface on its way.
///
/// It refers to the TIN, which must neither change nor move as long as the finder is used. Its members read only:
/// several threads may use one finder.
class QSV_API CHeightFinder
{
public:
    /// Cost: one pass over the vertices and one over the triangles. Keeps about 2 bytes for each triangle, up to 4
    /// where the range is long and narrow, and needs 8 for each vertex meanwhile.
    explicit CHeightFinder(const CTin& tin);

    /// The triangle from which the walk to a position starts; -1 when the TIN has none.
    int GetStartTri(double x, double y) const;
    /// Height of the surface at one position, as CTin::InterpolateForPlane.
    CHeightAnswer Find(double x, double y) const;
    /// Heights at many positions.
    /// @param aPlace   x and y of the positions
    /// @param aAnswer  receives one answer for each, in the same order
    /// @return how many of them have a height
    /// Faster than one by one: positions that lie together are taken together, and several walks go on in turns
    /// (Kocberber, Falsafi, Grot, "Asynchronous memory access chaining", 2015). Needs 28 bytes a position.
    int Find(const CArray<CXYZ>& aPlace, CArray<CHeightAnswer>& aAnswer) const;

private:
    struct Grid;
    struct Asked;
    class Queue;

    void ChooseCells();
    void EnterTriangles();
    void FillEmptyCells();

    const CTin& m_tin;
    double m_dMinX = 0.0, m_dMinY = 0.0;   // lower corner of the grid
    double m_dColumnsPerUnit = 0.0, m_dRowsPerUnit = 0.0;
    int m_nBlocksAcross = 1, m_nBlocksUp = 1;   // of 8 x 8 cells
    CArray<int> m_aStart;                       // a triangle in or near each cell, block by block
};

/// The same for one set of positions, without keeping a finder.
QSV_API int FindHeights(const CTin& tin, const CArray<CXYZ>& aPlace, CArray<CHeightAnswer>& aAnswer);

#endif
