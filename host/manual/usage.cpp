#include "host/manual/usage.h"

namespace qsvtin {

namespace {

std::vector<std::string> NamesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

}   // namespace

std::string OptionUsage::Names(const std::string& between) const
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : between) + name;
    }
    return text;
}

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

std::vector<Usage> CommandsOf(const CLI::App& program)
{
    std::vector<Usage> commands;
    for (const CLI::App* const command : program.get_subcommands([](const CLI::App*) { return true; })) {
        commands.push_back(UsageOf(*command));
    }
    return commands;
}

}   // namespace qsvtin
