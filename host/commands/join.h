#ifndef QSVTIN_COMMANDS_JOIN_H
#define QSVTIN_COMMANDS_JOIN_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin join": the TINs of several files as one collection.
void DeclareJoin(CommandLine command);

}   // namespace qsvtin

#endif
