#ifndef QSVTIN_COMMANDS_RENDER_H
#define QSVTIN_COMMANDS_RENDER_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin render": draws a TIN from any direction.
void DeclareRender(CommandLine command);

}   // namespace qsvtin

#endif
