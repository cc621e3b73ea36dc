// A small survey becomes a surface, and the surface tells a height.
#include <cstdio>

#include <qsv_3dprocess.h>

int main()
{
    // East, north, height: a field, and the banks of a ditch that runs through it from west to east.
    const double aSurvey[][3] = {{0.0, 0.0, 12.0},  {10.0, 0.0, 12.0}, {10.0, 10.0, 12.0},
                                 {0.0, 10.0, 12.0}, {5.0, 4.0, 11.0},  {5.0, 6.0, 11.0}};
    CPolyline ditch;
    for (const double x : {1.0, 9.0}) {
        CVertex bottom;
        bottom.x = x;
        bottom.y = 5.0;
        bottom.z = 8.0;
        ditch.AddVertex(bottom);
    }

    CTin tin;
    for (const auto& p : aSurvey) {
        tin.AddPoint(p[0], p[1], p[2]);
    }
    tin.AddBreakLine(ditch);
    if (!tin.CreateTin(0.0)) return 1;   // 0: the points span no surface

    double z = 0.0;
    int nTri = -1;   // receives the triangle that holds the place
    if (!tin.InterpolateForPlane(0, 4.0, 5.0, z, nTri)) return 1;
    std::printf("%d triangles; the bottom of the ditch is at %.3f\n", tin.GetTriSize(), z);
    return 0;
}
