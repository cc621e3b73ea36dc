#include "docs/pictures/pictures.h"

#include <cmath>
#include <string>

namespace {

const std::string kAccent = "#c0392b";
const std::string kBlue = "#2c5f9e";

// Points that look scattered and are the same everywhere: the fractions of multiples of two irrational numbers
// (Roberts, "The unreasonable effectiveness of quasirandom sequences", 2018).
std::vector<Place> ScatteredPlaces(int count)
{
    std::vector<Place> places;
    for (int i = 1; i <= count; ++i) {
        const double x = 0.7548776662 * i, y = 0.5698402910 * i;
        places.push_back({10.0 * (x - std::floor(x)), 8.0 * (y - std::floor(y))});
    }
    return places;
}

CTin TinOf(const std::vector<Place>& places, int count = -1)
{
    CTin tin;
    for (const Place& p : places) {
        if (count-- == 0) break;
        tin.AddPoint(p.x, p.y, 0.0);
    }
    tin.CreateTin(0.0);
    return tin;
}

Place Between(Place a, Place b, double share)
{
    return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
}

Place CentroidOf(CTin& tin, int t)
{
    const int* const v = tin.m_aTri[t].m_nVertex;
    const Place a = PlaceOf(tin, v[0]), b = PlaceOf(tin, v[1]), c = PlaceOf(tin, v[2]);
    return {(a.x + b.x + c.x) / 3.0, (a.y + b.y + c.y) / 3.0};
}

void DrawCircleThrough(Panel& panel, Place a, Place b, Place c)
{
    const double bx = b.x - a.x, by = b.y - a.y, cx = c.x - a.x, cy = c.y - a.y;
    const double det = 2.0 * (bx * cy - by * cx), b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    const double ox = (cy * b2 - by * c2) / det, oy = (bx * c2 - cx * b2) / det;
    panel.Circle({a.x + ox, a.y + oy}, std::sqrt(ox * ox + oy * oy),
                 "fill=\"none\" stroke=\"" + kBlue + "\" stroke-dasharray=\"5 4\"");
}

void DrawRing(Panel& panel, const std::vector<Place>& ring)
{
    panel.Chain(ring, true, "fill=\"none\" stroke=\"" + kAccent + "\" stroke-width=\"2\"");
}

CPolyline LineOf(const std::vector<Place>& places)
{
    CPolyline line;
    for (const Place& p : places) {
        CVertex vertex;
        vertex.x = p.x;
        vertex.y = p.y;
        line.AddVertex(vertex);
    }
    return line;
}

}   // namespace

std::vector<Panel> DrawSlots()
{
    CTin tin = TinOf({{0, 0}, {10, 0}, {10, 8}, {0, 8}, {4.5, 4.5}});
    Panel panel("triangles t0 .. t3; in each corner its slot", {-0.8, -0.8}, {10.8, 8.8});
    DrawMesh(panel, tin);
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        const Place centre = CentroidOf(tin, t);
        panel.Text(centre, "t" + std::to_string(t), kBlue, 15);
        for (int k = 0; k < 3; ++k) {
            panel.Text(Between(PlaceOf(tin, tin.m_aTri[t].m_nVertex[k]), centre, 0.36), std::to_string(k),
                       kAccent);
        }
    }
    for (int v = 0; v < tin.GetPointSize(); ++v) {
        const Place p = PlaceOf(tin, v), middle{5.0, 4.0};
        panel.Dot(p, "#333");
        panel.Text(v == 4 ? Place{p.x + 0.5, p.y + 0.1} : Between(p, middle, -0.07), std::to_string(v));
    }
    return {panel};
}

std::vector<Panel> DrawConstruction()
{
    // The hull first, so that building a part of the points shows the mesh before the others are inserted.
    std::vector<Place> places = {{0, 1}, {5, -0.5}, {10, 1.5}, {9.5, 7}, {5, 8.5}, {0.5, 7.5}};
    for (const Place& p : ScatteredPlaces(44)) {
        places.push_back({0.9 + 0.82 * p.x, 1.0 + 0.78 * p.y});
    }
    std::vector<Panel> panels;
    const struct {
        const char* caption;
        int count;
    } stages[] = {{"the hull, as a fan", 6}, {"six points inserted", 12}, {"all of them", 50}};
    for (const auto& stage : stages) {
        CTin tin = TinOf(places, stage.count);
        Panel panel(stage.caption, {-0.3, -0.8}, {10.3, 8.8});
        DrawMesh(panel, tin);
        for (int v = 0; v < tin.GetPointSize(); ++v) {
            panel.Dot(PlaceOf(tin, v), v < 6 ? kAccent : "#333");
        }
        panels.push_back(panel);
    }
    return panels;
}

std::vector<Panel> DrawSwapping()
{
    const std::vector<Place> places = {{0, 0},      {10, 0},  {10.5, 7}, {5.5, 8.6},
                                       {-0.5, 6.5}, {5, 3.2}, {2.6, 4.9}};
    const Place inserted{7.2, 5.2};
    // DivideTri on a finished mesh splits without swapping; CreateTin swaps.
    CTin split = TinOf(places);
    split.DivideTri(inserted.x, inserted.y, 0.0);
    std::vector<Place> all = places;
    all.push_back(inserted);
    CTin swapped = TinOf(all);
    Panel before("split: a vertex lies in the circle behind an edge", {-0.8, -0.6}, {10.8, 9.0});
    Panel after("swapped until no circle holds a vertex", {-0.8, -0.6}, {10.8, 9.0});
    DrawMesh(before, split);
    DrawMesh(after, swapped);
    // The triangles behind the edges that face the new vertex and lie within its reach.
    const int newVertex = split.GetPointSize() - 1;
    for (int t = 0; t < split.GetTriSize(); ++t) {
        const int* const v = split.m_aTri[t].m_nVertex;
        for (int k = 0; k < 3; ++k) {
            if (v[k] != newVertex) continue;
            const int behind = split.m_aTri[t].m_nNeighbor[(k + 2) % 3];
            if (behind < 0) continue;
            const int* const w = split.m_aTri[behind].m_nVertex;
            DrawCircleThrough(before, PlaceOf(split, w[0]), PlaceOf(split, w[1]), PlaceOf(split, w[2]));
        }
    }
    before.Dot(inserted, kAccent);
    after.Dot(inserted, kAccent);
    return {before, after};
}

std::vector<Panel> DrawBreaklines()
{
    std::vector<Place> places = {{0, 0}, {10, 0}, {10, 8}, {0, 8}};
    for (const Place& p : ScatteredPlaces(16)) {
        places.push_back({0.5 + 0.9 * p.x, 0.5 + 0.88 * p.y});
    }
    const std::vector<Place> course = {{0.9, 1.4}, {4.2, 5.1}, {9.2, 6.2}};
    CPolyline line = LineOf(course);
    CTin tin, constrained;
    for (const Place& p : places) {
        tin.AddPoint(p.x, p.y, 0.0);
        constrained.AddPoint(p.x, p.y, 0.0);
    }
    for (const Place& p : course) {
        tin.AddPoint(p.x, p.y, 0.0);
    }
    constrained.AddBreakLine(line);
    tin.CreateTin(0.0);
    constrained.CreateTin(0.0);
    const std::string style = "fill=\"none\" stroke-width=\"2.5\" stroke=\"" + kAccent + "\"";
    Panel before("the line crosses edges", {-0.3, -0.3}, {10.3, 8.3});
    Panel after("each crossed edge is split: vertices 23 and up", {-0.3, -0.3}, {10.3, 8.3});
    DrawMesh(before, tin);
    before.Chain(course, false, style + " stroke-dasharray=\"7 5\"");
    DrawMesh(after, constrained);
    after.Chain(course, false, style);
    for (int v = 0; v < constrained.GetPointSize(); ++v) {
        after.Dot(PlaceOf(constrained, v), v < tin.GetPointSize() ? "#333" : kBlue);
        if (v < tin.GetPointSize()) before.Dot(PlaceOf(tin, v), "#333");
    }
    return {before, after};
}

std::vector<Panel> DrawPolygon()
{
    const std::vector<Place> ring = {{0, 0}, {4, 0.6}, {8.6, 0},   {10, 3},  {8, 4.2},  {9.4, 7.4},
                                     {6, 8}, {5, 4.6}, {3.2, 7.6}, {0.6, 8}, {-0.6, 4}, {1.8, 2.6}};
    CTin tin;
    tin.CreateTinForPolygon(LineOf(ring));
    Panel before("a polygon", {-0.9, -0.3}, {10.3, 8.3});
    Panel after("its TIN: ears cut, edges swapped", {-0.9, -0.3}, {10.3, 8.3});
    before.Chain(ring, true, "fill=\"#f4f1e6\" stroke=\"" + kAccent + "\" stroke-width=\"2\"");
    DrawMesh(after, tin);
    DrawRing(after, ring);
    for (int v = 0; v < tin.GetPointSize(); ++v) {
        before.Dot(PlaceOf(tin, v), "#333");
        after.Dot(PlaceOf(tin, v), "#333");
    }
    return {before, after};
}

std::vector<Panel> DrawVertexDeletion()
{
    CTin tin = TinOf({{0, 0},
                      {5, -0.6},
                      {10, 0},
                      {10.6, 4.5},
                      {10, 8},
                      {5, 8.6},
                      {0, 8},
                      {-0.6, 4},
                      {5, 4.2},
                      {2.2, 2},
                      {6.4, 1.6},
                      {8.4, 4.6},
                      {6.6, 6.8},
                      {3, 6.4},
                      {1.8, 4.4}});
    const int deleted = 8;
    Panel before("the fan around the vertex", {-0.9, -0.9}, {10.9, 8.9});
    Panel after("the hole, closed", {-0.9, -0.9}, {10.9, 8.9});
    DrawMesh(before, tin);
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        const int* const v = tin.m_aTri[t].m_nVertex;
        if (v[0] != deleted && v[1] != deleted && v[2] != deleted) continue;
        before.Chain({PlaceOf(tin, v[0]), PlaceOf(tin, v[1]), PlaceOf(tin, v[2])}, true,
                     "stroke=\"#777\" fill=\"#f6d5cf\"");
    }
    before.Dot(PlaceOf(tin, deleted), kAccent);
    const int firstNew = tin.GetTriSize();
    tin.DelVertex(deleted);
    DrawMesh(after, tin);
    after.Text({5, -0.75},
               std::to_string(firstNew) + " triangles before, " + std::to_string(tin.GetTriSize()) + " now");
    return {before, after};
}

std::vector<Panel> DrawTrimming()
{
    CTin tin = TinOf(ScatteredPlaces(70)), trimmed(tin);
    trimmed.DelTriWithAngle(20.0 * 3.14159265358979 / 180.0, 1);
    Panel before("the hull", {-0.3, -0.3}, {10.3, 8.3});
    Panel after("trimmed at 20 degrees", {-0.3, -0.3}, {10.3, 8.3});
    DrawMesh(before, tin);
    DrawMesh(after, trimmed);
    return {before, after};
}

namespace {

// Shades the triangles that lie on a walk: each time across the first edge that has the place on its right.
int ShadeWalk(Panel& panel, CTin& tin, int start, Place to)
{
    const auto edgeBefore = [&](int t) {
        for (int k = 0; k < 3; ++k) {
            const Place a = PlaceOf(tin, tin.m_aTri[t].m_nVertex[k]),
                        b = PlaceOf(tin, tin.m_aTri[t].m_nVertex[(k + 1) % 3]);
            if ((b.y - a.y) * (to.x - a.x) - (b.x - a.x) * (to.y - a.y) > 0.0) return k;
        }
        return -1;
    };
    int steps = 0;
    for (int t = start; t >= 0; ++steps) {
        const int* const v = tin.m_aTri[t].m_nVertex;
        panel.Chain({PlaceOf(tin, v[0]), PlaceOf(tin, v[1]), PlaceOf(tin, v[2])}, true,
                    "stroke=\"#777\" fill=\"#f6d5cf\"");
        const int k = edgeBefore(t);
        t = k >= 0 ? tin.m_aTri[t].m_nNeighbor[(k + 1) % 3] : -1;
    }
    panel.Dot(to, kAccent);
    return steps;
}

}   // namespace

std::vector<Panel> DrawHeights()
{
    CTin tin = TinOf(ScatteredPlaces(120));
    const CHeightFinder finder(tin);
    const Place asked[] = {{8.8, 1.3}, {1.9, 2.4}, {6.1, 6.9}};
    Panel member("from triangle 0", {-0.3, -0.9}, {10.3, 8.3});
    Panel near("from the starts of a finder", {-0.3, -0.9}, {10.3, 8.3});
    DrawMesh(member, tin);
    DrawMesh(near, tin);
    int steps = 0, nearSteps = 0;
    for (const Place& p : asked) {
        steps += ShadeWalk(member, tin, 0, p);
        nearSteps += ShadeWalk(near, tin, finder.GetStartTri(p.x, p.y), p);
    }
    member.Text({5, -0.75}, std::to_string(steps) + " triangles for three places");
    near.Text({5, -0.75}, std::to_string(nearSteps) + " triangles");
    return {member, near};
}
