#ifndef QSVTIN_COMMANDS_CONVERT_H
#define QSVTIN_COMMANDS_CONVERT_H

#include <CLI/CLI.hpp>

namespace qsvtin {

/// "qsvtin convert": from one form of file to another, links rebuilt where wanted.
void DeclareConvert(CLI::App& app);

}   // namespace qsvtin

#endif
