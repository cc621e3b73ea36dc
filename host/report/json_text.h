#ifndef QSVTIN_REPORT_JSON_TEXT_H
#define QSVTIN_REPORT_JSON_TEXT_H

#include "host/position.h"

#include <nlohmann/json.hpp>

#include <string>

namespace qsvtin {

/// Keeps its members in the order they were added.
using Json = nlohmann::ordered_json;

inline Json JsonOf(const Position& p)
{
    return {p.x, p.y, p.z};
}

/// {"x": [low, high], "y": ..., "z": ...}
inline Json JsonOfRange(const Position& low, const Position& high)
{
    return {{"x", {low.x, high.x}}, {"y", {low.y, high.y}}, {"z", {low.z, high.z}}};
}

/// The text of a document. Names in another encoding than UTF-8 are shown with replacement characters instead
/// of failing; what is no finite number is null.
inline std::string TextOf(const Json& json, int indent = 2)
{
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}   // namespace qsvtin

#endif
