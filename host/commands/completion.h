#ifndef QSVTIN_COMMANDS_COMPLETION_H
#define QSVTIN_COMMANDS_COMPLETION_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin completion": prints a script by which a shell completes commands and options.
void DeclareCompletion(CLI::App& app);

}   // namespace qsvtin

#endif
