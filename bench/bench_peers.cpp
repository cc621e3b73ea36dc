// How fast the library is beside CGAL, and beside plain reading and writing: tables in Markdown, medians of
// several runs that take turns, processor time in user mode. Usage: bench_peers [most points] [folder for files]

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/allocation.h"
#include "bench/measure.h"
#include "bench/peer.h"
#include "bench/point_sets.h"
#include "qsv_3dprocess.h"

namespace {

using namespace bench;

// Heights take no part in building; these make a surface that is smooth and not flat.
double HeightAt(const Place& p)
{
    return 0.1 * p.x + 5.0 * std::sin(0.02 * p.y);
}

void Feed(CTin& tin, const Places& places)
{
    tin.BeginAddPoint(static_cast<int>(places.size()));
    for (const Place& p : places) {
        tin.AddPoint2(p.x, p.y, HeightAt(p));
    }
    tin.EndAddPoint();
}

void Build(CTin& tin)
{
    if (tin.CreateTin(0.0) == 0) {
        std::printf("not built\n");
        std::exit(1);
    }
}

CTin Built(const Places& places)
{
    CTin tin;
    Feed(tin, places);
    Build(tin);
    return tin;
}

double SecondsToBuild(const Places& places)
{
    CTin tin;
    Feed(tin, places);
    const double dStart = UserSeconds();
    Build(tin);
    return UserSeconds() - dStart;
}

// As text: a quotient, or a dash where there is nothing to compare with.
std::string Ratio(double dOurs, double dTheirs)
{
    char szText[32] = "-";
    if (dTheirs > 0.0) std::snprintf(szText, sizeof szText, "%.2f", dOurs / dTheirs);
    return szText;
}

int RunsFor(std::size_t nPoints)
{
    return nPoints > 30000 ? 7 : 15;
}

void CompareBuilding(const char* szSet, const Places& places)
{
    const auto aSeconds = MediansInTurns(
        RunsFor(places.size()), {[&] { return InOwnProcess([&] { return SecondsToBuild(places); }); },
                                 [&] { return InOwnProcess([&] { return Peer::SecondsToBuild(places); }); }});
    const auto n = static_cast<double>(places.size());
    std::printf("| %s | %.0f | %.4f | %.0f | %.4f | %s |\n", szSet, n, aSeconds[0], 1e9 * aSeconds[0] / n,
                aSeconds[1], Ratio(aSeconds[0], aSeconds[1]).c_str());
    std::fflush(stdout);
}

// The walks to the points of a shuffled grid cannot be shortened: a million takes half a minute.
constexpr int kMostShuffled = 100000;

void CompareBuilding(int nMost)
{
    std::printf(
        "### Building\n\n`CreateTin(0.0)` on points that were fed, against inserting the range of points.\n\n"
        "| points | number | seconds | ns a point | %s, seconds | ratio |\n|---|--:|--:|--:|--:|--:|\n",
        Peer::Name());
    for (int n = 10000; n <= nMost; n *= 10) {
        CompareBuilding("uniform, random order", Uniform(n));
        CompareBuilding("clustered", Clustered(n));
        CompareBuilding("scan lines", ScanLines(n));
        CompareBuilding("grid, row by row", Grid(n));
        if (n <= kMostShuffled) {
            CompareBuilding("grid, shuffled", Shuffled(Grid(n)));
        }
    }
}

void CompareMemory(int nMost)
{
    std::printf(
        "\n### Memory while building\n\nBytes a point in use at the peak beyond those that stay, counted at "
        "operator new.\n\n| points | number | bytes a point | %s |\n|---|--:|--:|--:|\n",
        Peer::Name());
    const std::pair<const char*, Places> aSet[] = {{"uniform, random order", Uniform(nMost)},
                                                   {"grid, row by row", Grid(nMost)}};
    for (const auto& [szSet, places] : aSet) {
        CTin tin;
        Feed(tin, places);
        ResetPeak();
        Build(tin);
        const double dOurs =
            static_cast<double>(PeakBytes() - HeldBytes()) / static_cast<double>(places.size());
        std::printf("| %s | %zu | %.1f | %.1f |\n", szSet, places.size(), dOurs, Peer::BuildBytes(places));
    }
}

// Lines side by side that do not cross, each of 100 segments.
std::vector<Places> SideBySide(int nLines)
{
    std::vector<Places> lines;
    const Places jitter = Uniform(nLines * 101, 5);
    for (int line = 0; line < nLines; ++line) {
        lines.emplace_back();
        for (int i = 0; i <= 100; ++i) {
            const Place& j = jitter[static_cast<std::size_t>(line) * 101 + static_cast<std::size_t>(i)];
            lines.back().push_back(
                {5.0 + 9.8 * i + 0.004 * j.x, (line + 0.1 + 0.0008 * j.y) * 1000.0 / nLines});
        }
    }
    return lines;
}

double SecondsToBuildConstrained(const Places& places, const std::vector<Places>& lines)
{
    const double dStart = UserSeconds();
    CTin tin;
    tin.BeginAddPoint(static_cast<int>(places.size()));
    for (const Place& p : places) {
        tin.AddPoint2(p.x, p.y, HeightAt(p));
    }
    for (const Places& line : lines) {
        CPolyline polyline;
        for (const Place& p : line) {
            CVertex v;
            v.x = p.x;
            v.y = p.y;
            v.z = HeightAt(p);
            polyline.AddVertex(v);
        }
        tin.AddBreakLine2(polyline);
    }
    tin.EndAddPoint();
    Build(tin);
    return UserSeconds() - dStart;
}

void CompareConstraints()
{
    constexpr int kPoints = 100000, kLines = 90;
    const Places places = Uniform(kPoints);
    const std::vector<Places> lines = SideBySide(kLines);
    const auto aSeconds = MediansInTurns(7, {[&] { return SecondsToBuildConstrained(places, {}); },
                                             [&] { return SecondsToBuildConstrained(places, lines); },
                                             [&] { return Peer::SecondsToBuildConstrained(places, {}); },
                                             [&] { return Peer::SecondsToBuildConstrained(places, lines); }});
    std::printf(
        "\n### Breaklines\n\n%d segments in %d lines, into %d points: seconds with them, and that over the "
        "seconds without.\n\n| | seconds | over plain |\n|---|--:|--:|\n",
        100 * kLines, kLines, kPoints);
    std::printf("| this library | %.3f | %s |\n", aSeconds[1], Ratio(aSeconds[1], aSeconds[0]).c_str());
    std::printf("| %s | %.3f | %s |\n", Peer::Name(), aSeconds[3], Ratio(aSeconds[3], aSeconds[2]).c_str());
}

double SecondsToFindHeights(const CTin& tin, const Places& asked)
{
    CArray<CXYZ> aPlace;
    for (const Place& p : asked) {
        aPlace.Add(CXYZ(p.x, p.y, 0.0));
    }
    CArray<CHeightAnswer> aAnswer;
    const double dStart = UserSeconds();
    const int nFound = FindHeights(tin, aPlace, aAnswer);
    const double dSeconds = UserSeconds() - dStart;
    if (nFound < aPlace.GetSize() / 2) std::printf("heights missing\n");
    return dSeconds;
}

// The member, each walk from the triangle found before.
double SecondsToWalk(CTin& tin, const Places& asked)
{
    const double dStart = UserSeconds();
    int nStart = 0;
    for (const Place& p : asked) {
        double z = 0.0;
        int nTri = -1;
        tin.InterpolateForPlane(nStart, p.x, p.y, z, nTri);
        nStart = nTri >= 0 ? nTri : nStart;
    }
    return UserSeconds() - dStart;
}

void CompareHeights(int nMost)
{
    std::printf(
        "\n### Heights\n\n`FindHeights` for %d positions on a TIN of as many points, its grid included, and "
        "`InterpolateForPlane` from the triangle found before, against location from the face found "
        "before, which computes no height; there positions in random order are sorted first.\n\n"
        "| points | positions | ns a position | from the last triangle | %s | ratio |\n"
        "|---|---|--:|--:|--:|--:|\n",
        nMost, Peer::Name());
    const std::pair<const char*, Places> aSurface[] = {{"uniform", Uniform(nMost)},
                                                       {"scan lines", ScanLines(nMost)}};
    const std::pair<const char*, Places> aAsked[] = {{"random", Uniform(nMost, 7)},
                                                     {"in scan order", ScanLines(nMost, 8)}};
    for (const auto& [szSurface, surface] : aSurface) {
        CTin tin = Built(surface);
        for (const auto& [szAsked, asked] : aAsked) {
            const bool bRandom = &asked == &aAsked[0].second;
            const auto& places = asked;
            const auto& vertices = surface;
            const auto aSeconds = MediansInTurns(
                5, {[&] { return SecondsToFindHeights(tin, places); },
                    bRandom ? std::function<double()>() : [&] { return SecondsToWalk(tin, places); },
                    [&] { return Peer::SecondsToLocate(vertices, places, bRandom); }});
            const double dNano = 1e9 / static_cast<double>(places.size());
            std::printf("| %s | %s | %.0f | %s | %.0f | %s |\n", szSurface, szAsked, dNano * aSeconds[0],
                        bRandom ? "-" : std::to_string(std::lround(dNano * aSeconds[1])).c_str(),
                        dNano * aSeconds[2], Ratio(aSeconds[0], aSeconds[2]).c_str());
            std::fflush(stdout);
        }
    }
}

double SecondsToMerge(const Places& places)
{
    CArray<CXYZ> aPoint;
    for (const Place& p : places) {
        aPoint.Add(CXYZ(p.x, p.y, 0.0));
    }
    CTin tin;
    CArray<int> aVertex;
    const double dStart = UserSeconds();
    AddPoints(tin, aPoint, aVertex);
    return UserSeconds() - dStart;
}

void MeasureMerging(int nMost)
{
    std::printf("\n### Merging\n\n`AddPoints`, which gives the vertices of as many `AddPoint` calls.\n\n"
                "| points | number | seconds | ns a point |\n|---|--:|--:|--:|\n");
    Places twice = Uniform(nMost / 2);
    const Places again = Shuffled(twice);
    twice.insert(twice.end(), again.begin(), again.end());
    const std::pair<const char*, Places> aSet[] = {{"uniform, random order", Uniform(nMost)},
                                                   {"every point twice", twice},
                                                   {"clustered", Clustered(nMost)},
                                                   {"grid, row by row", Grid(nMost)}};
    for (const auto& [szSet, places] : aSet) {
        const auto& fed = places;
        const double dSeconds = MediansInTurns(5, {[&] { return SecondsToMerge(fed); }})[0];
        std::printf("| %s | %zu | %.3f | %.0f |\n", szSet, places.size(), dSeconds,
                    1e9 * dSeconds / static_cast<double>(places.size()));
    }
}

// One call for all bytes; the pages of the file stay in the system's cache.
double SecondsToWriteBytes(const std::string& strPath, const std::vector<char>& bytes)
{
    const double dStart = ProcessorSeconds();
    std::FILE* const file = std::fopen(strPath.c_str(), "wb");
    if (file == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() ||
        std::fclose(file) != 0) {
        std::printf("cannot write %s\n", strPath.c_str());
        std::exit(1);
    }
    return ProcessorSeconds() - dStart;
}

// Into memory that was not in use before, as a reader's arrays are.
double SecondsToReadBytes(const std::string& strPath, std::size_t nBytes)
{
    GiveBackMemory();
    const double dStart = ProcessorSeconds();
    const std::unique_ptr<char[]> bytes(new char[nBytes]);
    std::FILE* const file = std::fopen(strPath.c_str(), "rb");
    if (file == nullptr || std::fread(bytes.get(), 1, nBytes, file) != nBytes || std::fclose(file) != 0) {
        std::printf("cannot read %s\n", strPath.c_str());
        std::exit(1);
    }
    return ProcessorSeconds() - dStart;
}

void CompareFiles(int nMost, const std::string& strFolder)
{
    const std::string strTin = strFolder + "/bench.tin", strBytes = strFolder + "/bench.bytes";
    CArray<CTin, CTin&> aTin;
    {
        CTin tin = Built(Uniform(nMost));
        aTin.Add(tin);
    }
    CTin::WriteBIN_VER2(strTin.c_str(), aTin);
    std::FILE* const file = std::fopen(strTin.c_str(), "rb");
    if (file == nullptr) return;
    std::fseek(file, 0, SEEK_END);
    std::vector<char> bytes(static_cast<std::size_t>(std::ftell(file)));
    std::fclose(file);
    const auto aSeconds = MediansInTurns(5, {[&] {
                                                 const double dStart = ProcessorSeconds();
                                                 CTin::WriteBIN_VER2(strTin.c_str(), aTin);
                                                 return ProcessorSeconds() - dStart;
                                             },
                                             [&] { return SecondsToWriteBytes(strBytes, bytes); },
                                             [&] {
                                                 CArray<CTin, CTin&> aRead;
                                                 GiveBackMemory();
                                                 const double dStart = ProcessorSeconds();
                                                 CTin::ReadBIN_VER2(strTin.c_str(), aRead);
                                                 return ProcessorSeconds() - dStart;
                                             },
                                             [&] { return SecondsToReadBytes(strBytes, bytes.size()); },
                                             [&] {
                                                 const double dStart = ProcessorSeconds();
                                                 aTin[0].UpdateDepth();
                                                 return ProcessorSeconds() - dStart;
                                             }});
    std::remove(strTin.c_str());
    std::remove(strBytes.c_str());
    std::printf("\n### Files\n\nA collection file of one TIN of %d points, %.0f MB, against one `fwrite`, or "
                "one `fread` into "
                "memory as fresh as that of the TIN, of as many bytes; user and system time. Reading ends "
                "with making the "
                "drawing order.\n\n| | seconds | bytes in one call | ratio |\n|---|--:|--:|--:|\n",
                nMost, 1e-6 * static_cast<double>(bytes.size()));
    const auto print = [](const char* szWhat, double dOurs, double dBulk) {
        std::printf("| %s | %.4f | %.4f | %s |\n", szWhat, dOurs, dBulk, Ratio(dOurs, dBulk).c_str());
    };
    print("write", aSeconds[0], aSeconds[1]);
    print("read", aSeconds[2], aSeconds[3]);
    print("read, less the drawing order", aSeconds[2] - aSeconds[4], aSeconds[3]);
}

}   // namespace

int main(int argc, char** argv)
{
    const int nMost = argc > 1 ? std::atoi(argv[1]) : 1000000;
    CompareBuilding(nMost);
    CompareMemory(nMost);
    CompareConstraints();
    CompareHeights(nMost);
    MeasureMerging(nMost);
    CompareFiles(nMost, argc > 2 ? argv[2] : ".");
    return 0;
}
