#include "host/commands/join.h"

#include "host/commands/options.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/input/text_file.h"
#include "host/output/safe_file.h"
#include "host/output/tin.h"
#include "host/output/writers.h"
#include "host/report/json_text.h"
#include "host/report/text_report.h"
#include "host/say.h"

#include <memory>
#include <set>

namespace qsvtin {

namespace {

struct JoinOptions {
    std::vector<std::string> files;
    std::string output;
    int form = 2;
    bool json = false;
};

void CheckOptions(const JoinOptions& options)
{
    if (options.form != 1 && options.form != 2) {
        throw Failure("--format must be 2 or 1: only these hold several TINs", Failure::BadUsage);
    }
    if (ExtensionOf(options.output) != ".tin") {
        throw Failure("-o " + options.output + ": only TIN files hold several TINs; end its name in .tin",
                      Failure::BadUsage);
    }
    CheckTarget(options.output);
}

void TellEqualNames(const CArray<CTin, CTin&>& tins)
{
    std::set<std::string> names;
    for (int i = 0; i < tins.GetSize(); ++i) {
        const std::string name = tins[i].m_strName.GetString();
        if (!names.insert(name).second) {
            Note("more than one TIN is named " + QuotedName(name) + "; choose between them by number");
            return;
        }
    }
}

void RunJoin(const JoinOptions& options)
{
    CheckOptions(options);
    CArray<CTin, CTin&> tins;
    for (const std::string& path : options.files) {
        TinFile file = ReadTins(path);
        TellLinesLeftOut(file, false);
        for (int i = 0; i < file.tins.GetSize(); ++i) {
            tins.Add(file.tins[i]);
        }
    }
    TellEqualNames(tins);
    WriteFiles({{options.output, [&](SafeFile& file) { WriteTins(tins, options.form, file); }}});
    TextReport text;
    Json json = {{"written", options.output}, {"tins", Json::array()}};
    for (int i = 0; i < tins.GetSize(); ++i) {
        const std::string name = tins[i].m_strName.GetString();
        text.Line("TIN " + std::to_string(i + 1),
                  QuotedName(name) + ", " + std::to_string(tins[i].GetTriSize()) + " triangles");
        json["tins"].push_back({{"number", i + 1}, {"name", name}, {"triangles", tins[i].GetTriSize()}});
    }
    text.Line("written", options.output);
    Print(options.json ? TextOf(json) : text.Text());
}

}   // namespace

void DeclareJoin(CommandLine command)
{
    const auto options = std::make_shared<JoinOptions>();
    command.Argument("FILE", options->files, "TIN files or models, whose TINs follow each other");
    command.RequiredOption("-o,--output", options->output, "OUT", "TIN file to write");
    command.Option("--format", options->form, "2|1",
                   "form of the file: 2 with texture coordinates (2), 1 without");
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin join before.tin after.tin -o both.tin\n  qsvtin info both.tin --tin after");
    command.SetAction([options] { RunJoin(*options); });
}

}   // namespace qsvtin
