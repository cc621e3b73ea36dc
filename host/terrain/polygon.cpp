#include "host/terrain/polygon.h"

#include "host/failure.h"

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

}   // namespace

Terrain FillPolygon(const Breakline& given)
{
    constexpr double kEps = 1e-6;   // of a new TIN
    SurveyData survey;
    survey.breaklines.push_back(given);
    PreparedSurvey prepared = PrepareSurvey(survey, kEps);
    SurveyLine& ring = prepared.lines[0];
    ring.closed = true;
    RequireSimple(given.file, prepared);

    CPolyline polygon;
    for (const int v : ring.vertices) {
        const Position& p = prepared.vertices[static_cast<std::size_t>(v)];
        CVertex vertex;
        vertex.x = p.x;
        vertex.y = p.y;
        vertex.z = p.z;
        polygon.AddVertex(vertex);
    }
    polygon.Close();
    Terrain terrain;
    terrain.origin = prepared.origin;
    const bool filled = terrain.tin.CreateTinForPolygon(polygon) != 0;
    const double area = EnclosedArea(ring, prepared.vertices);
    // Ears are cut without looking for other corners inside them, so intricate rings may be filled wrongly.
    if (!filled || std::fabs(terrain.tin.CalAllAreaXY() - area) > 1e-9 * area) {
        throw Failure(given.file +
                      ": the polygon touches itself or is too intricate to fill; cut it into simpler "
                      "ones, or give it to qsvtin build as a closed breakline");
    }
    return terrain;
}

}   // namespace qsvtin
