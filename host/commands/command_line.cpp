#include "host/commands/command_line.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <sstream>
#include <type_traits>
#include <utility>

namespace qsvtin {

namespace {

template <class T>
CLI::Option& AddOption(CLI::App& app, const std::string& names, T& value, const std::string& type,
                       const std::string& help)
{
    CLI::Option& option = *app.add_option(names, value, help)->type_name(type);
    // An option that is repeated takes one value each time: what follows it may be an argument.
    if constexpr (std::is_same_v<T, std::vector<std::string>>) option.allow_extra_args(false);
    return option;
}

std::vector<std::string> NamesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

// Words in lines as long as fit a screen beside the names of options.
std::string Wrapped(const std::string& text)
{
    constexpr std::size_t kLongest = 70;
    std::istringstream words(text);
    std::string lines;
    std::size_t length = 0;
    for (std::string word; words >> word; length += word.size()) {
        if (length > 0) {
            const bool fits = length + 1 + word.size() <= kLongest;
            lines += fits ? ' ' : '\n';
            length = fits ? length + 1 : 0;
        }
        lines += word;
    }
    return lines;
}

class HelpFormatter : public CLI::Formatter
{
public:
    HelpFormatter()
    {
        label("Positionals", "Arguments");
        label("SUBCOMMAND", "COMMAND");
        label("REQUIRED", "(required)");
    }
    std::string make_option_desc(const CLI::Option* option) const override
    {
        return Wrapped(option->get_description());
    }
};

Usage UsageOf(const CLI::App& app)
{
    Usage usage{app.get_name(), app.get_description(), {}, {}, app.get_footer()};
    for (const CLI::Option* const option : app.get_options()) {
        const std::string description = option->get_description();
        if (option->get_positional()) {
            usage.arguments.push_back({option->get_name(), description, option->get_required(),
                                       option->get_items_expected_max() > 1});
        } else {
            const bool takesValue = option->get_items_expected_max() > 0;
            usage.options.push_back({NamesOf(*option), takesValue ? option->get_type_name() : "", description,
                                     option->get_required()});
        }
    }
    return usage;
}

}   // namespace

template <class T>
void CommandLine::Argument(const std::string& name, T& value, const std::string& help)
{
    m_app->add_option(name, value, help)->required()->type_name("");
}

template <class T>
void CommandLine::OptionalArgument(const std::string& name, T& value, const std::string& help)
{
    m_app->add_option(name, value, help)->type_name("");
}

template <class T>
void CommandLine::Option(const std::string& names, T& value, const std::string& type, const std::string& help)
{
    AddOption(*m_app, names, value, type, help);
}

template <class T>
void CommandLine::RequiredOption(const std::string& names, T& value, const std::string& type,
                                 const std::string& help)
{
    AddOption(*m_app, names, value, type, help).required();
}

void CommandLine::ListOption(const std::string& names, std::vector<std::string>& values,
                             const std::string& type, const std::string& help)
{
    AddOption(*m_app, names, values, type, help).delimiter(',');
}

void CommandLine::Flag(const std::string& names, bool& given, const std::string& help)
{
    m_app->add_flag(names, given, help);
}

void CommandLine::SetFooter(const std::string& text)
{
    m_app->footer(text);
}

void CommandLine::SetExample(const std::string& lines)
{
    SetFooter("Example:\n" + lines);
}

void CommandLine::SetAction(std::function<void()> action)
{
    m_app->callback(std::move(action));
}

std::vector<std::string> CommandLine::Given() const
{
    std::vector<std::string> names;
    for (const CLI::Option* const option : m_app->parse_order()) {
        names.push_back(option->get_name());
    }
    return names;
}

ProgramUsage CommandLine::Program() const
{
    const CLI::App& program = *m_app->get_parent();
    ProgramUsage usage{UsageOf(program), program.version(), {}};
    for (const CLI::App* const command : program.get_subcommands([](const CLI::App*) { return true; })) {
        usage.commands.push_back(UsageOf(*command));
    }
    return usage;
}

void ShapeHelp(CLI::App& program)
{
    program.formatter(std::make_shared<HelpFormatter>());
    program.set_help_flag("-h,--help", "show this help");
}

// What commands declare.
using Strings = std::vector<std::string>;
using Text = const std::string&;
template void CommandLine::Argument(Text, std::string&, Text);
template void CommandLine::Argument(Text, Strings&, Text);
template void CommandLine::OptionalArgument(Text, std::string&, Text);
template void CommandLine::OptionalArgument(Text, Strings&, Text);
template void CommandLine::Option(Text, std::string&, Text, Text);
template void CommandLine::Option(Text, Strings&, Text, Text);
template void CommandLine::Option(Text, int&, Text, Text);
template void CommandLine::Option(Text, double&, Text, Text);
template void CommandLine::Option(Text, std::optional<int>&, Text, Text);
template void CommandLine::Option(Text, std::optional<double>&, Text, Text);
template void CommandLine::RequiredOption(Text, std::string&, Text, Text);
template void CommandLine::RequiredOption(Text, Strings&, Text, Text);

}   // namespace qsvtin
