#ifndef QSVTIN_COMMANDS_COMMAND_H
#define QSVTIN_COMMANDS_COMMAND_H

#include "host/commands/command_line.h"

namespace qsvtin {

/// One command of the program; main holds the table of them.
struct Command {
    const char* name;
    const char* summary;   ///< one line of the program's help
    /// Declares arguments and options, and sets the callback that does the work. It throws Failure.
    void (*declare)(CommandLine command);
};

}   // namespace qsvtin

#endif
