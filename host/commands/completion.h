#ifndef QSVTIN_COMMANDS_COMPLETION_H
#define QSVTIN_COMMANDS_COMPLETION_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin completion": prints a script by which a shell completes commands and options.
void DeclareCompletion(CommandLine command);

}   // namespace qsvtin

#endif
