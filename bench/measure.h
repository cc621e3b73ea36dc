#ifndef QSV_BENCH_MEASURE_H
#define QSV_BENCH_MEASURE_H

#include <stdlib.h>   // says which C library this is
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

// What the programs that measure share.

namespace bench {

inline double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

// Processor time of this process so far, in user mode or with that of the system for it.
inline double UserSeconds(int nWho = RUSAGE_SELF)
{
    rusage usage = {};
    getrusage(nWho, &usage);
    return Seconds(usage.ru_utime);
}
inline double ProcessorSeconds(int nWho = RUSAGE_SELF)
{
    rusage usage = {};
    getrusage(nWho, &usage);
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

// So that what is allocated next is new to the process, whatever it has freed before.
inline void GiveBackMemory()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

inline double Median(std::vector<double> aValue)
{
    std::sort(aValue.begin(), aValue.end());
    return aValue[aValue.size() / 2];
}

// What a procedure returns that runs in a process of its own, so that it finds memory as a program that has just begun
// does, and not as others left it.
inline double InOwnProcess(const std::function<double()>& procedure)
{
    int aPipe[2];
    if (pipe(aPipe) != 0) std::exit(1);
    std::fflush(stdout);
    const pid_t nChild = fork();
    if (nChild == 0) {
        const double dMeasured = procedure();
        _exit(write(aPipe[1], &dMeasured, sizeof dMeasured) == sizeof dMeasured ? 0 : 1);
    }
    double dMeasured = 0.0;
    close(aPipe[1]);
    const bool bRead = nChild > 0 && read(aPipe[0], &dMeasured, sizeof dMeasured) == sizeof dMeasured;
    close(aPipe[0]);
    if (!bRead || waitpid(nChild, nullptr, 0) != nChild) {
        std::fprintf(stderr, "a run ended early\n");
        std::exit(1);
    }
    return dMeasured;
}

// Medians of several runs of each of some procedures, which take turns: what slows the machine down for a while
// slows all of them. A procedure returns what it measured; one that is missing gives 0.
inline std::vector<double> MediansInTurns(int nRuns, const std::vector<std::function<double()>>& aProcedure)
{
    std::vector<std::vector<double>> aMeasured(aProcedure.size());
    for (int run = 0; run < nRuns; ++run) {
        for (std::size_t i = 0; i < aProcedure.size(); ++i) {
            aMeasured[i].push_back(aProcedure[i] ? aProcedure[i]() : 0.0);
        }
    }
    std::vector<double> aMedian;
    for (const auto& measured : aMeasured) {
        aMedian.push_back(Median(measured));
    }
    return aMedian;
}

}   // namespace bench

#endif
