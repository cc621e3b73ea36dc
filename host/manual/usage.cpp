#include "host/manual/usage.h"

namespace qsvtin {

std::string OptionUsage::Names(const std::string& between) const
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : between) + name;
    }
    return text;
}

}   // namespace qsvtin
