#ifndef QSVTIN_COMMANDS_RENDER_H
#define QSVTIN_COMMANDS_RENDER_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin render": draws a TIN from any direction.
void DeclareRender(CLI::App& app);

}   // namespace qsvtin

#endif
