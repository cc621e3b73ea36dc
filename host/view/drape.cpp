#include "host/view/drape.h"

#include "host/query/box_tree.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <tuple>

namespace qsvtin {

namespace {

// The part of a segment that lies on one triangle; shares of the segment's length and places.
struct Piece {
    double begin;
    double end;
    Position from;
    Position to;
};

// On which side of the edge from a to b a place lies, in plan. The corners are taken in the same order from both
// triangles of the edge, so that the two answers are exactly opposite and no segment slips through between.
double SideOf(const CXYZ& a, const CXYZ& b, const Position& p)
{
    const auto side = [&](const CXYZ& from, const CXYZ& to) {
        return (to.x - from.x) * (p.y - from.y) - (to.y - from.y) * (p.x - from.x);
    };
    const bool inOrder = a.x != b.x ? a.x < b.x : a.y < b.y;
    return inOrder ? side(a, b) : -side(b, a);
}

Position Along(const Position& p, const Position& q, double share)
{
    return {p.x + share * (q.x - p.x), p.y + share * (q.y - p.y), 0.0};
}

// A triangle in plan, counter-clockwise.
struct Ground {
    std::array<const CXYZ*, 3> c;

    std::array<double, 3> SidesOf(const Position& p) const
    {
        return {SideOf(*c[0], *c[1], p), SideOf(*c[1], *c[2], p), SideOf(*c[2], *c[0], p)};
    }
    Position On(Position p) const
    {
        std::array<double, 3> side = SidesOf(p);
        for (double& s : side) s = std::max(s, 0.0);   // rounding does not lead out of the triangle
        p.z = (side[1] * c[0]->z + side[2] * c[1]->z + side[0] * c[2]->z) / (side[0] + side[1] + side[2]);
        return p;
    }
};

std::optional<Ground> GroundAt(const Scene& scene, int triangle)
{
    Ground ground{{&scene.Corner(triangle, 0), &scene.Corner(triangle, 1), &scene.Corner(triangle, 2)}};
    const double turn = SideOf(*ground.c[0], *ground.c[1], {ground.c[2]->x, ground.c[2]->y, 0.0});
    if (turn == 0.0) return std::nullopt;
    if (turn < 0.0) std::swap(ground.c[1], ground.c[2]);
    return ground;
}

// Cuts the segment with one edge after the other (Cyrus and Beck 1978).
std::optional<Piece> PieceOn(const Ground& ground, const Position& p, const Position& q)
{
    constexpr double kShortest = 1e-12;   // touching a corner is no piece
    const std::array<double, 3> atP = ground.SidesOf(p), atQ = ground.SidesOf(q);
    Piece piece{0.0, 1.0, {}, {}};
    for (std::size_t k = 0; k < 3; ++k) {
        if (atP[k] < 0.0 && atQ[k] < 0.0) return std::nullopt;
        const double crossing = atP[k] / (atP[k] - atQ[k]);
        if (atP[k] < 0.0) piece.begin = std::max(piece.begin, crossing);
        if (atQ[k] < 0.0) piece.end = std::min(piece.end, crossing);
    }
    if (!(piece.end - piece.begin > kShortest)) return std::nullopt;
    piece.from = ground.On(Along(p, q, piece.begin));
    piece.to = ground.On(Along(p, q, piece.end));
    return piece;
}

bool IsSamePlace(const Position& a, const Position& b, double tolerance)
{
    return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance &&
           std::fabs(a.z - b.z) <= tolerance;
}

class Draper
{
public:
    explicit Draper(const Scene& scene) : m_scene(scene), m_boxes(BoxesOf(scene)), m_tree(m_boxes)
    {
        for (const Box& box : m_boxes) {
            m_tolerance = std::max({m_tolerance, 1e-9 * std::fabs(box.east), 1e-9 * std::fabs(box.north)});
        }
    }

    std::vector<Path> Lay(const Path& line) const
    {
        std::vector<Path> laid;
        for (std::size_t i = 1; i < line.size(); ++i) {
            const Position p = m_scene.ToScene(line[i - 1]), q = m_scene.ToScene(line[i]);
            for (const Piece& piece : PiecesOf(p, q)) {
                Append(piece, laid);
            }
        }
        return laid;
    }

private:
    static std::vector<Box> BoxesOf(const Scene& scene)
    {
        std::vector<Box> boxes;
        for (int t = 0; t < scene.groundTriangles; ++t) {
            const CXYZ &a = scene.Corner(t, 0), &b = scene.Corner(t, 1), &c = scene.Corner(t, 2);
            const auto [west, east] = std::minmax({a.x, b.x, c.x});
            const auto [south, north] = std::minmax({a.y, b.y, c.y});
            boxes.push_back({west, east, south, north});
        }
        return boxes;
    }

    std::vector<Piece> PiecesOf(const Position& p, const Position& q) const
    {
        const auto [west, east] = std::minmax({p.x, q.x});
        const auto [south, north] = std::minmax({p.y, q.y});
        const Box box{west, east, south, north};
        std::vector<Piece> pieces;
        m_tree.VisitTouching(box, [&](int triangle) {
            if (!m_boxes[static_cast<std::size_t>(triangle)].Touches(box)) return;
            const auto ground = GroundAt(m_scene, triangle);
            if (!ground) return;
            if (const auto piece = PieceOn(*ground, p, q)) pieces.push_back(*piece);
        });
        std::sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
            return std::tie(a.begin, a.end) < std::tie(b.begin, b.end);
        });
        return pieces;
    }

    // Goes on with the last path where the piece does. A piece along an edge comes from both its triangles.
    void Append(const Piece& piece, std::vector<Path>& laid) const
    {
        if (!laid.empty()) {
            Path& path = laid.back();
            const bool again = IsSamePlace(path[path.size() - 2], piece.from, m_tolerance) &&
                               IsSamePlace(path.back(), piece.to, m_tolerance);
            if (again) return;
            if (IsSamePlace(path.back(), piece.from, m_tolerance)) {
                path.push_back(piece.to);
                return;
            }
        }
        laid.push_back({piece.from, piece.to});
    }

    const Scene& m_scene;
    std::vector<Box> m_boxes;   // of the triangles, in plan
    BoxTree m_tree;
    double m_tolerance = 0.0;
};

}   // namespace

std::vector<Path> Drape(const Scene& scene, const std::vector<Path>& lines)
{
    if (lines.empty()) return {};   // spares the boxes
    const Draper draper(scene);
    std::vector<Path> laid;
    for (const Path& line : lines) {
        const std::vector<Path> parts = draper.Lay(line);
        laid.insert(laid.end(), parts.begin(), parts.end());
    }
    return laid;
}

}   // namespace qsvtin
