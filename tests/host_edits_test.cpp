#include <gtest/gtest.h>

#include <cmath>

#include "host/failure.h"
#include "host/terrain/edits.h"
#include "support/fixtures.h"
#include "support/mesh_oracle.h"

namespace {

// Heaps with slopes far steeper than 45 degrees, where the plane of a hole is far from the plan.
qsvtin::Terrain SteepTerrain()
{
    Sites sites = RandomSites(150, 5, 30.0);
    for (Site& s : sites) {
        s.z = 25.0 * std::sin(s.x) * std::cos(s.y);
    }
    qsvtin::Terrain terrain;
    terrain.tin = Built(sites);
    return terrain;
}

}   // namespace

TEST(DeleteVertex, KeepsASteepTerrainSoundOrLeavesItAlone)
{
    qsvtin::Terrain terrain = SteepTerrain();
    int deleted = 0;
    for (int at = 0; at < terrain.tin.GetPointSize() && terrain.tin.GetTriSize() > 20;) {
        const int vertices = terrain.tin.GetPointSize();
        const CXYZ next = terrain.tin.m_aVertex[vertices - 1];
        try {
            qsvtin::DeleteVertex(terrain, at);
            ++deleted;
            ASSERT_EQ(terrain.tin.GetPointSize(), vertices - 1);
        } catch (const qsvtin::Failure&) {
            ++at;
            ASSERT_EQ(terrain.tin.GetPointSize(), vertices);
        }
        ASSERT_EQ(CountFaults(terrain.tin, MESH_FAULT_FLAT), 0) << "after " << deleted << " deletions";
        ASSERT_EQ(terrain.tin.m_aVertex[terrain.tin.GetPointSize() - 1].z, next.z) << "heights come back";
    }
    EXPECT_GT(deleted, 100);
}
