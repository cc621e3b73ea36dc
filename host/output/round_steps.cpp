#include "host/output/round_steps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace qsvtin {

double RoundStepAtLeast(double least)
{
    if (!(least > 0.0) || !std::isfinite(least)) return 1.0;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        // A millionth short is still this step: the power of ten is rounded.
        if (factor * power >= least * (1.0 - 1e-6)) return factor * power;
    }
    return 10.0 * power;
}

std::vector<double> MultiplesBetween(double low, double high, double step)
{
    constexpr int kMost = 1000;
    std::vector<double> multiples;
    const double first = std::ceil(low / step - 1e-9);
    for (int i = 0; i < kMost && (first + i) * step <= high + 1e-9 * step; ++i) {
        multiples.push_back((first + i) * step);
    }
    return multiples;
}

std::string WithDecimalsOf(double step, double value)
{
    const int decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-6)), 0, 9);
    std::array<char, 64> text;
    const double shown = value == 0.0 ? 0.0 : value;   // never "-0"
    std::snprintf(text.data(), text.size(), "%.*f", decimals, shown);
    return text.data();
}

}   // namespace qsvtin
