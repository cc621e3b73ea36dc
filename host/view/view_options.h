#ifndef QSVTIN_VIEW_VIEW_OPTIONS_H
#define QSVTIN_VIEW_VIEW_OPTIONS_H

#include "host/commands/options.h"
#include "host/view/scene.h"
#include "host/view/view_picture.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace qsvtin {

/// What the user says about a picture: the same for drawing one and for picking in it.
struct ViewOptions {
    TinChoice tin;
    std::string view;
    bool perspective = false;
    double exaggeration = 1.0;
    std::optional<double> skirt;
    std::string size;

    void Declare(CLI::App& app);
    /// @throws Failure (bad usage) when they make no sense
    PictureOptions Picture() const;
    /// Reads the TIN. @throws Failure when there is none that can be drawn
    Scene ReadScene() const;
};

/// Two numbers with a sign between them: "205,30", "1600x1000". @return false when the text is anything else
bool ReadPair(const std::string& text, char separator, double& first, double& second);

}   // namespace qsvtin

#endif
