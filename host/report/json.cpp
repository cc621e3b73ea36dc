#include "host/report/build_report.h"
#include "host/report/json_text.h"

namespace qsvtin {

namespace {

Json AsJson(const LineName& line)
{
    return {{"line", line.number}, {"file", line.file}, {"block", line.block}, {"name", line.name}};
}

Json AsJson(const IncompleteLine& incomplete)
{
    Json json = AsJson(incomplete.line);
    json["segments"] = incomplete.segments;
    json["missing"] = Json::array();
    for (const SegmentName& segment : incomplete.missing) {
        json["missing"].push_back(
            {{"file_lines", segment.fileLines}, {"from", JsonOf(segment.from)}, {"to", JsonOf(segment.to)}});
    }
    return json;
}

Json AsJson(const ReportedCrossing& crossing)
{
    return {{"lines", {crossing.lines[0].number, crossing.lines[1].number}},
            {"breaklines", {AsJson(crossing.lines[0]), AsJson(crossing.lines[1])}},
            {"file_lines", crossing.fileLines},
            {"position", {crossing.x, crossing.y}},
            {"heights", crossing.heights}};
}

Json AsJson(const BadLine& bad)
{
    return {{"file", bad.file}, {"line", bad.line}, {"reason", bad.reason}};
}

Json AsJson(const Source& source)
{
    return {{"file", std::string(source.file)}, {"line", source.line}};
}

Json AsJson(const HeightConflict& conflict)
{
    Json json = AsJson(conflict.dropped);
    json["kept"] = conflict.heightKept;
    json["dropped"] = conflict.heightDropped;
    return json;
}

template <class Item>
Json ListOf(const std::vector<Item>& items)
{
    Json list = Json::array();
    for (const Item& item : items) {
        list.push_back(AsJson(item));
    }
    return list;
}

Json SecondsOf(const Stopwatch::Stages& stages)
{
    Json seconds = Json::object();
    double total = 0.0;
    for (const auto& [stage, duration] : stages) {
        seconds[stage] = duration;
        total += duration;
    }
    seconds["total"] = total;
    return seconds;
}

}   // namespace

std::string ReportAsJson(const BuildReport& report)
{
    Json json;
    json["columns"] = Json::object();
    for (const auto& [file, columns] : report.columns) {
        json["columns"][file] = columns;
    }
    json["points_read"] = report.pointsRead;
    json["breakline_points"] = report.breaklinePoints;
    json["points_merged"] = report.pointsMerged;
    json["points_rejected"] = report.rejected.size();
    json["points_unused"] = report.unused.size();
    json["fed_along_curve"] = report.fedAlongCurve;
    json["vertices"] = report.vertices;
    json["triangles"] = report.triangles;
    json["hull"] = report.hull;
    json["boundaries"] = report.boundaries;
    json["cut_off"] = report.cutOff;
    json["breaklines"] = report.breaklines;
    json["breaklines_closed"] = report.closedBreaklines;
    json["segments"] = report.segments;
    json["segments_enforced"] = report.segmentsEnforced;
    json["incomplete"] = ListOf(report.incomplete);
    json["crossings"] = ListOf(report.crossings);
    json["rejected"] = ListOf(report.rejected);
    json["unused"] = ListOf(report.unused);
    json["height_conflicts"] = ListOf(report.conflicts);
    json["unit"] = NameOf(report.unit);
    json["range"] = JsonOfRange(report.low, report.high);
    json["plan_area"] = report.planArea;
    json["surface_area"] = report.surfaceArea;
    json["written"] = report.written;
    json["seconds"] = SecondsOf(report.seconds);
    return TextOf(json);
}

}   // namespace qsvtin
