#include "host/terrain/crossings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace qsvtin {

namespace {

struct Segment {
    std::size_t line;
    std::size_t segment;
    int start;
    int end;
};

struct Box {
    double west = std::numeric_limits<double>::max();
    double east = -std::numeric_limits<double>::max();
    double south = std::numeric_limits<double>::max();
    double north = -std::numeric_limits<double>::max();

    void Include(const Position& p)
    {
        west = std::min(west, p.x);
        east = std::max(east, p.x);
        south = std::min(south, p.y);
        north = std::max(north, p.y);
    }
};

Box BoxAround(const Position& a, const Position& b)
{
    Box box;
    box.Include(a);
    box.Include(b);
    return box;
}

bool Apart(const Box& a, const Box& b)
{
    return a.east < b.west || b.east < a.west || a.north < b.south || b.north < a.south;
}

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

// A grid of square cells over all segments. A segment stands in every cell its box touches, cut into
// columns so that a long slanting one does not fill the cells beside it.
class SegmentGrid
{
public:
    SegmentGrid(const std::vector<Segment>& segments, const std::vector<Position>& vertices)
        : m_segments(segments), m_vertices(vertices)
    {
        double length = 0.0;
        for (const Segment& s : segments) {
            m_extent.Include(Start(s));
            m_extent.Include(End(s));
            length += std::hypot(End(s).x - Start(s).x, End(s).y - Start(s).y);
        }
        // About a segment's length, but no more cells than a few for each segment.
        const double width = m_extent.east - m_extent.west, height = m_extent.north - m_extent.south;
        const auto count = static_cast<double>(segments.size());
        m_cell = std::max({length / count, std::sqrt(width * height / (4.0 * count)),
                           std::max(width, height) / (4.0 * count)});
        m_columns = 1 + static_cast<std::size_t>(width / m_cell);
        m_rows = 1 + static_cast<std::size_t>(height / m_cell);
        m_cells.resize(m_columns * m_rows);
        for (std::size_t i = 0; i < segments.size(); ++i) {
            Insert(i);
        }
    }

    // Calls visit(i, j) with i < j for segments that share a cell; a pair may come more than once.
    template <class Visit>
    void ForEachPair(Visit visit) const
    {
        for (const std::vector<std::size_t>& cell : m_cells) {
            for (std::size_t a = 0; a < cell.size(); ++a) {
                for (std::size_t b = a + 1; b < cell.size(); ++b) {
                    visit(cell[a], cell[b]);
                }
            }
        }
    }

private:
    const Position& Start(const Segment& s) const { return m_vertices[static_cast<std::size_t>(s.start)]; }
    const Position& End(const Segment& s) const { return m_vertices[static_cast<std::size_t>(s.end)]; }

    std::size_t Column(double x) const
    {
        return std::min(m_columns - 1, static_cast<std::size_t>(std::max(0.0, (x - m_extent.west) / m_cell)));
    }
    std::size_t Row(double y) const
    {
        return std::min(m_rows - 1, static_cast<std::size_t>(std::max(0.0, (y - m_extent.south) / m_cell)));
    }

    void Insert(std::size_t index)
    {
        Position a = Start(m_segments[index]), b = End(m_segments[index]);
        if (a.x > b.x) std::swap(a, b);
        const std::size_t first = Column(a.x), last = Column(b.x);
        for (std::size_t column = first; column <= last; ++column) {
            // The part inside this column, wider by a thousandth of a cell against rounding.
            const double margin = m_cell * 1e-3;
            const double left = m_extent.west + static_cast<double>(column) * m_cell - margin;
            const double right = left + m_cell + 2.0 * margin;
            const double y1 = column == first ? a.y : OrdinateAt(a, b, left);
            const double y2 = column == last ? b.y : OrdinateAt(a, b, right);
            const std::size_t top = Row(std::max(y1, y2) + margin);
            for (std::size_t row = Row(std::min(y1, y2) - margin); row <= top; ++row) {
                m_cells[row * m_columns + column].push_back(index);
            }
        }
    }

    static double OrdinateAt(const Position& a, const Position& b, double x)
    {
        return Along(a.y, b.y, std::clamp((x - a.x) / (b.x - a.x), 0.0, 1.0));
    }

    const std::vector<Segment>& m_segments;
    const std::vector<Position>& m_vertices;
    Box m_extent;
    double m_cell = 1.0;
    std::size_t m_columns = 1;
    std::size_t m_rows = 1;
    std::vector<std::vector<std::size_t>> m_cells;
};

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

}   // namespace

std::vector<Crossing> FindCrossings(const std::vector<SurveyLine>& lines,
                                    const std::vector<Position>& vertices)
{
    const std::vector<Segment> segments = AllSegments(lines);
    if (segments.empty()) return {};
    const auto at = [&](int vertex) -> const Position& { return vertices[static_cast<std::size_t>(vertex)]; };

    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    SegmentGrid(segments, vertices).ForEachPair([&](std::size_t i, std::size_t j) {
        const Segment &s = segments[i], &t = segments[j];
        const Box boxS = BoxAround(at(s.start), at(s.end)), boxT = BoxAround(at(t.start), at(t.end));
        if (!ShareVertex(s, t) && !Apart(boxS, boxT)) pairs.emplace_back(i, j);
    });
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());

    std::vector<Crossing> crossings;
    for (const auto& [i, j] : pairs) {
        const Segment &s = segments[i], &t = segments[j];
        const Position &a = at(s.start), &b = at(s.end), &c = at(t.start), &d = at(t.end);
        const auto fractions = CrossingFractions(a, b, c, d);
        if (!fractions) continue;
        const auto [alongS, alongT] = *fractions;
        crossings.push_back({Along(a.x, b.x, alongS),
                             Along(a.y, b.y, alongS),
                             {CrossingLine{s.line, s.segment, Along(a.z, b.z, alongS)},
                              CrossingLine{t.line, t.segment, Along(c.z, d.z, alongT)}}});
    }
    return crossings;
}

}   // namespace qsvtin
