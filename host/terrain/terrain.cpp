#include "host/terrain/terrain.h"

#include "host/failure.h"
#include "host/terrain/edge_chains.h"
#include "host/terrain/feeding_order.h"

#include <numeric>
#include <utility>

namespace qsvtin {

namespace {

using Missing = std::vector<std::vector<std::size_t>>;

std::size_t Count(const Missing& missing)
{
    return std::accumulate(missing.begin(), missing.end(), std::size_t{0},
                           [](std::size_t sum, const auto& segments) { return sum + segments.size(); });
}

void AddLine(CTin& tin, const SurveyLine& line, const FeedingOrder& order)
{
    CBreakLine record;
    record.m_bClose = line.closed ? 1 : 0;
    record.m_aVertexIndex.SetSize(static_cast<int>(line.vertices.size()));
    for (int i = 0; i < record.m_aVertexIndex.GetSize(); ++i) {
        record.m_aVertexIndex[i] = order.PlaceOf(line.vertices[static_cast<std::size_t>(i)]);
    }
    tin.m_aBreakLine.Add(record);
}

CTin Triangulate(const std::vector<Position>& vertices, const FeedingOrder& order,
                 const std::vector<SurveyLine>& lines, double eps)
{
    const int count = static_cast<int>(vertices.size());
    CTin tin;
    tin.SetEPS(eps);
    tin.BeginAddPoint(count);
    for (int place = 0; place < count; ++place) {
        const Position& p = vertices[static_cast<std::size_t>(order.VertexAt(place))];
        tin.AddPoint2(p.x, p.y, p.z);
    }
    tin.EndAddPoint();
    for (const SurveyLine& line : lines) {
        if (line.SegmentCount() > 0) AddLine(tin, line, order);
    }
    if (!tin.CreateTin(0.0)) {
        throw Failure(
            "the points span no surface; are they nearly on one line, or the columns wrong (--order)?");
    }
    order.RestoreNumbers(tin);
    return tin;
}

Missing FindMissing(const CTin& tin, const std::vector<SurveyLine>& lines)
{
    Missing missing(lines.size());
    if (lines.empty()) return missing;
    const EdgeChains edges(tin);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (std::size_t s = 0; s < lines[i].SegmentCount(); ++s) {
            if (!edges.IsChain(lines[i].Start(s), lines[i].End(s))) missing[i].push_back(s);
        }
    }
    return missing;
}

// The lines, and behind them every missing segment as a line of its own.
std::vector<SurveyLine> WithMissingSegments(std::vector<SurveyLine> lines, const Missing& missing)
{
    for (std::size_t i = 0; i < missing.size(); ++i) {
        for (const std::size_t s : missing[i]) {
            lines.push_back({{lines[i].Start(s), lines[i].End(s)}, {}, false});
        }
    }
    return lines;
}

CTin TriangulateWithLines(const PreparedSurvey& survey, const FeedingOrder& order, double eps)
{
    CTin tin = Triangulate(survey.vertices, order, survey.lines, eps);
    const Missing missing = FindMissing(tin, survey.lines);
    if (Count(missing) == 0) return tin;

    const int given = tin.m_aBreakLine.GetSize();
    CTin again = Triangulate(survey.vertices, order, WithMissingSegments(survey.lines, missing), eps);
    if (Count(FindMissing(again, survey.lines)) >= Count(missing)) return tin;
    again.m_aBreakLine.SetSize(given);
    return again;
}

std::vector<Source> FindUnused(const CTin& tin, const std::vector<Source>& sources)
{
    std::vector<bool> used(static_cast<std::size_t>(tin.m_aVertex.GetSize()));
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) {
            used[static_cast<std::size_t>(v)] = true;
        }
    }
    std::vector<Source> unused;
    for (std::size_t v = 0; v < sources.size(); ++v) {
        if (!used[v]) unused.push_back(sources[v]);
    }
    return unused;
}

}   // namespace

Terrain BuildTerrain(const PreparedSurvey& survey, double eps, double trimDegrees)
{
    constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
    // The TIN is made in place: assigning one would drop its tolerances.
    const std::vector<Crossing> crossings =
        FindCrossings(survey.lines, survey.vertices);   // refuses too many
    RefuseKnots(crossings, survey.lines, survey.vertices, survey.origin);
    const FeedingOrder order(survey.vertices);
    Terrain terrain{TriangulateWithLines(survey, order, eps), survey.origin, survey.lines, crossings, {}, {}};
    terrain.fedAlongCurve = order.IsAlongCurve();
    terrain.surveyVertices = static_cast<int>(survey.vertices.size());
    // Corners stay, so that something is always left.
    if (trimDegrees > 0.0) terrain.tin.DelTriWithAngle(trimDegrees * kRadiansPerDegree, 1);
    terrain.tin.UpdateNormal();
    return terrain;
}

void CheckTerrain(const PreparedSurvey& survey, Terrain& terrain)
{
    terrain.missing = FindMissing(terrain.tin, terrain.lines);
    terrain.unused = FindUnused(terrain.tin, survey.sources);
}

}   // namespace qsvtin
