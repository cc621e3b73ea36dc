#include "host/commands/manual.h"

#include "host/commands/options.h"
#include "host/manual/manual_page.h"
#include "host/say.h"

namespace qsvtin {

void DeclareManual(CLI::App& app)
{
    SetExample(app, "  qsvtin manual | man -l -");
    app.callback([&app] { Print(ManualPage(*app.get_parent())); });
}

}   // namespace qsvtin
