#ifndef QSVTIN_COMMANDS_POLYGON_H
#define QSVTIN_COMMANDS_POLYGON_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin polygon": a TIN that fills one polygon.
void DeclarePolygon(CLI::App& app);

}   // namespace qsvtin

#endif
