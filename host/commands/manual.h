#ifndef QSVTIN_COMMANDS_MANUAL_H
#define QSVTIN_COMMANDS_MANUAL_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin manual": prints the manual page, made of what all commands have declared.
void DeclareManual(CommandLine command);

}   // namespace qsvtin

#endif
