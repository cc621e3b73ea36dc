#ifndef QSVTIN_TERRAIN_SURVEY_LINE_H
#define QSVTIN_TERRAIN_SURVEY_LINE_H

#include <cstddef>
#include <string>
#include <vector>

namespace qsvtin {

/// A breakline as the terrain has it: vertices without repeats in succession; a closed line does not
/// repeat its first vertex at the end.
struct SurveyLine {
    std::vector<int> vertices;
    std::vector<int> sourceLines;   ///< line number of each vertex in the breakline's file
    bool closed = false;
    std::string name = {};

    /// Makes a line that ends where it began a closed one. One that goes out and comes back the same way encloses
    /// nothing and stays open.
    void CloseWhereItReturns()
    {
        if (vertices.size() <= 3 || vertices.front() != vertices.back()) return;
        closed = true;
        vertices.pop_back();
        if (!sourceLines.empty()) sourceLines.pop_back();
    }

    std::size_t SegmentCount() const { return vertices.size() < 2 ? 0 : vertices.size() - (closed ? 0 : 1); }
    int Start(std::size_t segment) const { return vertices[segment]; }
    int End(std::size_t segment) const { return vertices[(segment + 1) % vertices.size()]; }
};

}   // namespace qsvtin

#endif
