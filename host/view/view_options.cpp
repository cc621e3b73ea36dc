#include "host/view/view_options.h"

#include "host/failure.h"
#include "host/input/fields.h"
#include "host/input/tins.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

View ReadView(const std::string& text)
{
    View view;
    if (text.empty()) return view;
    if (!ReadNumbers(text, ',', {&view.azimuth, &view.elevation}) || std::fabs(view.azimuth) > 360.0) {
        throw Failure("--view " + text + ": give two numbers of degrees, AZIMUTH,ELEVATION, such as 205,30",
                      Failure::BadUsage);
    }
    if (!(view.elevation >= 1.0 && view.elevation <= 90.0)) {
        throw Failure("--view " + text +
                          ": the elevation goes from 1 degree, along the ground, to 90, straight down",
                      Failure::BadUsage);
    }
    return view;
}

bool IsSide(double pixels)
{
    return pixels >= 100.0 && pixels <= 10000.0 && pixels == std::floor(pixels);
}

struct ZeroName {
    std::string_view name;
    ZENITH_MODE mode;
};
constexpr std::array kZeroNames = {
    ZeroName{"zenith", ZENITH_0_FULL},
    ZeroName{"horizon", HORIZON_0_FULL},
    ZeroName{"horizon-signed", HORIZON_0_SIGNED},
    ZeroName{"nadir", NADIR_0_FULL},
};

ZENITH_MODE ReadZero(const std::string& text)
{
    if (text.empty()) return ZENITH_0_FULL;
    const auto found = std::find_if(kZeroNames.begin(), kZeroNames.end(),
                                    [&](const ZeroName& zero) { return zero.name == text; });
    if (found == kZeroNames.end()) {
        throw Failure("--sphere-zero " + text + ": give zenith, horizon, horizon-signed or nadir",
                      Failure::BadUsage);
    }
    return found->mode;
}

GridSphere ReadSphere(const ViewOptions& options)
{
    GridSphere sphere;
    Position& station = sphere.station;
    if (!ReadNumbers(options.sphere, ',', {&station.x, &station.y, &station.z, &sphere.radius}) ||
        !IsCoordinate(station.x) || !IsCoordinate(station.y) || !IsCoordinate(station.z)) {
        throw Failure("--grid-sphere " + options.sphere +
                          ": give the station and the radius as X,Y,Z,RADIUS, such as 4520.5,1210,385.2,50",
                      Failure::BadUsage);
    }
    if (!(sphere.radius > 0.0 && IsCoordinate(sphere.radius))) {
        throw Failure("--grid-sphere " + options.sphere + ": the radius must be above 0", Failure::BadUsage);
    }
    const std::string& step = options.sphereStep;
    if (!step.empty() && !(ReadNumbers(step, ',', {&sphere.stepH, &sphere.stepV}) && sphere.stepH > 0.0 &&
                           sphere.stepH <= 360.0 && sphere.stepV > 0.0 && sphere.stepV <= 90.0)) {
        throw Failure("--sphere-step " + step +
                          ": give two numbers of degrees, HORIZONTAL,VERTICAL, above 0 and up to 360 and 90, "
                          "such as 30,15",
                      Failure::BadUsage);
    }
    sphere.zero = ReadZero(options.sphereZero);
    return sphere;
}

}   // namespace

bool ReadNumbers(std::string_view text, char separator, std::initializer_list<double*> numbers)
{
    std::size_t left = numbers.size();
    for (double* const number : numbers) {
        const std::size_t end = --left > 0 ? text.find(separator) : text.size();
        if (end == std::string_view::npos) return false;
        if (!ParseNumber(text.substr(0, end), *number) || !std::isfinite(*number)) return false;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

void ViewOptions::Declare(CommandLine command)
{
    DeclareTin(command, tin);
    command.Option(
        "--view", view, "AZIMUTH,ELEVATION",
        "where the viewer stands, in degrees: from north over east, and above the horizon, such as "
        "205,30 (the plan, 180,90)");
    command.Flag("--perspective", perspective, "what is near looks larger; else lines of sight are parallel");
    command.Option("--exaggerate", exaggeration, "FACTOR", "factor for heights (1)");
    command.Option("--skirt", skirt, "Z", "hang walls on the outline, down or up to this height");
    command.Option("--size", size, "WIDTHxHEIGHT",
                   "of the picture, in pixels (1600x1000); a PDF is as many points");
    command.Option("--grid-sphere", sphere, "X,Y,Z,RADIUS",
                   "draw a sphere around a station, ruled with the angles that an instrument reads there");
    command.Option("--sphere-step", sphereStep, "HORIZONTAL,VERTICAL", "degrees between its lines (30,15)");
    command.Option("--sphere-zero", sphereZero, "zenith|horizon|horizon-signed|nadir",
                   "where vertical angles are 0 (zenith); below it, horizon reads 270 to 360 and "
                   "horizon-signed -90 to 0");
}

PictureOptions ViewOptions::Picture() const
{
    PictureOptions picture;
    picture.view = ReadView(view);
    picture.view.perspective = perspective;
    if (!(exaggeration >= 0.001 && exaggeration <= 1000.0)) {
        throw Failure("--exaggerate must be from 0.001 to 1000", Failure::BadUsage);
    }
    if (skirt && !IsCoordinate(*skirt)) {
        throw Failure("--skirt must be a height, such as 250", Failure::BadUsage);
    }
    double width = picture.width, height = picture.height;
    if (!size.empty() && !(ReadNumbers(size, 'x', {&width, &height}) && IsSide(width) && IsSide(height))) {
        throw Failure("--size " + size +
                          ": give WIDTHxHEIGHT in pixels, 100 to 10000 each, such as 1600x1000",
                      Failure::BadUsage);
    }
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    if (!sphere.empty()) {
        picture.sphere = ReadSphere(*this);
    } else if (!sphereStep.empty() || !sphereZero.empty()) {
        throw Failure("--sphere-step and --sphere-zero need --grid-sphere", Failure::BadUsage);
    }
    return picture;
}

Scene ViewOptions::ReadScene() const
{
    const TinFile read = ReadTins(tin.file);
    const int index = ChooseTin(read, tin.tin);
    RequireUsable(read, index);
    Scene scene = MakeScene(read.tins[index], exaggeration, skirt);
    scene.unit = read.unit;
    return scene;
}

}   // namespace qsvtin
