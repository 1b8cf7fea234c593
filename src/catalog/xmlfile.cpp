#include "xmlfile.h"

#include "contentdigest.h"
#include "fields.h"
#include "xmlcheck.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

namespace {

struct ReleaseBuffer
{
    void operator()(char *bytes) const { pugi::get_memory_deallocation_function()(bytes); }
};

/// Memory of the parser's own kind: it can take it over, so that a file is in memory once.
struct Buffer
{
    std::unique_ptr<char, ReleaseBuffer> bytes;
    size_t size = 0;

    QByteArrayView View() const { return {bytes.get(), static_cast<qsizetype>(size)}; }
};

Buffer MakeBuffer(size_t size)
{
    Buffer buffer;
    buffer.bytes.reset(static_cast<char *>(pugi::get_memory_allocation_function()(size)));
    buffer.size = size;
    if (!buffer.bytes)
        throw std::bad_alloc();
    return buffer;
}

Buffer CopyOf(QByteArrayView bytes)
{
    Buffer buffer = MakeBuffer(static_cast<size_t>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), buffer.bytes.get());
    return buffer;
}

// Opening a pipe would wait for its other end, so only ordinary files are opened.
std::optional<Buffer> ReadFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || file.size() == 0)
        return std::nullopt;
    Buffer buffer = MakeBuffer(static_cast<size_t>(file.size()));
    if (file.read(buffer.bytes.get(), buffer.View().size()) != buffer.View().size())
        return std::nullopt;
    return buffer;
}

char *FindReturn(char *from, char *end)
{
    void *const found = std::memchr(from, '\r', static_cast<size_t>(end - from));
    return found ? static_cast<char *>(found) : end;
}

// CR LF and CR mean LF everywhere in XML; the parser would leave them in instructions and document types.
void UnifyLineEnds(Buffer &buffer)
{
    char *const start = buffer.bytes.get();
    char *const end = start + buffer.size;
    char *from = FindReturn(start, end);
    char *to = from;
    while (from != end) {
        char *const next = FindReturn(from + 1, end);
        *to++ = '\n';
        from += next - from > 1 && from[1] == '\n' ? 2 : 1;
        std::memmove(to, from, static_cast<size_t>(next - from));
        to += next - from;
        from = next;
    }
    buffer.size = static_cast<size_t>(to - start);
}

bool IsText(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool IsBlankText(pugi::xml_node node)
{
    const std::string_view text = node.value();
    return node.type() == pugi::node_pcdata && text.find_first_not_of(" \t\n") == text.npos;
}

void RemoveLayout(pugi::xml_node element)
{
    for (pugi::xml_node child = element.first_child(); child;) {
        const pugi::xml_node next = child.next_sibling();
        if (IsBlankText(child))
            element.remove_child(child);
        child = next;
    }
}

void Require(pugi::xml_node made)
{
    if (!made)
        throw std::bad_alloc();
}

// Inside a field white space is data. The writer adds none beside text, so an empty text goes wherever a field has none
// around something else.
void KeepWhiteSpace(pugi::xml_node field)
{
    for (pugi::xml_node child = field.first_child(); child; child = child.next_sibling()) {
        if (IsText(child))
            continue;
        if (!IsText(child.previous_sibling()))
            Require(field.insert_child_before(pugi::node_pcdata, child));
        if (!child.next_sibling())
            Require(field.append_child(pugi::node_pcdata));
        KeepWhiteSpace(child);
    }
}

void SettleWhiteSpace(pugi::xml_node root)
{
    RemoveLayout(root);
    for (const pugi::xml_node child : root.children()) {
        if (std::strcmp(child.name(), Element::kItem) != 0) {
            KeepWhiteSpace(child);
            continue;
        }
        RemoveLayout(child);
        for (const pugi::xml_node field : child.children())
            KeepWhiteSpace(field);
    }
}

constexpr unsigned kParsing = (pugi::parse_default & ~pugi::parse_eol) | pugi::parse_declaration | pugi::parse_doctype |
                              pugi::parse_comments | pugi::parse_pi;

std::optional<XmlFile> ParseUtf8(Buffer buffer, qsizetype markSize, const XmlEncoding &encoding)
{
    UnifyLineEnds(buffer);
    const XmlForm form = CheckXml(buffer.View().sliced(markSize));
    if (form == XmlForm::Malformed)
        return std::nullopt;
    XmlFile file;
    file.encoding = encoding;
    const bool isMixed = form == XmlForm::Mixed;
    const unsigned options = kParsing | (isMixed ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
    const size_t size = buffer.size;
    if (!file.document->load_buffer_inplace_own(buffer.bytes.release(), size, options, pugi::encoding_utf8))
        return std::nullopt;
    if (isMixed)
        SettleWhiteSpace(file.document->document_element());
    return file;
}

std::optional<XmlFile> Parse(Buffer buffer)
{
    constexpr qsizetype kHead = 1024; // a declaration ends within it
    const QByteArrayView bytes = buffer.View();
    const auto encoding = DetectXmlEncoding(bytes.first(std::min(kHead, bytes.size())));
    if (!encoding)
        return std::nullopt;
    if (encoding->isUtf8())
        return ParseUtf8(std::move(buffer), encoding->byteOrderMark ? 3 : 0, *encoding);
    const auto utf8 = DecodeXml(bytes, *encoding);
    return utf8 ? ParseUtf8(CopyOf(*utf8), 0, *encoding) : std::nullopt;
}

} // namespace

std::optional<XmlFile> LoadXml(const QString &path)
{
    try {
        auto buffer = ReadFile(path);
        if (!buffer)
            return std::nullopt;
        const quint64 digest = ContentDigest(buffer->View());
        auto file = Parse(std::move(*buffer));
        if (file)
            file->digest = digest;
        return file;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

std::optional<XmlFile> ParseXml(QByteArrayView utf8)
{
    return ParseUtf8(CopyOf(utf8), 0, {});
}
