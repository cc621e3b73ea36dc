// Stands in for all that draws where qsvtin is built without cairo (QSV_PICTURES=OFF).
#include "host/failure.h"
#include "host/output/plan_picture.h"
#include "host/view/texture.h"
#include "host/view/view_picture.h"

namespace qsvtin {

void RequirePictures(const std::string& path)
{
    throw Failure("cannot draw " + path +
                      ": this qsvtin was built without pictures; write a model such as .obj, "
                      "or build it with -DQSV_PICTURES=ON",
                  Failure::BadUsage);
}

void WritePlanPng(const Terrain&, const WriteOptions&, SafeFile& file)
{
    RequirePictures(file.Target());
}

void WritePlanSvg(const Terrain&, const WriteOptions&, SafeFile& file)
{
    RequirePictures(file.Target());
}

void WritePlanPdf(const Terrain&, const WriteOptions&, SafeFile& file)
{
    RequirePictures(file.Target());
}

ViewFrame FrameOf(const Scene&, const PictureOptions&)
{
    throw Failure("cannot tell what a picture shows: this qsvtin was built without pictures; build it with "
                  "-DQSV_PICTURES=ON",
                  Failure::BadUsage);
}

Texture::Texture(const std::string& path)
{
    RequirePictures(path);
}

void CheckPicturePath(const std::string& path)
{
    RequirePictures(path);
}

void WriteView(const Scene&, const PictureOptions&, SafeFile& file)
{
    RequirePictures(file.Target());
}

}   // namespace qsvtin
