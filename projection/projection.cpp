#include "projection/projection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "projection/scratch.h"

namespace {

void LoadIdentity(double* m)
{
    for (int i = 0; i < 16; ++i) {
        m[i] = i % 5 == 0 ? 1.0 : 0.0;
    }
}

void Multiply(int n, const double* a, const double* b, double* c)
{
    for (std::ptrdiff_t i = 0; i < n; ++i) {
        std::fill_n(c + i * n, n, 0.0);
        for (std::ptrdiff_t j = 0; j < n; ++j) {
            for (std::ptrdiff_t k = 0; k < n; ++k) {
                c[i * n + j] += a[i * n + k] * b[k * n + j];
            }
        }
    }
}

// M := E * M
void PutInFront(const double* e, double* m)
{
    double t[16];
    std::copy_n(m, 16, t);
    Multiply(4, e, t, m);
}

// Puts a rotation in front that turns axis a towards axis b.
void Turn(int a, int b, double dAngle, double* m)
{
    const double c = std::cos(dAngle), s = std::sin(dAngle);
    double e[16];
    LoadIdentity(e);
    e[4 * a + a] = c;
    e[4 * a + b] = -s;
    e[4 * b + a] = s;
    e[4 * b + b] = c;
    PutInFront(e, m);
}

}   // namespace

CProjection::CProjection() : m_ScrScaleX(0.0), m_ScrOffsetX(0.0), m_ScrScaleY(0.0), m_ScrOffsetY(0.0)
{
    InitMatrix(m_PrjMatrix);
    InitMatrix(m_ModelMatrix);
    InitMatrix(m_TransMatrix);
    InitMatrix(m_InvMatrix);
}

CProjection::CProjection(const CProjection& src) = default;
CProjection& CProjection::operator=(const CProjection& src) = default;
CProjection::~CProjection() = default;

void CProjection::InitMatrix(MATRIX_MODE eMode)
{
    if (eMode == MODEL_MATRIX) {
        InitMatrix(m_ModelMatrix);
    } else if (eMode == PROJECTION_MATRIX) {
        InitMatrix(m_PrjMatrix);
    }
}

void CProjection::InitMatrix(double* m)
{
    LoadIdentity(m);
}

void CProjection::SetPrjMatrix(double dLeft, double dRight, double dTop, double dBottom, double dNear,
                               double dFar)
{
    const double dWidth = dRight - dLeft, dHeight = dTop - dBottom, dDepth = dFar - dNear;
    InitMatrix(m_PrjMatrix);
    m_PrjMatrix[0] = (2.0 * dNear) / dWidth;
    m_PrjMatrix[2] = (dLeft + dRight) / dWidth;
    m_PrjMatrix[5] = (2.0 * dNear) / dHeight;
    m_PrjMatrix[6] = (dTop + dBottom) / dHeight;
    m_PrjMatrix[10] = -(dNear + dFar) / dDepth;
    m_PrjMatrix[11] = ((-2.0 * dNear) * dFar) / dDepth;
    m_PrjMatrix[14] = -1.0;
    m_PrjMatrix[15] = 0.0;

    m_ScrScaleX = dWidth * 0.5;
    m_ScrOffsetX = (dLeft + dRight) * 0.5;
    m_ScrScaleY = dHeight * 0.5;
    m_ScrOffsetY = (dTop + dBottom) * 0.5;
}

void CProjection::Translate(double dX, double dY, double dZ)
{
    double e[16];
    LoadIdentity(e);
    e[3] = dX;
    e[7] = dY;
    e[11] = dZ;
    PutInFront(e, m_ModelMatrix);
}

void CProjection::Scale(double dX, double dY, double dZ)
{
    double e[16];
    LoadIdentity(e);
    e[0] = dX;
    e[5] = dY;
    e[10] = dZ;
    PutInFront(e, m_ModelMatrix);
}

void CProjection::RotateX(double dAngle)
{
    Turn(1, 2, dAngle, m_ModelMatrix);
}

void CProjection::RotateY(double dAngle)
{
    Turn(2, 0, dAngle, m_ModelMatrix);
}

void CProjection::RotateZ(double dAngle)
{
    Turn(0, 1, dAngle, m_ModelMatrix);
}

int CProjection::BeginTrans(int nWithInverse)
{
    MatrixMul2(4, m_PrjMatrix, m_ModelMatrix, m_TransMatrix);
    if (nWithInverse != 0) {
        double t[16];   // the inversion destroys what it inverts
        std::copy_n(m_TransMatrix, 16, t);
        if (matinv(4, t, m_InvMatrix) == 0.0) {
            return 0;
        }
    }
    return 1;
}

int CProjection::Transform(const double& x, const double& y, const double& z, double& dScrX, double& dScrY,
                           double& dDepth, int& nInside, int nClipMode)
{
    nInside = 1;
    double v[4] = {x, y, z, 1.0};
    ApplyMatrix(4, m_TransMatrix, v);

    // Asked as "is it within", so that a coordinate that is not a number is out of view.
    const double w = v[3];
    if (nClipMode == 1 && !(-w <= v[0] && v[0] <= w && -w <= v[1] && v[1] <= w)) {
        nInside = 0;
    } else if (!(-w <= v[2] && v[2] <= w)) {
        nInside = 0;
    }
    if (w == 0.0) {
        return 0;
    }
    // One division a point. The products with the reciprocal round otherwise than quotients would.
    const double r = 1.0 / w;
    NorToScr(r * v[0], r * v[1], dScrX, dScrY);
    dDepth = r * v[2];
    return 1;
}

int CProjection::Inverse(const double& dScrX, const double& dScrY, const double& dDepth, double& x, double& y,
                         double& z)
{
    double dNorX, dNorY;
    ScrToNor(dScrX, dScrY, dNorX, dNorY);
    double v[4] = {dNorX, dNorY, dDepth, 1.0};
    ApplyMatrix(4, m_InvMatrix, v);

    const double r = 1.0 / v[3];
    x = r * v[0];
    y = r * v[1];
    z = r * v[2];
    return 1;
}

void CProjection::NorToScr(const double& dNorX, const double& dNorY, double& dScrX, double& dScrY)
{
    const double dX = dNorX * m_ScrScaleX + m_ScrOffsetX;
    const double dY = dNorY * m_ScrScaleY + m_ScrOffsetY;
    dScrX = dX;
    dScrY = dY;
}

void CProjection::ScrToNor(const double& dScrX, const double& dScrY, double& dNorX, double& dNorY)
{
    double dX = 0.0, dY = 0.0;
    if (m_ScrScaleX != 0.0 && m_ScrScaleY != 0.0) {
        dX = (dScrX - m_ScrOffsetX) / m_ScrScaleX;
        dY = (dScrY - m_ScrOffsetY) / m_ScrScaleY;
    }
    dNorX = dX;
    dNorY = dY;
}

void CProjection::ApplyMatrix(int n, const double* m, double* v)
{
    qsv::CScratch<double> scratch(n);
    double* const aOld = scratch.Get();
    if (n < 1 || aOld == nullptr) {
        return;
    }
    std::copy_n(v, n, aOld);
    for (int i = 0; i < n; ++i) {
        const double* const aRow = m + static_cast<std::ptrdiff_t>(n) * i;
        double dSum = 0.0;
        for (int j = 0; j < n; ++j) {
            dSum += aRow[j] * aOld[j];
        }
        v[i] = dSum;
    }
}

void CProjection::MatrixMul2(int n, const double* a, const double* b, double* c)
{
    Multiply(n, a, b, c);
}
