#ifndef QSVTIN_MANUAL_MANUAL_PAGE_H
#define QSVTIN_MANUAL_MANUAL_PAGE_H

#include "host/manual/usage.h"

#include <string>

namespace qsvtin {

/// The manual page of the program in the language of man(7), from what its commands have declared.
std::string ManualPage(const ProgramUsage& program);

}   // namespace qsvtin

#endif
