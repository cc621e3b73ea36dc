#include "tests/fuzz/fuzz_input.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>

int FuzzInput::Byte()
{
    if (m_nLeft == 0) {
        return 0;
    }
    --m_nLeft;
    return *m_pByte++;
}

int FuzzInput::Index(int nCount)
{
    static const int aFarOff[] = {INT_MIN, INT_MIN + 1, -2, -1, INT_MAX - 1, INT_MAX};
    const int nKind = Byte();
    if (nKind < 224 && nCount > 0) {
        return (nCount > 224 ? nKind * 256 + Byte() : nKind) % nCount;
    }
    return nKind % 8 < 6 ? aFarOff[nKind % 8] : nCount + (nKind % 8 - 6);
}

double FuzzInput::Number()
{
    static const double aSpecial[] = {
        NAN,    -NAN,  HUGE_VAL, -HUGE_VAL, DBL_MAX, -DBL_MAX, DBL_MIN,      DBL_TRUE_MIN,
        1e-6,   1e-12, -1e-6,    1e15,      1e154,   -1e155,   1e300,        -0.0,
        2.5e-7, 1e9,   4.5e15,   1e-300,    360.0,   -360.0,   2147483648.0, -2147483649.0,
    };
    constexpr int nSpecial = sizeof aSpecial / sizeof aSpecial[0];
    const int nKind = Byte();
    if (nKind < 160) {
        return nKind % 16;
    }
    if (nKind < 200) {
        return Byte() / 16.0;
    }
    if (nKind < 216) {
        return nKind % 16 + (Byte() - 128) * 1e-8;
    }
    if (nKind < 255) {
        return aSpecial[nKind % nSpecial];
    }
    std::uint64_t nBits = 0;
    for (int i = 0; i < 8; ++i) {
        nBits = nBits << 8 | static_cast<std::uint64_t>(Byte());
    }
    double d;
    std::memcpy(&d, &nBits, sizeof d);
    return d;
}

std::string FuzzInput::Rest()
{
    std::string rest(reinterpret_cast<const char*>(m_pByte), m_nLeft);
    m_pByte += m_nLeft;
    m_nLeft = 0;
    return rest;
}
