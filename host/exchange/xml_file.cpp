#include "host/exchange/xml_file.h"

#include "host/failure.h"
#include "host/input/whole_file.h"

namespace qsvtin {

XmlFile::XmlFile(const std::string& path) : m_path(path), m_bytes(ReadRegularFile(path))
{
    // Text stays in the node of its element: half the nodes of a mesh.
    const auto parsed = m_document.load_buffer(m_bytes.data(), m_bytes.size(),
                                               pugi::parse_default | pugi::parse_embed_pcdata);
    m_encoding = parsed.encoding;
    if (!parsed) {
        FailAt(parsed.offset, std::string("no well-formed XML (") + parsed.description() +
                                  "); it is cut short or damaged, export it again");
    }
}

std::string_view XmlFile::TextOf(pugi::xml_node node)
{
    const char* const first = node.child_value();
    m_joined.clear();
    for (const pugi::xml_node child : node.children()) {
        const bool isText = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        if (!isText || child.value() == first) continue;
        if (m_joined.empty()) m_joined = first;
        m_joined.append(" ").append(child.value());
    }
    return m_joined.empty() ? std::string_view(first) : m_joined;
}

int XmlFile::LineAt(std::ptrdiff_t offset)
{
    const bool isLatin1 = m_encoding == pugi::encoding_latin1;
    if (offset < 0 || (!isLatin1 && m_encoding != pugi::encoding_utf8)) return 0;
    const auto widthOf = [&](char c) { return isLatin1 && static_cast<unsigned char>(c) >= 0x80 ? 2 : 1; };
    while (m_offset < offset && m_next < m_bytes.size()) {
        const char c = m_bytes[m_next++];
        if (c == '\n') ++m_line;
        m_offset += widthOf(c);
    }
    while (m_offset > offset && m_next > 0) {
        const char c = m_bytes[--m_next];
        if (c == '\n') --m_line;
        m_offset -= widthOf(c);
    }
    return m_line;
}

void XmlFile::FailAt(std::ptrdiff_t offset, const std::string& what)
{
    const int line = LineAt(offset);
    throw Failure(m_path + (line > 0 ? ":" + std::to_string(line) : "") + ": " + what);
}

std::string_view LocalName(pugi::xml_node node)
{
    const std::string_view name = node.name();
    return name.substr(name.find(':') + 1);   // npos + 1 is 0
}

pugi::xml_node ChildOf(pugi::xml_node parent, std::string_view name)
{
    return parent.find_child([&](pugi::xml_node child) { return LocalName(child) == name; });
}

}   // namespace qsvtin
