#ifndef QSVTIN_COMMANDS_HEIGHT_H
#define QSVTIN_COMMANDS_HEIGHT_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin height": heights at places, from the command line or a stream of them.
void DeclareHeight(CLI::App& app);

}   // namespace qsvtin

#endif
