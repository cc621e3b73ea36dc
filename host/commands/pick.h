#ifndef QSVTIN_COMMANDS_PICK_H
#define QSVTIN_COMMANDS_PICK_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin pick": tells what lies under a pixel of a picture that "qsvtin render" draws.
void DeclarePick(CLI::App& app);

}   // namespace qsvtin

#endif
