#ifndef QSVTIN_COMMANDS_BUILD_H
#define QSVTIN_COMMANDS_BUILD_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin build": reads survey text, triangulates it with its breaklines, writes pictures and meshes, and
/// reports on standard output.
void DeclareBuild(CommandLine command);

}   // namespace qsvtin

#endif
