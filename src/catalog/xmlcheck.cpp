#include "xmlcheck.h"

#include <QString>
#include <QUtf8StringView>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

using namespace std::string_view_literals;

namespace {

enum CharClass : std::uint8_t {
    NameStart = 1,
    NamePart = 2,
    Blank = 4,
    PlainInDoubleQuotes = 8, ///< stands for itself in a value between these quotes
    PlainInSingleQuotes = 16,
};

constexpr std::array<std::uint8_t, 256> MakeCharClasses()
{
    std::array<std::uint8_t, 256> classes{};
    const auto add = [&classes](std::string_view chars, int charClass) {
        for (const char c : chars)
            classes[static_cast<unsigned char>(c)] |= static_cast<std::uint8_t>(charClass);
    };
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_:"sv, NameStart | NamePart);
    add("0123456789-."sv, NamePart);
    add(" \t\r\n"sv, Blank);
    for (size_t c = 0; c < classes.size(); ++c) {
        if (c >= 0x80)
            classes[c] = NameStart | NamePart;
        if (c != '<' && c != '&' && c != '"')
            classes[c] |= PlainInDoubleQuotes;
        if (c != '<' && c != '&' && c != '\'')
            classes[c] |= PlainInSingleQuotes;
    }
    return classes;
}

constexpr auto kCharClasses = MakeCharClasses();

bool Is(char c, CharClass charClass)
{
    return (kCharClasses[static_cast<unsigned char>(c)] & charClass) != 0;
}

bool IsBlank(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return Is(c, Blank); });
}

bool HasForbiddenControl(std::string_view text)
{
    // Blocks of a fixed size become vector instructions.
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
        const auto last = static_cast<unsigned char>(text[at + kLead.size()]);
        if (last >= 0xBE)
            return true;
    }
    return false;
}

/// Reads the markup once from start to end. Every step gives false when the text is not well-formed there.
class MarkupReader
{
public:
    explicit MarkupReader(std::string_view text) : m_at(text.data()), m_end(text.data() + text.size()) {}

    bool ReadDocument();
    bool IsMixed() const { return m_isMixed; }

private:
    std::string_view Rest() const { return {m_at, static_cast<size_t>(m_end - m_at)}; }
    bool AtEnd() const { return m_at == m_end; }
    bool InField() const { return m_depth > 2 || (m_depth == 2 && !m_inItem); }
    bool Take(std::string_view expected);
    bool SkipBehind(std::string_view end);
    const char *EndOf(const char *at, CharClass run) const;
    bool SkipBlanks();
    bool SkipName();

    bool ReadDeclaration();
    bool ReadText();
    bool ReadMarkup();
    bool ReadComment();
    bool ReadInstruction();
    bool ReadDocumentType();
    bool ReadStartTag();
    void OpenElement(std::string_view name);
    bool ReadEndTag();
    bool ReadAttributes();
    bool ReadValue();
    bool ReadReference();
    bool ReadCharacterReference();
    bool HasRepeatedName();

    const char *m_at;
    const char *m_end;
    int m_depth = 0;
    bool m_isMixed = false;
    bool m_inItem = false; ///< whether the element open at depth 2 is a listing
    bool m_afterStartTag = false;
    bool m_hasElement = false;
    bool m_hasDocumentType = false;
    std::vector<std::string_view> m_names; ///< of the attributes of one element
};

bool MarkupReader::ReadDocument()
{
    if (!ReadDeclaration())
        return false;
    while (!AtEnd()) {
        if (!ReadText() || (!AtEnd() && !ReadMarkup()))
            return false;
    }
    return m_hasElement && m_depth == 0;
}

bool MarkupReader::Take(std::string_view expected)
{
    if (!Rest().starts_with(expected))
        return false;
    m_at += expected.size();
    return true;
}

bool MarkupReader::SkipBehind(std::string_view end)
{
    const size_t found = Rest().find(end);
    if (found == std::string_view::npos)
        return false;
    m_at += found + end.size();
    return true;
}

/// The end of a run of characters of one class.
const char *MarkupReader::EndOf(const char *at, CharClass run) const
{
    const char *const end = m_end;
    while (at != end && Is(*at, run))
        ++at;
    return at;
}

bool MarkupReader::SkipBlanks()
{
    const char *const start = m_at;
    m_at = EndOf(start, Blank);
    return m_at != start;
}

bool MarkupReader::SkipName()
{
    if (AtEnd() || !Is(*m_at, NameStart))
        return false;
    m_at = EndOf(m_at, NamePart);
    return true;
}

bool MarkupReader::ReadDeclaration()
{
    constexpr auto kStart = "<?xml"sv;
    if (!Rest().starts_with(kStart) || Rest().size() == kStart.size() || !Is(m_at[kStart.size()], Blank))
        return true;
    m_at += kStart.size();
    return ReadAttributes() && !m_names.empty() && Take("?>"sv);
}

bool MarkupReader::ReadText()
{
    const std::string_view rest = Rest();
    const std::string_view text = rest.substr(0, rest.find('<'));
    const char *const end = m_at + text.size();
    if (m_depth == 0) {
        m_at = end;
        return IsBlank(text);
    }
    if (m_afterStartTag && !text.empty() && !InField() && rest.substr(text.size()).starts_with("</"sv))
        m_isMixed = true;
    while (const void *reference = std::memchr(m_at, '&', static_cast<size_t>(end - m_at))) {
        m_at = static_cast<const char *>(reference);
        if (!ReadReference())
            return false;
    }
    m_at = end;
    return true;
}

bool MarkupReader::ReadMarkup()
{
    const std::string_view rest = Rest();
    m_afterStartTag = false;
    if (rest.starts_with("</"sv))
        return ReadEndTag();
    m_isMixed = m_isMixed || InField();
    if (rest.starts_with("<?"sv))
        return ReadInstruction();
    if (!rest.starts_with("<!"sv))
        return ReadStartTag();
    if (Take("<!--"sv))
        return ReadComment();
    if (Take("<![CDATA["sv))
        return m_depth > 0 && SkipBehind("]]>"sv);
    return ReadDocumentType();
}

bool MarkupReader::ReadComment()
{
    return SkipBehind("--"sv) && Take(">"sv);
}

bool MarkupReader::ReadInstruction()
{
    m_at += 2;
    const char *const start = m_at;
    if (!SkipName())
        return false;
    const QLatin1StringView target(start, m_at - start);
    if (target.compare(QLatin1StringView("xml"), Qt::CaseInsensitive) == 0)
        return false;
    return Take("?>"sv) || (SkipBlanks() && SkipBehind("?>"sv));
}

bool MarkupReader::ReadDocumentType()
{
    if (m_hasElement || m_hasDocumentType || !Take("<!DOCTYPE"sv))
        return false;
    m_hasDocumentType = true;
    for (int nesting = 1; nesting > 0;) {
        const size_t next = Rest().find_first_of("<>\"'"sv);
        if (next == std::string_view::npos)
            return false;
        m_at += next;
        bool whole = true;
        if (Take("<!--"sv)) {
            whole = ReadComment();
        } else if (Take("<?"sv)) {
            whole = SkipBehind("?>"sv);
        } else if (Take("<!"sv)) {
            whole = !Take("["sv); // a conditional section, which only an external document type may have
            ++nesting;
        } else if (Take(">"sv)) {
            --nesting;
        } else {
            const char quote = *m_at++;
            whole = quote != '<' && SkipBehind({&quote, 1});
        }
        if (!whole)
            return false;
    }
    return true;
}

bool MarkupReader::ReadStartTag()
{
    const char *const name = ++m_at;
    if ((m_depth == 0 && m_hasElement) || !SkipName())
        return false;
    const std::string_view element(name, static_cast<size_t>(m_at - name));
    m_hasElement = true;
    if (!ReadAttributes())
        return false;
    if (Take("/>"sv))
        return true;
    OpenElement(element);
    return Take(">"sv) && m_depth <= kMaxXmlDepth;
}

void MarkupReader::OpenElement(std::string_view name)
{
    ++m_depth;
    m_afterStartTag = true;
    if (m_depth == 2)
        m_inItem = name == "Item"sv;
}

bool MarkupReader::ReadEndTag()
{
    return SkipBehind(">"sv) && --m_depth >= 0;
}

bool MarkupReader::ReadAttributes()
{
    // A bit for each name tells quickly that none comes twice; those of a listing's own attributes differ.
    std::uint64_t seen = 0;
    bool mayRepeat = false;
    m_names.clear();
    while (true) {
        const bool hasBlank = SkipBlanks();
        const char *const start = m_at;
        if (!SkipName())
            return !mayRepeat || !HasRepeatedName();
        const std::string_view name(start, static_cast<size_t>(m_at - start));
        SkipBlanks();
        if (!hasBlank || !Take("="sv))
            return false;
        SkipBlanks();
        if (!ReadValue())
            return false;
        const int hash = static_cast<unsigned char>(name.front()) + static_cast<unsigned char>(name.back());
        const std::uint64_t bit = std::uint64_t{1} << (hash % 64);
        mayRepeat = mayRepeat || (seen & bit) != 0;
        seen |= bit;
        m_names.push_back(name);
    }
}

bool MarkupReader::ReadValue()
{
    if (AtEnd() || (*m_at != '"' && *m_at != '\''))
        return false;
    const char quote = *m_at++;
    const CharClass plain = quote == '"' ? PlainInDoubleQuotes : PlainInSingleQuotes;
    while (true) {
        m_at = EndOf(m_at, plain);
        if (AtEnd() || *m_at == '<')
            return false;
        if (*m_at == quote) {
            ++m_at;
            return true;
        }
        if (!ReadReference())
            return false;
    }
}

bool MarkupReader::ReadReference()
{
    ++m_at;
    if (Take("#"sv))
        return ReadCharacterReference();
    return Take("amp;"sv) || Take("lt;"sv) || Take("gt;"sv) || Take("quot;"sv) || Take("apos;"sv);
}

bool MarkupReader::ReadCharacterReference()
{
    const int base = Take("x"sv) ? 16 : 10;
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(m_at, m_end, value, base);
    m_at = end;
    return error == std::errc() && Take(";"sv) && IsXmlCharacter(value);
}

bool MarkupReader::HasRepeatedName()
{
    constexpr size_t kFew = 32;
    if (m_names.size() > kFew) {
        std::ranges::sort(m_names);
        return std::ranges::adjacent_find(m_names) != m_names.end();
    }
    for (auto name = m_names.begin(); name != m_names.end(); ++name) {
        if (std::find(m_names.begin(), name, *name) != name)
            return true;
    }
    return false;
}

} // namespace

XmlForm CheckXml(QByteArrayView utf8)
{
    const std::string_view text(utf8.data(), static_cast<size_t>(utf8.size()));
    MarkupReader reader(text);
    if (!QUtf8StringView(utf8).isValidUtf8() || HasForbiddenControl(text) || HasNonCharacter(text) ||
        !reader.ReadDocument())
        return XmlForm::Malformed;
    return reader.IsMixed() ? XmlForm::Mixed : XmlForm::Simple;
}
