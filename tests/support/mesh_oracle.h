#ifndef QSV_TESTS_SUPPORT_MESH_ORACLE_H
#define QSV_TESTS_SUPPORT_MESH_ORACLE_H

#include <gtest/gtest.h>

#include <string>

#include "qsv_3dprocess.h"

// What every mesh must be, found by looking at all of it, not by asking the library.

// Indices in range; links mutual and across the same edge; no directed edge used twice; no triangle
// clockwise by more than the rounding of its coordinates.
::testing::AssertionResult IsSound(const CTin& tin);

// One connected surface without holes: vertices in use + triangles - edges = 1 (Euler).
::testing::AssertionResult IsDisk(const CTin& tin);

// No vertex in use lies inside the circle through a triangle, by more than rounding. Every vertex is
// tried against every triangle.
::testing::AssertionResult IsDelaunay(const CTin& tin);

// Every vertex is used by a triangle or coincides with one that is.
::testing::AssertionResult HasPlacedEveryVertex(const CTin& tin);

// How many faults the library finds of the kinds before one, as they are listed in MESH_FAULT.
int CountFaults(const CTin& tin, MESH_FAULT eBefore);

// Plan area of all triangles, clockwise ones counted below 0.
double MeshArea(const CTin& tin);
// Plan area enclosed by a ring of vertices.
double RingArea(const CTin& tin, const CArray<int>& aRing);

// All of a mesh as text, numbers with 17 digits: two equal texts are two equal meshes.
std::string Dump(const CTin& tin);

#endif
