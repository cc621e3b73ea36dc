#ifndef QSVTIN_OUTPUT_WRITE_OPTIONS_H
#define QSVTIN_OUTPUT_WRITE_OPTIONS_H

#include "host/exchange/length_unit.h"

#include <string>

namespace qsvtin {

/// What the user may choose about the files written.
struct WriteOptions {
    std::string title;    ///< stands over pictures and in the comments of text formats
    std::string name;     ///< of the TIN in a collection; empty: the name of the file without its extension
    int form = 2;         ///< of TIN files: 0 a single TIN, 1 and 2 the versions of collections
    bool ascii = false;   ///< PLY and STL as text
    LengthUnit unit = LengthUnit::Unknown;   ///< of the coordinates, for formats that state it
};

}   // namespace qsvtin

#endif
