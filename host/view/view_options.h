#ifndef QSVTIN_VIEW_VIEW_OPTIONS_H
#define QSVTIN_VIEW_VIEW_OPTIONS_H

#include "host/commands/options.h"
#include "host/view/scene.h"
#include "host/view/view_picture.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace qsvtin {

/// What the user says about a picture: the same for drawing one and for picking in it.
struct ViewOptions {
    TinChoice tin;
    std::string view;
    bool perspective = false;
    double exaggeration = 1.0;
    std::optional<double> skirt;
    std::string size;
    std::string sphere;
    std::string sphereStep;
    std::string sphereZero;

    void Declare(CommandLine command);
    /// @throws Failure (bad usage) when they make no sense
    PictureOptions Picture() const;
    /// Reads the TIN. @throws Failure when there is none that can be drawn
    Scene ReadScene() const;
};

/// Numbers with a sign between them: "205,30", "1600x1000".
/// @return false when the text is anything else, or a number is not finite
bool ReadNumbers(std::string_view text, char separator, std::initializer_list<double*> numbers);

}   // namespace qsvtin

#endif
