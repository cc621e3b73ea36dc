#ifndef QSVTIN_EXCHANGE_EXCHANGE_FILE_H
#define QSVTIN_EXCHANGE_EXCHANGE_FILE_H

#include "host/exchange/length_unit.h"
#include "host/exchange/mesh_data.h"
#include "host/input/survey_data.h"

#include <optional>
#include <string>
#include <vector>

namespace qsvtin {

/// What a file holds of one surface: what it was surveyed from, its triangles, or both.
struct SurfaceData {
    std::string name;
    std::vector<Position> points;
    std::vector<int> pointLines;   ///< line number of each point in the file
    std::vector<Breakline> breaklines;
    std::vector<BoundaryRing> boundaries;
    MeshData mesh;
    std::optional<double> planArea;      ///< as the file states it, in its unit squared
    std::optional<double> surfaceArea;   ///< the same

    bool HasSource() const { return !points.empty() || !breaklines.empty(); }
};

/// A file of another program. Coordinates are in the unit of the file.
struct ExchangeFile {
    std::string path;
    std::string format;   ///< for reports, such as "LandXML"
    LengthUnit unit = LengthUnit::Unknown;
    std::vector<SurfaceData> surfaces;
    bool areLayers = false;             ///< surfaces are the layers of one drawing, which belong together
    std::vector<std::string> remarks;   ///< what was passed over, for the user
};

/// Reads a file of another program. The format is found by its extension or, where that tells nothing, by how
/// it begins. @throws Failure when it cannot be read, is damaged or is in no known format
ExchangeFile ReadExchangeFile(const std::string& path);

/// True when ReadExchangeFile knows the format.
bool IsExchangeFile(const std::string& path);

/// Their extensions, for messages: ".xml, .obj or .stl".
std::string ExchangeExtensions();

}   // namespace qsvtin

#endif
