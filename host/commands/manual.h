#ifndef QSVTIN_COMMANDS_MANUAL_H
#define QSVTIN_COMMANDS_MANUAL_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin manual": prints the manual page, made of what all commands have declared.
void DeclareManual(CLI::App& app);

}   // namespace qsvtin

#endif
