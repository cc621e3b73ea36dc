#ifndef QSV_TESTS_SUPPORT_COMPARE_H
#define QSV_TESTS_SUPPORT_COMPARE_H

#include <string>

#include "reference/plain_tin.h"
#include "support/fixtures.h"

// The plain implementation beside the library: the same places fed to both, and its mesh as text in the
// form that Dump gives of a CTin.

plain::Tin PlainFed(const Sites& aSite);
std::vector<plain::Point> PlainPoints(const Sites& aSite);
// The records alone.
CTin CopyOf(const plain::Tin& tin);
std::string Dump(const plain::Tin& tin);

#endif
