#ifndef QSV_TIN_INTERNAL_LINES_H
#define QSV_TIN_INTERNAL_LINES_H

#include "base/xyz.h"

// Meeting of a segment 1 (from x1, y1, z1 to x2, y2, z2) and a plan segment 2 (from x3, y3 to x4, y4).
// @param x, y, z  receive the meeting point of the two lines and the height of segment 1 there; written
//                 unless the lines are parallel, also when the segments then turn out not to reach it
// @param bLine1, bLine2  not 0: the line is unbounded
// @param eps      by how much the point may lie beyond a segment's extent, in x and in y
// @return 1 when they meet; 0 when they do not, or the determinant is below 1e-12
int CalCrossPointXY(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                    double x4, double y4, double& x, double& y, double& z, int bLine1, int bLine2,
                    double eps);

// Foot F of the perpendicular from P on the unbounded line through A and B, in space; may lie beyond A or B.
// @param dist  receives the distance from P to F, in space
// @return 1; 0 when A and B are the same point (nothing is written)
int CalcFootOnLine(double ax, double ay, double az, double bx, double by, double bz, double px, double py,
                   double pz, double& fx, double& fy, double& fz, double& dist);

// Crossing, seen in plan, of the segments A1-A2 and B1-B2, and the heights of both there. Unlike
// CalCrossPointXY, whose rounding differs, both segments are in space.
// @param x, y    receive the crossing of the two lines in plan; these and the heights are written unless the
//                lines are parallel, also when the segments then turn out not to reach it
// @param hA, hB  receive the heights of A and B there
// @param bSkipA, bSkipB  not 0: the line is unbounded
// @param dTol    by how much the crossing may lie beyond a segment's extent, in x and in y
// @return 1 when they cross; 0 when they do not, or the determinant is below 1e-12
int CrossEdgeHeights(const CXYZ& A1, const CXYZ& A2, const CXYZ& B1, const CXYZ& B2, double& x, double& y,
                     double& hA, double& hB, int bSkipA, int bSkipB, double dTol);

#endif
