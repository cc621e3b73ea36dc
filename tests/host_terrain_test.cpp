#include "host/failure.h"
#include "host/report/build_report.h"
#include "host/terrain/edge_chains.h"
#include "host/terrain/feeding_order.h"
#include "host/terrain/local_origin.h"
#include "host/terrain/terrain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

namespace {

using namespace qsvtin;

Breakline Line(const std::vector<Position>& points)
{
    Breakline line;
    line.file = "lines.txt";
    line.number = 1;
    line.points = points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        line.lines.push_back(static_cast<int>(i) + 1);
    }
    return line;
}

SurveyData Survey(const std::vector<Position>& points, const std::vector<std::vector<Position>>& lines = {})
{
    SurveyData survey;
    PointFile file;
    file.path = "points.txt";
    file.points = points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        file.lines.push_back(static_cast<int>(i) + 1);
    }
    survey.pointFiles.push_back(file);
    for (const auto& line : lines) {
        survey.breaklines.push_back(Line(line));
    }
    return survey;
}

// n x n points one apart on the plane z = x + 2y, their lower left corner at (x, y).
std::vector<Position> Grid(int n, double x = 0.0, double y = 0.0)
{
    std::vector<Position> points;
    for (int row = 0; row < n; ++row) {
        for (int column = 0; column < n; ++column) {
            points.push_back({x + column, y + row, static_cast<double>(column + 2 * row)});
        }
    }
    return points;
}

struct Built {
    Built(const SurveyData& given, double trimDegrees)
        : survey(given), prepared(PrepareSurvey(survey, 1e-6)),
          terrain(BuildTerrain(prepared, 1e-6, trimDegrees))
    {
        CheckTerrain(prepared, terrain);
        report = MakeBuildReport(survey, prepared, terrain);
    }

    SurveyData survey;
    PreparedSurvey prepared;
    Terrain terrain;
    BuildReport report;
};

// On the heap: report and terrain refer to the survey, which must not move.
std::unique_ptr<Built> Build(const SurveyData& survey, double trimDegrees = 0.0)
{
    return std::make_unique<Built>(survey, trimDegrees);
}

TEST(LocalOrigin, ComesAndGoesWithoutLosingABit)
{
    const std::vector<Position> aSurvey[] = {
        {{21530180.582, 6783126.792, 13.8}, {21531239.163, 6782553.107, 21.9}},
        {{-21530180.582, -6783126.792, 0.0}, {-21531239.163, -6782553.107, 0.0}},
        {{-0.1, 1e-9, 0.0}, {4194304.3, 1e6 + 1.0 / 3.0, 0.0}},
        {{1.1, 0.1, 0.0}, {1e9 + 0.1, 0.3, 0.0}},
    };
    for (const auto& positions : aSurvey) {
        const LocalOrigin origin = ChooseOrigin(positions);
        EXPECT_EQ(origin.x, std::floor(origin.x)) << "whole units";
        for (const Position& p : positions) {
            const Position local = origin.ToLocal(p);
            EXPECT_EQ(std::fmod(local.x, 1.0), std::fmod(p.x, 1.0)) << "the fraction is untouched";
            EXPECT_EQ(std::fmod(local.y, 1.0), std::fmod(p.y, 1.0));
            EXPECT_EQ(origin.ToSurvey(local).x, p.x);
            EXPECT_EQ(origin.ToSurvey(local).y, p.y);
        }
    }
    const LocalOrigin finnish = ChooseOrigin(aSurvey[0]);
    EXPECT_EQ(finnish.x, 21530180.0);
    EXPECT_EQ(finnish.y, 6782553.0);
}

TEST(Prepare, MergesPointsAndTidiesBreaklines)
{
    const SurveyData survey =
        Survey({{0, 0, 1}, {10, 0, 2}, {10, 0, 2}, {10 + 5e-7, 0, 2.5}, {0, 10, 3}},
               {{{0, 0, 7}, {5, 5, 7}, {5, 5, 7}, {9, 9, 7}},   // a point repeated in succession
                {{0, 0, 1}, {4, 0, 1}, {4, 4, 1}, {0, 0, 1}},   // closed
                {{20, 20, 1}, {20, 20, 1}},                     // nothing left but a point
                {{1, 1, 1}, {2, 1, 1}, {1, 1, 1}}});            // there and back
    const PreparedSurvey prepared = PrepareSurvey(survey, 1e-6);
    EXPECT_EQ(prepared.vertices.size(), 10u);
    EXPECT_EQ(prepared.lines[0].vertices.size(), 3u);
    EXPECT_EQ(prepared.lines[0].sourceLines, (std::vector<int>{1, 2, 4}));
    EXPECT_FALSE(prepared.lines[0].closed);
    EXPECT_EQ(prepared.lines[1].vertices.size(), 3u);
    EXPECT_TRUE(prepared.lines[1].closed);
    EXPECT_EQ(prepared.lines[1].SegmentCount(), 3u);
    EXPECT_EQ(prepared.lines[2].SegmentCount(), 0u);
    EXPECT_EQ(prepared.lines[3].SegmentCount(), 2u);
    // 18 positions, 10 vertices, and the point that closes line 2 is no duplicate.
    EXPECT_EQ(prepared.merged, 7);
    ASSERT_EQ(prepared.conflicts.size(), 2u);
    EXPECT_EQ(prepared.conflicts[0].dropped.line, 4);
    EXPECT_EQ(prepared.conflicts[0].heightKept, 2.0);
    EXPECT_EQ(prepared.conflicts[0].heightDropped, 2.5);
    EXPECT_EQ(prepared.conflicts[1].dropped.file, "lines.txt");
}

// Compared with every pair tested by exact integer arithmetic.
TEST(Crossings, AreThoseOfAllPairs)
{
    std::mt19937 random(4711);
    for (const int size : {8, 60, 2000}) {
        std::uniform_int_distribution<int> coordinate(0, size), step(-40, 40);
        std::vector<Position> vertices;
        std::vector<SurveyLine> lines;
        for (int i = 0; i < 60; ++i) {
            SurveyLine line;
            Position at{static_cast<double>(coordinate(random)), static_cast<double>(coordinate(random)),
                        0.0};
            for (int k = 0; k < 5; ++k) {
                line.vertices.push_back(static_cast<int>(vertices.size()));
                vertices.push_back(at);
                at.x += i % 4 == 0 ? 0 : step(random);   // some lines run straight north
                at.y += i % 4 == 1 ? 0 : step(random);
            }
            line.closed = i % 5 == 0;
            lines.push_back(line);
        }
        const auto side = [&](int a, int b, int c) {
            const Position &p = vertices[static_cast<std::size_t>(a)],
                           &q = vertices[static_cast<std::size_t>(b)],
                           &r = vertices[static_cast<std::size_t>(c)];
            const double doubledArea = (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
            return (doubledArea > 0.0) - (doubledArea < 0.0);
        };
        std::vector<std::array<std::size_t, 4>> expected;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            for (std::size_t s = 0; s < lines[i].SegmentCount(); ++s) {
                for (std::size_t j = i; j < lines.size(); ++j) {
                    for (std::size_t t = j == i ? s + 1 : 0; t < lines[j].SegmentCount(); ++t) {
                        const int a = lines[i].Start(s), b = lines[i].End(s), c = lines[j].Start(t),
                                  d = lines[j].End(t);
                        if (a == c || a == d || b == c || b == d) continue;
                        if (side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0) {
                            expected.push_back({i, s, j, t});
                        }
                    }
                }
            }
        }
        ASSERT_FALSE(expected.empty());
        const std::vector<Crossing> found = FindCrossings(lines, vertices);
        ASSERT_EQ(found.size(), expected.size()) << size;
        for (std::size_t k = 0; k < found.size(); ++k) {
            const auto& [first, second] = found[k].lines;
            EXPECT_EQ((std::array{first.line, first.segment, second.line, second.segment}), expected[k]);
        }
    }
}

// With n lines that all cross, each crossing makes vertices in all lines there: memory would grow with the third power.
TEST(Crossings, OfAllLinesWithEachOtherAreRefused)
{
    std::vector<Position> vertices;
    std::vector<SurveyLine> lines(210);
    for (SurveyLine& line : lines) {
        const int n = static_cast<int>(vertices.size());
        vertices.push_back({0.5 * n, 0.0, 0.0});
        vertices.push_back({210.0 - 0.5 * n, 1.0, 0.0});
        line.vertices = {n, n + 1};
    }
    EXPECT_THROW(FindCrossings(lines, vertices), Failure);   // 210 * 209 / 2 = 21945
    lines.resize(190);
    EXPECT_EQ(FindCrossings(lines, vertices).size(), 17955u);
}

// Twenty lines through a place beside the centre of the survey; with a common vertex there they are no knot.
TEST(Crossings, OfManyLinesAtOnePlaceAreRefused)
{
    const Position hub = {40.3, 61.7, 0.0};
    std::vector<std::vector<Position>> lines;
    for (int i = 0; i < 20; ++i) {
        const double angle = 0.157 * i, x = std::round(3e4 * std::cos(angle)) / 1e3,
                     y = std::round(3e4 * std::sin(angle)) / 1e3;
        lines.push_back({{hub.x - x, hub.y - y, 0.0}, {hub.x + x, hub.y + y, 0.0}});
    }
    try {
        Build(Survey(Grid(101), lines));
        ADD_FAILURE() << "not refused";
    } catch (const Failure& failure) {
        EXPECT_NE(std::string(failure.what()).find("at 40.3 61.7; give them a point"), std::string::npos)
            << failure.what();
    }
    for (auto& line : lines) {
        line.insert(line.begin() + 1, hub);
    }
    EXPECT_TRUE(Build(Survey(Grid(101), lines))->report.crossings.empty());
}

// The corner (0, 0) belongs to one triangle. A line that comes along the hull and turns there is not followed
// any further by the library, whose walk finds no way around the corner.
TEST(Terrain, FollowsALineBeyondACornerOfOneTriangle)
{
    const std::vector<Position> points = {{0, 0, 0},   {10, 1, 1},  {1, 10, 1},
                                          {14, 14, 2}, {10, 11, 3}, {11, 10, 3}};
    CTin tin;
    for (const Position& p : points) {
        tin.AddPoint(p.x, p.y, p.z);
    }
    CPolyline line;
    for (const std::size_t i : {1u, 0u, 4u}) {
        CVertex vertex;
        vertex.x = points[i].x;
        vertex.y = points[i].y;
        line.AddVertex(vertex);
    }
    tin.AddBreakLine(line);
    ASSERT_EQ(tin.CreateTin(0.0), 1);
    ASSERT_FALSE(EdgeChains(tin).IsChain(0, 4)) << "the case is one that stops the line short";

    const auto built = Build(Survey(points, {{points[1], points[0], points[4]}}));
    EXPECT_EQ(built->report.segmentsEnforced, 2u);
    EXPECT_TRUE(built->report.incomplete.empty());
    EXPECT_EQ(built->terrain.tin.m_aBreakLine.GetSize(), 1) << "as many breaklines as were given";
}

TEST(Terrain, NamesPositionsThatNoTriangleUses)
{
    PreparedSurvey prepared;
    prepared.sources = {{"points.txt", 1}, {"points.txt", 2}, {"points.txt", 3}, {"points.txt", 7}};
    Terrain terrain;
    terrain.tin.AddPoint(0, 0, 0);
    terrain.tin.AddPoint(1, 0, 0);
    terrain.tin.AddPoint(0, 1, 0);
    ASSERT_EQ(terrain.tin.CreateTin(0.0), 1);
    terrain.tin.m_aVertex.Add(CXYZ(5, 5, 5));
    CheckTerrain(prepared, terrain);
    ASSERT_EQ(terrain.unused.size(), 1u);
    EXPECT_EQ(terrain.unused[0].line, 7);
}

// Lines between points and beside them, open and closed, crossing each other hundreds of times: on scattered
// points, on a grid and on points rounded to a tenth.
TEST(Terrain, EnforcesEverySegmentOfCrossingLines)
{
    std::size_t crossings = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> uniform(0.0, 100.0);
        const double unit = seed % 3 == 0 ? 1e-9 : seed % 3 == 1 ? 5.0 : 0.1;
        const auto coordinate = [&] { return std::floor(uniform(random) / unit) * unit; };
        std::vector<Position> points;
        for (int i = 0; i < 400; ++i) {
            const double x = coordinate(), y = coordinate();
            points.push_back({x, y, uniform(random)});
        }
        std::vector<std::vector<Position>> lines(15);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            for (std::size_t k = 0; k < 3 + i % 7; ++k) {
                const double x = coordinate(), y = coordinate();
                lines[i].push_back(random() % 2 == 0 ? points[random() % 400]
                                                     : Position{x, y, uniform(random)});
            }
            if (i % 4 == 0) lines[i].push_back(lines[i].front());
        }
        const auto built = Build(Survey(points, lines));
        crossings += built->report.crossings.size();
        EXPECT_EQ(built->report.segmentsEnforced, built->report.segments);
        EXPECT_TRUE(built->report.unused.empty());
    }
    EXPECT_GT(crossings, 10000u);
}

// Points in no order are fed from neighbour to neighbour, and have their numbers again afterwards: it is the terrain of
// the same points surveyed in that order, but for their numbers.
TEST(Terrain, OfPointsInNoOrderKeepsTheirNumbers)
{
    std::mt19937 random(5);
    std::vector<Position> shuffled = Grid(101);
    EXPECT_FALSE(Build(Survey(shuffled))->report.fedAlongCurve) << "in the order of its rows";
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    const std::vector<std::vector<Position>> lines = {{{3.0, 4.0, 0.0}, {80.0, 41.0, 0.0}, {90.0, 7.0, 0.0}}};
    const auto asShuffled = Build(Survey(shuffled, lines));
    EXPECT_TRUE(asShuffled->report.fedAlongCurve);
    const FeedingOrder order(asShuffled->prepared.vertices);
    std::vector<Position> inOrder;
    for (int place = 0; place < static_cast<int>(shuffled.size()); ++place) {
        inOrder.push_back(shuffled[static_cast<std::size_t>(order.VertexAt(place))]);
    }
    const auto asFed = Build(Survey(inOrder, lines));
    EXPECT_FALSE(asFed->report.fedAlongCurve);

    const CTin &a = asFed->terrain.tin, &b = asShuffled->terrain.tin;
    ASSERT_EQ(a.m_aVertex.GetSize(), b.m_aVertex.GetSize());
    ASSERT_EQ(a.m_aTri.GetSize(), b.m_aTri.GetSize());
    for (std::size_t i = 0; i < shuffled.size(); ++i) {
        const Position at = asShuffled->prepared.origin.ToLocal(shuffled[i]);
        ASSERT_EQ(b.m_aVertex[static_cast<int>(i)].x, at.x) << i;
        ASSERT_EQ(b.m_aVertex[static_cast<int>(i)].y, at.y) << i;
    }
    const auto expectSame = [&a, &b](int vertexOfA, int vertexOfB) {
        EXPECT_EQ(a.m_aVertex[vertexOfA].x, b.m_aVertex[vertexOfB].x);
        EXPECT_EQ(a.m_aVertex[vertexOfA].y, b.m_aVertex[vertexOfB].y);
        EXPECT_EQ(a.m_aVtNormal[vertexOfA].x, b.m_aVtNormal[vertexOfB].x);
    };
    for (int t = 0; t < a.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            expectSame(a.m_aTri[t].m_nVertex[k], b.m_aTri[t].m_nVertex[k]);
            EXPECT_EQ(a.m_aTri[t].m_nNeighbor[k], b.m_aTri[t].m_nNeighbor[k]);
        }
    }
    ASSERT_EQ(a.m_aBoundary.GetSize(), b.m_aBoundary.GetSize());
    for (int i = 0; i < a.m_aBoundary.GetSize(); ++i) {
        expectSame(a.m_aBoundary[i], b.m_aBoundary[i]);
    }
    const CArray<int>&ofA = a.m_aBreakLine[0].m_aVertexIndex, &ofB = b.m_aBreakLine[0].m_aVertexIndex;
    ASSERT_EQ(ofA.GetSize(), ofB.GetSize());
    for (int i = 0; i < ofA.GetSize(); ++i) {
        expectSame(ofA[i], ofB[i]);
    }
    EXPECT_TRUE(asShuffled->report.incomplete.empty());
    EXPECT_TRUE(asShuffled->report.unused.empty());
}

TEST(EdgeChains, FollowEdgesOnTheLineOnly)
{
    CTin tin;
    for (const Position& p : Grid(4)) {
        tin.AddPoint(p.x, p.y, p.z);
    }
    ASSERT_EQ(tin.CreateTin(0.0), 1);
    const EdgeChains edges(tin);
    EXPECT_TRUE(edges.IsChain(0, 3)) << "three edges in a row";
    EXPECT_TRUE(edges.IsChain(15, 3)) << "downwards";
    EXPECT_FALSE(edges.IsChain(0, 7)) << "(0,0) to (3,1) passes no vertex";
    EXPECT_NE(edges.IsChain(0, 5), edges.IsChain(1, 4)) << "one diagonal of the first square";
}

}   // namespace
