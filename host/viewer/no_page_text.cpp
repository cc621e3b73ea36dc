#include "host/viewer/page_text.h"

namespace qsvtin {

const std::string_view kPageBeforeTerrain;
const std::string_view kPageAfterTerrain;

}   // namespace qsvtin
