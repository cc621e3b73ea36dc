#ifndef QSV_3DPROCESS_H
#define QSV_3DPROCESS_H

/// @file
/// Everything the library offers.

#include "base/calc_xyzhv.h"
#include "base/dist.h"
#include "base/polyline.h"
#include "base/rotation.h"
#include "base/sort_key.h"
#include "base/xyz.h"
#include "grid3dsphere/grid_3d_sphere.h"
#include "platform/afx_array.h"
#include "platform/afx_file.h"
#include "platform/afx_point.h"
#include "platform/afx_string.h"
#include "projection/projection.h"
#include "tin/add_points.h"
#include "tin/height_finder.h"
#include "tin/mesh_check.h"
#include "tin/tin.h"

#endif
