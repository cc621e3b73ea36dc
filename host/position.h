#ifndef QSVTIN_POSITION_H
#define QSVTIN_POSITION_H

namespace qsvtin {

/// A place on the ground: east, north and height in the unit of the survey.
struct Position {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

}   // namespace qsvtin

#endif
