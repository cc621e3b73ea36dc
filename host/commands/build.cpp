#include "host/commands/build.h"

#include "host/commands/options.h"
#include "host/exchange/exchange_file.h"
#include "host/failure.h"
#include "host/input/column_order.h"
#include "host/input/survey.h"
#include "host/output/writers.h"
#include "host/report/build_report.h"
#include "host/say.h"
#include "host/stopwatch.h"
#include "host/system.h"
#include "host/terrain/boundary.h"
#include "host/terrain/mesh_to_tin.h"
#include "host/terrain/prepare.h"
#include "host/terrain/soundness.h"
#include "host/terrain/terrain.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace qsvtin {

namespace {

struct BuildOptions {
    std::vector<std::string> points;
    std::vector<std::string> breaklines;
    std::vector<std::string> surfaces;
    std::string order;
    std::string units;
    bool strings = false;
    std::vector<std::string> codes;
    double trimAngle = 0.0;
    double eps = 1e-6;
    bool skipBad = false;
    bool json = false;
    OutputChoice outputs;
};

bool NamesExchangeFile(const std::vector<std::string>& paths)
{
    return std::any_of(paths.begin(), paths.end(), IsExchangeFile);
}

void CheckOptions(const BuildOptions& options)
{
    if (options.points.empty() && options.breaklines.empty()) {
        throw Failure("no input; name files of points, or of breaklines with --breaklines",
                      Failure::BadUsage);
    }
    if (!(options.eps > 0.0) || options.eps > 1e6) {
        throw Failure("--eps must be above 0, such as 0.001: points closer than this are merged",
                      Failure::BadUsage);
    }
    if (!(options.trimAngle >= 0.0 && options.trimAngle < 90.0)) {
        throw Failure("--trim-angle must be from 0 to below 90 degrees", Failure::BadUsage);
    }
    if (!options.order.empty() && !OrderFromLetters(options.order)) {
        throw Failure(
            "--order " + options.order +
                " is no order of columns; give one letter a column: x or e, y or n, z or h, p for the point "
                "number, d for the description, - for any other, such as xyz or pnezd",
            Failure::BadUsage);
    }
    if (!options.surfaces.empty() && !NamesExchangeFile(options.points) &&
        !NamesExchangeFile(options.breaklines)) {
        throw Failure("--surface chooses in LandXML files and drawings, and no input is one of these",
                      Failure::BadUsage);
    }
    UnitFromOption(options.units);
    CheckOutputs(options.outputs);
    for (const std::string& path : options.outputs.paths) {
        RefuseInput(path, options.points);
        RefuseInput(path, options.breaklines);
    }
}

SurveySources SourcesOf(const BuildOptions& options)
{
    SurveySources sources;
    sources.points = options.points;
    sources.breaklines = options.breaklines;
    sources.order = OrderFromLetters(options.order);
    sources.surfaces = options.surfaces;
    sources.unit = UnitFromOption(options.units);
    sources.strings = options.strings || !options.codes.empty();
    sources.codes = options.codes;
    sources.skipBad = options.skipBad;
    return sources;
}

// The names of the input files without their folders.
std::string InputNames(const BuildOptions& options)
{
    std::string names;
    for (const std::vector<std::string>* const paths : {&options.points, &options.breaklines}) {
        for (const std::string& path : *paths) {
            names += (names.empty() ? "" : ", ") + PathOf(path).filename().u8string();
        }
    }
    return names;
}

void TellFolds(const CTin& tin)
{
    const int folded = CountFolded(tin);
    if (folded == 0) return;
    Note("points in line but for rounding folded the surface (triangles that run clockwise: " +
         std::to_string(folded) +
         "); --trim-angle 0.1 or --eps 0.001 mends most such folds, and qsvtin check tells where they are");
}

// Heights ten times as far apart as everything in plan is wide: that is no ground, but may be longitude and
// latitude beside heights in meters.
void TellDegrees(const BuildReport& report)
{
    const Position &low = report.low, &high = report.high;
    const bool canBeDegrees = low.x >= -180.0 && high.x <= 180.0 && low.y >= -90.0 && high.y <= 90.0;
    const double width = std::max(high.x - low.x, high.y - low.y);
    if (!canBeDegrees || high.z - low.z <= 10.0 * width) return;
    Note("x and y look like degrees beside these heights: areas, slopes and triangles mean nothing; project "
         "the points to meters or feet first");
}

void RunBuild(BuildOptions options)
{
    CheckOptions(options);
    WriteOptions& write = options.outputs.options;
    write.form = options.outputs.form.value_or(2);
    write.title = OnOneLine(write.title.empty() ? InputNames(options) : write.title);
    Stopwatch stopwatch;
    stopwatch.Enter("read");
    const SurveyData survey = ReadSurvey(SourcesOf(options));
    write.unit = survey.unit;
    stopwatch.Enter("merge");
    const PreparedSurvey prepared = PrepareSurvey(survey, options.eps);
    stopwatch.Enter("build");
    Terrain terrain = BuildTerrain(prepared, options.eps, options.trimAngle);
    stopwatch.Enter("check");
    CheckTerrain(prepared, terrain);
    const int cut = CutToBoundaries(terrain, survey.boundaries);
    BuildReport report = MakeBuildReport(survey, prepared, terrain);
    report.cutOff = cut;
    TellFolds(terrain.tin);
    TellDegrees(report);
    stopwatch.Enter("write");
    UpdateStoredParts(terrain.tin);
    WriteAll(terrain, write, options.outputs.paths);
    report.written = options.outputs.paths;
    report.seconds = stopwatch.Stop();
    Print(options.json ? ReportAsJson(report) : ReportAsText(report));
}

}   // namespace

void DeclareBuild(CommandLine command)
{
    const auto options = std::make_shared<BuildOptions>();
    command.OptionalArgument("POINTS", options->points,
                             "text files with one point a line, or files of other programs: " +
                                 ExchangeExtensions());
    command.Option("--breaklines", options->breaklines, "FILE", BreaklineFiles() + "; may be repeated");
    command.Option("--surface", options->surfaces, "NAME",
                   "surface of a LandXML file or layer of a drawing to take; may be repeated");
    command.Option("--order,--columns", options->order, "LETTERS",
                   "columns of the points, a letter each: xyz, yxz, pnezd, penzd, ...");
    command.Flag(
        "--strings", options->strings,
        "string coded points into breaklines: KERB B begins a line, KERB goes on, KERB E ends and KERB C "
        "closes it");
    command.ListOption("--codes", options->codes, "CODES",
                       "string these codes alone, a line of them begins without a mark too: KERB,DITCH");
    command.Option("--trim-angle", options->trimAngle, "DEG",
                   "cut off outer triangles with an angle of at most this at the outer edge");
    command.Option("--eps", options->eps, "LENGTH", "merge points that are this close in x and y (0.000001)");
    command.Flag("--skip-bad", options->skipBad, "pass over lines that cannot be read, and list them");
    DeclareUnits(command, options->units);
    DeclareOutputs(command, options->outputs);
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin build points.txt --breaklines lines.txt -o site.tin -o site.png");
    command.SetAction([options] { RunBuild(*options); });
}

}   // namespace qsvtin
