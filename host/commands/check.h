#ifndef QSVTIN_COMMANDS_CHECK_H
#define QSVTIN_COMMANDS_CHECK_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin check": every fault of a TIN file, by name; fails when there is one.
void DeclareCheck(CommandLine command);

}   // namespace qsvtin

#endif
