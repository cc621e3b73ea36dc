#include "host/report/build_report.h"
#include "host/report/text_report.h"

#include <cmath>

namespace qsvtin {

namespace {

std::string Described(const LineName& line)
{
    return line.file + " block " + std::to_string(line.block) +
           (line.name.empty() ? "" : " (" + line.name + ")");
}

// Where a point was read; formats that are no text have no lines.
std::string PlaceIn(const Source& source)
{
    return std::string(source.file) + (source.line > 0 ? ":" + std::to_string(source.line) : "");
}

std::string Place(const Position& p)
{
    return Coordinate(p.x) + " " + Coordinate(p.y);
}

void AddInput(const BuildReport& report, TextReport& text)
{
    for (const auto& [file, columns] : report.columns) {
        text.Line("columns", columns + (report.columns.size() > 1 ? "  " + file : ""));
    }
    text.Line("points read", report.pointsRead);
    if (report.breaklines > 0) text.Line("breakline points", report.breaklinePoints);
    text.Line("points rejected", report.rejected.size());
    for (const BadLine& bad : report.rejected) {
        text.Detail(bad.file + ":" + std::to_string(bad.line) + ": " + bad.reason);
    }
    text.Line("points merged", static_cast<std::size_t>(report.pointsMerged));
    text.Line("points unused", report.unused.size());
    for (const Source& source : report.unused) {
        text.Detail(PlaceIn(source));
    }
    if (report.fedAlongCurve) {
        text.Line("points fed", "from neighbour to neighbour, since they come in no order; "
                                "their numbers are those of the files");
    }
}

void AddConflicts(const BuildReport& report, TextReport& text)
{
    if (report.conflicts.empty()) return;
    text.Line("height conflicts",
              std::to_string(report.conflicts.size()) + " points at the place of another height");
    for (const HeightConflict& conflict : report.conflicts) {
        text.Detail(PlaceIn(conflict.dropped) + ": " + Coordinate(conflict.heightDropped) + " dropped, " +
                    Coordinate(conflict.heightKept) + " kept");
    }
}

void AddBreaklines(const BuildReport& report, TextReport& text)
{
    if (report.breaklines == 0) return;
    text.Line("breaklines", std::to_string(report.breaklines) + " (" +
                                std::to_string(report.closedBreaklines) + " closed)");
    text.Line("segments enforced",
              std::to_string(report.segmentsEnforced) + " of " + std::to_string(report.segments));
    for (const IncompleteLine& incomplete : report.incomplete) {
        text.Detail(Described(incomplete.line) + ": " + std::to_string(incomplete.missing.size()) + " of " +
                    std::to_string(incomplete.segments) + " segments are no edges of the surface");
        for (const SegmentName& segment : incomplete.missing) {
            text.Detail("    lines " + std::to_string(segment.fileLines[0]) + " to " +
                        std::to_string(segment.fileLines[1]) + ": " + Place(segment.from) + " to " +
                        Place(segment.to));
        }
    }
}

void AddCrossings(const BuildReport& report, TextReport& text)
{
    if (report.breaklines == 0) return;
    text.Line("crossings", report.crossings.size());
    for (const ReportedCrossing& crossing : report.crossings) {
        const double difference = std::fabs(crossing.heights[0] - crossing.heights[1]);
        text.Detail(Coordinate(crossing.x) + " " + Coordinate(crossing.y) + "  heights " +
                    Coordinate(crossing.heights[0]) + " and " + Coordinate(crossing.heights[1]) + " (" +
                    Coordinate(difference) + " apart): line " + std::to_string(crossing.fileLines[0]) +
                    " of " + Described(crossing.lines[0]) + ", line " +
                    std::to_string(crossing.fileLines[1]) + " of " + Described(crossing.lines[1]));
    }
}

void AddMesh(const BuildReport& report, TextReport& text)
{
    const auto range = [](double low, double high) { return Coordinate(low) + " to " + Coordinate(high); };
    text.Line("vertices", static_cast<std::size_t>(report.vertices));
    text.Line("triangles", static_cast<std::size_t>(report.triangles));
    text.Line("hull corners", static_cast<std::size_t>(report.hull));
    if (report.boundaries > 0) {
        text.Line("boundaries", std::to_string(report.boundaries) + ", " + std::to_string(report.cutOff) +
                                    " triangles outside cut off");
    }
    if (report.unit != LengthUnit::Unknown) text.Line("unit", std::string(NameOf(report.unit)));
    text.Line("x", range(report.low.x, report.high.x));
    text.Line("y", range(report.low.y, report.high.y));
    text.Line("z", range(report.low.z, report.high.z));
    text.Line("plan area", Measure(report.planArea));
    text.Line("surface area", Measure(report.surfaceArea));
}

void AddSeconds(const BuildReport& report, TextReport& text)
{
    double total = 0.0;
    std::string stages;
    for (const auto& [stage, seconds] : report.seconds) {
        total += seconds;
        stages += (stages.empty() ? "" : ", ") + stage + " " + Fixed(seconds, 3);
    }
    text.Line("seconds", Fixed(total, 3) + " (" + stages + ")");
}

}   // namespace

std::string ReportAsText(const BuildReport& report)
{
    TextReport text;
    AddInput(report, text);
    AddConflicts(report, text);
    AddBreaklines(report, text);
    AddCrossings(report, text);
    AddMesh(report, text);
    for (const std::string& path : report.written) {
        text.Line("written", path);
    }
    AddSeconds(report, text);
    return text.Text();
}

}   // namespace qsvtin
