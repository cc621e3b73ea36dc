#ifndef QSVTIN_COMMANDS_AREA_H
#define QSVTIN_COMMANDS_AREA_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin area": plan area and surface area of a TIN.
void DeclareArea(CommandLine command);

}   // namespace qsvtin

#endif
