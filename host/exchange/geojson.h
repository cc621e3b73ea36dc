#ifndef QSVTIN_EXCHANGE_GEOJSON_H
#define QSVTIN_EXCHANGE_GEOJSON_H

#include "host/output/safe_file.h"
#include "host/output/write_options.h"

namespace qsvtin {

struct Terrain;

/// Writes a GeoJSON feature collection: triangles as Polygon, outline rings and breaklines as LineString, each
/// with its kind among the properties. Coordinates are east, north and height of the survey with every digit;
/// a member beside the features says that they are not WGS 84.
void WriteGeoJson(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
