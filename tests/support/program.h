#ifndef QSV_TESTS_SUPPORT_PROGRAM_H
#define QSV_TESTS_SUPPORT_PROGRAM_H

#include "tests/support/scratch_folder.h"

#include "qsv_3dprocess.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

/// What a text of JSON holds; discarded where it is none. Here alone is it parsed, for the time that takes to compile.
nlohmann::json JsonOf(const std::string& text);

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
    Result Run(const std::string& arguments, const std::string& output = "stdout.log") const;

    /// The same, with text on its standard input.
    Result RunWithInput(const std::string& arguments, const std::string& input) const;

    /// Runs a command of the shell.
    Result Shell(const std::string& command, const std::string& output = "stdout.log") const;

    /// Its report as JSON; the test fails when it does not succeed.
    nlohmann::json Report(const std::string& arguments) const;

    /// The first TIN of a file; the test fails when there is none.
    CTin ReadTin(const std::string& file) const;

    /// Puts a pyramid 10 wide and 8 high over a square at height 1 there, as hill.txt and hill.tin; the apex is
    /// vertex 4.
    void PutHill() const;

    /// The test fails unless qsvtin does, with this status and one line that holds the message.
    void ExpectRefusal(const std::string& arguments, int status, const std::string& message) const;

    /// Arguments, status, and a part of the message.
    struct Refusal {
        std::string arguments;
        int status;
        std::string message;
    };
    /// The same for several commands with the same beginning, which must leave a file as it is.
    void ExpectRefusals(const std::string& beginning, const std::string& kept,
                        const std::vector<Refusal>& refusals) const;
};

#endif
