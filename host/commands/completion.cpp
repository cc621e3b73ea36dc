#include "host/commands/completion.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/manual/completion.h"
#include "host/say.h"

#include <memory>

namespace qsvtin {

void DeclareCompletion(CommandLine command)
{
    const auto shell = std::make_shared<std::string>();
    command.Argument("SHELL", *shell, "bash, zsh or fish");
    command.SetExample("  source <(qsvtin completion bash)\n  qsvtin completion fish > "
                       "~/.config/fish/completions/qsvtin.fish");
    command.SetAction([shell, command] {
        const std::string script = CompletionFor(*shell, command.Program());
        if (script.empty()) {
            throw Failure("no completion for " + *shell + "; name bash, zsh or fish", Failure::BadUsage);
        }
        Print(script);
    });
}

}   // namespace qsvtin
