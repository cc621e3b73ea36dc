#include <cmath>
#include <cstddef>
#include <utility>

#include "projection/projection.h"
#include "projection/scratch.h"

namespace {

// The matrix as these two functions see it: columns one after another. Of a row-major matrix that is the
// transpose, whose inverse is the transpose of the inverse, so both layouts are inverted alike.
class Columns
{
public:
    Columns(int n, double* p) : m_n(n), m_p(p) {}
    double& operator()(int i, int j) const { return m_p[m_n * j + i]; }

private:
    std::ptrdiff_t m_n;
    double* m_p;
};

// For each row the reciprocal of its largest absolute value, by which pivots are compared, and the rows in
// their own order. False when a row has nothing but zeros.
bool WeighRows(int n, const Columns& a, double* aWeight, int* ip)
{
    for (int k = 0; k < n; ++k) {
        ip[k] = k;
        double u = 0.0;
        for (int j = 0; j < n; ++j) {
            const double t = std::fabs(a(k, j));
            if (t > u) {
                u = t;
            }
        }
        if (u == 0.0) {
            return false;
        }
        aWeight[k] = 1.0 / u;
    }
    return true;
}

// Position, k or later, of the row with the largest weighted entry in column k; the first of equal ones.
int FindPivot(int n, const Columns& a, const double* aWeight, const int* ip, int k)
{
    int j = k;   // what stays when no entry is a number
    double u = -1.0;
    for (int i = k; i < n; ++i) {
        const double t = std::fabs(a(ip[i], k)) * aWeight[ip[i]];
        if (t > u) {
            u = t;
            j = i;
        }
    }
    return j;
}

}   // namespace

double CProjection::lu(int n, double* pMatrix, int* ip)
{
    const Columns a(n, pMatrix);
    qsv::CScratch<double> weight(n);
    double* const aWeight = weight.Get();
    if (aWeight == nullptr || !WeighRows(n, a, aWeight, ip)) {
        return 0.0;
    }
    double det = 1.0;
    for (int k = 0; k < n; ++k) {
        const int j = FindPivot(n, a, aWeight, ip, k);
        if (j != k) {
            std::swap(ip[j], ip[k]);
            det = -det;
        }
        const double u = a(ip[k], k);
        det *= u;
        if (u == 0.0) {
            return 0.0;
        }
        const double r = 1.0 / u;   // once a column; the multipliers are products, not quotients
        for (int i = k + 1; i < n; ++i) {
            const double t = a(ip[i], k) * r;
            a(ip[i], k) = t;
            for (int c = k + 1; c < n; ++c) {
                a(ip[i], c) -= t * a(ip[k], c);
            }
        }
    }
    return det;
}

double CProjection::matinv(int n, double* pMatrix, double* pInverse)
{
    const Columns a(n, pMatrix), inv(n, pInverse);
    qsv::CScratch<int> order(n);
    int* const ip = order.Get();
    const double det = ip != nullptr ? lu(n, pMatrix, ip) : 0.0;
    if (det == 0.0) {
        return 0.0;
    }
    for (int k = 0; k < n; ++k) {   // column k of the inverse solves a * x = column k of the identity
        for (int i = 0; i < n; ++i) {
            double t = ip[i] == k ? 1.0 : 0.0;
            for (int j = 0; j < i; ++j) {
                t -= a(ip[i], j) * inv(j, k);
            }
            inv(i, k) = t;
        }
        for (int i = n - 1; i >= 0; --i) {
            double t = inv(i, k);
            for (int j = i + 1; j < n; ++j) {
                t -= a(ip[i], j) * inv(j, k);
            }
            inv(i, k) = t / a(ip[i], i);
        }
    }
    return det;
}
