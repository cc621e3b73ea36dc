// What the headers promise to programs with several threads. The thread sanitizer's run of these tests
// (preset tsan) tells what comparing results cannot.

#include "support/fixtures.h"
#include "support/mesh_oracle.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 4;

template <class DO>
void InThreads(DO fnDo)
{
    std::vector<std::thread> aThread;
    for (int i = 0; i < kThreads; ++i) {
        aThread.emplace_back(fnDo, i);
    }
    for (std::thread& thread : aThread) {
        thread.join();
    }
}

// Everything that is marked "reads only", as one sum of what it tells.
double AskAll(CTin& tin, std::uint64_t nSeed)
{
    Dice dice(nSeed);
    double dSum = 0.0;
    for (int i = 0; i < 20; ++i) {
        const double x = dice.Uniform(-5.0, 105.0), y = dice.Uniform(-5.0, 105.0);
        const int nTri = dice.Below(tin.GetTriSize()), nVt = dice.Below(tin.GetPointSize());
        double a[9] = {}, d = 0.0, z = 0.0;
        int n[4] = {};
        CXYZ normal, mean;
        CRot rot;
        CArray<int> aSlot, aPos, aList;
        CArray<CMeshFault> aFault;
        CPolyline ring;
        tin.GetVertex(nTri, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8]);
        tin.GetNextTri(nTri, n[0], n[1], n[2]);
        dSum += a[0] + a[4] + a[8] + n[0] + n[1] + n[2] + tin.GetVertex(nTri, 1)->z;
        dSum += tin.CheckTurn(nTri) + tin.CheckTurn(tin.m_aVertex[0], tin.m_aVertex[1], tin.m_aVertex[nVt]);
        dSum += tin.FindTri(nTri, x, y, n[0], n[1]) + tin.FindTri(nTri, nVt, n[2], n[3]);
        int nFrom = 0, nFound = 0, nSlot = 0;
        dSum += tin.FindTriWithPt(nVt, nFrom, nFound, nSlot);
        dSum += tin.FindFirstTriWithPt(nVt, nFound, nSlot, tin.GetTriSize());
        dSum += tin.FindNextTriWithPt2(nFound, nSlot, 1) + nFound;
        dSum += tin.GetVtOnBoundary(nTri, aSlot, aPos) + tin.GetNumVtOnBoundary(nTri);
        tin.GetBoundary(ring);
        dSum += ring.GetVertexSize() + tin.GetLength(nTri, 1) + tin.GetMinAngle(nTri);
        tin.GetAngleXY(nTri, 2, a[0]);
        tin.GetMinAngle2(nTri, a[1]);
        tin.Get2ndAngle(nTri, a[2]);
        tin.GetMaxLengthXY(nTri, a[3]);
        tin.GetMaxLength(nTri, a[4]);
        tin.GetTriSedeLengthXY(nTri, 0, a[5]);
        dSum += a[0] + a[1] + a[2] + a[3] + a[4] + a[5] + tin.CheckPtUsed(nVt);
        dSum += tin.PtInTri(nTri, x, y) + tin.PtInTin(x, y) + tin.PtInTriIncludeBack(nTri, x, y) +
                tin.PtInTinIncludeBack(x, y);
        dSum += tin.CalZonPlane(nTri, x, y, z) + z + tin.InterpolateForPlane(nTri, x, y, z, n[0]) + z;
        dSum += tin.NearestOutsideTin(x, y, a[0], a[1], a[2], d) + a[0] + d;
        dSum += tin.GetRange(nTri, a[0], a[1], a[2], a[3], a[4], a[5]) + a[5];
        dSum += tin.CalTriArea(nTri) + tin.CalTriAreaXY(nTri) + tin.CalAllArea() + tin.CalAllAreaXY();
        dSum += tin.GetNVec(nTri, normal) + tin.GetNVec(mean) + normal.x + mean.y;
        tin.SetRotForNV_Z(normal, rot);
        dSum += tin.GetSortList(1, aList, 1) + aList[0] + tin.FindTriWithDepth(x, y);
        dSum += tin.InterpolateForDepth(x, y, z, n[0]) + z;
        dSum += FindMeshFaults(tin, aFault, 3);
        if (i % 10 == 0) {   // storing only reads too
            CMemFile file;
            dSum += tin.WriteBIN_VER1_SUB(file) + tin.WriteBIN_VER2_SUB(file) +
                    static_cast<double>(file.GetLength());
            dSum += CTin(tin).GetTriSize();
        }
    }
    return dSum;
}

TEST(Threads, ReadOneTinTogether)
{
    CTin tin = Built(RandomSites(300, 5));
    tin.UpdateBoundary();
    tin.UpdateDepth();
    double aAlone[kThreads], aTogether[kThreads];
    for (int i = 0; i < kThreads; ++i) {
        aAlone[i] = AskAll(tin, static_cast<std::uint64_t>(i));
    }
    InThreads([&](int i) { aTogether[i] = AskAll(tin, static_cast<std::uint64_t>(i)); });
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(aTogether[i], aAlone[i]);
    }
}

// Builds, edits, stores and draws an object of its own.
std::string UseAll(int nSeed)
{
    CTin tin = Fed(RandomSites(200, static_cast<std::uint64_t>(nSeed)));
    CPolyline line = LineThrough({{5, 5, 1}, {90, 80, 2}, {20, 90, 3}});
    tin.AddBreakLine(line);
    tin.CreateTin(0.02);
    tin.DelVertex(17);
    tin.DivideTri(50.0, 50.5, 4.0);
    tin.AddVPlane(-3.0);
    tin.UpdateDepth2();
    tin.UpdateNormal();
    tin.UpdateTextureCoord();
    CMemFile file;
    tin.WriteBIN_VER2_SUB(file);
    file.SeekToBegin();
    CTin read, around = tin, ring;
    read.ReadBIN_VER2_SUB(file);
    around.CreateTinObal();
    ring.CreateTinForPolygon(LineThrough({{0, 0, 0}, {9, 0, 1}, {9, 9, 2}, {4, 2, 1}, {0, 9, 1}}));
    CGrid3DSphere sphere;
    sphere.Create3DGridSphere(CXYZ(1.0, 2.0, 3.0), 5.0, 30.0, 15.0, ZENITH_0_FULL, 0.1);
    CProjection projection;
    projection.SetPrjMatrix(0.0, 100.0, 0.0, 100.0, 1.0, 10.0);
    projection.RotateX(0.5);
    projection.BeginTrans(1);
    double x = 0.0, y = 0.0, z = 0.0;
    int nInside = 0;
    projection.Transform(1.0, 2.0, -3.0, x, y, z, nInside, 1);
    return Dump(tin) + Dump(read) + Dump(around) + Dump(ring) + std::to_string(sphere.m_aLabel.GetSize()) +
           sphere.m_aLabel[3].m_strText.GetString() + std::to_string(x);
}

TEST(Threads, UseObjectsOfTheirOwn)
{
    std::string aAlone[kThreads], aTogether[kThreads];
    for (int i = 0; i < kThreads; ++i) {
        aAlone[i] = UseAll(i);
    }
    InThreads([&](int i) { aTogether[i] = UseAll(i); });
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(aTogether[i], aAlone[i]);
    }
}

}   // namespace
