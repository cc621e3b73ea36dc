// How fast qsvtin reads text, and how long it takes to start: tables in Markdown.
// Usage: bench_host <qsvtin> <folder for files>

#include <cstdlib>
#include <string>

#include "bench/measure.h"
#include "bench/point_sets.h"
#include "host/input/survey_text.h"

namespace {

using namespace bench;

// About 72 MB of rows with millimetres, as surveys of a region have them.
std::string TextOf(bool bTable)
{
    std::string text = bTable ? "Point,Easting,Northing,Elevation,Code\n" : "";
    const Places places = Uniform(10000);
    for (int i = 0; text.size() < 72000000; ++i) {
        const Place& p = places[static_cast<std::size_t>(i) % places.size()];
        const double x = 500000.0 + 9.0 * p.x, y = 4000000.0 + 9.0 * p.y, z = 100.0 + 0.3 * p.x;
        char szLine[128];
        if (bTable) {
            std::snprintf(szLine, sizeof szLine, "P%d,%.3f,%.3f,%.3f,GRND\n", i, x, y, z);
        } else {
            std::snprintf(szLine, sizeof szLine, "%.3f %.3f %.3f\n", x, y, z);
        }
        text += szLine;
    }
    return text;
}

void MeasureReading(const std::string& strFolder, const char* szWhat, const std::string& text)
{
    const std::string strPath = strFolder + "/bench.txt";
    std::FILE* const file = std::fopen(strPath.c_str(), "wb");
    if (file == nullptr) return;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    std::size_t nPoints = 0;
    const double dSeconds =
        MediansInTurns(5, {[&] {
                           const double dStart = ProcessorSeconds();
                           qsvtin::TextFile lines(strPath);
                           std::vector<qsvtin::BadLine> aBad;
                           nPoints = qsvtin::ReadSurveyPoints(lines, std::nullopt, aBad).points.size();
                           return ProcessorSeconds() - dStart;
                       }})[0];
    std::remove(strPath.c_str());
    const double dMega = 1e-6 * static_cast<double>(text.size());
    std::printf("| %s | %.0f | %zu | %.3f | %.0f |\n", szWhat, dMega, nPoints, dSeconds, dMega / dSeconds);
}

double SecondsToRun(const std::string& strCommand)
{
    const double dStart = ProcessorSeconds(RUSAGE_CHILDREN);
    if (std::system((strCommand + " >/dev/null 2>&1").c_str()) != 0) {
        std::printf("failed: %s\n", strCommand.c_str());
        std::exit(1);
    }
    return ProcessorSeconds(RUSAGE_CHILDREN) - dStart;
}

void MeasureStart(const std::string& strProgram, const std::string& strFolder)
{
    const std::string strPoints = strFolder + "/bench_small.txt", strTin = strFolder + "/bench_small.tin";
    std::FILE* const file = std::fopen(strPoints.c_str(), "wb");
    if (file == nullptr) return;
    for (const Place& p : Uniform(1000)) {
        std::fprintf(file, "%.3f %.3f %.3f\n", p.x, p.y, 0.1 * p.x);
    }
    std::fclose(file);
    const auto run = [&](const char* szArguments) {
        return SecondsToRun("'" + strProgram + "' " + szArguments);
    };
    run(("build '" + strPoints + "' -o '" + strTin + "'").c_str());
    const auto aSeconds = MediansInTurns(
        31, {[&] { return run("--version"); }, [&] { return run(("info '" + strTin + "'").c_str()); }});
    std::remove(strPoints.c_str());
    std::remove(strTin.c_str());
    std::printf("\n### Start\n\nMilliseconds of processor time, with the shell that starts it.\n\n| | ms "
                "|\n|---|--:|\n"
                "| `qsvtin --version` | %.1f |\n| `qsvtin info`, a TIN of 1000 points | %.1f |\n",
                1000.0 * aSeconds[0], 1000.0 * aSeconds[1]);
}

}   // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench_host <qsvtin> <folder for files>\n");
        return 2;
    }
    std::printf("### Reading text\n\nOne core, user and system time.\n\n"
                "| rows | MB | points | seconds | MB/s |\n|---|--:|--:|--:|--:|\n");
    MeasureReading(argv[2], "x y z", TextOf(false));
    MeasureReading(argv[2], "heading, point number, x, y, z, code, with commas", TextOf(true));
    MeasureStart(argv[1], argv[2]);
    return 0;
}
