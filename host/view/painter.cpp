#include "host/view/painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace qsvtin {

namespace {

struct Point {
    double x;   // in samples
    double y;
};

// Where the edge between two corners crosses the middle of a row of samples. The upper corner always comes
// first, so that both triangles of the edge find the same place to the bit.
double CrossingOfRow(const Point& a, const Point& b, double rowY)
{
    const bool inOrder = a.y < b.y || (a.y == b.y && a.x < b.x);
    const Point &upper = inOrder ? a : b, &lower = inOrder ? b : a;
    return upper.x + (rowY - upper.y) / (lower.y - upper.y) * (lower.x - upper.x);
}

int FirstSampleFrom(double position, int count)
{
    return static_cast<int>(std::clamp(std::ceil(position - 0.5), 0.0, static_cast<double>(count)));
}

void FillRow(const std::array<Point, 3>& c, int row, int triangle, Band& band)
{
    const double y = row + 0.5;
    double left = HUGE_VAL, right = -HUGE_VAL;
    for (std::size_t k = 0; k < 3; ++k) {
        const Point &a = c[k], &b = c[(k + 1) % 3];
        if ((a.y <= y) == (b.y <= y)) continue;
        const double x = CrossingOfRow(a, b, y);
        left = std::min(left, x);
        right = std::max(right, x);
    }
    if (left > right) return;
    const int first = FirstSampleFrom(left, band.width), last = FirstSampleFrom(right, band.width);
    const auto start = band.owners.begin() + static_cast<std::ptrdiff_t>(row - band.firstRow) * band.width;
    if (first < last) std::fill(start + first, start + last, triangle);
}

// Cuts large triangles in halves across their longest side until they are as small as most. Two that share a
// side share the vertex in its middle.
class Cutter
{
public:
    Cutter(Drawing& drawing, double depthInPixels) : m_drawing(drawing), m_depthInPixels(depthInPixels) {}

    void CutAll()
    {
        constexpr double kTimesMost = 3.0;
        constexpr std::size_t kPiecesATriangle = 4, kMorePieces = 20000;
        std::vector<double> lengths;
        for (const Piece& piece : m_drawing.pieces) {
            lengths.push_back(Length(piece, LongestSide(piece)));
        }
        if (lengths.empty()) return;
        const auto most = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() * 3 / 4);
        std::nth_element(lengths.begin(), most, lengths.end());
        const double limit = std::max(1.0, kTimesMost * *most);
        const std::size_t mostPieces = kPiecesATriangle * lengths.size() + kMorePieces;
        for (std::size_t i = 0; i < m_drawing.pieces.size(); ++i) {
            while (m_drawing.pieces.size() < mostPieces && Cut(i, limit)) {}
        }
    }

private:
    double Length(const Piece& piece, std::size_t side) const
    {
        const Seen& a = m_drawing.vertices[static_cast<std::size_t>(piece.vertices[side])];
        const Seen& b = m_drawing.vertices[static_cast<std::size_t>(piece.vertices[(side + 1) % 3])];
        return std::hypot(b.x - a.x, b.y - a.y, (b.depth - a.depth) * m_depthInPixels);
    }

    std::size_t LongestSide(const Piece& piece) const
    {
        std::size_t longest = 0;
        for (std::size_t side = 1; side < 3; ++side) {
            if (Length(piece, side) > Length(piece, longest)) longest = side;
        }
        return longest;
    }

    // Halves a piece that is too large: one half stays, the other goes to the end.
    bool Cut(std::size_t i, double limit)
    {
        Piece piece = m_drawing.pieces[i];
        const std::size_t side = LongestSide(piece);
        if (!(Length(piece, side) > limit)) return false;
        const std::size_t end = (side + 1) % 3;
        const int middle = MiddleOf(piece.vertices[side], piece.vertices[end]);
        Piece other = piece;
        piece.vertices[end] = middle;
        other.vertices[side] = middle;
        m_drawing.pieces[i] = piece;
        m_drawing.pieces.push_back(other);
        return true;
    }

    int MiddleOf(int a, int b)
    {
        const auto [found, isNew] =
            m_middles.try_emplace(std::minmax(a, b), static_cast<int>(m_drawing.vertices.size()));
        if (isNew) {
            const Seen &p = m_drawing.vertices[static_cast<std::size_t>(a)],
                       &q = m_drawing.vertices[static_cast<std::size_t>(b)];
            m_drawing.vertices.push_back(
                {(p.x + q.x) / 2.0, (p.y + q.y) / 2.0, (p.depth + q.depth) / 2.0, 0.0});
        }
        return found->second;
    }

    Drawing& m_drawing;
    double m_depthInPixels;
    std::map<std::pair<int, int>, int> m_middles;
};

void SortPieces(Drawing& drawing, double depthInPixels)
{
    CTin flat;
    for (const Seen& seen : drawing.vertices) {
        flat.m_aVertex.Add(CXYZ(seen.x, -seen.y, -seen.depth * depthInPixels));
    }
    for (const Piece& piece : drawing.pieces) {
        flat.AddTri(piece.vertices[0], piece.vertices[1], piece.vertices[2]);
    }
    // Seen from behind, a triangle runs clockwise; containment asks for counter-clockwise ones.
    for (int t = 0; t < flat.m_aTri.GetSize(); ++t) {
        if (flat.CheckTurn(t) == 1) std::swap(flat.m_aTri[t].m_nVertex[1], flat.m_aTri[t].m_nVertex[2]);
    }
    flat.UpdateDepth2();
    const std::vector<Piece> unsorted = drawing.pieces;
    for (std::size_t i = 0; i < unsorted.size(); ++i) {
        drawing.pieces[i] = unsorted[static_cast<std::size_t>(flat.m_aDepthOrder[static_cast<int>(i)])];
    }
}

}   // namespace

Drawing MakeDrawing(const Scene& scene, const ViewFrame& frame)
{
    Drawing drawing;
    for (int v = 0; v < scene.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = scene.tin.m_aVertex[v];
        drawing.vertices.push_back(frame.ToPicture({p.x, p.y, p.z}));
    }
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        const int* const corner = scene.tin.m_aTri[t].m_nVertex;
        drawing.pieces.push_back({t, {corner[0], corner[1], corner[2]}});
    }
    const double depthInPixels = 0.5 * std::hypot(frame.Width(), frame.Height());
    Cutter(drawing, depthInPixels).CutAll();
    SortPieces(drawing, depthInPixels);
    return drawing;
}

void Paint(const Drawing& drawing, int samples, Band& band)
{
    band.owners.assign(static_cast<std::size_t>(band.width) * static_cast<std::size_t>(band.rows), -1);
    const int endRow = band.firstRow + band.rows;
    for (const Piece& piece : drawing.pieces) {
        std::array<Point, 3> corners;
        for (std::size_t k = 0; k < 3; ++k) {
            const Seen& seen = drawing.vertices[static_cast<std::size_t>(piece.vertices[k])];
            corners[k] = {samples * seen.x, samples * seen.y};
        }
        const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
        const int last = FirstSampleFrom(bottom, endRow);
        for (int row = std::max(band.firstRow, FirstSampleFrom(top, endRow)); row < last; ++row) {
            FillRow(corners, row, piece.triangle, band);
        }
    }
}

}   // namespace qsvtin
