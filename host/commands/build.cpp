#include "host/commands/build.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/input/breakline_text.h"
#include "host/input/column_order.h"
#include "host/input/survey_text.h"
#include "host/output/writers.h"
#include "host/report/build_report.h"
#include "host/say.h"
#include "host/stopwatch.h"
#include "host/terrain/mesh_to_tin.h"
#include "host/terrain/prepare.h"
#include "host/terrain/terrain.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace qsvtin {

namespace {

struct BuildOptions {
    std::vector<std::string> points;
    std::vector<std::string> breaklines;
    std::string order;
    double trimAngle = 0.0;
    double eps = 1e-6;
    bool skipBad = false;
    bool json = false;
    OutputChoice outputs;
};

void RefuseInput(const std::string& output, const std::vector<std::string>& inputs)
{
    for (const std::string& input : inputs) {
        std::error_code missing;
        if (std::filesystem::equivalent(output, input, missing)) {
            throw Failure("-o " + output + " would overwrite the input; name another file",
                          Failure::BadUsage);
        }
    }
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
                " is no order of columns; give one letter a column: x or e, y or n, z, p for the point "
                "number, d for the description, - for any other, such as xyz or pnezd",
            Failure::BadUsage);
    }
    CheckOutputs(options.outputs);
    for (const std::string& path : options.outputs.paths) {
        RefuseInput(path, options.points);
        RefuseInput(path, options.breaklines);
    }
}

// Ends the command for the bad lines of one file, unless they may be passed over and others were good.
void JudgeBadLines(const std::vector<BadLine>& bad, bool nothingElse, bool skipBad)
{
    if (bad.empty() || (skipBad && !nothingElse)) return;
    const BadLine& first = bad.front();
    const std::string place = first.file + ":" + std::to_string(first.line) + ": " + first.reason;
    if (nothingElse && bad.size() > 1)
        throw Failure(place + "; no line could be read, give one point a line: x y z");
    const std::string more =
        bad.size() > 1 ? " (" + std::to_string(bad.size() - 1) + " more such lines)" : "";
    throw Failure(place + "; fix the line or pass --skip-bad" + more);
}

SurveyData ReadSurvey(const BuildOptions& options)
{
    SurveyData survey;
    const auto order = OrderFromLetters(options.order);
    for (const std::string& path : options.points) {
        TextFile text(path);
        std::vector<BadLine> bad;
        survey.pointFiles.push_back(ReadSurveyPoints(text, order, bad));
        const PointFile& file = survey.pointFiles.back();
        JudgeBadLines(bad, file.points.empty(), options.skipBad);
        survey.columns.emplace_back(path, file.columns);
        survey.badLines.insert(survey.badLines.end(), bad.begin(), bad.end());
    }
    for (const std::string& path : options.breaklines) {
        TextFile text(path);
        std::vector<BadLine> bad;
        const BreaklineFile file = ReadBreaklines(text, bad);
        JudgeBadLines(bad, file.lines.empty(), options.skipBad);
        survey.columns.emplace_back(path, file.columns);
        survey.badLines.insert(survey.badLines.end(), bad.begin(), bad.end());
        survey.breaklines.insert(survey.breaklines.end(), file.lines.begin(), file.lines.end());
    }
    return survey;
}

// The names of the input files without their folders.
std::string InputNames(const BuildOptions& options)
{
    std::string names;
    for (const std::vector<std::string>* const paths : {&options.points, &options.breaklines}) {
        for (const std::string& path : *paths) {
            names += (names.empty() ? "" : ", ") + std::filesystem::path(path).filename().string();
        }
    }
    return names;
}

void RunBuild(BuildOptions options)
{
    CheckOptions(options);
    WriteOptions& write = options.outputs.options;
    write.form = options.outputs.form.value_or(2);
    write.title = OnOneLine(write.title.empty() ? InputNames(options) : write.title);
    Stopwatch stopwatch;
    stopwatch.Enter("read");
    const SurveyData survey = ReadSurvey(options);
    stopwatch.Enter("merge");
    const PreparedSurvey prepared = PrepareSurvey(survey, options.eps);
    stopwatch.Enter("build");
    Terrain terrain = BuildTerrain(prepared, options.eps, options.trimAngle);
    stopwatch.Enter("check");
    CheckTerrain(prepared, terrain);
    BuildReport report = MakeBuildReport(survey, prepared, terrain);
    stopwatch.Enter("write");
    UpdateStoredParts(terrain.tin);
    WriteAll(terrain, write, options.outputs.paths);
    report.written = options.outputs.paths;
    report.seconds = stopwatch.Stop();
    Print(options.json ? ReportAsJson(report) : ReportAsText(report));
}

}   // namespace

void DeclareBuild(CLI::App& app)
{
    const auto options = std::make_shared<BuildOptions>();
    app.add_option("POINTS", options->points, "text files with one point a line");
    app.add_option("--breaklines", options->breaklines,
                   "text file with blocks of x y z lines, an empty line or > between them; may be repeated")
        ->allow_extra_args(false)
        ->type_name("FILE");
    app.add_option("--order", options->order,
                   "columns of the points, a letter each: xyz, yxz, pnezd, penzd, ...")
        ->type_name("LETTERS");
    app.add_option("--trim-angle", options->trimAngle,
                   "cut off outer triangles with an angle of at most this at the outer edge")
        ->type_name("DEG");
    app.add_option("--eps", options->eps, "merge points that are this close in x and y (0.000001)")
        ->type_name("LENGTH");
    app.add_flag("--skip-bad", options->skipBad, "pass over lines that cannot be read, and list them");
    DeclareOutputs(app, options->outputs);
    DeclareJson(app, options->json);
    SetExample(app, "  qsvtin build points.txt --breaklines lines.txt -o site.tin -o site.png");
    app.callback([options] { RunBuild(*options); });
}

}   // namespace qsvtin
