#include "host/terrain/polygon.h"

#include "host/failure.h"
#include "host/terrain/triangles.h"

#include <cmath>
#include <map>

namespace qsvtin {

namespace {

std::string LinesOf(const SurveyLine& line, std::size_t a, std::size_t b)
{
    return "lines " + std::to_string(line.sourceLines[a]) + " and " + std::to_string(line.sourceLines[b]);
}

void RequireSimple(const std::string& path, const PreparedSurvey& survey)
{
    const SurveyLine& ring = survey.lines[0];
    std::map<int, std::size_t> seen;
    for (std::size_t i = 0; i < ring.vertices.size(); ++i) {
        const auto [first, isNew] = seen.emplace(ring.vertices[i], i);
        if (!isNew) {
            throw Failure(path + ": the polygon touches itself: " + LinesOf(ring, first->second, i) +
                          " are the same place; cut it into simple polygons");
        }
    }
    const std::vector<Crossing> crossings = FindCrossings({ring}, survey.vertices);
    if (crossings.empty()) return;
    const auto& [first, second] = crossings.front().lines;
    throw Failure(path + ": the polygon crosses itself: the edges that start at " +
                  LinesOf(ring, first.segment, second.segment) +
                  " cross; mend it or cut it into simple polygons");
}

double EnclosedArea(const SurveyLine& ring, const std::vector<Position>& vertices)
{
    double doubled = 0.0;
    for (std::size_t i = 0; i < ring.vertices.size(); ++i) {
        const Position& a = vertices[static_cast<std::size_t>(ring.Start(i))];
        const Position& b = vertices[static_cast<std::size_t>(ring.End(i))];
        doubled += a.x * b.y - b.x * a.y;
    }
    return std::fabs(doubled) / 2.0;
}

bool FillsRing(CTin& tin, double area)
{
    return std::fabs(tin.CalAllAreaXY() - area) <= 1e-9 * area;
}

CTin CutEars(const PreparedSurvey& survey)
{
    CPolyline polygon;
    for (const int v : survey.lines[0].vertices) {
        const Position& p = survey.vertices[static_cast<std::size_t>(v)];
        CVertex vertex;
        vertex.x = p.x;
        vertex.y = p.y;
        vertex.z = p.z;
        polygon.AddVertex(vertex);
    }
    polygon.Close();
    CTin tin;
    tin.CreateTinForPolygon(polygon);
    return tin;
}

// Whether a ray from the place to the east crosses the ring an odd number of times.
bool IsInside(const SurveyLine& ring, const std::vector<Position>& vertices, double x, double y)
{
    bool inside = false;
    for (std::size_t i = 0; i < ring.SegmentCount(); ++i) {
        const Position& a = vertices[static_cast<std::size_t>(ring.Start(i))];
        const Position& b = vertices[static_cast<std::size_t>(ring.End(i))];
        if ((a.y > y) == (b.y > y)) continue;
        if (x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
    }
    return inside;
}

// The terrain of the corners with the ring as a breakline, less what is outside. Where edges between other
// corners crossed the ring, it has vertices more.
CTin CutFromTerrain(const PreparedSurvey& survey, double eps)
{
    CTin tin = BuildTerrain(survey, eps, 0.0).tin;
    CArray<CTriangle> kept;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CXYZ centre = CornerOf(tin, t, 0) + CornerOf(tin, t, 1) + CornerOf(tin, t, 2);
        if (IsInside(survey.lines[0], survey.vertices, centre.x / 3.0, centre.y / 3.0))
            kept.Add(tin.m_aTri[t]);
    }
    tin.m_aTri = kept;
    tin.UpdateTopology();
    return tin;
}

}   // namespace

Terrain FillPolygon(const Breakline& given)
{
    constexpr double kEps = 1e-6;   // of a new TIN
    SurveyData survey;
    survey.breaklines.push_back(given);
    PreparedSurvey prepared = PrepareSurvey(survey, kEps);
    prepared.lines[0].closed = true;
    RequireSimple(given.file, prepared);

    const double area = EnclosedArea(prepared.lines[0], prepared.vertices);
    Terrain terrain{CutEars(prepared), prepared.origin, {}, {}, {}, {}};
    // Ears are cut without looking for other corners inside them, which fills some intricate rings wrongly.
    if (!FillsRing(terrain.tin, area)) terrain.tin = CutFromTerrain(prepared, kEps);
    if (!FillsRing(terrain.tin, area)) {
        throw Failure(given.file +
                      ": the polygon touches itself or is too intricate to fill; cut it into simpler ones");
    }
    return terrain;
}

}   // namespace qsvtin
