#ifndef QSVTIN_OUTPUT_PLAN_PICTURE_H
#define QSVTIN_OUTPUT_PLAN_PICTURE_H

#include "host/output/safe_file.h"
#include "host/output/write_options.h"

namespace qsvtin {

struct Terrain;

/// Plan view as a picture of up to 2526 pixels: hill-shaded surface coloured by height, edges where they can
/// be told apart, breaklines and their crossings, coordinates, scale bar and height legend.
void WritePlanPng(const Terrain& terrain, const WriteOptions& options, SafeFile& file);
/// The same as SVG: lines and text scale freely, the shaded surface is a picture inside.
void WritePlanSvg(const Terrain& terrain, const WriteOptions& options, SafeFile& file);
/// The same as one A4 page, upright or lying as suits the terrain.
void WritePlanPdf(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

/// @throws Failure (bad usage) when this qsvtin was built without pictures and so cannot write that path
void RequirePictures(const std::string& path);

}   // namespace qsvtin

#endif
