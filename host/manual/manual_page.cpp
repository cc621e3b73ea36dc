#include "host/manual/manual_page.h"

#include <algorithm>
#include <cctype>

namespace qsvtin {

namespace {

constexpr const char* kDescription =
    R"(.B qsvtin
turns survey points and breaklines into a triangulated terrain (a TIN), edits it, asks it for heights and areas,
draws it and converts it. Files are told by their extension: .tin for TIN files, others for models and pictures.
.PP
Reports go to standard output, for people or, with
.BR \-\-json ,
for programs. Warnings and errors go to standard error, one line each, and say what to do. A file is replaced only when
the new one is complete. The same input gives the same bytes.
)";

constexpr const char* kExitStatus = R"(.SH EXIT STATUS
.TP
.B 0
The command did what was asked.
.TP
.B 1
It failed: a file cannot be read or written, or the data make no surface. Files that were there are as before.
.TP
.B 2
The command line cannot be understood.
)";

// Text as roff takes it: no sign of it is an order.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        const bool lineStarts = escaped.empty() || escaped.back() == '\n';
        if (lineStarts && (c == '.' || c == '\'')) escaped += "\\&";
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string Bold(const std::string& text)
{
    return "\\fB" + Escaped(text) + "\\fR";
}

std::string Italic(const std::string& text)
{
    return "\\fI" + Escaped(text) + "\\fR";
}

std::string Synopsis(const Usage& command)
{
    std::string line = Bold("qsvtin " + command.name);
    for (const ArgumentUsage& argument : command.arguments) {
        const std::string name = Italic(argument.name) + (argument.repeated ? "..." : "");
        line += argument.required ? " " + name : " [" + name + "]";
    }
    return line + " [" + Italic("OPTION") + "...]\n";
}

std::string Section(const Usage& command)
{
    std::string text =
        ".SS " + command.name + "\n" + Synopsis(command) + ".PP\n" + Escaped(command.summary) + ".\n";
    for (const ArgumentUsage& argument : command.arguments) {
        text += ".TP\n" + Italic(argument.name) + "\n" + Escaped(argument.description) + "\n";
    }
    for (const OptionUsage& option : command.options) {
        text += ".TP\n" + Bold(option.Names(", ")) +
                (option.value.empty() ? "" : " " + Italic(option.value)) + "\n" +
                Escaped(option.description) + (option.required ? " (required)" : "") + "\n";
    }
    if (!command.footer.empty()) text += ".PP\n.nf\n" + Escaped(command.footer) + "\n.fi\n";
    return text;
}

}   // namespace

std::string ManualPage(const ProgramUsage& program)
{
    const Usage& usage = program.itself;
    std::string summary = usage.summary;
    summary.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(summary.front())));
    // Without a date: the same program gives the same page.
    std::string page = ".TH QSVTIN 1 \"\" \"qsvtin " + program.version + "\" \"User Commands\"\n" +
                       ".SH NAME\nqsvtin \\- " + Escaped(summary) + "\n.SH SYNOPSIS\n" + Bold("qsvtin") +
                       " " + Italic("COMMAND") + " [" + Italic("ARGUMENT") + "...] [" + Italic("OPTION") +
                       "...]\n" + ".SH DESCRIPTION\n" + kDescription + ".SH OPTIONS\n";
    for (const OptionUsage& option : usage.options) {
        page += ".TP\n" + Bold(option.Names(", ")) + "\n" + Escaped(option.description) + "\n";
    }
    page += ".SH COMMANDS\n";
    for (const Usage& command : program.commands) {
        page += Section(command);
    }
    return page + kExitStatus;
}

}   // namespace qsvtin
