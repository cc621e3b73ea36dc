#include "host/terrain/prepare.h"

#include "host/failure.h"

#include "qsv_3dprocess.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

// All positions in the order they are given to the terrain: points, then the breaklines'.
struct AllPositions {
    std::vector<Position> positions;
    std::vector<Source> sources;

    void Add(const std::string& file, const std::vector<Position>& added, const std::vector<int>& lines)
    {
        positions.insert(positions.end(), added.begin(), added.end());
        for (const int line : lines) {
            sources.push_back({file, line});
        }
    }
};

AllPositions Gather(const SurveyData& survey)
{
    AllPositions all;
    for (const PointFile& file : survey.pointFiles) {
        all.Add(file.path, file.points, file.lines);
    }
    for (const Breakline& line : survey.breaklines) {
        all.Add(line.file, line.points, line.lines);
    }
    return all;
}

// The positions without those that stand where an earlier one stands, whose height stays.
struct MergedPositions {
    std::vector<Position> vertices;
    std::vector<int> vertexOf;   // for every position, the vertex that stands for it
};

MergedPositions MergeCoincident(const std::vector<Position>& positions, double eps)
{
    CArray<CXYZ> points;
    points.SetSize(static_cast<int>(positions.size()));
    std::transform(positions.begin(), positions.end(), points.GetData(),
                   [](const Position& p) { return CXYZ(p.x, p.y, p.z); });
    CTin tin;
    tin.SetEPS(eps);
    CArray<int> vertexOf;
    AddPoints(tin, points, vertexOf);
    MergedPositions merged;
    merged.vertexOf.assign(vertexOf.GetData(), vertexOf.GetData() + vertexOf.GetSize());
    for (int v = 0; v < tin.GetPointSize(); ++v) {
        const CXYZ& p = tin.m_aVertex[v];
        merged.vertices.push_back({p.x, p.y, p.z});
    }
    return merged;
}

// The chain of vertices of one breakline, whose positions follow each other from index first on.
SurveyLine ChainOfVertices(const Breakline& given, const std::vector<int>& vertexOf, std::size_t first)
{
    SurveyLine chain;
    chain.name = given.name;
    for (std::size_t i = 0; i < given.points.size(); ++i) {
        const int vertex = vertexOf[first + i];
        if (!chain.vertices.empty() && chain.vertices.back() == vertex) continue;
        chain.vertices.push_back(vertex);
        chain.sourceLines.push_back(given.lines[i]);
    }
    chain.CloseWhereItReturns();
    return chain;
}

void RequireSurface(const std::vector<Position>& vertices, double eps)
{
    if (vertices.size() < 3) {
        throw Failure("only " + std::to_string(vertices.size()) + " different point" +
                      (vertices.size() == 1 ? "" : "s") +
                      "; a surface needs 3 or more that are not on one line");
    }
    const Position& start = vertices.front();
    const auto distance = [&](const Position& p) { return std::hypot(p.x - start.x, p.y - start.y); };
    const Position& end =
        *std::max_element(vertices.begin(), vertices.end(),
                          [&](const Position& a, const Position& b) { return distance(a) < distance(b); });
    const double dx = end.x - start.x, dy = end.y - start.y;
    const bool onOneLine = std::all_of(vertices.begin(), vertices.end(), [&](const Position& p) {
        return std::fabs(dx * (p.y - start.y) - dy * (p.x - start.x)) <= eps * std::hypot(dx, dy);
    });
    if (onOneLine) {
        throw Failure("all " + std::to_string(vertices.size()) +
                      " points lie on one line; a surface needs points beside it (are the columns right? a "
                      "heading or --order of qsvtin build tells them)");
    }
}

}   // namespace

PreparedSurvey PrepareSurvey(const SurveyData& survey, double eps)
{
    AllPositions all = Gather(survey);
    PreparedSurvey prepared;
    prepared.origin = ChooseOrigin(all.positions);
    for (Position& p : all.positions) {
        p = prepared.origin.ToLocal(p);
    }
    MergedPositions merged = MergeCoincident(all.positions, eps);
    RequireSurface(merged.vertices, eps);

    std::size_t next = 0;
    for (const PointFile& file : survey.pointFiles) {
        next += file.points.size();
    }
    int closingPoints = 0;
    for (const Breakline& line : survey.breaklines) {
        prepared.lines.push_back(ChainOfVertices(line, merged.vertexOf, next));
        next += line.points.size();
        closingPoints += prepared.lines.back().closed ? 1 : 0;
    }

    prepared.vertices = std::move(merged.vertices);
    for (std::size_t i = 0; i < all.positions.size(); ++i) {
        const auto vertex = static_cast<std::size_t>(merged.vertexOf[i]);
        if (vertex == prepared.sources.size()) {
            prepared.sources.push_back(all.sources[i]);
        } else if (all.positions[i].z != prepared.vertices[vertex].z) {
            prepared.conflicts.push_back({all.sources[i], prepared.vertices[vertex].z, all.positions[i].z});
        }
    }
    prepared.merged = static_cast<int>(all.positions.size() - prepared.vertices.size()) - closingPoints;
    return prepared;
}

}   // namespace qsvtin
