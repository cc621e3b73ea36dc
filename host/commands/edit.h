#ifndef QSVTIN_COMMANDS_EDIT_H
#define QSVTIN_COMMANDS_EDIT_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin edit": inserts and deletes points, trims, hangs walls and merges, in the order given.
void DeclareEdit(CommandLine command);

}   // namespace qsvtin

#endif
