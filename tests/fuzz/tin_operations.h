#ifndef QSV_TESTS_FUZZ_TIN_OPERATIONS_H
#define QSV_TESTS_FUZZ_TIN_OPERATIONS_H

#include "qsv_3dprocess.h"
#include "tests/fuzz/fuzz_input.h"

#include <vector>

// Every public member of CTin that works on the object, as something that can be done to any TIN whatever its
// members hold. Arguments come from the input.
struct TinOperation {
    enum Kind {
        Asks,      // reads only, so that several threads may
        Changes,   // feeds, builds, edits, orders, stores
    };
    const char* szName;
    Kind eKind;
    // other: a second TIN, for the operations that take one
    void (*fnDo)(CTin& tin, CTin& other, FuzzInput& input);
};

const std::vector<TinOperation>& TinOperations();

// Does everything that only asks.
void AskEverything(CTin& tin, FuzzInput& input);

// Puts something wrong into one of the public members.
void Damage(CTin& tin, FuzzInput& input);

// Whether a TIN is small enough for a run of everything to end soon.
bool IsSmall(const CTin& tin);

#endif
