// What the program tells about itself: help, manual page and completion name the same commands and options.

#include "host/viewer/page.h"
#include "tests/support/program.h"

#include <regex>
#include <set>

namespace {

using Words = std::set<std::string>;

Words Matches(const std::string& text, const char* pattern)
{
    const std::regex regex(pattern, std::regex::multiline);
    Words words;
    for (auto at = std::sregex_iterator(text.begin(), text.end(), regex); at != std::sregex_iterator();
         ++at) {
        words.insert((*at)[1]);
    }
    return words;
}

class Manual : public ProgramTest
{
protected:
    std::string Printed(const std::string& arguments) const
    {
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, 0) << arguments << result.err;
        return result.out;
    }

    Words Commands() const
    {
        const std::string help = Printed("--help");
        const Words commands = Matches(help.substr(help.find("\nCommands:")), "^  ([a-z]+)  ");
        EXPECT_GE(commands.size(), 10u);
        return commands;
    }

    // The names at the beginnings of the lines of the help, -h,--help for instance.
    Words OptionsOf(const std::string& command) const
    {
        const std::string help = Printed(command + " --help");
        Words options;
        for (const std::string& names : Matches(help, "^  (-[-a-z,]+)")) {
            for (const std::string& name : Matches(names, "(--?[a-z][-a-z]*)")) options.insert(name);
        }
        EXPECT_EQ(options.count("--help"), 1u) << help;
        return options;
    }
};

TEST_F(Manual, PageNamesWhatTheHelpNames)
{
    const std::string page = Printed("manual");
    EXPECT_EQ(Matches(page, "^\\.SS ([a-z]+)$"), Commands());
    for (const std::string& command : Commands()) {
        const std::size_t begin = page.find(".SS " + command + "\n");
        const std::string section = page.substr(begin, page.find("\n.S", begin) - begin);
        Words names;
        for (std::string name : Matches(section, "(?:^\\\\fB|, )(\\\\-[-\\\\a-z]*)(?=,|\\\\fR)")) {
            name.erase(std::remove(name.begin(), name.end(), '\\'), name.end());
            names.insert(name);
        }
        EXPECT_EQ(names, OptionsOf(command)) << section;
        EXPECT_NE(section.find("Example:"), std::string::npos) << command;
    }
}

// The function that bash calls is called here in its place.
TEST_F(Manual, BashCompletesEveryCommandAndOption)
{
    Put("qsvtin.bash", Printed("completion bash"));
    const auto completed = [&](const std::string& words, int at) {
        const Result result =
            Shell("bash -c 'source qsvtin.bash; COMP_WORDS=(qsvtin " + words +
                  "); COMP_CWORD=" + std::to_string(at) + "; _qsvtin; printf \"%s\\n\" \"${COMPREPLY[@]}\"'");
        EXPECT_EQ(result.err, "");
        return Matches(result.out, "^([-a-z]+)$");
    };
    Words first = Commands();
    first.insert({"-h", "--help", "--version"});
    EXPECT_EQ(completed("\"\"", 1), first);
    for (const std::string& command : Commands()) {
        EXPECT_EQ(completed(command + " -", 2), OptionsOf(command)) << command;
    }
    EXPECT_EQ(completed("build --tr", 2), Words{"--trim-angle"});
    EXPECT_EQ(completed("build po", 2), Words{}) << "files are left to bash";
}

TEST_F(Manual, OtherShellsCompleteTheSame)
{
    const std::string zsh = Printed("completion zsh"), fish = Printed("completion fish");
    for (const std::string& command : Commands()) {
        EXPECT_NE(fish.find("-a " + command + " "), std::string::npos) << command;
        const std::size_t begin = zsh.find("        " + command + ") options=(");
        ASSERT_NE(begin, std::string::npos) << command;
        const std::string options = zsh.substr(begin, zsh.find("        ) ;;", begin) - begin);
        for (const std::string& option : OptionsOf(command)) {
            if (option.compare(0, 2, "--") != 0) continue;
            EXPECT_NE(options.find("'" + option + ":"), std::string::npos) << command << " " << option;
            EXPECT_NE(fish.find("_from " + command + "'"), std::string::npos) << command << " " << option;
            EXPECT_NE(fish.find("-l " + option.substr(2) + " "), std::string::npos)
                << command << " " << option;
        }
    }
    ExpectRefusal("completion tcsh", 2, "name bash, zsh or fish");
}

// Nothing written tells when, where or as which process it was made.
TEST_F(Manual, SameInputGivesTheSameBytes)
{
    const std::string commands =
        "build ../hill.txt --breaklines ../lines.txt -o a.tin -o a.png -o a.svg -o a.pdf -o a.obj "
        "-o a.ply -o a.stl -o a.xml -o a.dxf -o a.geojson >/dev/null;"
        "render a.tin --view 205,30 --perspective -o view.png;"
        "render a.tin --view 205,30 -o view.svg;"
        "render a.tin --view 205,30 -o view.pdf;"
        "view a.tin -o a.html 2>/dev/null || true;"   // there may be no viewer
        "edit a.tin --insert 3,3,4 --skirt -1 -o edited.tin --json >edit.json;"
        "info edited.tin --json >info.json;"
        "convert a.tin text.ply --ascii >/dev/null;"
        "manual >qsvtin.1;";
    Put("hill.txt", "0 0 1\n10 0 1\n10 10 1\n0 10 1\n5 5 9\n7 2 3\n");
    Put("lines.txt", "1 1 4\n9 1 4\n");
    const std::string body =
        std::regex_replace(commands, std::regex("(^|;)(?=[a-z])"), "$1'" QSVTIN_PROGRAM "' ");
    // In another second, time zone and language, in a larger environment.
    const Result result =
        Shell("unset SOURCE_DATE_EPOCH; mkdir one two; cd one; " + body +
              " sleep 1.1; cd ../two; export TZ=Asia/Tokyo LC_ALL=C FILLER=" + std::string(5000, 'x') + "; " +
              body + " cd ..; diff -r one two");
    EXPECT_EQ(result.status, 0) << result.out << result.err;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder / "two"), {}),
              qsvtin::HasViewer() ? 19 : 18);
}

}   // namespace
