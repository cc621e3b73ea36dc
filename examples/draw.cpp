// A TIN in perspective, as a host draws it: triangles in painting order, from the farthest to the nearest.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include <qsv_3dprocess.h>

int main(int argc, char** argv)
{
    CTin tin;
    for (int row = 0; row <= 20; ++row) {
        for (int column = 0; column <= 20; ++column) {
            const double x = column - 10.0, y = row - 10.0;
            tin.AddPoint(x, y, 4.0 * std::exp(-0.04 * (x * x + y * y)) + 0.4 * std::sin(x));
        }
    }
    if (!tin.CreateTin(0.0)) return 1;
    tin.UpdateNormal();

    // The eye stands in the south-south-west, 35 degrees above the horizon, 40 units from the centre.
    constexpr double kDegree = 0.017453292519943295;
    CProjection projection;
    projection.InitMatrix(MODEL_MATRIX);
    projection.RotateZ((200.0 - 180.0) * kDegree);
    projection.RotateX((35.0 - 90.0) * kDegree);
    projection.Translate(0.0, 0.0, -40.0);
    projection.SetPrjMatrix(-4.0, 4.0, 2.5, -2.5, 10.0, 80.0);
    projection.BeginTrans(0);

    // On the screen nearness takes the part of height, so the order for painting from above is the one needed.
    CTin screen(tin);
    for (int v = 0; v < screen.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = tin.m_aVertex[v];
        double x = 0.0, y = 0.0, depth = 0.0;
        int inside = 0;
        projection.Transform(p.x, p.y, p.z, x, y, depth, inside, 1);
        screen.m_aVertex[v].SetXYZ(x, y, -depth);
    }
    screen.UpdateDepth2();

    std::FILE* const file = std::fopen(argc > 1 ? argv[1] : "draw.svg", "w");
    if (!file) return 1;
    std::fputs("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 800 500\">\n", file);
    for (int i = 0; i < screen.m_aDepthOrder.GetSize(); ++i) {
        const int t = screen.m_aDepthOrder[i];
        const CXYZ& normal = tin.m_aTriNormal[t];   // light from the north-west
        const double light = std::max(0.0, -0.5 * normal.x + 0.5 * normal.y + 0.7 * normal.z);
        const int n = static_cast<int>(60.0 + 190.0 * std::min(1.0, light));
        std::fprintf(file, "<path fill=\"rgb(%d,%d,%d)\" stroke=\"#777\" d=\"", n, n, n);
        for (int k = 0; k < 3; ++k) {
            const CXYZ& p = screen.m_aVertex[screen.m_aTri[t].m_nVertex[k]];
            std::fprintf(file, "%c%.1f %.1f", k == 0 ? 'M' : 'L', 100.0 * (p.x + 4.0), 100.0 * (2.5 - p.y));
        }
        std::fprintf(file, "z\"/>\n");
    }
    std::fputs("</svg>\n", file);
    std::printf("%d triangles drawn\n", screen.m_aDepthOrder.GetSize());
    return std::fclose(file) == 0 ? 0 : 1;
}
