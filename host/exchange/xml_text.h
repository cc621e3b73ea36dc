#ifndef QSVTIN_EXCHANGE_XML_TEXT_H
#define QSVTIN_EXCHANGE_XML_TEXT_H

#include <string>
#include <string_view>

namespace qsvtin {

/// A text as UTF-8: what is none is taken for ISO 8859-1.
std::string AsUtf8(std::string_view text);

/// A text as it may stand in an attribute of a UTF-8 document; control characters become blanks.
std::string AsXml(std::string_view text);

}   // namespace qsvtin

#endif
