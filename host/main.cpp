#include "host/commands/build.h"
#include "host/commands/command.h"
#include "host/failure.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <string>

namespace {

constexpr std::array kCommands = {
    qsvtin::Command{"build", "Build a terrain from survey points and breaklines", qsvtin::DeclareBuild},
};

// One line on standard error, whatever the message holds.
int Complain(std::string message, int status)
{
    std::replace(message.begin(), message.end(), '\n', ' ');
    std::fprintf(stderr, "qsvtin: %s\n", message.c_str());
    return status;
}

}   // namespace

int main(int argc, char** argv)
{
    CLI::App app("Terrain from survey points and breaklines", "qsvtin");
    app.set_version_flag("--version", QSVTIN_VERSION);
    app.require_subcommand(1);
    for (const qsvtin::Command& command : kCommands) {
        command.declare(*app.add_subcommand(command.name, command.summary));
    }
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::Success& request) {
        return app.exit(request);   // help or version
    } catch (const CLI::ParseError& error) {
        return Complain(std::string(error.what()) + "; see qsvtin --help", qsvtin::Failure::BadUsage);
    } catch (const qsvtin::Failure& failure) {
        return Complain(failure.what(), failure.status);
    } catch (const std::bad_alloc&) {
        return Complain("out of memory; build a part of the points", qsvtin::Failure::Failed);
    } catch (const std::exception& error) {
        return Complain(error.what(), qsvtin::Failure::Failed);
    }
}
