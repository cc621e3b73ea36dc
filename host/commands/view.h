#ifndef QSVTIN_COMMANDS_VIEW_H
#define QSVTIN_COMMANDS_VIEW_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin view": a page that shows a TIN in a browser.
void DeclareView(CommandLine command);

}   // namespace qsvtin

#endif
