#ifndef QSV_TESTS_SUPPORT_PROGRAM_H
#define QSV_TESTS_SUPPORT_PROGRAM_H

#include "tests/support/scratch_folder.h"

#include "qsv_3dprocess.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

/// What a run of qsvtin gave.
struct Result {
    int status = -1;
    std::string out;
    std::string err;
};

/// A test that runs qsvtin in a folder of its own.
class ProgramTest : public ScratchFolder
{
protected:
    /// Runs it through a shell, which reads the arguments.
    Result Run(const std::string& arguments, const std::string& output = "stdout.log") const
    {
        return Shell("'" QSVTIN_PROGRAM "' " + arguments, output);
    }

    /// The same, with text on its standard input.
    Result RunWithInput(const std::string& arguments, const std::string& input) const
    {
        Put("stdin.log", input);
        return Run(arguments + " <stdin.log");
    }

    /// Runs a command of the shell.
    Result Shell(const std::string& command, const std::string& output = "stdout.log") const
    {
        const std::string whole =
            "cd '" + m_folder.string() + "' && { " + command + "; } >" + output + " 2>stderr.log";
        const int ended = std::system(whole.c_str());
        return {WIFEXITED(ended) ? WEXITSTATUS(ended) : -1, Get("stdout.log"), Get("stderr.log")};
    }

    /// Its report as JSON; the test fails when it does not succeed.
    nlohmann::json Report(const std::string& arguments) const
    {
        const Result result = Run(arguments + " --json");
        EXPECT_EQ(result.status, 0) << arguments << "\n" << result.err;
        return nlohmann::json::parse(result.out, nullptr, false);
    }

    /// The first TIN of a file; the test fails when there is none.
    CTin ReadTin(const std::string& file) const
    {
        CArray<CTin, CTin&> tins;
        EXPECT_EQ(CTin::ReadBIN_VER2(Path(file).c_str(), tins), 1) << file;
        return tins.GetSize() > 0 ? tins[0] : CTin();
    }

    /// Puts a pyramid 10 wide and 8 high over a square at height 1 there, as hill.txt and hill.tin; the apex is
    /// vertex 4.
    void PutHill() const
    {
        Put("hill.txt", "0 0 1\n10 0 1\n10 10 1\n0 10 1\n5 5 9\n");
        EXPECT_EQ(Run("build hill.txt -o hill.tin").status, 0);
    }

    /// The test fails unless qsvtin does, with this status and one line that holds the message.
    void ExpectRefusal(const std::string& arguments, int status, const std::string& message) const
    {
        SCOPED_TRACE(arguments);
        const Result result = Run(arguments);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.rfind("qsvtin: ", 0), 0u) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
    }

    /// Arguments, status, and a part of the message.
    struct Refusal {
        std::string arguments;
        int status;
        std::string message;
    };
    /// The same for several commands with the same beginning, which must leave a file as it is.
    void ExpectRefusals(const std::string& beginning, const std::string& kept,
                        const std::vector<Refusal>& refusals) const
    {
        const std::string before = Get(kept);
        for (const Refusal& r : refusals) {
            ExpectRefusal(beginning + r.arguments, r.status, r.message);
            EXPECT_EQ(Get(kept), before) << r.arguments;
        }
    }
};

#endif
