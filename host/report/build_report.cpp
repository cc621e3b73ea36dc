#include "host/report/build_report.h"

namespace qsvtin {

namespace {

LineName NameOf(const SurveyData& survey, std::size_t line)
{
    const Breakline& given = survey.breaklines[line];
    return {static_cast<int>(line) + 1, given.file, given.number, given.name};
}

Position PositionOf(const Terrain& terrain, int vertex)
{
    const CXYZ& v = terrain.tin.m_aVertex[vertex];
    return terrain.origin.ToSurvey({v.x, v.y, v.z});
}

void CountPoints(const SurveyData& survey, const PreparedSurvey& prepared, BuildReport& report)
{
    for (const PointFile& file : survey.pointFiles) {
        report.pointsRead += file.points.size();
    }
    for (const Breakline& line : survey.breaklines) {
        report.breaklinePoints += line.points.size();
    }
    report.boundaries = survey.boundaries.size();
    report.unit = survey.unit;
    report.columns = survey.columns;
    report.rejected = survey.badLines;
    report.pointsMerged = prepared.merged;
    report.conflicts = prepared.conflicts;
}

SegmentName NameOfSegment(const Terrain& terrain, const SurveyLine& line, std::size_t segment)
{
    return {{line.sourceLines[segment], line.sourceLines[(segment + 1) % line.sourceLines.size()]},
            PositionOf(terrain, line.Start(segment)),
            PositionOf(terrain, line.End(segment))};
}

void DescribeLines(const SurveyData& survey, const Terrain& terrain, BuildReport& report)
{
    report.breaklines = terrain.lines.size();
    for (std::size_t i = 0; i < terrain.lines.size(); ++i) {
        const SurveyLine& line = terrain.lines[i];
        const std::vector<std::size_t>& missing = terrain.missing[i];
        report.closedBreaklines += line.closed ? 1 : 0;
        report.segments += line.SegmentCount();
        report.segmentsEnforced += line.SegmentCount() - missing.size();
        if (missing.empty()) continue;
        IncompleteLine& incomplete = report.incomplete.emplace_back();
        incomplete.line = NameOf(survey, i);
        incomplete.segments = line.SegmentCount();
        for (const std::size_t segment : missing) {
            incomplete.missing.push_back(NameOfSegment(terrain, line, segment));
        }
    }
}

void DescribeCrossings(const SurveyData& survey, const Terrain& terrain, BuildReport& report)
{
    for (const Crossing& crossing : terrain.crossings) {
        ReportedCrossing& reported = report.crossings.emplace_back();
        const Position at = terrain.origin.ToSurvey({crossing.x, crossing.y, 0.0});
        reported.x = at.x;
        reported.y = at.y;
        for (std::size_t k = 0; k < 2; ++k) {
            const CrossingLine& line = crossing.lines[k];
            reported.lines[k] = NameOf(survey, line.line);
            reported.fileLines[k] = terrain.lines[line.line].sourceLines[line.segment];
            reported.heights[k] = line.height;
        }
    }
}

void MeasureMesh(Terrain& terrain, BuildReport& report)
{
    CTin& tin = terrain.tin;
    report.vertices = tin.GetPointSize();
    report.triangles = tin.GetTriSize();
    report.hull = tin.m_aBoundary.GetSize();
    tin.GetRange(report.low.x, report.high.x, report.low.y, report.high.y, report.low.z, report.high.z);
    report.low = terrain.origin.ToSurvey(report.low);
    report.high = terrain.origin.ToSurvey(report.high);
    report.planArea = tin.CalAllAreaXY();
    report.surfaceArea = tin.CalAllArea();
    report.unused = terrain.unused;
    report.fedAlongCurve = terrain.fedAlongCurve;
}

}   // namespace

BuildReport MakeBuildReport(const SurveyData& survey, const PreparedSurvey& prepared, Terrain& terrain)
{
    BuildReport report;
    CountPoints(survey, prepared, report);
    DescribeLines(survey, terrain, report);
    DescribeCrossings(survey, terrain, report);
    MeasureMesh(terrain, report);
    return report;
}

}   // namespace qsvtin
