// What happens when memory runs out: every allocation of every operation fails once, the first, the second and so
// on. The objects must stay usable and keep what the headers promise, and nothing may leak (the address
// sanitizer's run of these tests tells).

#include "fuzz/tin_operations.h"
#include "support/fixtures.h"
#include "support/mesh_oracle.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <utility>

namespace {

int nAllocationsLeft = -1;   // until one fails; below 0: none does

void* Allocate(std::size_t nBytes)
{
    if (nAllocationsLeft == 0) {
        throw std::bad_alloc();
    }
    nAllocationsLeft -= nAllocationsLeft > 0 ? 1 : 0;
    if (void* const p = std::malloc(nBytes > 0 ? nBytes : 1)) {
        return p;
    }
    throw std::bad_alloc();
}

}   // namespace

void* operator new(std::size_t nBytes)
{
    return Allocate(nBytes);
}

void* operator new[](std::size_t nBytes)
{
    return Allocate(nBytes);
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete[](void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}

namespace {

// Runs fnDo with its n-th allocation failing. Returns whether it got that far.
bool RunsOutOfMemory(int n, const std::function<void()>& fnDo)
{
    bool bRanOut = false;
    nAllocationsLeft = n - 1;
    try {
        fnDo();
    } catch (const std::bad_alloc&) {
        bRanOut = true;
    }
    nAllocationsLeft = -1;
    return bRanOut;
}

std::string Choices()
{
    std::string choices;
    for (int i = 0; i < 200; ++i) {
        choices += static_cast<char>(i * 53 % 160);   // arguments in range, places of the grid
    }
    return choices;
}

FuzzInput InputOf(const std::string& choices)
{
    return FuzzInput(reinterpret_cast<const std::uint8_t*>(choices.data()), choices.size());
}

// A terrain with everything in it: two breaklines, normals, a drawing order, an outline as pairs.
CTin Fed()
{
    CTin tin = Fed(RandomSites(40, 7, 16.0));
    CPolyline ridge = LineThrough({{1, 1, 5}, {8, 9, 5}, {15, 14, 5}});
    CPolyline ring = LineThrough({{3, 10, 1}, {6, 10, 1}, {6, 13, 1}}, true);
    tin.AddBreakLine(ridge);
    tin.AddBreakLine(ring);
    return tin;
}

CTin Finished()
{
    CTin tin = Fed();
    EXPECT_EQ(tin.CreateTin(0.0), 1);
    tin.UpdateBoundary();
    tin.UpdateDepth();
    tin.UpdateNormal();
    return tin;
}

// nLast: how many of the last vertices may be gone.
bool KeepsVertices(const CTin& now, const CTin& before, int nLast = 0)
{
    const int n = before.m_aVertex.GetSize() - nLast;
    for (int i = 0; i < n && i < now.m_aVertex.GetSize(); ++i) {
        const CXYZ &a = now.m_aVertex[i], &b = before.m_aVertex[i];
        if (a.x != b.x || a.y != b.y || a.z != b.z) {
            return false;
        }
    }
    return now.m_aVertex.GetSize() >= n;
}

// No allocation of an operation may leave an object that anything else could not be done with.
TEST(OutOfMemory, LeavesObjectsThatEverythingCanBeDoneWith)
{
    const std::string choices = Choices();
    const CTin aStart[] = {Finished(), Fed(), CTin()};
    int nFailures = 0;
    for (const TinOperation& operation : TinOperations()) {
        SCOPED_TRACE(operation.szName);
        for (const CTin& start : aStart) {
            for (int n = 1;; n += n < 30 ? 1 : 5) {   // the first ones all, the many of long loops in part
                CTin tin(start), other(aStart[0]);
                const bool bRanOut = RunsOutOfMemory(n, [&] {
                    FuzzInput input = InputOf(choices);
                    operation.fnDo(tin, other, input);
                });
                if (!bRanOut) {
                    break;
                }
                ++nFailures;
                FuzzInput input = InputOf(choices);
                AskEverything(tin, input);
                AskEverything(other, input);
                operation.fnDo(tin, other, input);
                tin.UpdateDepth2();
                tin.InitData();
                EXPECT_EQ(tin.AddPoint(1.0, 2.0, 3.0), 0);
            }
        }
    }
    EXPECT_GT(nFailures, 300) << "the counting of allocations does not work";
}

// Whoever runs out of memory while building can give some back and build again.
TEST(OutOfMemory, BuildingKeepsWhatWasFed)
{
    const CTin start = Fed();
    const struct {
        const char* szName;
        int (*fnBuild)(CTin& tin);
    } aCase[] = {
        {"CreateTin", [](CTin& tin) { return tin.CreateTin(0.05); }},
        {"CreateTinObal", [](CTin& tin) { return tin.CreateTinObal(); }},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szName);
        CTin whole(start);
        ASSERT_EQ(c.fnBuild(whole), 1);
        for (int n = 1;; ++n) {
            CTin tin(start);
            if (!RunsOutOfMemory(n, [&] { c.fnBuild(tin); })) {
                EXPECT_GT(n, 20);
                break;
            }
            ASSERT_EQ(tin.GetPointSize(), start.m_aVertex.GetSize()) << "allocation " << n;
            ASSERT_TRUE(KeepsVertices(tin, start)) << "allocation " << n;
            ASSERT_EQ(tin.GetTriSize(), 0) << "allocation " << n;
            ASSERT_EQ(tin.m_aBreakLine.GetSize(), 2) << "allocation " << n;
            ASSERT_EQ(c.fnBuild(tin), 1);
            ASSERT_EQ(Dump(tin), Dump(whole)) << "allocation " << n;
        }
    }
}

// Feeding keeps what was fed before, edits move no vertex, and a point that is refused is not half there.
TEST(OutOfMemory, EditingMovesNoVertex)
{
    const CTin start = Finished();
    const struct {
        const char* szName;
        void (*fnEdit)(CTin& tin);
        int nDeleted = 0;
    } aCase[] = {
        {"AddPoint", [](CTin& tin) { tin.AddPoint(50.0, 50.0, 1.0); }},
        {"AddBreakLine",
         [](CTin& tin) {
             CPolyline line = LineThrough({{0, 1, 2}, {20, 21, 2}, {30, 2, 2}});
             tin.AddBreakLine(line);
         }},
        {"DivideTri", [](CTin& tin) { tin.DivideTri(7.5, 7.25, 3.0); }},
        {"DelVertex", [](CTin& tin) { tin.DelVertex(tin.GetPointSize() - 1); }, 1},
        {"DelTriWithAngle", [](CTin& tin) { tin.DelTriWithAngle(0.5, 0); }},
        {"AddVPlane", [](CTin& tin) { tin.AddVPlane(-1.0); }},
        {"AddTIN", [](CTin& tin) { tin.AddTIN(tin); }},
        {"UpdateTopology", [](CTin& tin) { tin.UpdateTopology(); }},
        {"UpdateDepth2", [](CTin& tin) { tin.UpdateDepth2(); }},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szName);
        for (int n = 1;; ++n) {
            CTin tin(start);
            tin.m_aVertex.FreeExtra();
            if (!RunsOutOfMemory(n, [&] { c.fnEdit(tin); })) {
                EXPECT_GT(n, 1) << "nothing was allocated";
                break;
            }
            ASSERT_TRUE(KeepsVertices(tin, start, c.nDeleted)) << "allocation " << n;
            ASSERT_EQ(tin.m_nOptimDepth, 0) << "allocation " << n;
            CArray<CMeshFault> aFault;
            FindMeshFaults(tin, aFault, 10);
        }
    }
}

// A file in memory has no room for what a writer holds back.
TEST(OutOfMemory, FilesAndArraysOfObjects)
{
    const std::string path = ::testing::TempDir() + "qsv_memory_test.tin";
    const auto fnAll = [&] {
        CArray<CTin, CTin&> aTin;
        CTin tin = Finished();
        aTin.Add(tin);
        aTin.Add(aTin[0]);
        EXPECT_EQ(CTin::WriteBIN_VER2(path.c_str(), aTin), 1);
        EXPECT_EQ(CTin::ReadBIN_VER2(path.c_str(), aTin), 1);
        EXPECT_EQ(aTin.GetSize(), 2);
        EXPECT_EQ(aTin[1].WriteBIN_VER0(path.c_str()), 1);
        EXPECT_EQ(CTin::ReadBIN_VER1(path.c_str(), aTin), 1);

        CGrid3DSphere sphere;
        EXPECT_EQ(sphere.Create3DGridSphere(CXYZ(), 10.0, 45.0, 30.0, ZENITH_0_FULL, 0.1), 1);
        CGrid3DSphere copy(sphere);
        copy.m_aLine.Append(sphere.m_aLine);   // elements that can only be copied
        copy.m_aLine.InsertAt(1, sphere.m_aLine[2], 2);
        copy.m_aLine.RemoveAt(0, 2);
        copy.m_aLine.FreeExtra();
        EXPECT_EQ(copy.m_aLine.GetSize(), 2 * sphere.m_aLine.GetSize());
        EXPECT_EQ(copy.m_aLine[0].m_line.GetVertexSize(), sphere.m_aLine[2].m_line.GetVertexSize());
    };
    int n = 1;
    while (RunsOutOfMemory(n, fnAll)) {
        ++n;
    }
    EXPECT_GT(n, 100);
    std::remove(path.c_str());
}

}   // namespace
