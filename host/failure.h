#ifndef QSVTIN_FAILURE_H
#define QSVTIN_FAILURE_H

#include <stdexcept>
#include <string>

namespace qsvtin {

/// Ends the command: main prints the message as one line and exits with the status.
/// The message names the file or option at fault and says what to do about it.
struct Failure : std::runtime_error {
    enum Status { Failed = 1, BadUsage = 2 };

    explicit Failure(const std::string& message, Status exitStatus = Failed)
        : std::runtime_error(message), status(exitStatus)
    {
    }

    Status status;
};

}   // namespace qsvtin

#endif
