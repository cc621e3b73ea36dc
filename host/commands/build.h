#ifndef QSVTIN_COMMANDS_BUILD_H
#define QSVTIN_COMMANDS_BUILD_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin build": reads survey text, triangulates it with its breaklines, writes pictures and meshes, and
/// reports on standard output.
void DeclareBuild(CLI::App& app);

}   // namespace qsvtin

#endif
