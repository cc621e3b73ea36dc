#include "host/say.h"

#include "host/failure.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace qsvtin {

void Note(std::string message)
{
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    std::replace_if(message.begin(), message.end(), isControl, ' ');
    std::fprintf(stderr, "qsvtin: %s\n", message.c_str());
}

void Print(const std::string& answer)
{
    const bool written = std::fwrite(answer.data(), 1, answer.size(), stdout) == answer.size();
    if (std::fflush(stdout) != 0 || !written) {
        throw Failure(std::string("cannot write the report: ") + std::strerror(errno));
    }
}

}   // namespace qsvtin
