#ifndef QSVTIN_COMMANDS_CONVERT_H
#define QSVTIN_COMMANDS_CONVERT_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// "qsvtin convert": from one form of file to another, links rebuilt where wanted.
void DeclareConvert(CommandLine command);

}   // namespace qsvtin

#endif
