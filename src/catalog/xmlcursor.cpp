#include "xmlcursor.h"

#include "xmlcheck.h"

#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

using namespace std::string_view_literals;

namespace {

enum CharClass : std::uint8_t { NameStart = 1, NamePart = 2, Blank = 4 };

constexpr std::array<std::uint8_t, 256> MakeCharClasses()
{
    std::array<std::uint8_t, 256> classes{};
    const auto add = [&classes](std::string_view chars, int charClass) {
        for (const char c : chars)
            classes[static_cast<unsigned char>(c)] |= static_cast<std::uint8_t>(charClass);
    };
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_:"sv, NameStart | NamePart);
    add("0123456789-."sv, NamePart);
    add(" \t\n\r"sv, Blank);
    for (size_t c = 0x80; c < classes.size(); ++c)
        classes[c] = NameStart | NamePart;
    return classes;
}

constexpr auto kCharClasses = MakeCharClasses();

bool Is(char c, CharClass charClass)
{
    return (kCharClasses[static_cast<unsigned char>(c)] & charClass) != 0;
}

const char *EndOfRun(const char *at, const char *end, CharClass charClass)
{
    while (at != end && Is(*at, charClass))
        ++at;
    return at;
}

// What stands behind a "#".
bool IsCharacterReference(std::string_view text)
{
    const bool isHex = text.starts_with('x');
    const char *const end = text.data() + text.size();
    std::uint32_t value = 0;
    const auto [last, error] = std::from_chars(text.data() + (isHex ? 1 : 0), end, value, isHex ? 16 : 10);
    return error == std::errc() && last != end && *last == ';' && IsXmlCharacter(value);
}

// What stands behind a "&".
bool IsReference(std::string_view text, bool toAnyEntity)
{
    if (text.starts_with('#'))
        return IsCharacterReference(text.substr(1));
    if (toAnyEntity) {
        XmlCursor cursor(text);
        return !cursor.TakeName().empty() && cursor.Take(";"sv);
    }
    constexpr std::array kEntities = {"amp;"sv, "lt;"sv, "gt;"sv, "quot;"sv, "apos;"sv};
    return std::ranges::any_of(kEntities, [text](std::string_view entity) { return text.starts_with(entity); });
}

} // namespace

bool HasOnlyReferences(std::string_view text, bool toAnyEntity)
{
    for (size_t next = text.find('&'); next != text.npos; next = text.find('&', next + 1)) {
        if (!IsReference(text.substr(next + 1), toAnyEntity))
            return false;
    }
    return true;
}

bool XmlCursor::Take(std::string_view expected)
{
    if (!Rest().starts_with(expected))
        return false;
    m_at += expected.size();
    return true;
}

bool XmlCursor::SkipBehind(std::string_view end)
{
    const size_t found = Rest().find(end);
    if (found == std::string_view::npos)
        return false;
    m_at += found + end.size();
    return true;
}

bool XmlCursor::SkipBehind(char end)
{
    const size_t found = Rest().find(end);
    if (found == std::string_view::npos)
        return false;
    m_at += found + 1;
    return true;
}

bool XmlCursor::SkipBlanks()
{
    const char *const start = m_at;
    m_at = EndOfRun(start, m_end, Blank);
    return m_at != start;
}

std::string_view XmlCursor::TakeName()
{
    return AtEnd() || !Is(*m_at, NameStart) ? std::string_view() : TakeToken();
}

std::string_view XmlCursor::TakeToken()
{
    const char *const start = m_at;
    m_at = EndOfRun(start, m_end, NamePart);
    return {start, static_cast<size_t>(m_at - start)};
}

std::optional<std::string_view> XmlCursor::TakeQuoted()
{
    if (AtEnd() || (*m_at != '"' && *m_at != '\''))
        return std::nullopt;
    const char quote = *m_at++;
    const char *const start = m_at;
    if (!SkipBehind(quote))
        return std::nullopt;
    return std::string_view(start, static_cast<size_t>(m_at - start) - 1);
}

bool XmlCursor::TakeComment()
{
    return SkipBehind("--"sv) && Take(">"sv);
}

bool XmlCursor::TakeInstruction()
{
    const std::string_view target = TakeName();
    if (target.empty() || QByteArrayView(target).compare("xml", Qt::CaseInsensitive) == 0)
        return false;
    return Take("?>"sv) || (SkipBlanks() && SkipBehind("?>"sv));
}

bool XmlCursor::TakeAttributes()
{
    // A bit for each name tells quickly that none comes twice; those of a listing's own attributes differ.
    std::uint64_t seen = 0;
    bool mayRepeat = false;
    m_names.clear();
    const char *const start = m_at;
    while (true) {
        const bool hasBlank = SkipBlanks();
        const std::string_view name = TakeName();
        if (name.empty())
            break;
        if (!hasBlank || !TakeValue())
            return false;
        const int hash = static_cast<unsigned char>(name.front()) + static_cast<unsigned char>(name.back());
        const std::uint64_t bit = std::uint64_t{1} << (hash % 64);
        mayRepeat = mayRepeat || (seen & bit) != 0;
        seen |= bit;
        m_names.push_back(name);
    }
    const std::string_view all(start, static_cast<size_t>(m_at - start));
    return all.find('<') == all.npos && HasOnlyReferences(all) && !(mayRepeat && HasRepeatedName());
}

bool XmlCursor::TakeValue()
{
    SkipBlanks();
    if (AtEnd() || *m_at++ != '=')
        return false;
    SkipBlanks();
    return TakeQuoted().has_value();
}

bool XmlCursor::HasRepeatedName()
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
