#include "host/commands/manual.h"

#include "host/commands/options.h"
#include "host/manual/manual_page.h"
#include "host/say.h"

namespace qsvtin {

void DeclareManual(CommandLine command)
{
    command.SetExample("  qsvtin manual | man -l -");
    command.SetAction([command] { Print(ManualPage(command.Program())); });
}

}   // namespace qsvtin
