#include "host/view/view_options.h"

#include "host/failure.h"
#include "host/input/tins.h"

#include <cmath>
#include <cstdlib>

namespace qsvtin {

namespace {

// A whole text as a finite number. The program never leaves the "C" locale, so the point is the decimal sign.
bool ReadNumber(const std::string& text, double& number)
{
    if (text.empty() || text.find_first_not_of("+-.0123456789eE") != std::string::npos) return false;
    char* end = nullptr;
    number = std::strtod(text.c_str(), &end);
    return *end == '\0' && std::isfinite(number);
}

View ReadView(const std::string& text)
{
    View view;
    if (text.empty()) return view;
    if (!ReadPair(text, ',', view.azimuth, view.elevation) || std::fabs(view.azimuth) > 360.0) {
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

}   // namespace

bool ReadPair(const std::string& text, char separator, double& first, double& second)
{
    const std::size_t between = text.find(separator);
    return between != std::string::npos && ReadNumber(text.substr(0, between), first) &&
           ReadNumber(text.substr(between + 1), second);
}

void ViewOptions::Declare(CLI::App& app)
{
    DeclareTin(app, tin);
    app.add_option(
           "--view", view,
           "where the viewer stands, in degrees: from north over east, and above the horizon, such as "
           "205,30 (the plan, 180,90)")
        ->type_name("AZIMUTH,ELEVATION");
    app.add_flag("--perspective", perspective, "what is near looks larger; else lines of sight are parallel");
    app.add_option("--exaggerate", exaggeration, "factor for heights (1)")->type_name("FACTOR");
    app.add_option("--skirt", skirt, "hang walls on the outline, down or up to this height")->type_name("Z");
    app.add_option("--size", size, "of the picture, in pixels (1600x1000)")->type_name("WIDTHxHEIGHT");
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
    if (!size.empty() && !(ReadPair(size, 'x', width, height) && IsSide(width) && IsSide(height))) {
        throw Failure("--size " + size +
                          ": give WIDTHxHEIGHT in pixels, 100 to 10000 each, such as 1600x1000",
                      Failure::BadUsage);
    }
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    return picture;
}

Scene ViewOptions::ReadScene() const
{
    const TinFile read = ReadTins(tin.file);
    const int index = ChooseTin(read, tin.tin);
    RequireUsable(read, index);
    return MakeScene(read.tins[index], exaggeration, skirt);
}

}   // namespace qsvtin
