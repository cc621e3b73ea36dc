#ifndef QSVTIN_SAY_H
#define QSVTIN_SAY_H

#include <string>

namespace qsvtin {

/// Says one line on standard error, whatever the message holds: something the user should know although the
/// command goes on.
void Note(std::string message);

/// Puts the answer of a command on standard output. @throws Failure when it cannot be written
void Print(const std::string& answer);

}   // namespace qsvtin

#endif
