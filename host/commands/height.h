#ifndef QSVTIN_COMMANDS_HEIGHT_H
#define QSVTIN_COMMANDS_HEIGHT_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin height": heights at places, from the command line or a stream of them.
void DeclareHeight(CommandLine command);

}   // namespace qsvtin

#endif
