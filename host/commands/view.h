#ifndef QSVTIN_COMMANDS_VIEW_H
#define QSVTIN_COMMANDS_VIEW_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin view": a page that shows a TIN in a browser.
void DeclareView(CLI::App& app);

}   // namespace qsvtin

#endif
