#include <cmath>

#include "tin/internal/mesh.h"
#include "tin/internal/normal.h"
#include "tin/internal/plan.h"
#include "tin/internal/prefetch.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::GetRange(double& minX, double& maxX, double& minY, double& maxY, double& minZ, double& maxZ)
{
    const int nResult = UpdateTinRange();   // without triangles the range becomes zero
    minX = m_MinXYZ.x;
    maxX = m_MaxXYZ.x;
    minY = m_MinXYZ.y;
    maxY = m_MaxXYZ.y;
    minZ = m_MinXYZ.z;
    maxZ = m_MaxXYZ.z;
    return nResult;
}

int CTin::GetRange(int nTri, double& minX, double& maxX, double& minY, double& maxY, double& minZ,
                   double& maxZ)
{
    double x[3], y[3], z[3];
    if (GetVertex(nTri, x[0], y[0], z[0], x[1], y[1], z[1], x[2], y[2], z[2]) == 0) {
        return 0;
    }
    SortThree(x);
    SortThree(y);
    SortThree(z);
    minX = x[0];
    maxX = x[2];
    minY = y[0];
    maxY = y[2];
    minZ = z[0];
    maxZ = z[2];
    return 1;
}

namespace {

// Half the length of (a x b + b x c) + c x a, the vector area from the positions themselves: edge vectors would
// round differently.
double AreaOf(const CXYZ& a, const CXYZ& b, const CXYZ& c)
{
    const double nx = ((a.y * b.z - a.z * b.y) + (b.y * c.z - b.z * c.y)) + (c.y * a.z - c.z * a.y);
    const double ny = ((a.z * b.x - a.x * b.z) + (b.z * c.x - b.x * c.z)) + (c.z * a.x - c.x * a.z);
    const double nz = ((a.x * b.y - a.y * b.x) + (b.x * c.y - b.y * c.x)) + (c.x * a.y - c.y * a.x);
    return std::sqrt(nx * nx + ny * ny + nz * nz) * 0.5;
}

}   // namespace

double CTin::CalTriArea(double x1, double y1, double z1, double x2, double y2, double z2, double x3,
                        double y3, double z3)
{
    return AreaOf(CXYZ(x1, y1, z1), CXYZ(x2, y2, z2), CXYZ(x3, y3, z3));
}

double CTin::CalTriArea(int nTri)
{
    double x1, y1, z1, x2, y2, z2, x3, y3, z3;
    return GetVertex(nTri, x1, y1, z1, x2, y2, z2, x3, y3, z3) != 0
               ? CalTriArea(x1, y1, z1, x2, y2, z2, x3, y3, z3)
               : 0.0;
}

double CTin::CalTriAreaXY(int nTri)
{
    double x1, y1, z1, x2, y2, z2, x3, y3, z3;
    return GetVertex(nTri, x1, y1, z1, x2, y2, z2, x3, y3, z3) != 0
               ? CalTriArea(x1, y1, 0.0, x2, y2, 0.0, x3, y3, 0.0)
               : 0.0;
}

namespace {

// The sum of what fnArea tells of the triangles, each added to the sum so far.
template <class AREA>
double SumOverTriangles(const CTin& tin, AREA fnArea)
{
    constexpr int kAhead = 12;   // triangles: time enough for the memory of their vertices to arrive
    double dSum = 0.0;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        if (t + kAhead < tin.m_aTri.GetSize()) {
            PrefetchCorners(tin.m_aVertex, tin.m_aTri[t + kAhead]);
        }
        dSum = fnArea(t) + dSum;
    }
    return dSum;
}

}   // namespace

double CTin::CalAllArea()
{
    return SumOverTriangles(*this, [this](int t) { return CalTriArea(t); });
}

double CTin::CalAllAreaXY()
{
    return SumOverTriangles(*this, [this](int t) { return CalTriAreaXY(t); });
}

int CTin::GetNVec(int nTri, CXYZ& vec)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    const int(&nVertex)[3] = m_aTri[nTri].m_nVertex;
    vec = NormalOf(VertexAt(m_aVertex, nVertex[0]), VertexAt(m_aVertex, nVertex[1]),
                   VertexAt(m_aVertex, nVertex[2]));
    vec.Trace();
    return 1;
}

int CTin::GetNVec(CXYZ& vec)
{
    CXYZ sum(0.0, 0.0, 1.0);   // stays in the mean, which therefore leans to the vertical
    int nCount = 0;
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        CXYZ normal;
        nCount += GetNVec(t, normal);
        sum += normal;
    }
    if (nCount > 0) {
        sum /= nCount;
        sum /= sum.Len();
    }
    vec = sum;
    return nCount > 0 ? 1 : 0;
}
