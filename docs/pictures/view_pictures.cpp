#include "docs/pictures/pictures.h"

#include <cmath>
#include <string>

namespace {

// A plank from a to b, two triangles wide, that rises from one height to another.
void AddPlank(CTin& tin, Place a, Place b, double za, double zb)
{
    const double length = std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
    const double nx = -0.7 * (b.y - a.y) / length, ny = 0.7 * (b.x - a.x) / length;
    CArray<CXYZ>& vertices = tin.m_aVertex;
    const int first = vertices.GetSize();
    vertices.Add(CXYZ(a.x - nx, a.y - ny, za));
    vertices.Add(CXYZ(b.x - nx, b.y - ny, zb));
    vertices.Add(CXYZ(b.x + nx, b.y + ny, zb));
    vertices.Add(CXYZ(a.x + nx, a.y + ny, za));
    tin.AddTri(first, first + 1, first + 2);
    tin.AddTri(first, first + 2, first + 3);
}

void Paint(Panel& panel, CTin& tin)
{
    static const char* const kFill[] = {"#e9c46a", "#7fb3d5", "#a9cf8e"};
    for (int i = 0; i < tin.m_aDepthOrder.GetSize(); ++i) {
        const int t = tin.m_aDepthOrder[i];
        const int* const v = tin.m_aTri[t].m_nVertex;
        panel.Chain({PlaceOf(tin, v[0]), PlaceOf(tin, v[1]), PlaceOf(tin, v[2])}, true,
                    std::string("stroke=\"#333\" stroke-linejoin=\"round\" fill=\"") + kFill[t / 2 % 3] +
                        "\"");
    }
}

}   // namespace

std::vector<Panel> DrawDepthOrder()
{
    // A long plank rises steeply: its sum of heights is large although it passes under the level one.
    CTin tin;
    AddPlank(tin, {0.5, 1.5}, {9.5, 6.5}, 0.0, 9.0);
    AddPlank(tin, {1.0, 5.2}, {4.6, 0.6}, 3.0, 3.0);
    AddPlank(tin, {6.0, 7.6}, {9.0, 2.0}, 5.0, 5.0);
    Panel bySum("UpdateDepth: by the sum of heights", {-0.3, -0.3}, {10.3, 8.3});
    Panel byPair("UpdateDepth2: pair by pair", {-0.3, -0.3}, {10.3, 8.3});
    tin.UpdateDepth();
    Paint(bySum, tin);
    tin.UpdateDepth2();
    Paint(byPair, tin);
    return {bySum, byPair};
}

std::vector<Panel> DrawProjection()
{
    constexpr double kDegree = 0.017453292519943295, kAway = 22.0;
    CTin tin;
    for (int y = -6; y <= 6; ++y) {
        for (int x = -6; x <= 6; ++x) {
            tin.AddPoint(x, y, 3.0 * std::exp(-0.08 * ((x - 1.0) * (x - 1.0) + y * y)));
        }
    }
    tin.CreateTin(0.0);

    // The eye stands in the south-south-west, 25 degrees above the horizon. It sees 30 degrees to each side.
    CProjection view;
    view.RotateZ(25.0 * kDegree);
    view.RotateX((25.0 - 90.0) * kDegree);
    view.Translate(0.0, 0.0, -kAway);
    view.SetPrjMatrix(-5.0, 5.0, 4.0, -4.0, 10.0, 40.0);
    view.BeginTrans(0);
    CTin screen(tin);
    for (int v = 0; v < tin.GetPointSize(); ++v) {
        const CXYZ& p = tin.m_aVertex[v];
        double x = 0.0, y = 0.0, depth = 0.0;
        int inside = 0;
        view.Transform(p.x, p.y, p.z, x, y, depth, inside, 1);
        screen.m_aVertex[v].SetXYZ(x, y, -depth);   // nearness in place of height
    }
    screen.UpdateDepth2();

    Panel plan("the world, and the eye", {-16.0, -20.0}, {9.0, 7.0});
    DrawMesh(plan, tin);
    const double away = kAway * std::cos(25.0 * kDegree);
    const Place eye{-away * std::sin(25.0 * kDegree), -away * std::cos(25.0 * kDegree)};
    plan.Line(eye, {0.0, 0.0}, "stroke=\"#2c5f9e\" stroke-dasharray=\"5 4\"");
    plan.Dot(eye, "#c0392b");
    Panel picture("the screen", {-5.0, -4.0}, {5.0, 4.0});
    for (int i = 0; i < screen.m_aDepthOrder.GetSize(); ++i) {
        const int* const v = screen.m_aTri[screen.m_aDepthOrder[i]].m_nVertex;
        picture.Chain({PlaceOf(screen, v[0]), PlaceOf(screen, v[1]), PlaceOf(screen, v[2])}, true,
                      "stroke=\"#777\" fill=\"#f4f1e6\" stroke-linejoin=\"round\"");
    }
    return {plan, picture};
}

std::vector<Panel> DrawGridSphere()
{
    CGrid3DSphere sphere;
    const double radius = 10.0;
    sphere.Create3DGridSphere(CXYZ(0, 0, 0), radius, 30.0, 30.0, ZENITH_0_FULL, 0.02);

    constexpr double kDegree = 0.017453292519943295;
    CProjection view;   // from the south-south-west, 25 degrees above the horizon
    view.RotateZ(25.0 * kDegree);
    view.RotateX((25.0 - 90.0) * kDegree);
    view.Translate(0.0, 0.0, -40.0);
    view.SetPrjMatrix(-10.0, 10.0, 10.0, -10.0, 30.0, 60.0);
    view.BeginTrans(0);
    const auto place = [&](double x, double y, double z, bool& front) {
        double sx = 0.0, sy = 0.0, depth = 0.0;
        int inside = 0;
        view.Transform(x, y, z, sx, sy, depth, inside, 0);
        const double away = 40.0 - radius * radius / 40.0;   // of the circle where the sphere is seen edge-on
        const double distance = 2.0 * 30.0 * 60.0 / (90.0 - depth * 30.0);
        front = distance < away;
        return Place{sx, sy};
    };

    Panel panel("every 30 degrees, as a theodolite reads", {-8.2, -8.2}, {8.2, 8.2});
    for (const bool wanted : {false, true}) {   // what lies behind first
        for (int i = 0; i < sphere.m_aLine.GetSize(); ++i) {
            CPolyline& line = sphere.m_aLine[i].m_line;
            const int n = line.GetVertexSize();
            for (int k = 0; k + (line.IsClose() ? 0 : 1) < n; ++k) {
                const CVertex &a = *line.GetVertex(static_cast<unsigned>(k)),
                              &b = *line.GetVertex(static_cast<unsigned>((k + 1) % n));
                bool frontA = false, frontB = false;
                const Place from = place(a.x, a.y, a.z, frontA), to = place(b.x, b.y, b.z, frontB);
                if ((frontA || frontB) != wanted) continue;
                panel.Line(from, to, wanted ? "stroke=\"#2c5f9e\"" : "stroke=\"#dde3ea\"");
            }
        }
    }
    for (int i = 0; i < sphere.m_aLabel.GetSize(); ++i) {
        const CGridLabel& label = sphere.m_aLabel[i];
        bool front = false;
        const Place at = place(label.m_pos.x, label.m_pos.y, label.m_pos.z, front);
        if (front) panel.Text(at, label.m_strText.GetString(), "#c0392b", 10);
    }
    return {panel};
}
