#include "host/commands/completion.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/manual/completion.h"
#include "host/say.h"

#include <memory>

namespace qsvtin {

void DeclareCompletion(CLI::App& app)
{
    const auto shell = std::make_shared<std::string>();
    app.add_option("SHELL", *shell, "bash, zsh or fish")->required();
    SetExample(app, "  source <(qsvtin completion bash)\n  qsvtin completion fish > "
                    "~/.config/fish/completions/qsvtin.fish");
    app.callback([shell, &app] {
        const std::string script = CompletionFor(*shell, *app.get_parent());
        if (script.empty()) {
            throw Failure("no completion for " + *shell + "; name bash, zsh or fish", Failure::BadUsage);
        }
        Print(script);
    });
}

}   // namespace qsvtin
