#ifndef QSVTIN_REPORT_TIN_REPORT_H
#define QSVTIN_REPORT_TIN_REPORT_H

#include "host/input/tins.h"
#include "host/report/json_text.h"
#include "host/report/text_report.h"
#include "host/terrain/tin_facts.h"

namespace qsvtin {

/// Counts, ranges, areas and soundness, a line each.
void AddFacts(const TinFacts& facts, TextReport& text);

/// The same as members of an object.
Json JsonOf(const TinFacts& facts);

/// The areas that the file itself states, beside those of the triangles.
void AddStated(const StatedAreas& stated, const TinFacts& facts, TextReport& text);
/// The stated ones alone.
Json JsonOf(const StatedAreas& stated);

/// "yes", or how many faults there are.
std::string DescribeSoundness(const Soundness& soundness);

}   // namespace qsvtin

#endif
