#include "host/commands/pick.h"

#include "host/failure.h"
#include "host/numbers.h"
#include "host/report/text_report.h"
#include "host/say.h"
#include "host/view/pick.h"
#include "host/view/view_options.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <memory>
#include <string>

namespace qsvtin {

namespace {

struct PickOptions {
    ViewOptions view;
    std::string pixel;
    bool json = false;
};

std::string HitAsText(const Scene& scene, const Hit& hit)
{
    const std::string what =
        hit.triangle < scene.groundTriangles ? "triangle " + std::to_string(hit.triangle) : "skirt";
    return what + "  " + Coordinate(hit.at.x) + " " + Coordinate(hit.at.y) + " " + Coordinate(hit.at.z) +
           "\n";
}

std::string HitAsJson(const Scene& scene, const Hit& hit)
{
    nlohmann::ordered_json report;
    const bool ground = hit.triangle < scene.groundTriangles;
    report["triangle"] = ground ? nlohmann::ordered_json(hit.triangle) : nlohmann::ordered_json();
    report["skirt"] = !ground;
    report["position"] = {hit.at.x, hit.at.y, hit.at.z};
    return report.dump(2) + "\n";
}

void RunPick(const PickOptions& options)
{
    const PictureOptions picture = options.view.Picture();
    double x = 0.0, y = 0.0;
    if (!ReadNumbers(options.pixel, ',', {&x, &y}) || x != std::floor(x) || y != std::floor(y)) {
        throw Failure("PIXEL " + options.pixel + ": give the column and the row of a pixel, such as 800,500",
                      Failure::BadUsage);
    }
    if (x < 0.0 || y < 0.0 || x >= picture.width || y >= picture.height) {
        throw Failure("pixel " + options.pixel + " is outside the picture of " +
                          std::to_string(picture.width) + "x" + std::to_string(picture.height) +
                          " pixels (--size)",
                      Failure::BadUsage);
    }
    const Scene scene = options.view.ReadScene();
    const auto hit = PickAt(scene, FrameOf(scene, picture), x + 0.5, y + 0.5);
    if (!hit) throw Failure("no surface under pixel " + options.pixel + "; pick one that shows some");
    Print(options.json ? HitAsJson(scene, *hit) : HitAsText(scene, *hit));
}

}   // namespace

void DeclarePick(CommandLine command)
{
    const auto options = std::make_shared<PickOptions>();
    options->view.Declare(command);
    command.Argument("PIXEL", options->pixel, "column and row, such as 800,500, from 0,0 at the upper left");
    DeclareJson(command, options->json);
    command.SetFooter(
        "Give the view and the size that the picture was rendered with. The line of sight through the\n"
        "middle of the pixel is followed to the nearest triangle, by a test of every one.\n\n"
        "Example:\n  qsvtin pick hill.tin 800,500 --view 205,30 --perspective --exaggerate 2");
    command.SetAction([options] { RunPick(*options); });
}

}   // namespace qsvtin
