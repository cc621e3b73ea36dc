#ifndef QSVTIN_NUMBERS_H
#define QSVTIN_NUMBERS_H

#include <string>

namespace qsvtin {

/// A number for machines: as few digits as give it back exactly; inf and nan as such.
std::string Shortest(double number);

}   // namespace qsvtin

#endif
