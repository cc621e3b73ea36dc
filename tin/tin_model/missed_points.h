#ifndef QSV_TIN_TIN_MODEL_MISSED_POINTS_H
#define QSV_TIN_TIN_MODEL_MISSED_POINTS_H

class CTin;

namespace qsv {

// Inserts, in index order, every vertex that the ordinary insertion left out although it coincides with no
// vertex in use: one that lies beyond the hull by rounding, or whose walk was caught among flat slivers.
// Points beyond an outer edge are joined to it, and to the ring of hull corners. Changes nothing when
// no vertex was missed. The triangle array may be longer than nTriCount, the number in use.
void InsertMissedPoints(CTin& tin, int& nTriCount);

}   // namespace qsv

#endif
