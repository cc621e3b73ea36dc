// Draws the pictures of the documentation into a folder: qsv_pictures docs/images
#include "docs/pictures/pictures.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: qsv_pictures FOLDER\n", stderr);
        return 2;
    }
    const struct {
        const char* name;
        std::vector<Panel> (*draw)();
    } pictures[] = {
        {"slots", DrawSlots},
        {"construction", DrawConstruction},
        {"edge_swapping", DrawSwapping},
        {"breaklines", DrawBreaklines},
        {"polygons", DrawPolygon},
        {"vertex_deletion", DrawVertexDeletion},
        {"trimming", DrawTrimming},
        {"heights", DrawHeights},
        {"depth_order", DrawDepthOrder},
        {"projection", DrawProjection},
        {"grid_sphere", DrawGridSphere},
    };
    for (const auto& picture : pictures) {
        const std::string path = std::string(argv[1]) + "/" + picture.name + ".svg";
        if (!WritePage(path, picture.draw())) {
            std::fprintf(stderr, "cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
