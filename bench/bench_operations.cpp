// What the operations on a TIN cost, and how the cost grows: each is run on terrains of 100,000 and 1,000,000
// points, and a table tells for each size
//   seconds    processor time, best of three runs
//   scratch    bytes a point in use at the peak of the operation, beyond what is there before or after it
//   exponent   e, when the time grew with the e-th power of the size since the line above
// Usage: bench_operations [fewest points [most points [part of an operation's name]]]

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>

#include "bench/allocation.h"
#include "bench/measure.h"
#include "qsv_3dprocess.h"

namespace {

using namespace bench;

constexpr double kPi = 3.14159265358979323846;
const char* const kFile = "bench_operations.tin";

class Dice
{
public:
    double Uniform(double low, double high)
    {
        return low + (high - low) * std::ldexp(static_cast<double>(m_random() >> 11), -53);
    }

private:
    std::mt19937_64 m_random{1};
};

double Height(double x, double y)
{
    return 20.0 * std::sin(0.013 * x) * std::cos(0.017 * y) + 0.3 * std::sin(0.9 * x + 1.1 * y);
}

// n points, on average one a square unit.
CTin Points(int n)
{
    Dice dice;
    CTin tin;
    tin.BeginAddPoint(n);
    const double side = std::sqrt(n);
    for (int i = 0; i < n; ++i) {
        const double x = dice.Uniform(0.0, side), y = dice.Uniform(0.0, side);
        tin.AddPoint2(x, y, Height(x, y));
    }
    tin.EndAddPoint();
    return tin;
}

CTin Terrain(int n)
{
    CTin tin = Points(n);
    tin.CreateTin(0.0);
    return tin;
}

// Points with n / 20 breaklines of two points each, fed as vertices of their own; length in average distances.
CTin PointsAndLines(int n, double length)
{
    CTin tin = Points(n);
    Dice dice;
    const double side = std::sqrt(n);
    for (int i = 0; i < n / 20; ++i) {
        const double x = dice.Uniform(0.0, side), y = dice.Uniform(0.0, side), angle = dice.Uniform(0.0, kPi);
        CPolyline line;
        for (const double at : {-0.5 * length, 0.5 * length}) {
            CVertex v;
            v.x = std::min(side, std::max(0.0, x + at * std::cos(angle)));
            v.y = std::min(side, std::max(0.0, y + at * std::sin(angle)));
            v.z = Height(v.x, v.y);
            line.AddVertex(v);
        }
        tin.AddBreakLine2(line);
    }
    tin.EndAddPoint();
    return tin;
}

// A star-shaped ring of n corners with bays of all sizes.
CPolyline Ring(int n)
{
    CPolyline ring;
    for (int i = 0; i < n; ++i) {
        const double angle = 2.0 * kPi * i / n;
        double radius = 1000.0;
        for (int wave = 3; wave < n / 8; wave *= 3) {
            radius += 600.0 / wave * std::sin(wave * angle + wave);
        }
        CVertex v;
        v.x = radius * std::cos(angle);
        v.y = radius * std::sin(angle);
        ring.AddVertex(v);
    }
    return ring;
}

struct Cost {
    double seconds = HUGE_VAL;
    double scratch = 0.0;
};

struct Operation {
    const char* name;
    std::function<CTin(int)> prepare;
    std::function<void(CTin&)> run;
};

// Best of three runs, each on an object prepared anew.
Cost Measure(const Operation& operation, int n)
{
    Cost cost;
    for (int run = 0; run < 3; ++run) {
        CTin tin = operation.prepare(n);
        GiveBackMemory();   // small operations, too, shall get theirs from the system
        const size_t before = HeldBytes();
        ResetPeak();
        const double start = ProcessorSeconds();
        operation.run(tin);
        cost.seconds = std::fmin(cost.seconds, ProcessorSeconds() - start);
        cost.scratch = static_cast<double>(PeakBytes() - std::max(before, HeldBytes())) / n;
    }
    return cost;
}

// Times the same without a part of it, for what can only be done along with something else.
Cost operator-(const Cost& whole, const Cost& part)
{
    return {whole.seconds - part.seconds, whole.scratch};
}

void Print(const char* name, int n, const Cost& cost, int smaller, const Cost& before)
{
    std::printf("%-34s %9d %9.3f %9.1f", name, n, cost.seconds, cost.scratch);
    if (smaller > 0) {
        std::printf(" %9.2f",
                    std::log(cost.seconds / before.seconds) / std::log(static_cast<double>(n) / smaller));
    }
    std::printf("\n");
    std::fflush(stdout);
}

const Operation kOperations[] = {
    {"CreateTin", Points, [](CTin& tin) { tin.CreateTin(0.0); }},
    {"UpdateTopology", Terrain, [](CTin& tin) { tin.UpdateTopology(); }},
    {"UpdateBoundary", Terrain, [](CTin& tin) { tin.UpdateBoundary(); }},
    {"UpdateNormal", Terrain, [](CTin& tin) { tin.UpdateNormal(); }},
    {"UpdateTextureCoord", Terrain, [](CTin& tin) { tin.UpdateTextureCoord(); }},
    {"UpdateDepth", Terrain, [](CTin& tin) { tin.UpdateDepth(); }},
    {"UpdateDepth2", Terrain, [](CTin& tin) { tin.UpdateDepth2(); }},
    {"DelTriWithAngle 10 degrees", Terrain, [](CTin& tin) { tin.DelTriWithAngle(10.0 * kPi / 180.0, 1); }},
    {"DelTriWithAngle all the way", Terrain, [](CTin& tin) { tin.DelTriWithAngle(75.0 * kPi / 180.0, 0); }},
    {"AddVPlane", Terrain, [](CTin& tin) { tin.AddVPlane(-30.0); }},
    {"DelVertex, one", Terrain, [](CTin& tin) { tin.DelVertex(tin.GetPointSize() / 2); }},
    {"AddTIN to itself", Terrain, [](CTin& tin) { tin.AddTIN(tin); }},
    {"CalAllArea", Terrain, [](CTin& tin) { tin.CalAllArea(); }},
    {"WriteBIN_VER0", Terrain, [](CTin& tin) { tin.WriteBIN_VER0(kFile); }},
    {"ReadBIN_VER0",
     [](int n) {
         Terrain(n).WriteBIN_VER0(kFile);
         return CTin();
     },
     [](CTin& tin) { tin.ReadBIN_VER0(kFile); }},
};

bool IsWanted(const char* name, const char* part)
{
    return std::string(name).find(part) != std::string::npos;
}

using Measurement = std::function<Cost(int)>;

void MeasureSizes(const char* name, int fewest, int most, const Measurement& measure)
{
    Cost before;
    int smaller = 0;
    for (int n = fewest; n <= most; n *= 10) {
        const Cost cost = measure(n);
        Print(name, n, cost, smaller, before);
        before = cost;
        smaller = n;
    }
}

Cost OfBreaklines(int n, double length)
{
    const auto create = [](CTin& tin) { tin.CreateTin(0.0); };
    const auto lines = [length](int size) { return PointsAndLines(size, length); };
    const auto points = [&lines](int size) {
        CTin tin = lines(size);
        tin.m_aBreakLine.RemoveAll();
        return tin;
    };
    return Measure({"", lines, create}, n) - Measure({"", points, create}, n);
}

Cost OfPolygon(int n)
{
    const CPolyline ring = Ring(n);
    return Measure({"", [](int) { return CTin(); }, [&ring](CTin& tin) { tin.CreateTinForPolygon(ring); }},
                   n);
}

}   // namespace

int main(int argc, char** argv)
{
    const int fewest = argc > 1 ? std::atoi(argv[1]) : 100000, most = argc > 2 ? std::atoi(argv[2]) : 1000000;
    const char* const part = argc > 3 ? argv[3] : "";
    std::printf("%-34s %9s %9s %9s %9s\n", "operation", "points", "seconds", "scratch", "exponent");
    for (const Operation& operation : kOperations) {
        if (IsWanted(operation.name, part)) {
            MeasureSizes(operation.name, fewest, most, [&](int n) { return Measure(operation, n); });
        }
    }
    const struct {
        const char* name;
        Measurement measure;
    } others[] = {{"breaklines, n/20 short", [](int n) { return OfBreaklines(n, 3.0); }},
                  {"breaklines, n/20 long", [](int n) { return OfBreaklines(n, 12.0); }},
                  {"CreateTinForPolygon", OfPolygon}};
    for (const auto& other : others) {
        if (IsWanted(other.name, part)) {
            MeasureSizes(other.name, fewest, most, other.measure);
        }
    }
    std::remove(kFile);
    return 0;
}
