#include "host/view/grid_sphere.h"

#include "host/failure.h"
#include "host/numbers.h"
#include "host/output/pen.h"
#include "host/view/overlay.h"
#include "host/view/visibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace qsvtin {

namespace {

constexpr std::array kLineColour = {Rgb{0.07, 0.27, 0.60}, Rgb{0.48, 0.13, 0.52}};   // by GRID_LINE

// A sphere of the library in a scene, as it is seen in a picture.
class SphereInView
{
public:
    SphereInView(const Scene& scene, const GridSphere& sphere, const ViewFrame& frame)
        : m_scene(scene), m_frame(frame), m_station(scene.ToScene(sphere.station))
    {
        constexpr double kChordError = 1e-4;   // of the radius
        const CXYZ station(m_station.x, m_station.y, m_station.z / scene.exaggeration);
        if (!m_grid.Create3DGridSphere(station, sphere.radius, sphere.stepH, sphere.stepV, sphere.zero,
                                       kChordError * sphere.radius)) {
            throw Failure("--sphere-step " + Shortest(sphere.stepH) + "," + Shortest(sphere.stepV) +
                              " gives too many lines; take larger steps",
                          Failure::BadUsage);
        }
        m_grid.SetTextAlign(GRID_TEXT_CENTER + GRID_TEXT_MIDDLE);
    }

    CGrid3DSphere& Grid() { return m_grid; }
    const Position& Station() const { return m_station; }

    template <class Point>
    Position InScene(const Point& p) const
    {
        return {p.x, p.y, p.z * m_scene.exaggeration};
    }

    // How far a place of the sphere faces the viewer: 1 straight, 0 at the rim, below 0 on the far half.
    double FacingOf(const Position& at) const
    {
        const Seen seen = m_frame.ToPicture(at);
        const Sight sight = m_frame.Through(seen.x, seen.y);
        const Position d = {sight.to.x - sight.from.x, sight.to.y - sight.from.y, sight.to.z - sight.from.z};
        const double flat = 1.0 / (m_scene.exaggeration * m_scene.exaggeration);   // of the stretched sphere
        const Position n = {at.x - m_station.x, at.y - m_station.y, (at.z - m_station.z) * flat};
        return -(d.x * n.x + d.y * n.y + d.z * n.z) / (std::hypot(d.x, d.y, d.z) * std::hypot(n.x, n.y, n.z));
    }

    // The parts of the lines of a kind that lie on the near or on the far half.
    std::vector<Path> PartsOf(GRID_LINE kind, bool near)
    {
        std::vector<Path> parts;
        for (int i = 0; i < m_grid.m_aLine.GetSize(); ++i) {
            if (m_grid.m_aLine[i].m_eKind == kind) AddParts(m_grid.m_aLine[i].m_line, near, parts);
        }
        return parts;
    }

private:
    void AddParts(const CPolyline& line, bool near, std::vector<Path>& parts)
    {
        bool goesOn = false;
        const int count = line.GetVertexSize(), segments = line.IsClose() ? count : count - 1;
        for (int i = 0; i < segments; ++i) {
            const Position from = InScene(*line.GetVertex(static_cast<unsigned>(i))),
                           to = InScene(*line.GetVertex(static_cast<unsigned>((i + 1) % count)));
            const Position middle = {(from.x + to.x) / 2.0, (from.y + to.y) / 2.0, (from.z + to.z) / 2.0};
            const bool wanted = (FacingOf(middle) >= 0.0) == near;
            if (wanted && !goesOn) parts.push_back({from});
            if (wanted) parts.back().push_back(to);
            goesOn = wanted;
        }
    }

    const Scene& m_scene;
    const ViewFrame& m_frame;
    Position m_station;
    CGrid3DSphere m_grid;
};

void DrawLines(Pen& pen, SphereInView& sphere, const ViewFrame& frame, const Drawing& drawing, double unit)
{
    std::vector<std::vector<Path>> groups;
    for (const bool near : {false, true}) {
        for (const GRID_LINE kind : {GRID_LINE_H, GRID_LINE_V}) {
            groups.push_back(sphere.PartsOf(kind, near));
        }
    }
    const std::vector<SeenLines> seen = PartByVisibility(groups, frame, drawing);
    const std::array<double, 2> dots = {0.1 * unit, 5.0 * unit};
    cairo_set_dash(pen.Get(), dots.data(), 2, 0.0);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        pen.Colour(kLineColour[i % 2], 0.45);
        StrokeLines(pen, seen[i].hidden, 1.5 * unit);
    }
    cairo_set_dash(pen.Get(), nullptr, 0, 0.0);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const bool near = i >= 2;
        pen.Colour(kWhite, near ? 0.4 : 0.0);
        StrokeLines(pen, seen[i].shown, 3.2 * unit);
        pen.Colour(kLineColour[i % 2], near ? 0.9 : 0.35);
        StrokeLines(pen, seen[i].shown, (near ? 1.4 : 1.0) * unit);
    }
}

// The reading without decimals that say nothing: "120.000" as "120°".
std::string Reading(const CString& text)
{
    std::string reading = text.GetString();
    if (reading.find('.') != std::string::npos && reading.find('e') == std::string::npos) {
        reading.erase(reading.find_last_not_of('0') + 1);
        if (reading.back() == '.') reading.pop_back();
    }
    return reading + "\u00B0";
}

bool Overlap(const Rect& a, const Rect& b)
{
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

// Tells which labels' places are seen: on the near half, not too close to its rim, before the surface.
std::vector<bool> FindSeen(SphereInView& sphere, const ViewFrame& frame, const Drawing& drawing)
{
    constexpr double kNearRim = 0.05;
    std::vector<std::vector<Path>> places;
    std::vector<bool> seen;
    for (int i = 0; i < sphere.Grid().m_aLabel.GetSize(); ++i) {
        const Position at = sphere.InScene(sphere.Grid().m_aLabel[i].m_pos);
        places.push_back({Path{at, at}});
        seen.push_back(sphere.FacingOf(at) > kNearRim);
    }
    const std::vector<SeenLines> parted = PartByVisibility(places, frame, drawing);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        seen[i] = seen[i] && parted[i].hidden.empty();
    }
    return seen;
}

// Those at the poles first, then those of horizontal angles, each of which stands but once.
std::vector<int> OrderOfLabels(const CGrid3DSphere& grid)
{
    std::vector<int> order(static_cast<std::size_t>(grid.m_aLabel.GetSize()));
    std::iota(order.begin(), order.end(), 0);
    const auto rank = [&](int label) {
        const int line = grid.m_aLabel[label].m_nLine;
        return line < 0 ? 0 : grid.m_aLine[line].m_eKind == GRID_LINE_H ? 1 : 2;
    };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return rank(a) < rank(b); });
    return order;
}

// Places the labels that are seen, as far as they keep clear of those placed before.
void PlaceLabels(Pen& pen, SphereInView& sphere, const ViewFrame& frame, const Drawing& drawing, double unit)
{
    CGrid3DSphere& grid = sphere.Grid();
    const std::vector<bool> seen = FindSeen(sphere, frame, drawing);
    const double height = pen.Ascent(), gap = 5.0 * unit;
    std::vector<Rect> taken;
    for (const int i : OrderOfLabels(grid)) {
        const Seen at = frame.ToPicture(sphere.InScene(grid.m_aLabel[i].m_pos));
        const double width = pen.TextWidth(Reading(grid.m_aLabel[i].m_strText));
        const Rect room{at.x - width / 2.0 - gap, at.y - height / 2.0 - gap, width + 2.0 * gap,
                        height + 2.0 * gap};
        const bool clear =
            std::none_of(taken.begin(), taken.end(), [&](const Rect& other) { return Overlap(room, other); });
        if (!seen[static_cast<std::size_t>(i)] || !clear) {
            grid.HideLabel(i);
        } else if (grid.PlaceLabel(i, at.x, at.y, static_cast<int>(std::lround(width)),
                                   static_cast<int>(std::lround(height)))) {
            taken.push_back(room);
        }
    }
}

void DrawLabels(Pen& pen, SphereInView& sphere)
{
    const CGrid3DSphere& grid = sphere.Grid();
    for (int i = 0; i < grid.m_aLabel.GetSize(); ++i) {
        const CGridLabel& label = grid.m_aLabel[i];
        if (!label.m_bPlaced) continue;
        const bool vertical = label.m_nLine < 0 || grid.m_aLine[label.m_nLine].m_eKind == GRID_LINE_V;
        pen.TextWithHalo(label.m_point.x, label.m_point.y + pen.Ascent(), Reading(label.m_strText),
                         kLineColour[vertical ? 1 : 0]);
    }
}

}   // namespace

std::vector<Position> PlacesOn(const Scene& scene, const GridSphere& sphere)
{
    constexpr double kFarthest = 20.0;   // in radii of the ground
    double ground = 0.0;
    for (const Position& p : GroundOf(scene)) {
        ground = std::max(ground, std::hypot(p.x, p.y, p.z));
    }
    const Position station = scene.ToScene(sphere.station);
    const double reach =
        std::hypot(station.x, station.y, station.z) + sphere.radius * std::max(1.0, scene.exaggeration);
    if (!(reach <= kFarthest * ground)) {
        throw Failure(
            "--grid-sphere reaches " + Shortest(std::ceil(reach / ground)) +
                " times as far from the middle of the terrain as the terrain itself, which would be "
                "lost in the picture; check station and radius",
            Failure::BadUsage);
    }
    std::vector<Position> places;
    for (int h = 0; h < 360; h += 5) {
        for (int v = -90; v <= 90; v += 5) {
            CXYZ arm;
            CCalcXYZHV::CalcXYZ(h, v, sphere.radius, arm);
            places.push_back({station.x + arm.x, station.y + arm.y, station.z + arm.z * scene.exaggeration});
        }
    }
    return places;
}

void DrawGridSphere(Pen& pen, const Scene& scene, const GridSphere& sphere, const ViewFrame& frame,
                    const Drawing& drawing, double unit)
{
    SphereInView inView(scene, sphere, frame);
    DrawLines(pen, inView, frame, drawing, unit);
    const Seen station = frame.ToPicture(inView.Station());
    pen.Mark(station.x, station.y, 4.5 * unit, kCrossing);
    pen.Font(15.0 * unit, true);
    PlaceLabels(pen, inView, frame, drawing, unit);
    DrawLabels(pen, inView);
}

}   // namespace qsvtin
