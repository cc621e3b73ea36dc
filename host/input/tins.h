#ifndef QSVTIN_INPUT_TINS_H
#define QSVTIN_INPUT_TINS_H

#include "host/exchange/length_unit.h"
#include "host/terrain/survey_line.h"

#include "qsv_3dprocess.h"

#include <optional>
#include <string>
#include <vector>

namespace qsvtin {

/// Areas that a file states of a surface; what it does not state is none.
struct StatedAreas {
    std::optional<double> plan;
    std::optional<double> surface;
};

/// The TINs of one file, in survey coordinates, as the file holds them. Where it has no room for names, a TIN
/// is named as the file, without folder and extension.
struct TinFile {
    static constexpr int kOtherForm = -1;

    std::string path;
    int form = kOtherForm;   ///< 0 a single TIN, 1 or 2 a collection of that version
    CArray<CTin, CTin&> tins;
    std::string format;   ///< of a file in no form of TIN files
    LengthUnit unit = LengthUnit::Unknown;
    std::vector<StatedAreas> stated;              ///< of each TIN; empty: none
    std::vector<std::vector<SurveyLine>> lines;   ///< of each TIN, chains of its vertices; empty: none
    std::size_t surveyLines = 0;                  ///< breaklines beside the TINs, which build takes
};

/// Reads a TIN file of any form, or a file of another program, whose surfaces become TINs with the same
/// triangles. What had to be changed or was left out is said on standard error.
/// @throws Failure when it cannot be read, is damaged or holds no TIN
TinFile ReadTins(const std::string& path);

/// Says on standard error which breaklines of the file do not go over, if there are any.
/// @param keepsLines  those along edges of the TINs do
void TellLinesLeftOut(const TinFile& file, bool keepsLines);

/// The form of a file in words, such as "collection, version 2".
std::string DescribeForm(const TinFile& file);

/// The TIN that the user means.
/// @param wanted  a number, from 1, or else a name; empty: the first, which is said on standard error when
///                there are more
/// @return its index
/// @throws Failure (bad usage) when no TIN or more than one is meant
int ChooseTin(const TinFile& file, const std::string& wanted);

/// Finds out whether a TIN can be computed with: it has triangles, their corners and neighbours exist, and
/// every coordinate is a usable number. @throws Failure when not
void RequireUsable(const TinFile& file, int index);

/// A TIN as messages name it: the file and, when it holds more than one, the TIN.
std::string NameIn(const TinFile& file, int index);

}   // namespace qsvtin

#endif
