#ifndef QSVTIN_EXCHANGE_XML_FILE_H
#define QSVTIN_EXCHANGE_XML_FILE_H

#include <pugixml.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace qsvtin {

/// A parsed XML file that knows which line an element stands in. Elements go by their local names, whatever the
/// prefix of their namespace.
class XmlFile
{
public:
    /// @throws Failure when it cannot be read or is not well-formed
    explicit XmlFile(const std::string& path);

    pugi::xml_node Root() const { return m_document.document_element(); }

    /// The line of an element; 0 when the encoding does not let us know. It looks at the bytes between this element
    /// and the one asked for before.
    int LineOf(pugi::xml_node node) { return LineAt(node.offset_debug()); }

    /// The text of an element, put together where a comment cuts it up. Valid until the next call.
    std::string_view TextOf(pugi::xml_node node);

    /// @throws Failure with the file and the line of the element in front of what is said
    [[noreturn]] void Fail(pugi::xml_node node, const std::string& what)
    {
        FailAt(node.offset_debug(), what);
    }

private:
    int LineAt(std::ptrdiff_t offset);
    [[noreturn]] void FailAt(std::ptrdiff_t offset, const std::string& what);

    std::string m_path;
    std::string m_bytes;
    pugi::xml_document m_document;
    pugi::xml_encoding m_encoding = pugi::encoding_utf8;
    std::string m_joined;

    // How far lines are counted: the next byte, where the parser sees it in its UTF-8, and its line.
    std::size_t m_next = 0;
    std::ptrdiff_t m_offset = 0;
    int m_line = 1;
};

/// An element's name without the prefix of its namespace.
std::string_view LocalName(pugi::xml_node node);

/// The first child with this local name, or a node that is none.
pugi::xml_node ChildOf(pugi::xml_node parent, std::string_view name);

/// Visits the children with this local name.
template <class Visit>
void ForEachChild(pugi::xml_node parent, std::string_view name, Visit visit)
{
    for (const pugi::xml_node child : parent.children()) {
        if (LocalName(child) == name) visit(child);
    }
}

}   // namespace qsvtin

#endif
