#ifndef QSV_TIN_INTERNAL_LINES_H
#define QSV_TIN_INTERNAL_LINES_H

// Meeting of a segment 1 (from x1, y1, z1 to x2, y2, z2) and a plan segment 2 (from x3, y3 to x4, y4).
// @param x, y, z  receive the meeting point of the two lines and the height of segment 1 there; written
//                 unless the lines are parallel, also when the segments then turn out not to reach it
// @param bLine1, bLine2  not 0: the line is unbounded
// @param eps      by how much the point may lie beyond a segment's extent, in x and in y
// @return 1 when they meet; 0 when they do not, or the determinant is below 1e-12
int CalCrossPointXY(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                    double x4, double y4, double& x, double& y, double& z, int bLine1, int bLine2,
                    double eps);

#endif
