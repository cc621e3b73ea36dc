#include "host/view/visibility.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

constexpr int kSamples = 2;      // for a pixel of the drawing, in each direction
constexpr int kBandRows = 128;   // samples: limits what those of a large picture take up
constexpr double kStep = 0.5;    // pixels of the frame

// A step along a line, short enough to be seen or hidden as a whole.
struct Step {
    Dot from;
    Dot to;
    double depth = 0.0;        // in its middle
    bool startsLine = false;   // nothing of the same line comes before
    bool hidden = false;

    Dot Middle() const { return {(from.x + to.x) / 2.0, (from.y + to.y) / 2.0}; }
};

void AddSteps(const Seen& from, const Seen& to, bool startsLine, std::vector<Step>& steps)
{
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const int count = std::max(1, static_cast<int>(std::ceil(length / kStep)));
    const auto at = [&](double i) {
        return Dot{from.x + i / count * (to.x - from.x), from.y + i / count * (to.y - from.y)};
    };
    for (int i = 0; i < count; ++i) {
        const double depth = from.depth + (i + 0.5) / count * (to.depth - from.depth);
        steps.push_back({at(i), at(i + 1), depth, startsLine && i == 0, false});
    }
}

std::vector<Step> StepsOf(const std::vector<Path>& paths, const ViewFrame& frame)
{
    std::vector<Step> steps;
    for (const Path& path : paths) {
        for (std::size_t i = 1; i < path.size(); ++i) {
            AddSteps(frame.ToPicture(path[i - 1]), frame.ToPicture(path[i]), i == 1, steps);
        }
    }
    return steps;
}

// Whether a place lies behind the plane of the triangle that is seen there. That triangle may be a neighbour of
// the one that holds the place, by up to a sample, over which its plane may have risen.
bool IsBehind(const Drawing& drawing, int triangle, const Dot& at, double depth)
{
    constexpr double kRounding = 1e-7;
    const Plane plane = PlaneThrough(drawing.CornersOf(triangle), drawing.DepthsOf(triangle));
    const double slack = (std::fabs(plane.alongX) + std::fabs(plane.alongY)) / kSamples + kRounding;
    return depth - plane.At(at.x, at.y) > slack;
}

// Looks the steps up in the picture, one band of its rows after the other.
void FindHidden(std::vector<std::vector<Step>>& groups, const ViewFrame& frame, const Drawing& drawing)
{
    const int samples = kSamples * drawing.scale, rows = samples * frame.Height();
    std::vector<std::vector<Step*>> bands(static_cast<std::size_t>(rows / kBandRows + 1));
    const auto rowOf = [&](const Step& step) { return std::floor(samples * step.Middle().y); };
    for (std::vector<Step>& steps : groups) {
        for (Step& step : steps) {
            const double row = rowOf(step), column = samples * step.Middle().x;
            if (!(row >= 0.0 && row < rows && column >= 0.0 && column < samples * frame.Width())) continue;
            bands[static_cast<std::size_t>(row / kBandRows)].push_back(&step);
        }
    }
    Band band;
    band.width = samples * frame.Width();
    for (std::size_t b = 0; b < bands.size(); ++b) {
        if (bands[b].empty()) continue;
        band.firstRow = static_cast<int>(b) * kBandRows;
        band.rows = std::min(kBandRows, rows - band.firstRow);
        Paint(drawing, kSamples, band);
        for (Step* const step : bands[b]) {
            const Dot middle = step->Middle();
            const auto row = static_cast<std::size_t>(rowOf(*step)) - b * kBandRows;
            const auto column = static_cast<std::size_t>(samples * middle.x);
            const int owner = band.owners[row * static_cast<std::size_t>(band.width) + column];
            const Dot inDrawing{drawing.scale * middle.x, drawing.scale * middle.y};
            step->hidden = owner >= 0 && IsBehind(drawing, owner, inDrawing, step->depth);
        }
    }
}

// Shows what is hidden for so short a way that it is a matter of rounding, or would look like a fault.
void CloseGaps(std::vector<Step>& steps)
{
    constexpr std::size_t kLongestGap = 8;   // steps
    for (std::size_t i = 0; i < steps.size();) {
        std::size_t end = i + 1;
        while (end < steps.size() && steps[end].hidden == steps[i].hidden && !steps[end].startsLine) ++end;
        const bool between = !steps[i].startsLine && end < steps.size() && !steps[end].startsLine;
        const bool isGap = steps[i].hidden && between && end - i <= kLongestGap;
        for (; i < end; ++i) {
            if (isGap) steps[i].hidden = false;
        }
    }
}

// Joins steps that follow each other into lines. Those in a straight row need no corner between them.
SeenLines Joined(const std::vector<Step>& steps)
{
    SeenLines lines;
    const Step* before = nullptr;
    for (const Step& step : steps) {
        std::vector<std::vector<Dot>>& part = step.hidden ? lines.hidden : lines.shown;
        if (!before || step.startsLine || step.hidden != before->hidden) part.push_back({step.from});
        std::vector<Dot>& line = part.back();
        const auto isStraight = [&](const Dot& a, const Dot& b, const Dot& c) {
            return std::fabs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) <= 1e-7 &&
                   (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y) >= 0.0;
        };
        if (line.size() > 1 && isStraight(line[line.size() - 2], line.back(), step.to)) line.pop_back();
        line.push_back(step.to);
        before = &step;
    }
    return lines;
}

}   // namespace

std::vector<SeenLines> PartByVisibility(const std::vector<std::vector<Path>>& groups, const ViewFrame& frame,
                                        const Drawing& drawing)
{
    std::vector<std::vector<Step>> steps;
    for (const std::vector<Path>& paths : groups) {
        steps.push_back(StepsOf(paths, frame));
    }
    FindHidden(steps, frame, drawing);
    std::vector<SeenLines> parted;
    for (std::vector<Step>& group : steps) {
        CloseGaps(group);
        parted.push_back(Joined(group));
    }
    return parted;
}

}   // namespace qsvtin
