#ifndef QSVTIN_STOPWATCH_H
#define QSVTIN_STOPWATCH_H

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace qsvtin {

/// Seconds of the stages of a command, which follow one another. While one runs, a terminal on standard
/// error shows its name.
class Stopwatch
{
public:
    using Stages = std::vector<std::pair<std::string, double>>;

    Stopwatch();
    /// Clears the terminal's line, also when a failure ends the command.
    ~Stopwatch();
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

    /// Ends the stage that runs, and starts this one.
    void Enter(const std::string& stage);
    /// Ends the last stage. @return all of them in their order
    const Stages& Stop();

private:
    using Clock = std::chrono::steady_clock;

    void EndStage();

    bool m_onTerminal;
    Clock::time_point m_entered;
    std::string m_running;
    Stages m_stages;
};

}   // namespace qsvtin

#endif
