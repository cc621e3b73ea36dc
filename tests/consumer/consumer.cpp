// Builds a TIN of five points on the plane z = 2x + 3y + 1 and prints a height of it.
#include <cstdio>

#include <qsv_3dprocess.h>

int main()
{
    CTin tin;
    tin.AddPoint(0.0, 0.0, 1.0);
    tin.AddPoint(10.0, 0.0, 21.0);
    tin.AddPoint(10.0, 10.0, 51.0);
    tin.AddPoint(0.0, 10.0, 31.0);
    tin.AddPoint(5.0, 5.0, 26.0);
    if (!tin.CreateTin(0.0)) return 1;

    double z = 0.0;
    int nTri = -1;
    if (!tin.InterpolateForPlane(0, 4.0, 1.0, z, nTri)) return 1;
    std::printf("%d triangles, height %.3f\n", tin.GetTriSize(), z);
    return 0;
}
