#include "host/terrain/soundness.h"

#include "host/terrain/triangles.h"

#include <climits>

namespace qsvtin {

namespace {

bool HasAreaInSpace(const CTin& tin, int t)
{
    const CXYZ& a = CornerOf(tin, t, 0);
    return (CornerOf(tin, t, 1) - a).Out(CornerOf(tin, t, 2) - a).Len() > 0.0;
}

}   // namespace

Soundness CheckSoundness(const CTin& tin)
{
    CArray<CMeshFault> faults;
    FindMeshFaults(tin, faults, INT_MAX);
    Soundness found;
    for (int i = 0; i < faults.GetSize(); ++i) {
        if (faults[i].m_eKind != MESH_FAULT_FLAT) {
            found.faults.push_back(faults[i]);
        } else if (HasAreaInSpace(tin, faults[i].m_nTri)) {
            ++found.walls;
        } else {
            ++found.withoutArea;
        }
    }
    return found;
}

int CountFolded(const CTin& tin)
{
    const double rounding = CTin().m_dEPS2;   // as for a TIN that was read: files keep no tolerances
    int folded = 0;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        folded += DoubledPlanArea(tin, t) < -rounding ? 1 : 0;
    }
    return folded;
}

std::string PlaceOf(const CMeshFault& fault)
{
    const auto number = [](int value) { return std::to_string(value); };
    switch (fault.m_eKind) {
    case MESH_FAULT_COORDINATE: return "vertex " + number(fault.m_nVertex);
    case MESH_FAULT_BOUNDARY_INDEX:
        return "boundary entry " + number(fault.m_nSlot) + ", vertex " + number(fault.m_nVertex);
    case MESH_FAULT_CLOCKWISE: return "triangle " + number(fault.m_nTri);
    default:
        return "triangle " + number(fault.m_nTri) + ", slot " + number(fault.m_nSlot) + ", vertex " +
               number(fault.m_nVertex);
    }
}

}   // namespace qsvtin
