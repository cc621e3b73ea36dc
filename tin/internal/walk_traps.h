#ifndef QSV_TIN_INTERNAL_WALK_TRAPS_H
#define QSV_TIN_INTERNAL_WALK_TRAPS_H

#include "platform/afx_array.h"
#include "tin/internal/plan_walk.h"
#include "tin/internal/region_index.h"

namespace qsv {

// The triangles that can stop a walk to a place farther from them than a reach.
//
// The walk lets a place lie a little beyond an edge, by a doubled area of dEPS2 and by rounding. Where two edges run
// almost alike, such a place can be well past the corner between them:
//
//      - - - - - - - - - - - - - _ _        the lines of what is let pass meet far
//      v ----------------------- _ _  x     beyond the corner
//      - - - - - - - - - - - - -
//
// With the doubled area A and the longest edge L, by at most 2 L dEPS2 / A, and for rounding L^3 / A times a
// few times 1e-16. Triangles for which that exceeds the reach are kept by the rectangles where they can stop a walk.
class WalkTraps
{
public:
    // For vertices in a square.
    WalkTraps(PlanMesh& mesh, const WalkTolerance& tolerance, double dReach, const CXYZ& lower, double dSide);
    // Gives the triangles their numbers back.
    ~WalkTraps();
    WalkTraps(const WalkTraps&) = delete;
    WalkTraps& operator=(const WalkTraps&) = delete;

    double Reach() const { return m_dReach; }
    // Calls the action with every trap that can stop a walk to a place, and some that cannot, until it returns false;
    // returns false then.
    template <class ACTION>
    bool ForEachNear(const PlanPlace& p, ACTION fnAction) const
    {
        return m_index.ForEachNear(p.x, p.y, [&](int nEntry) { return fnAction(m_aTrap[nEntry].nTri); });
    }
    bool AnyNear(const PlanPlace& p) const
    {
        return !ForEachNear(p, [](int) { return false; });
    }
    // Whether a triangle is so flat that it may be clockwise, and circles through it mean nothing. A walk through a
    // mesh with such a triangle may go round for ever, or stop anywhere.
    bool HasFlat() const { return m_nFlat > 0; }

    // Whether a triangle is a trap, with its doubled area and a number not below the square of its longest edge: when
    // one of these is not above 0.
    template <class NUMBER>
    NUMBER Roundness(const NUMBER& dArea, const NUMBER& dLength2) const
    {
        return dArea - kFlat * dLength2;
    }
    template <class NUMBER>
    NUMBER Room(const NUMBER& dArea, const NUMBER& dLength2) const
    {
        const NUMBER dRoom = m_dReach * dArea, dSlack = m_dSlack + kRounding * dLength2;
        return dRoom * dRoom - dLength2 * dSlack * dSlack;
    }

    // To be called for each triangle that is new or has changed.
    void Update(int nTri, bool bTrap)
    {
        if (m_mesh.NumberOf(nTri) < 0) {
            StrikeOff(nTri);
        }
        if (bTrap) {
            Enter(nTri);
        }
    }
    void Update(int nTri);

private:
    struct Trap {
        int nTri;   // or kFree
        int nNumber;
        bool bFlat;
    };
    static constexpr int kFree = -1;
    static constexpr double kRounding = 4e-15;
    static constexpr double kFlat = 1e-10;   // a circle through the corners then has six digits

    struct Measures {
        double dArea, dLength2;
    };

    Measures Measure(int nTri) const;
    RegionIndex::Region RegionOf(int nTri, double dMargin) const;
    void Enter(int nTri);
    void StrikeOff(int nTri);

    PlanMesh& m_mesh;
    const double m_dReach, m_dSlack;
    CArray<Trap> m_aTrap;
    CArray<int> m_aFree;   // entries of m_aTrap
    RegionIndex m_index;   // of those that are not flat
    int m_nFlat = 0;
};

}   // namespace qsv

#endif
