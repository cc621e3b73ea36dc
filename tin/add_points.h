#ifndef QSV_TIN_ADD_POINTS_H
#define QSV_TIN_ADD_POINTS_H

#include "base/xyz.h"
#include "platform/afx_array.h"
#include "platform/export.h"

class CTin;

/// Adds many points to a TIN that is being fed, merging those that coincide: the same vertices and indices as
/// CTin::AddPoint called for each in turn, without its scan of all vertices.
/// @param tin      may hold vertices already, which points merge into; its tolerance is the one that counts
/// @param aPoint   x, y, z of the points; texture coordinates and mark are not taken over. It may be the vertex
///                 array of the TIN itself
/// @param aVertex  receives for every point the index of the vertex that stands for it
/// @return how many points became new vertices
/// Cost: near linear in points and vertices, with a table of about 28 bytes for each of them. Only where the
/// tolerance is so small, or the coordinates so large, that their quotient exceeds 1e15 it is the scan.
QSV_API int AddPoints(CTin& tin, const CArray<CXYZ>& aPoint, CArray<int>& aVertex);

#endif
