// What a breakline does: the same survey of a ditch, once without and once with the line of its bottom.
#include <cstdio>

#include <qsv_3dprocess.h>

namespace {

void AddSurvey(CTin& tin)
{
    tin.AddPoint(0.0, 0.0, 12.0);
    tin.AddPoint(10.0, 0.0, 12.0);
    tin.AddPoint(10.0, 10.0, 12.0);
    tin.AddPoint(0.0, 10.0, 12.0);
    tin.AddPoint(5.0, 4.0, 11.0);   // south bank
    tin.AddPoint(5.0, 6.0, 11.0);   // north bank
    tin.AddPoint(1.0, 5.0, 8.0);    // bottom, west end
    tin.AddPoint(9.0, 5.0, 8.0);    // bottom, east end
}

double HeightOfBottom(CTin& tin)
{
    double z = 0.0;
    int nTri = -1;
    return tin.InterpolateForPlane(0, 5.0, 5.0, z, nTri) ? z : -1.0;
}

}   // namespace

int main()
{
    // The banks are closer to each other than the ends of the ditch, so a triangle edge dams it.
    CTin dammed;
    AddSurvey(dammed);
    if (!dammed.CreateTin(0.0)) return 1;

    // A breakline runs through the points that stand where its vertices are.
    CPolyline bottom;
    for (const double x : {1.0, 9.0}) {
        CVertex vertex;
        vertex.x = x;
        vertex.y = 5.0;
        vertex.z = 8.0;
        bottom.AddVertex(vertex);
    }
    CTin open;
    AddSurvey(open);
    open.AddBreakLine(bottom);
    if (!open.CreateTin(0.0)) return 1;

    std::printf("between the banks: %.3f without the breakline, %.3f with it\n", HeightOfBottom(dammed),
                HeightOfBottom(open));
    return 0;
}
