#include "host/terrain/crossings.h"

#include "host/failure.h"
#include "host/numbers.h"
#include "host/query/box_tree.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace qsvtin {

namespace {

struct Segment {
    std::size_t line;
    std::size_t segment;
    int start;
    int end;
};

// Positive when p is left of the line from a to b.
double Side(const Position& a, const Position& b, const Position& p)
{
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

bool OnDifferentSides(double side1, double side2)
{
    return (side1 < 0.0 && side2 > 0.0) || (side1 > 0.0 && side2 < 0.0);
}

// Where a-b and c-d cross properly: the fractions of the way along both.
std::optional<std::pair<double, double>> CrossingFractions(const Position& a, const Position& b,
                                                           const Position& c, const Position& d)
{
    const double sideC = Side(a, b, c), sideD = Side(a, b, d);
    const double sideA = Side(c, d, a), sideB = Side(c, d, b);
    if (!OnDifferentSides(sideC, sideD) || !OnDifferentSides(sideA, sideB)) return std::nullopt;
    return std::make_pair(sideA / (sideA - sideB), sideC / (sideC - sideD));
}

double Along(double from, double to, double fraction)
{
    return from + fraction * (to - from);
}

double Length(const Segment& s, const std::vector<Position>& vertices)
{
    const Position &a = vertices[static_cast<std::size_t>(s.start)],
                   &b = vertices[static_cast<std::size_t>(s.end)];
    return std::hypot(b.x - a.x, b.y - a.y);
}

double MeanLength(const std::vector<Segment>& segments, const std::vector<Position>& vertices)
{
    double sum = 0.0;
    for (const Segment& s : segments) {
        sum += Length(s, vertices);
    }
    return sum / static_cast<double>(segments.size());
}

// Segments cut into pieces that are not much longer than most, so that little stands in the rectangle about a long
// slanting one that is not near it.
struct Pieces {
    std::vector<Box> boxes;
    std::vector<std::size_t> segments;
};

Pieces CutIntoPieces(const std::vector<Segment>& segments, const std::vector<Position>& vertices)
{
    const double most = MeanLength(segments, vertices);
    Pieces pieces;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const Position &a = vertices[static_cast<std::size_t>(segments[i].start)],
                       &b = vertices[static_cast<std::size_t>(segments[i].end)];
        const double length = Length(segments[i], vertices);
        // Never more than there are segments, but for lengths so small that their mean is 0.
        const double count =
            std::fmin(std::fmax(1.0, std::ceil(length / most)), static_cast<double>(segments.size()));
        const double margin = 1e-3 * length / count;   // against rounding
        for (double k = 0.0; k < count; ++k) {
            const auto [west, east] =
                std::minmax({Along(a.x, b.x, k / count), Along(a.x, b.x, (k + 1.0) / count)});
            const auto [south, north] =
                std::minmax({Along(a.y, b.y, k / count), Along(a.y, b.y, (k + 1.0) / count)});
            pieces.boxes.push_back({west - margin, east + margin, south - margin, north + margin});
            pieces.segments.push_back(i);
        }
    }
    return pieces;
}

std::vector<Segment> AllSegments(const std::vector<SurveyLine>& lines)
{
    std::vector<Segment> segments;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        for (std::size_t s = 0; s < lines[line].SegmentCount(); ++s) {
            segments.push_back({line, s, lines[line].Start(s), lines[line].End(s)});
        }
    }
    return segments;
}

bool ShareVertex(const Segment& s, const Segment& t)
{
    return s.start == t.start || s.start == t.end || s.end == t.start || s.end == t.end;
}

using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

// Lines that cross each other all over take memory and time with the third power of their number, and are a mistake.
std::size_t MostCrossings(std::size_t segments)
{
    return 20000 + 4 * segments;
}

// Keeps one of each pair: long segments may be found together in several of their pieces.
void Unite(Pairs& pairs, std::size_t most)
{
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    if (pairs.size() > most) {
        throw Failure("the lines cross each other more than " + std::to_string(most) +
                      " times; check the order of their points, or leave out some lines");
    }
}

}   // namespace

std::vector<Crossing> FindCrossings(const std::vector<SurveyLine>& lines,
                                    const std::vector<Position>& vertices)
{
    const std::vector<Segment> segments = AllSegments(lines);
    if (segments.empty()) return {};
    const auto at = [&](int vertex) -> const Position& { return vertices[static_cast<std::size_t>(vertex)]; };

    const auto fractionsOf = [&](const Segment& s, const Segment& t) {
        return CrossingFractions(at(s.start), at(s.end), at(t.start), at(t.end));
    };
    Pairs pairs;
    const std::size_t most = MostCrossings(segments.size());
    const Pieces pieces = CutIntoPieces(segments, vertices);
    const BoxTree tree(pieces.boxes);
    for (std::size_t p = 0; p < pieces.boxes.size(); ++p) {
        const std::size_t i = pieces.segments[p];
        tree.VisitTouching(pieces.boxes[p], [&](int q) {
            const std::size_t j = pieces.segments[static_cast<std::size_t>(q)];
            if (i < j && pieces.boxes[p].Touches(pieces.boxes[static_cast<std::size_t>(q)]) &&
                !ShareVertex(segments[i], segments[j]) && fractionsOf(segments[i], segments[j])) {
                pairs.emplace_back(i, j);
            }
        });
        if (pairs.size() > 2 * most) Unite(pairs, most);
    }
    Unite(pairs, most);

    std::vector<Crossing> crossings;
    for (const auto& [i, j] : pairs) {
        const Segment &s = segments[i], &t = segments[j];
        const Position &a = at(s.start), &b = at(s.end), &c = at(t.start), &d = at(t.end);
        const auto [alongS, alongT] = *fractionsOf(s, t);
        crossings.push_back({Along(a.x, b.x, alongS),
                             Along(a.y, b.y, alongS),
                             {CrossingLine{s.line, s.segment, Along(a.z, b.z, alongS)},
                              CrossingLine{t.line, t.segment, Along(c.z, d.z, alongT)}}});
    }
    return crossings;
}

namespace {

std::string ToThousandths(double value)
{
    return Shortest(std::round(value * 1000.0) / 1000.0);
}

}   // namespace

// Counts crossings by cells. However the sides of cells cut through a knot of twenty lines, a cell holds enough of them.
void RefuseKnots(const std::vector<Crossing>& crossings, const std::vector<SurveyLine>& lines,
                 const std::vector<Position>& vertices, const LocalOrigin& origin)
{
    constexpr std::size_t kLines = 10, kMost = kLines * (kLines - 1) / 2;
    constexpr double kCellsPerLength = 1000.0;
    if (crossings.size() <= kMost) return;
    const double cells = kCellsPerLength / MeanLength(AllSegments(lines), vertices);
    std::map<std::pair<double, double>, std::size_t> counts;
    for (const Crossing& crossing : crossings) {
        if (++counts[{std::floor(crossing.x * cells), std::floor(crossing.y * cells)}] > kMost) {
            const Position at = origin.ToSurvey({crossing.x, crossing.y, 0.0});
            throw Failure("more than " + std::to_string(kLines) + " lines cross each other at " +
                          ToThousandths(at.x) + " " + ToThousandths(at.y) +
                          "; give them a point there in common, or leave out some");
        }
    }
}

}   // namespace qsvtin
