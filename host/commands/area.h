#ifndef QSVTIN_COMMANDS_AREA_H
#define QSVTIN_COMMANDS_AREA_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin area": plan area and surface area of a TIN.
void DeclareArea(CLI::App& app);

}   // namespace qsvtin

#endif
