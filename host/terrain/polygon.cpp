#include "host/terrain/polygon.h"

#include "host/failure.h"
#include "host/terrain/plan_ring.h"
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

std::vector<Position> CornersOf(const PreparedSurvey& survey)
{
    std::vector<Position> corners;
    for (const int v : survey.lines[0].vertices) {
        corners.push_back(survey.vertices[static_cast<std::size_t>(v)]);
    }
    return corners;
}

bool FillsRing(CTin& tin, double area)
{
    return std::fabs(tin.CalAllAreaXY() - area) <= 1e-9 * area;
}

CTin CutEars(const std::vector<Position>& corners)
{
    CPolyline polygon;
    for (const Position& p : corners) {
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

// The terrain of the corners with the ring as a breakline, less what is outside. Where edges between other
// corners crossed the ring, it has vertices more.
CTin CutFromTerrain(const PreparedSurvey& survey, double eps)
{
    CTin tin = BuildTerrain(survey, eps, 0.0).tin;
    const PlanRing ring(CornersOf(survey));
    CArray<CTriangle> kept;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CXYZ centre = CornerOf(tin, t, 0) + CornerOf(tin, t, 1) + CornerOf(tin, t, 2);
        if (ring.Encloses(centre.x / 3.0, centre.y / 3.0)) kept.Add(tin.m_aTri[t]);
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

    const std::vector<Position> corners = CornersOf(prepared);
    const double area = EnclosedArea(corners);
    Terrain terrain{CutEars(corners), prepared.origin, {}, {}, {}, {}};
    // Ears are cut without looking for other corners inside them, which fills some intricate rings wrongly.
    if (!FillsRing(terrain.tin, area)) terrain.tin = CutFromTerrain(prepared, kEps);
    if (!FillsRing(terrain.tin, area)) {
        throw Failure(given.file +
                      ": the polygon touches itself or is too intricate to fill; cut it into simpler ones");
    }
    return terrain;
}

}   // namespace qsvtin
