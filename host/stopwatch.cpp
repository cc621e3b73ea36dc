#include "host/stopwatch.h"

#include "host/system.h"

#include <cstdio>

namespace qsvtin {

Stopwatch::Stopwatch() : m_onTerminal(IsErrorOnTerminal()), m_entered(Clock::now()) {}

Stopwatch::~Stopwatch()
{
    EndStage();
}

void Stopwatch::Enter(const std::string& stage)
{
    EndStage();
    m_running = stage;
    if (m_onTerminal) std::fprintf(stderr, "qsvtin: %s ...", stage.c_str());
}

const Stopwatch::Stages& Stopwatch::Stop()
{
    EndStage();
    return m_stages;
}

void Stopwatch::EndStage()
{
    const Clock::time_point now = Clock::now();
    if (!m_running.empty()) {
        m_stages.emplace_back(m_running, std::chrono::duration<double>(now - m_entered).count());
        if (m_onTerminal) std::fputs("\r\033[K", stderr);
    }
    m_entered = now;
    m_running.clear();
}

}   // namespace qsvtin
