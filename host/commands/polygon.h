#ifndef QSVTIN_COMMANDS_POLYGON_H
#define QSVTIN_COMMANDS_POLYGON_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin polygon": a TIN that fills one polygon.
void DeclarePolygon(CommandLine command);

}   // namespace qsvtin

#endif
