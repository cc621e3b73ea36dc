#ifndef QSV_DOCS_PICTURES_PICTURES_H
#define QSV_DOCS_PICTURES_PICTURES_H

#include "docs/pictures/page.h"

#include <vector>

/// The pictures of the documentation; each shows what the library makes of a small example.
std::vector<Panel> DrawSlots();
std::vector<Panel> DrawConstruction();
std::vector<Panel> DrawSwapping();
std::vector<Panel> DrawBreaklines();
std::vector<Panel> DrawPolygon();
std::vector<Panel> DrawVertexDeletion();
std::vector<Panel> DrawTrimming();
std::vector<Panel> DrawHeights();
std::vector<Panel> DrawDepthOrder();
std::vector<Panel> DrawProjection();
std::vector<Panel> DrawGridSphere();

#endif
