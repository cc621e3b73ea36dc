#include "host/terrain/edits.h"

#include "host/failure.h"
#include "host/numbers.h"
#include "host/query/surface.h"
#include "host/terrain/triangles.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>
#include <vector>

namespace qsvtin {

namespace {

std::string PlaceInSurvey(const Terrain& terrain, const Position& local)
{
    const Position at = terrain.origin.ToSurvey(local);
    return Shortest(at.x) + "," + Shortest(at.y);
}

// The library searches from triangle 0 on, by a walk that may end outside where the mesh has notches or
// pieces; so the triangle that holds the place takes place 0.
void BringToFront(CTin& tin, int triangle)
{
    if (triangle == 0) return;
    std::swap(tin.m_aTri[0], tin.m_aTri[triangle]);
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int& neighbor : tin.m_aTri[t].m_nNeighbor) {
            if (neighbor == 0) {
                neighbor = triangle;
            } else if (neighbor == triangle) {
                neighbor = 0;
            }
        }
    }
}

// The triangles around each vertex at which more than one edge of the outline starts.
std::map<int, std::vector<int>> FindPinches(const CTin& tin)
{
    std::vector<int> starts(static_cast<std::size_t>(tin.m_aVertex.GetSize()));
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            const int start = tin.m_aTri[t].m_nVertex[(k + 2) % 3];   // of the edge of neighbour slot k
            if (tin.m_aTri[t].m_nNeighbor[k] < 0) ++starts[static_cast<std::size_t>(start)];
        }
    }
    std::map<int, std::vector<int>> around;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) {
            if (starts[static_cast<std::size_t>(v)] > 1) around[v].push_back(t);
        }
    }
    return around;
}

// Puts one vertex in the place of another in a triangle and in all that hang together with it around it.
void ReplaceAround(CTin& tin, int first, int vertex, int by)
{
    std::vector<int> open = {first};
    while (!open.empty()) {
        CTriangle& tri = tin.m_aTri[open.back()];
        open.pop_back();
        const int slot = SlotOf(tri, vertex);
        if (slot == 3) continue;   // done already
        tri.m_nVertex[slot] = by;
        for (const int neighbor : {tri.m_nNeighbor[slot], tri.m_nNeighbor[(slot + 1) % 3]}) {
            if (neighbor >= 0) open.push_back(neighbor);
        }
    }
}

// Gives every fan of triangles around a pinch a vertex of its own, all at the same place. The first fan keeps
// the old one.
void OpenPinches(CTin& tin)
{
    constexpr int kFirstFan = -2;   // stands for the old vertex meanwhile
    for (const auto& [pinch, triangles] : FindPinches(tin)) {
        ReplaceAround(tin, triangles.front(), pinch, kFirstFan);
        for (const int t : triangles) {
            if (SlotOf(tin.m_aTri[t], pinch) == 3) continue;
            CXYZ copy = tin.m_aVertex[pinch];
            ReplaceAround(tin, t, pinch, tin.m_aVertex.Add(copy));
        }
        ReplaceAround(tin, triangles.front(), kFirstFan, pinch);
    }
}

}   // namespace

int InsertPoint(Terrain& terrain, const Position& at)
{
    CTin& tin = terrain.tin;
    const auto place = Surface(tin).Find(at.x, at.y);
    if (!place)
        throw Failure("no triangle holds " + PlaceInSurvey(terrain, at) + "; insert points on the surface");
    BringToFront(tin, place->triangle);
    if (tin.DivideTri(at.x, at.y, at.z) == 0) {
        throw Failure("a vertex stands at " + PlaceInSurvey(terrain, at) + " already; delete it first");
    }
    return tin.GetPointSize() - 1;
}

int NearestVertex(const Terrain& terrain, const Position& at)
{
    int nearest = -1;
    double least = 0.0;
    for (int v = 0; v < terrain.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& vertex = terrain.tin.m_aVertex[v];
        const double dx = vertex.x - at.x, dy = vertex.y - at.y;
        const double squared = dx * dx + dy * dy;
        if (nearest < 0 || squared < least) {
            nearest = v;
            least = squared;
        }
    }
    return nearest;
}

namespace {

// Faults that make a mesh unusable as a surface seen from above. Flat triangles are counted on demand:
// upright walls have no area in plan either.
int CountFaults(const CTin& tin, bool countFlat)
{
    CArray<CMeshFault> faults;
    FindMeshFaults(tin, faults, std::numeric_limits<int>::max());
    int count = 0;
    for (int i = 0; i < faults.GetSize(); ++i) {
        count += faults[i].m_eKind < (countFlat ? MESH_FAULT_TRI_NORMALS : MESH_FAULT_FLAT) ? 1 : 0;
    }
    return count;
}

// The library fills the hole in the plane of its surroundings, as tanks and tunnels want it. On a steep
// slope that can fold a terrain as seen from above; with all heights equal, that plane is the plan.
int DeleteInPlan(CTin& tin, int vertex)
{
    std::vector<double> heights;
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        heights.push_back(tin.m_aVertex[v].z);
        tin.m_aVertex[v].z = 0.0;
    }
    const int deleted = tin.DelVertex(vertex);
    if (deleted != 0) heights.erase(heights.begin() + vertex);
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        tin.m_aVertex[v].z = heights[static_cast<std::size_t>(v)];
    }
    return deleted;
}

}   // namespace

void DeleteVertex(Terrain& terrain, int vertex)
{
    CTin& tin = terrain.tin;
    const int count = tin.GetPointSize();
    const std::string name = "vertex " + std::to_string(vertex);
    if (vertex < 0 || vertex >= count) {
        throw Failure("there is no " + name + "; they are numbered from 0 to " + std::to_string(count - 1));
    }
    const CTin before(tin);
    const double eps = tin.m_dEPS;
    const int faults = CountFaults(tin, false);
    const bool isPlanSurface = CountFaults(tin, true) == 0;
    const int deleted = isPlanSurface ? DeleteInPlan(tin, vertex) : tin.DelVertex(vertex);
    const bool isEmpty = tin.GetTriSize() == 0;
    if (deleted == 0 || isEmpty || CountFaults(tin, false) > faults) {
        tin = before;
        tin.SetEPS(eps);
        throw Failure(isEmpty ? "no triangle is left without " + name + "; keep it"
                              : "the hole that " + name +
                                    " would leave cannot be filled; delete a neighbour first");
    }
}

int TrimByAngle(Terrain& terrain, double degrees)
{
    constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
    const int before = terrain.tin.GetTriSize();
    terrain.tin.DelTriWithAngle(degrees * kRadiansPerDegree, 1);   // corners stay, so that something is left
    return before - terrain.tin.GetTriSize();
}

int HangSkirt(Terrain& terrain, double height)
{
    const int before = terrain.tin.GetTriSize();
    OpenPinches(terrain.tin);
    terrain.tin.AddVPlane(height);
    return terrain.tin.GetTriSize() - before;
}

void Merge(Terrain& terrain, Terrain& other)
{
    terrain.tin.AddTIN(other.tin);
}

}   // namespace qsvtin
