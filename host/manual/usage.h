#ifndef QSVTIN_MANUAL_USAGE_H
#define QSVTIN_MANUAL_USAGE_H

#include <string>
#include <vector>

namespace qsvtin {

/// One option of a command, as its help knows it.
struct OptionUsage {
    std::vector<std::string> names;   ///< with their dashes, short ones first
    std::string value;                ///< what the value is; empty for a flag
    std::string description;
    bool required = false;

    /// All names with this between them: "-o, --output", for instance.
    std::string Names(const std::string& between) const;
};

/// One argument that goes by its place.
struct ArgumentUsage {
    std::string name;
    std::string description;
    bool required = false;
    bool repeated = false;
};

/// One command, or the program itself.
struct Usage {
    std::string name;
    std::string summary;
    std::vector<ArgumentUsage> arguments;
    std::vector<OptionUsage> options;
    std::string footer;   ///< what ends the help: examples
};

/// Everything that was declared.
struct ProgramUsage {
    Usage itself;
    std::string version;
    std::vector<Usage> commands;   ///< in the order of the help
};

}   // namespace qsvtin

#endif
