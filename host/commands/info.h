#ifndef QSVTIN_COMMANDS_INFO_H
#define QSVTIN_COMMANDS_INFO_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin info": what a TIN file holds.
void DeclareInfo(CommandLine command);

}   // namespace qsvtin

#endif
