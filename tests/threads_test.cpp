// What the headers promise to programs with several threads. The thread sanitizer's run of these tests
// (preset tsan) tells what comparing results cannot.

#include "fuzz/tin_operations.h"
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

// Everything that is marked "reads only"; what some of it tells.
std::string AskAll(CTin& tin, std::uint64_t nSeed)
{
    Dice dice(nSeed);
    std::string strTold;
    for (int i = 0; i < 20; ++i) {
        std::string strChoices;
        for (int k = 0; k < 200; ++k) {
            strChoices += static_cast<char>(dice.Below(256));
        }
        FuzzInput input(reinterpret_cast<const std::uint8_t*>(strChoices.data()), strChoices.size());
        AskEverything(tin, input);
        double z = 0.0;
        int nTri = 0;
        tin.InterpolateForPlane(dice.Below(tin.GetTriSize()), dice.Uniform(0, 100), dice.Uniform(0, 100), z,
                                nTri);
        CMemFile file;   // storing only reads too
        tin.WriteBIN_VER1_SUB(file);
        tin.WriteBIN_VER2_SUB(file);
        strTold += std::to_string(nTri) + " " + std::to_string(z) + Dump(CTin(tin));
    }
    return strTold;
}

TEST(Threads, ReadOneTinTogether)
{
    CTin tin = Built(RandomSites(300, 5));
    tin.UpdateBoundary();
    tin.UpdateDepth();
    std::string aAlone[kThreads], aTogether[kThreads];
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
