#ifndef QSVTIN_OUTPUT_ROUND_STEPS_H
#define QSVTIN_OUTPUT_ROUND_STEPS_H

#include <string>
#include <vector>

namespace qsvtin {

/// The smallest of 1, 2 and 5 times a power of ten that is at least this; 1 when it is not above 0.
double RoundStepAtLeast(double least);

/// The multiples of step from low to high, at most a thousand.
std::vector<double> MultiplesBetween(double low, double high, double step);

/// A multiple of step with just the decimals that step has: "21530200", "0.25".
std::string WithDecimalsOf(double step, double value);

}   // namespace qsvtin

#endif
