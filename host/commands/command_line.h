#ifndef QSVTIN_COMMANDS_COMMAND_LINE_H
#define QSVTIN_COMMANDS_COMMAND_LINE_H

#include "host/manual/usage.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace qsvtin {

/// Where a command declares its arguments and options, with the variables that receive them, and its help. It is a
/// handle: what a copy declares is declared for the same command.
/// Behind it is CLI11, which main and this class alone see: each source that includes it compiles for ten seconds.
class CommandLine
{
public:
    explicit CommandLine(CLI::App& app) : m_app(&app) {}

    /// An argument that goes by its place and must be given.
    /// @param value  a std::string, or a vector of them for an argument that is repeated
    template <class T>
    void Argument(const std::string& name, T& value, const std::string& help);
    /// The same for one that may be missing: then the variable stays as it is.
    template <class T>
    void OptionalArgument(const std::string& name, T& value, const std::string& help);

    /// An option with a value; the variable stays as it is when the option is not given.
    /// @param names  all of them, such as "-o,--output"
    /// @param value  a std::string, int, double or std::optional of a number; or a vector of std::string for an
    ///               option that may be repeated, with one value each time
    /// @param type   what the help calls the value, such as FILE
    template <class T>
    void Option(const std::string& names, T& value, const std::string& type, const std::string& help);
    /// The same for one that must be given.
    template <class T>
    void RequiredOption(const std::string& names, T& value, const std::string& type, const std::string& help);
    /// An option whose value is a list with commas, and that may be repeated.
    void ListOption(const std::string& names, std::vector<std::string>& values, const std::string& type,
                    const std::string& help);
    void Flag(const std::string& names, bool& given, const std::string& help);

    /// What ends the help of the command.
    void SetFooter(const std::string& text);
    /// The same with nothing but an example.
    void SetExample(const std::string& lines);

    /// What the command does once the variables have their values. It throws Failure.
    void SetAction(std::function<void()> action);

    /// For an action: the names of what was given, in the order of the command line.
    std::vector<std::string> Given() const;
    /// For an action: the whole program, with all its commands.
    ProgramUsage Program() const;

private:
    CLI::App* m_app;
};

/// Gives the help of a program our words, and lines that fit a screen. For commands that are added afterwards.
void ShapeHelp(CLI::App& program);

}   // namespace qsvtin

#endif
