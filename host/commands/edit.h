#ifndef QSVTIN_COMMANDS_EDIT_H
#define QSVTIN_COMMANDS_EDIT_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin edit": inserts and deletes points, trims, hangs walls and merges, in the order given.
void DeclareEdit(CLI::App& app);

}   // namespace qsvtin

#endif
