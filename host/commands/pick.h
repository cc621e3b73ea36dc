#ifndef QSVTIN_COMMANDS_PICK_H
#define QSVTIN_COMMANDS_PICK_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin pick": tells what lies under a pixel of a picture that "qsvtin render" draws.
void DeclarePick(CommandLine command);

}   // namespace qsvtin

#endif
