#include "host/input/breakline_text.h"

#include "host/failure.h"
#include "host/input/point_rows.h"

#include <utility>

namespace qsvtin {

namespace {

// Gathers the points of one block after the other.
class BlockList
{
public:
    explicit BlockList(std::string file) : m_file(std::move(file)) {}

    void Name(std::string_view comment)
    {
        if (m_block.points.empty()) m_block.name = std::string(Trimmed(comment));
    }

    void Add(const Position& at, int line)
    {
        m_block.points.push_back(at);
        m_block.lines.push_back(line);
    }

    void EndBlock()
    {
        if (m_block.points.empty()) return;
        m_block.file = m_file;
        m_block.number = static_cast<int>(m_blocks.size()) + 1;
        m_blocks.push_back(std::exchange(m_block, {}));
    }

    std::vector<Breakline> Take()
    {
        EndBlock();
        return std::move(m_blocks);
    }

private:
    std::string m_file;
    Breakline m_block;
    std::vector<Breakline> m_blocks;
};

}   // namespace

BreaklineFile ReadBreaklines(TextFile& text, std::vector<BadLine>& badLines)
{
    BlockList blocks(text.Path());
    PointRows rows(std::nullopt, "a heading such as x y z");
    const std::size_t badBefore = badLines.size();
    Position at;
    std::string reason;
    for (std::string_view raw; text.NextLine(raw);) {
        const std::string_view line = Trimmed(raw);
        if (line.empty()) {
            blocks.EndBlock();
        } else if (line.front() == '>') {
            blocks.EndBlock();
            blocks.Name(line.substr(1));
        } else if (line.front() == '#') {
            rows.NoteComment(line.substr(1));
            blocks.Name(line.substr(1));
        } else if (const PointRows::Row row = rows.Read(line, at, reason); row == PointRows::Row::Point) {
            blocks.Add(at, text.LineNumber());
        } else if (row == PointRows::Row::Bad) {
            badLines.push_back({text.Path(), text.LineNumber(), reason});
        }
    }
    BreaklineFile file{text.Path(), rows.Columns(), blocks.Take()};
    if (file.lines.empty() && badLines.size() == badBefore) {
        throw Failure(text.Path() +
                      ": no breakline in it; give blocks of x y z lines, an empty line between them");
    }
    return file;
}

}   // namespace qsvtin
