#ifndef QSVTIN_INPUT_TEXT_FILE_H
#define QSVTIN_INPUT_TEXT_FILE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace qsvtin {

/// The text of one input file, handed out line by line without its line ends (LF, CR LF or CR).
/// A byte-order mark in front is dropped.
class TextFile
{
public:
    /// Reads the whole file, which may also be a pipe.
    /// @throws Failure when it cannot be read, is a directory or is not text in an 8-bit encoding
    explicit TextFile(const std::string& path);

    /// For text that is in memory already; name stands for the path in messages.
    TextFile(const std::string& name, std::string text);

    /// @return false after the last line. The view stays valid as long as this object.
    bool NextLine(std::string_view& line);

    const std::string& Path() const { return m_path; }
    /// Number of the line handed out last; the first is 1.
    int LineNumber() const { return m_lineNumber; }

private:
    void CheckIsText();

    std::string m_path;
    std::string m_text;
    std::size_t m_position = 0;
    std::size_t m_lineFeed = 0;   // the first one from m_position on, once it has been looked for
    int m_lineNumber = 0;
};

/// A field as it may stand in a message: quoted, cut to a readable length, control characters replaced.
std::string Quoted(std::string_view text);
/// The same in full, for a name that an option takes.
std::string QuotedName(std::string_view name);

/// What to say behind a list that names only the first so many: " and 7 more", or nothing.
std::string AndMore(std::size_t count, std::size_t shown);

/// Whether a text begins with another.
bool StartsWith(std::string_view text, std::string_view start);

/// The text without blanks, tabs and line ends at both ends.
std::string_view Trimmed(std::string_view text);

}   // namespace qsvtin

#endif
