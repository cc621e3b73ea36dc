#ifndef QSV_TIN_INTERNAL_TWO_H
#define QSV_TIN_INTERNAL_TWO_H

namespace qsv {

// Two numbers side by side, for two calculations that are alike: one instruction does both where the processor has
// such. Each of the two is rounded as it would be alone.
#if defined(__GNUC__)
using Two = double __attribute__((vector_size(16)));
#else
struct Two {
    double aNumber[2];

    double operator[](int i) const { return aNumber[i]; }
    friend Two operator+(const Two& a, const Two& b) { return {a[0] + b[0], a[1] + b[1]}; }
    friend Two operator-(const Two& a, const Two& b) { return {a[0] - b[0], a[1] - b[1]}; }
    friend Two operator*(const Two& a, const Two& b) { return {a[0] * b[0], a[1] * b[1]}; }
    friend Two operator/(const Two& a, const Two& b) { return {a[0] / b[0], a[1] / b[1]}; }
};
inline Two operator+(double a, const Two& b)
{
    return Two{a, a} + b;
}
inline Two operator*(double a, const Two& b)
{
    return Two{a, a} * b;
}
#endif

inline Two Both(double d)
{
    return Two{d, d};
}

}   // namespace qsv

#endif
