#include "tests/support/program.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

nlohmann::json JsonOf(const std::string& text)
{
    return nlohmann::json::parse(text, nullptr, false);
}

Result ProgramTest::Run(const std::string& arguments, const std::string& output) const
{
    return Shell("'" QSVTIN_PROGRAM "' " + arguments, output);
}

Result ProgramTest::RunWithInput(const std::string& arguments, const std::string& input) const
{
    Put("stdin.log", input);
    return Run(arguments + " <stdin.log");
}

Result ProgramTest::Shell(const std::string& command, const std::string& output) const
{
    const std::string whole =
        "cd '" + m_folder.string() + "' && { " + command + "; } >" + output + " 2>stderr.log";
    const int ended = std::system(whole.c_str());
    return {WIFEXITED(ended) ? WEXITSTATUS(ended) : -1, Get("stdout.log"), Get("stderr.log")};
}

nlohmann::json ProgramTest::Report(const std::string& arguments) const
{
    const Result result = Run(arguments + " --json");
    EXPECT_EQ(result.status, 0) << arguments << "\n" << result.err;
    return JsonOf(result.out);
}

CTin ProgramTest::ReadTin(const std::string& file) const
{
    CArray<CTin, CTin&> tins;
    EXPECT_EQ(CTin::ReadBIN_VER2(Path(file).c_str(), tins), 1) << file;
    return tins.GetSize() > 0 ? tins[0] : CTin();
}

void ProgramTest::PutHill() const
{
    Put("hill.txt", "0 0 1\n10 0 1\n10 10 1\n0 10 1\n5 5 9\n");
    EXPECT_EQ(Run("build hill.txt -o hill.tin").status, 0);
}

void ProgramTest::ExpectRefusal(const std::string& arguments, int status, const std::string& message) const
{
    SCOPED_TRACE(arguments);
    const Result result = Run(arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("qsvtin: ", 0), 0u) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
}

void ProgramTest::ExpectRefusals(const std::string& beginning, const std::string& kept,
                                 const std::vector<Refusal>& refusals) const
{
    const std::string before = Get(kept);
    for (const Refusal& r : refusals) {
        ExpectRefusal(beginning + r.arguments, r.status, r.message);
        EXPECT_EQ(Get(kept), before) << r.arguments;
    }
}
