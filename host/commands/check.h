#ifndef QSVTIN_COMMANDS_CHECK_H
#define QSVTIN_COMMANDS_CHECK_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin check": every fault of a TIN file, by name; fails when there is one.
void DeclareCheck(CLI::App& app);

}   // namespace qsvtin

#endif
