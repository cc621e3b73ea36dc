// How long CTin::CreateTin takes, by kind of input and number of points: processor seconds, best of three, and
// nanoseconds a point. Usage: bench_build [most points]

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <vector>

#include "qsv_3dprocess.h"

namespace {

struct Place {
    double x, y;
};

std::vector<Place> Uniform(int n)
{
    std::mt19937_64 random(1);
    std::vector<Place> places;
    for (int i = 0; i < n; ++i) {
        const double x = static_cast<double>(random() >> 11), y = static_cast<double>(random() >> 11);
        places.push_back({x * std::ldexp(1000.0, -53), y * std::ldexp(1000.0, -53)});
    }
    return places;
}

std::vector<Place> Grid(int n)
{
    const int columns = static_cast<int>(std::sqrt(n));
    std::vector<Place> places;
    for (int i = 0; i < columns * columns; ++i) {
        places.push_back({static_cast<double>(i % columns), static_cast<double>(i / columns)});
    }
    return places;
}

// To and fro, as an aircraft flies.
std::vector<Place> ScanLines(int n)
{
    std::vector<Place> places = Uniform(n);
    const int perLine = static_cast<int>(std::sqrt(n));
    for (int i = 0; i < n; ++i) {
        const int line = i / perLine, along = i % perLine;
        Place& p = places[static_cast<size_t>(i)];
        p.y = line + p.y / 1000.0 * 0.3;
        p.x = (line % 2 == 0 ? along : perLine - along) + p.x / 1000.0 * 0.3;
    }
    return places;
}

double SecondsToBuild(const std::vector<Place>& places)
{
    CTin tin;
    tin.BeginAddPoint(static_cast<int>(places.size()));
    for (const Place& p : places) {
        tin.AddPoint2(p.x, p.y, 0.0);
    }
    tin.EndAddPoint();
    const std::clock_t start = std::clock();
    if (tin.CreateTin(0.0) == 0) std::printf("not built\n");
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void Measure(const char* name, const std::vector<Place>& places)
{
    double best = SecondsToBuild(places);
    for (int run = 1; run < 3; ++run) {
        best = std::fmin(best, SecondsToBuild(places));
    }
    std::printf("%-12s %9zu points %8.3f s %7.0f ns a point\n", name, places.size(), best,
                1e9 * best / static_cast<double>(places.size()));
}

}   // namespace

int main(int argc, char** argv)
{
    const int most = argc > 1 ? std::atoi(argv[1]) : 1000000;
    for (int n = 10000; n <= most; n *= 10) {
        Measure("uniform", Uniform(n));
        Measure("grid", Grid(n));
        Measure("scan lines", ScanLines(n));
    }
    return 0;
}
