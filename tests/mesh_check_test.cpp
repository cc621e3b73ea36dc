// FindMeshFaults: one damage at a time, and what exactly is reported.

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <set>

#include "support/fixtures.h"

namespace {

using Fault = std::vector<int>;   // kind, triangle, slot, vertex

std::vector<Fault> FaultsOf(const CTin& tin)
{
    CArray<CMeshFault> aFault;
    const int nCount = FindMeshFaults(tin, aFault, 100);
    EXPECT_EQ(nCount, aFault.GetSize());
    std::vector<Fault> aResult;
    for (int i = 0; i < aFault.GetSize(); ++i) {
        aResult.push_back({aFault[i].m_eKind, aFault[i].m_nTri, aFault[i].m_nSlot, aFault[i].m_nVertex});
    }
    return aResult;
}

}   // namespace

// The square has the triangles (4, 2, 3), (4, 3, 0), (4, 1, 2) and (4, 0, 1), with the neighbours 1 2 -,
// 3 0 -, 0 3 - and 2 1 -.
TEST(MeshCheck, NamesEveryKindOfFaultAndItsPlace)
{
    const double dInf = std::numeric_limits<double>::infinity();
    const struct {
        const char* szWhat;
        std::function<void(CTin&)> fnDamage;
        std::vector<Fault> aExpected;
    } aCase[] = {
        {"sound", [](CTin&) {}, {}},
        {"vertex out of range",
         [](CTin& t) {
             t.m_aVertex.SetSize(4);
             t.m_aTri.SetSize(1);
             t.m_aTri[0] = CTriangle();
         },
         {{MESH_FAULT_VERTEX_INDEX, 0, 0, -1},
          {MESH_FAULT_VERTEX_INDEX, 0, 1, -1},
          {MESH_FAULT_VERTEX_INDEX, 0, 2, -1}}},
        {"neighbour out of range",
         [](CTin& t) {
             t.m_aTri[0].m_nNeighbor[2] = 4;
             t.m_aTri[1].m_nNeighbor[2] = -2;
         },
         {{MESH_FAULT_NEIGHBOR_INDEX, 0, 2, 3}, {MESH_FAULT_NEIGHBOR_INDEX, 1, 2, 0}}},
        {"link cut on one side",
         [](CTin& t) { t.m_aTri[0].m_nNeighbor[0] = -1; },
         {{MESH_FAULT_ONE_WAY_LINK, 1, 1, 3}, {MESH_FAULT_UNLINKED_EDGE, 0, 0, 4}}},
        {"link to the wrong triangle",
         [](CTin& t) { t.m_aTri[0].m_nNeighbor[2] = 3; },
         {{MESH_FAULT_ONE_WAY_LINK, 0, 2, 3}}},
        {"links across other edges",
         [](CTin& t) { std::swap(t.m_aTri[0].m_nNeighbor[0], t.m_aTri[0].m_nNeighbor[2]); },
         {{MESH_FAULT_LINK_ACROSS_EDGES, 0, 2, 3},
          {MESH_FAULT_LINK_ACROSS_EDGES, 1, 1, 3},
          {MESH_FAULT_UNLINKED_EDGE, 0, 0, 4}}},
        {"link to itself",
         [](CTin& t) {
             t.m_aTri.SetSize(1);
             t.m_aTri[0] = {{0, 1, 0}, {-1, 0, 0}, 0};
         },
         {{MESH_FAULT_LINK_ACROSS_EDGES, 0, 1, 1},
          {MESH_FAULT_LINK_ACROSS_EDGES, 0, 2, 0},
          {MESH_FAULT_FLAT, 0, -1, -1}}},
        {"seam",
         [](CTin& t) { t.m_aTri[0].m_nNeighbor[0] = t.m_aTri[1].m_nNeighbor[1] = -1; },
         {{MESH_FAULT_UNLINKED_EDGE, 0, 0, 4}, {MESH_FAULT_UNLINKED_EDGE, 1, 1, 3}}},
        {"triangle twice",
         [](CTin& t) { t.AddTri(2, 3, 4); },
         {{MESH_FAULT_UNLINKED_EDGE, 4, 0, 2},
          {MESH_FAULT_UNLINKED_EDGE, 4, 2, 4},
          {MESH_FAULT_EDGE_TWICE, 4, 0, 2},
          {MESH_FAULT_EDGE_TWICE, 4, 1, 3},
          {MESH_FAULT_EDGE_TWICE, 4, 2, 4}}},
        {"not finite",
         [dInf](CTin& t) { t.m_aVertex.Add(CXYZ(0, 0, dInf)); },
         {{MESH_FAULT_COORDINATE, -1, -1, 5}}},
        {"boundary", [](CTin& t) { t.m_aBoundary[1] = 5; }, {{MESH_FAULT_BOUNDARY_INDEX, -1, 1, 5}}},
        {"breakline",
         [](CTin& t) {
             CBreakLine bl;
             bl.m_aVertexIndex.Add(4);
             t.m_aBreakLine.Add(bl);
             bl.m_aVertexIndex.Add(-1);
             t.m_aBreakLine.Add(bl);
         },
         {{MESH_FAULT_BREAKLINE_INDEX, 1, 1, -1}}},
        {"clockwise and flat",
         [](CTin& t) { t.m_aVertex[4].SetXYZ(5, 10, 0); },
         {{MESH_FAULT_FLAT, 0, -1, -1}}},
        {"folded", [](CTin& t) { t.m_aVertex[4].SetXYZ(5, 11, 0); }, {{MESH_FAULT_CLOCKWISE, 0, -1, -1}}},
        {"a thin sliver is sound", [](CTin& t) { t.m_aVertex[4].SetXYZ(5, 10 - 1e-14, 0); }, {}},
        {"normals",
         [](CTin& t) {
             t.UpdateNormal();
             t.m_aTriNormal.RemoveAt(0);
             t.m_aVtNormal.SetSize(6);
         },
         {{MESH_FAULT_TRI_NORMALS, -1, -1, -1}, {MESH_FAULT_VT_NORMALS, -1, -1, -1}}},
        {"order too short",
         [](CTin& t) {
             t.UpdateDepth();
             t.m_aDepthOrder.SetSize(3);
         },
         {{MESH_FAULT_DEPTH_ORDER, -1, 3, -1}}},
        {"order with a repetition",
         [](CTin& t) {
             t.UpdateDepth();
             t.m_aDepthOrder[2] = t.m_aDepthOrder[0];
         },
         {{MESH_FAULT_DEPTH_ORDER, 0, 2, -1}}},
        {"order of more triangles",
         [](CTin& t) {
             t.UpdateDepth();
             t.m_aDepthOrder[1] = 4;
         },
         {{MESH_FAULT_DEPTH_ORDER, 4, 1, -1}}},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        CTin tin = SquareOnPlane(0, 0, 0);
        c.fnDamage(tin);
        EXPECT_EQ(FaultsOf(tin), c.aExpected);
    }
}

TEST(MeshCheck, CountsAllAndKeepsTheFirst)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    for (int t = 0; t < 4; ++t) {
        tin.m_aTri[t].m_nNeighbor[2] = 99;
    }
    CArray<CMeshFault> aFault;
    aFault.SetSize(7);
    EXPECT_EQ(FindMeshFaults(tin, aFault, 2), 4);
    ASSERT_EQ(aFault.GetSize(), 2);
    EXPECT_EQ(aFault[1].m_nTri, 1);
    EXPECT_EQ(FindMeshFaults(tin, aFault, 0), 4);
    EXPECT_TRUE(aFault.IsEmpty());
    EXPECT_EQ(FindMeshFaults(CTin(), aFault, 9), 0);
}

TEST(MeshCheck, EveryKindHasItsOwnWords)
{
    std::set<std::string> aText;
    for (int i = 0; i < MESH_FAULT_KINDS; ++i) {
        aText.insert(GetMeshFaultText(static_cast<MESH_FAULT>(i)));
    }
    aText.insert(GetMeshFaultText(static_cast<MESH_FAULT>(-7)));
    EXPECT_EQ(aText.size(), static_cast<size_t>(MESH_FAULT_KINDS) + 1);
}
