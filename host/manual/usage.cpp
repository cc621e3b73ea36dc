#include "host/manual/usage.h"

namespace qsvtin {

namespace {

std::string FirstOf(const std::vector<std::string>& names)
{
    return names.empty() ? std::string() : names.front();
}

}   // namespace

std::string OptionUsage::Names() const
{
    const std::string dash = shortName.empty() ? "" : "-" + shortName;
    if (longName.empty()) return dash;
    return dash + (dash.empty() ? "--" : ", --") + longName;
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
            usage.options.push_back({FirstOf(option->get_lnames()), FirstOf(option->get_snames()),
                                     takesValue ? option->get_type_name() : "", description,
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
