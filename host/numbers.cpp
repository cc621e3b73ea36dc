#include "host/numbers.h"

#include <array>
#include <charconv>
#include <cmath>

namespace qsvtin {

std::string Shortest(double number)
{
    if (std::isnan(number)) return "nan";   // whatever its sign
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

}   // namespace qsvtin
