#include "xmlcheck.h"

#include "documenttype.h"
#include "fields.h"
#include "xmlcursor.h"

#include <QRegularExpression>
#include <QUtf8StringView>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

bool HasForbiddenControl(std::string_view text)
{
    // Parts of a fixed size become vector instructions.
    constexpr size_t kBlock = 64;
    const auto forbidden = [](char c) {
        return static_cast<unsigned char>(
            (static_cast<unsigned char>(c) < 0x20) & (c != '\t') & (c != '\n') & (c != '\r'));
    };
    size_t at = 0;
    for (; at + kBlock <= text.size(); at += kBlock) {
        unsigned char found = 0;
        for (size_t i = 0; i < kBlock; ++i)
            found |= forbidden(text[at + i]);
        if (found != 0)
            return true;
    }
    return std::any_of(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), forbidden);
}

bool HasNonCharacter(std::string_view text)
{
    constexpr auto kLead = "\xEF\xBF"sv; // of U+FFC0 to U+FFFF
    for (size_t at = text.find(kLead); at != text.npos; at = text.find(kLead, at + kLead.size())) {
        const size_t last = at + kLead.size();
        if (last < text.size() && static_cast<unsigned char>(text[last]) >= 0xBE)
            return true;
    }
    return false;
}

/// Whether all characters are allowed, however they are arranged.
bool HasAllowedCharacters(std::string_view text)
{
    // Three looks at a part that is still in the processor's cache are quicker than three at the whole.
    constexpr size_t kPart = size_t{1} << 15;
    const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    while (!text.empty()) {
        size_t size = std::min(kPart, text.size());
        while (size < text.size() && continues(text[size]))
            ++size;
        const std::string_view part = text.substr(0, size);
        if (HasForbiddenControl(part) || HasNonCharacter(part) ||
            !QUtf8StringView(part.data(), std::ssize(part)).isValidUtf8())
            return false;
        text.remove_prefix(size);
    }
    return true;
}

/// Reads the markup once from start to end. Every step returns false when the text is not well-formed there.
class MarkupReader
{
public:
    explicit MarkupReader(std::string_view text) : m_cursor(text) {}

    bool ReadDocument();
    bool IsMixed() const { return m_isMixed; }

private:
    bool InField() const { return m_depth > 2 || (m_depth == 2 && !m_inItem); }

    bool ReadDeclaration();
    bool ReadText();
    bool ReadMarkup();
    bool ReadDocumentType();
    bool ReadStartTag();
    void OpenElement(std::string_view name);
    bool ReadEndTag();

    XmlCursor m_cursor;
    int m_depth = 0;
    bool m_isMixed = false;
    bool m_inItem = false; ///< whether the element open at depth 2 is a listing
    bool m_afterStartTag = false;
    bool m_hasElement = false;
    bool m_hasDocumentType = false;
};

bool MarkupReader::ReadDocument()
{
    if (!ReadDeclaration())
        return false;
    while (!m_cursor.AtEnd()) {
        if (!ReadText() || (!m_cursor.AtEnd() && !ReadMarkup()))
            return false;
    }
    return m_hasElement && m_depth == 0;
}

bool MarkupReader::ReadDeclaration()
{
    static const QRegularExpression form(
        uR"(^<\?xml\s+version\s*=\s*(["'])1\.[0-9]+\1(\s+encoding\s*=\s*(["'])[A-Za-z][A-Za-z0-9._-]*\3)?)"
        uR"((\s+standalone\s*=\s*(["'])(yes|no)\5)?\s*\?>$)"_s);
    constexpr auto kStart = "<?xml"sv;
    const std::string_view rest = m_cursor.Rest();
    if (!rest.starts_with(kStart) || rest.find_first_of(" \t\n"sv) != kStart.size())
        return true;
    const bool ends = m_cursor.SkipBehind("?>"sv);
    const std::string_view declaration = rest.substr(0, rest.size() - m_cursor.Rest().size());
    return ends && form.match(QString::fromUtf8(declaration)).hasMatch();
}

bool MarkupReader::ReadText()
{
    const std::string_view rest = m_cursor.Rest();
    const std::string_view text = rest.substr(0, rest.find('<'));
    m_cursor.Skip(text.size());
    if (!InField()) {
        const bool isBlank = text.find_first_not_of(" \t\r\n"sv) == text.npos;
        if (m_depth == 0)
            return isBlank;
        const bool isAlone = m_afterStartTag && !text.empty() && m_cursor.Rest().starts_with("</"sv);
        m_isMixed = m_isMixed || !isBlank || isAlone;
    }
    return HasOnlyReferences(text) && text.find("]]>"sv) == text.npos;
}

bool MarkupReader::ReadMarkup()
{
    const std::string_view rest = m_cursor.Rest();
    m_isMixed = m_isMixed || (InField() && !rest.starts_with("</"sv));
    m_afterStartTag = false;
    if (rest.starts_with("</"sv))
        return ReadEndTag();
    if (m_cursor.Take("<?"sv))
        return m_cursor.TakeInstruction();
    if (!rest.starts_with("<!"sv))
        return ReadStartTag();
    if (m_cursor.Take("<!--"sv))
        return m_cursor.TakeComment();
    if (m_cursor.Take("<![CDATA["sv))
        return m_depth > 0 && m_cursor.SkipBehind("]]>"sv);
    return ReadDocumentType();
}

bool MarkupReader::ReadDocumentType()
{
    if (m_hasElement || m_hasDocumentType || !m_cursor.Take("<!DOCTYPE"sv))
        return false;
    m_hasDocumentType = true;
    return TakeDocumentType(m_cursor);
}

bool MarkupReader::ReadStartTag()
{
    m_cursor.Skip(1);
    const std::string_view name = m_cursor.TakeName();
    if (name.empty() || (m_depth == 0 && m_hasElement) || !m_cursor.TakeAttributes())
        return false;
    m_hasElement = true;
    if (m_cursor.Take("/>"sv))
        return true;
    OpenElement(name);
    return m_cursor.Take(">"sv) && m_depth <= kMaxXmlDepth;
}

void MarkupReader::OpenElement(std::string_view name)
{
    ++m_depth;
    m_afterStartTag = true;
    if (m_depth == 2)
        m_inItem = name == Element::kItem;
}

bool MarkupReader::ReadEndTag()
{
    return m_cursor.SkipBehind('>') && --m_depth >= 0;
}

} // namespace

XmlForm CheckXml(QByteArrayView utf8)
{
    const std::string_view text(utf8.data(), static_cast<size_t>(utf8.size()));
    MarkupReader reader(text);
    if (!HasAllowedCharacters(text) || !reader.ReadDocument())
        return XmlForm::Malformed;
    return reader.IsMixed() ? XmlForm::Mixed : XmlForm::Simple;
}
