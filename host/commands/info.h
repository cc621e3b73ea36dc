#ifndef QSVTIN_COMMANDS_INFO_H
#define QSVTIN_COMMANDS_INFO_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin info": what a TIN file holds.
void DeclareInfo(CLI::App& app);

}   // namespace qsvtin

#endif
