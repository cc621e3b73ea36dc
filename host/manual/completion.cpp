#include "host/manual/completion.h"

namespace qsvtin {

namespace {

// A word between single quotes, whatever it holds.
std::string Quote(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string OptionWords(const Usage& usage)
{
    std::string words;
    for (const OptionUsage& option : usage.options) {
        words += (words.empty() ? "" : " ") + option.Names(" ");
    }
    return words;
}

std::string Bash(const ProgramUsage& program)
{
    std::string names, cases;
    for (const Usage& command : program.commands) {
        names += command.name + " ";
        cases += "        " + command.name + ") options=\"" + OptionWords(command) + "\" ;;\n";
    }
    return "# bash completion of qsvtin; what is neither a command nor an option is a file.\n"
           "_qsvtin()\n"
           "{\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} options=\n"
           "    COMPREPLY=()\n"
           "    if ((COMP_CWORD == 1)); then\n"
           "        COMPREPLY=($(compgen -W \"" +
           names + OptionWords(program.itself) +
           "\" -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    case ${COMP_WORDS[1]} in\n" +
           cases +
           "    esac\n"
           "    if [[ $word == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
           "    fi\n"
           "}\n"
           "complete -o default -F _qsvtin qsvtin\n";
}

// What zsh's _describe takes: the word, a colon, what it is.
std::string ZshItem(const std::string& word, const std::string& description)
{
    std::string escaped;
    for (const char c : description) {
        escaped += c == ':' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return Quote(word + ":" + escaped);
}

std::string Zsh(const ProgramUsage& program)
{
    std::string names, cases;
    for (const Usage& command : program.commands) {
        names += "        " + ZshItem(command.name, command.summary) + "\n";
        cases += "        " + command.name + ") options=(\n";
        for (const OptionUsage& option : command.options) {
            for (const std::string& name : option.names) {
                cases += "            " + ZshItem(name, option.description) + "\n";
            }
        }
        cases += "        ) ;;\n";
    }
    return "#compdef qsvtin\n"
           "_qsvtin() {\n"
           "    local -a commands options\n"
           "    commands=(\n" +
           names +
           "    )\n"
           "    if (( CURRENT == 2 )); then\n"
           "        _describe command commands\n"
           "        return\n"
           "    fi\n"
           "    case $words[2] in\n" +
           cases +
           "    esac\n"
           "    if [[ $words[CURRENT] == -* ]]; then\n"
           "        _describe option options\n"
           "    else\n"
           "        _files\n"
           "    fi\n"
           "}\n"
           "_qsvtin \"$@\"\n";
}

std::string FishNames(const OptionUsage& option)
{
    std::string text;
    for (const std::string& name : option.names) {
        text += name.compare(0, 2, "--") == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return text;
}

std::string Fish(const ProgramUsage& program)
{
    std::string text = "# fish completion of qsvtin\n";
    for (const Usage& command : program.commands) {
        text += "complete -c qsvtin -n __fish_use_subcommand -f -a " + command.name + " -d " +
                Quote(command.summary) + "\n";
        for (const OptionUsage& option : command.options) {
            text += "complete -c qsvtin -n '__fish_seen_subcommand_from " + command.name + "'" +
                    FishNames(option) + (option.value.empty() ? "" : " -r") + " -d " +
                    Quote(option.description) + "\n";
        }
    }
    return text;
}

}   // namespace

std::string CompletionFor(const std::string& shell, const ProgramUsage& program)
{
    if (shell == "bash") return Bash(program);
    if (shell == "zsh") return Zsh(program);
    if (shell == "fish") return Fish(program);
    return "";
}

}   // namespace qsvtin
