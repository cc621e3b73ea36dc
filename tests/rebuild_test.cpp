// Links rebuilt from the vertices, TINs joined, vertices in use.

#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "support/compare.h"
#include "support/mesh_oracle.h"

namespace {

using Links = std::vector<std::vector<int>>;

// Triangles alone, links and all rebuilt; the vertices they refer to need not be there.
CTin Linked(const Links& aVertex)
{
    CTin tin;
    for (const std::vector<int>& v : aVertex) {
        tin.m_aTri.Add({{v[0], v[1], v[2]}, {77, 77, 77}, 0});   // links from before do not matter
    }
    tin.UpdateTopology();
    return tin;
}

Links LinksOf(const CTin& tin)
{
    Links aLink;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        aLink.push_back({tin.m_aTri[t].m_nNeighbor, tin.m_aTri[t].m_nNeighbor + 3});
    }
    return aLink;
}

}   // namespace

TEST(UpdateTopology, LinksEdgesThatRunInOppositeDirections)
{
    EXPECT_EQ(LinksOf(Linked({})), Links());
    EXPECT_EQ(LinksOf(Linked({{0, 1, 2}})), (Links{{-1, -1, -1}}));
    EXPECT_EQ(LinksOf(Linked({{0, 1, 2}, {2, 1, 3}})), (Links{{-1, -1, 1}, {-1, 0, -1}}));
    EXPECT_EQ(LinksOf(Linked({{0, 1, 2}, {1, 2, 3}})), (Links{{-1, -1, -1}, {-1, -1, -1}}));
}

// Few vertices and many triangles: folds, repeated edges and vertices, indices of nothing.
TEST(UpdateTopology, SameAsPlain)
{
    for (std::uint64_t nSeed = 0; nSeed < 300; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed);
        const int nVertices = 1 + dice.Below(8);
        Links aVertex;
        plain::Tin expected;
        for (int t = dice.Below(25); t > 0; --t) {
            aVertex.push_back(
                {dice.Below(nVertices) - 1, dice.Below(nVertices) - 1, dice.Below(nVertices) - 1});
            expected.tri.push_back({{aVertex.back()[0], aVertex.back()[1], aVertex.back()[2]}, {}, 0});
        }
        expected.UpdateTopology();
        EXPECT_EQ(Dump(Linked(aVertex)), Dump(expected));
    }
}

TEST(AddTIN, AppendsWithoutJoining)
{
    CTin tin = Built(RandomSites(40, 8)), other = SquareOnPlane(1, 2, 3);
    other.m_aTri[1].m_bSelect = 1;
    const int nVt = tin.GetPointSize(), nTri = tin.GetTriSize();
    tin.AddTIN(other);
    ASSERT_EQ(tin.GetPointSize(), nVt + 5);
    ASSERT_EQ(tin.GetTriSize(), nTri + 4);
    EXPECT_EQ(tin.m_aVertex[nVt + 2].z, 33.0) << "the corner (10, 10) of the square";
    const CTriangle& tri = tin.m_aTri[nTri + 1];   // (4, 3, 0) with neighbours 3, 0 and the outside
    EXPECT_EQ(std::vector<int>(tri.m_nVertex, tri.m_nVertex + 3),
              (std::vector<int>{nVt + 4, nVt + 3, nVt + 0}));
    EXPECT_EQ(std::vector<int>(tri.m_nNeighbor, tri.m_nNeighbor + 3),
              (std::vector<int>{nTri + 3, nTri + 0, -1}));
    EXPECT_EQ(tri.m_bSelect, 0) << "the selection is not taken over";
    EXPECT_TRUE(IsSound(tin));
    EXPECT_EQ(other.GetTriSize(), 4) << "the source stays";
}

TEST(AddTIN, ToItselfDoubles)
{
    CTin tin = SquareOnPlane(0, 0, 7), twice = tin;
    twice.AddTIN(twice);
    tin.AddTIN(*std::make_unique<CTin>(tin));
    EXPECT_EQ(twice.GetPointSize(), 10);
    EXPECT_EQ(twice.GetTriSize(), 8);
    EXPECT_EQ(Dump(twice), Dump(tin));
    EXPECT_TRUE(IsSound(twice));
}

TEST(AddTIN, WhatRefersToNothingStillDoes)
{
    CTin tin = SquareOnPlane(0, 0, 0), damaged;
    damaged.m_aTri.Add({{-1, INT_MAX, 3}, {-5, INT_MAX - 1, -1}, 0});
    tin.AddTIN(damaged);
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(tin.GetVertex(4, k), nullptr) << k;
    }
    EXPECT_EQ(tin.m_aTri[4].m_nNeighbor[0], -5) << "below 0: as it is";
    EXPECT_GT(tin.m_aTri[4].m_nNeighbor[1], 4);
}

TEST(CheckPtUsed, ByAnyCornerOfAnyTriangle)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    tin.m_aVertex.Add(CXYZ(99, 99, 0));
    for (int i = -1; i <= 6; ++i) {
        EXPECT_EQ(tin.CheckPtUsed(i), i >= 0 && i <= 4 ? 1 : 0) << i;
    }
    EXPECT_EQ(CTin().CheckPtUsed(0), 0);
}
