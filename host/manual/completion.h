#ifndef QSVTIN_MANUAL_COMPLETION_H
#define QSVTIN_MANUAL_COMPLETION_H

#include "host/manual/usage.h"

#include <string>

namespace qsvtin {

/// A script by which a shell completes the commands and options of the program, and file names for the rest.
/// @param shell  bash, zsh or fish
/// @return the script; empty for another shell
std::string CompletionFor(const std::string& shell, const ProgramUsage& program);

}   // namespace qsvtin

#endif
