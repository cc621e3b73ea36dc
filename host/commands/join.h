#ifndef QSVTIN_COMMANDS_JOIN_H
#define QSVTIN_COMMANDS_JOIN_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin join": the TINs of several files as one collection.
void DeclareJoin(CLI::App& app);

}   // namespace qsvtin

#endif
