#include "documenttype.h"

#include "xmlcheck.h"
#include "xmlcursor.h"

#include <algorithm>
#include <array>

using namespace std::string_view_literals;

namespace {

bool TakeBlankAndName(XmlCursor &at)
{
    return at.SkipBlanks() && !at.TakeName().empty();
}

bool IsPublicId(std::string_view text)
{
    constexpr auto kAllowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-'()+,./:=?;!*#@$_% \n"sv;
    return text.find_first_not_of(kAllowed) == text.npos;
}

// A notation may have a public identifier alone.
bool TakeExternalId(XmlCursor &at, bool isNotation = false)
{
    if (at.Take("PUBLIC"sv)) {
        const auto publicId = at.SkipBlanks() ? at.TakeQuoted() : std::nullopt;
        if (!publicId || !IsPublicId(*publicId))
            return false;
        const bool hasBlank = at.SkipBlanks();
        return (isNotation && at.Rest().starts_with('>')) || (hasBlank && at.TakeQuoted());
    }
    return at.Take("SYSTEM"sv) && at.SkipBlanks() && at.TakeQuoted();
}

void SkipOccurrence(XmlCursor &at)
{
    if (!at.Take("?"sv) && !at.Take("*"sv))
        at.Take("+"sv);
}

// Names and groups with one kind of separator, behind the "(".
bool TakeGroup(XmlCursor &at, int depth)
{
    std::string_view separator;
    do {
        at.SkipBlanks();
        const bool isGroup = at.Take("("sv);
        if (isGroup ? depth == kMaxXmlDepth || !TakeGroup(at, depth + 1) : at.TakeName().empty())
            return false;
        SkipOccurrence(at);
        at.SkipBlanks();
        if (separator.empty())
            separator = at.Rest().starts_with('|') ? "|"sv : ","sv;
    } while (at.Take(separator));
    return at.Take(")"sv);
}

// Behind the "(#PCDATA".
bool TakeMixed(XmlCursor &at)
{
    at.SkipBlanks();
    const bool isAlone = at.Rest().starts_with(')');
    while (at.Take("|"sv)) {
        at.SkipBlanks();
        if (at.TakeName().empty())
            return false;
        at.SkipBlanks();
    }
    return at.Take(")*"sv) || (isAlone && at.Take(")"sv));
}

bool TakeElement(XmlCursor &at)
{
    if (!TakeBlankAndName(at) || !at.SkipBlanks())
        return false;
    if (!at.Take("("sv)) {
        const std::string_view word = at.TakeName();
        return word == "EMPTY"sv || word == "ANY"sv;
    }
    at.SkipBlanks();
    if (at.Take("#PCDATA"sv))
        return TakeMixed(at);
    const bool isWhole = TakeGroup(at, 1);
    SkipOccurrence(at);
    return isWhole;
}

// Names or tokens, behind the "(".
bool TakeChoice(XmlCursor &at, bool ofNames)
{
    do {
        at.SkipBlanks();
        if ((ofNames ? at.TakeName() : at.TakeToken()).empty())
            return false;
        at.SkipBlanks();
    } while (at.Take("|"sv));
    return at.Take(")"sv);
}

bool TakeAttributeType(XmlCursor &at)
{
    constexpr std::array kTypes = {"CDATA"sv,  "ID"sv,       "IDREF"sv,   "IDREFS"sv,
                                   "ENTITY"sv, "ENTITIES"sv, "NMTOKEN"sv, "NMTOKENS"sv};
    if (at.Take("("sv))
        return TakeChoice(at, false);
    const std::string_view type = at.TakeName();
    if (type == "NOTATION"sv)
        return at.SkipBlanks() && at.Take("("sv) && TakeChoice(at, true);
    return std::ranges::find(kTypes, type) != kTypes.end();
}

bool TakeDefault(XmlCursor &at)
{
    if (at.Take("#REQUIRED"sv) || at.Take("#IMPLIED"sv))
        return true;
    if (at.Take("#FIXED"sv) && !at.SkipBlanks())
        return false;
    const auto value = at.TakeQuoted();
    return value && value->find('<') == value->npos && HasOnlyReferences(*value, true);
}

bool TakeAttributeList(XmlCursor &at)
{
    if (!TakeBlankAndName(at))
        return false;
    while (at.SkipBlanks() && !at.Rest().starts_with('>')) {
        if (at.TakeName().empty() || !at.SkipBlanks() || !TakeAttributeType(at) || !at.SkipBlanks() || !TakeDefault(at))
            return false;
    }
    return true;
}

bool TakeEntity(XmlCursor &at)
{
    if (!at.SkipBlanks())
        return false;
    const bool isParameter = at.Take("%"sv);
    if ((isParameter && !at.SkipBlanks()) || at.TakeName().empty() || !at.SkipBlanks())
        return false;
    if (const auto value = at.TakeQuoted())
        return value->find('%') == value->npos && HasOnlyReferences(*value, true);
    if (!TakeExternalId(at))
        return false;
    const bool hasBlank = at.SkipBlanks();
    return !at.Take("NDATA"sv) || (hasBlank && !isParameter && TakeBlankAndName(at));
}

bool TakeNotation(XmlCursor &at)
{
    return TakeBlankAndName(at) && at.SkipBlanks() && TakeExternalId(at, true);
}

bool TakeDeclaration(XmlCursor &at)
{
    struct Declaration
    {
        std::string_view start;
        bool (*take)(XmlCursor &at);
    };
    constexpr std::array<Declaration, 4> kDeclarations = {
        {{"<!ELEMENT"sv, TakeElement},
         {"<!ATTLIST"sv, TakeAttributeList},
         {"<!ENTITY"sv, TakeEntity},
         {"<!NOTATION"sv, TakeNotation}}};
    for (const auto &[start, take] : kDeclarations) {
        if (!at.Take(start))
            continue;
        const bool isWhole = take(at);
        at.SkipBlanks();
        return isWhole && at.Take(">"sv);
    }
    return false;
}

bool TakeSubset(XmlCursor &at)
{
    while (!at.Take("]"sv)) {
        if (at.SkipBlanks())
            continue;
        bool isWhole = false;
        if (at.Take("%"sv))
            isWhole = !at.TakeName().empty() && at.Take(";"sv);
        else if (at.Take("<!--"sv))
            isWhole = at.TakeComment();
        else if (at.Take("<?"sv))
            isWhole = at.TakeInstruction();
        else
            isWhole = TakeDeclaration(at);
        if (!isWhole)
            return false;
    }
    return true;
}

} // namespace

bool TakeDocumentType(XmlCursor &at)
{
    if (!TakeBlankAndName(at))
        return false;
    at.SkipBlanks();
    const bool hasExternalId = at.Rest().starts_with('S') || at.Rest().starts_with('P');
    if (hasExternalId && !TakeExternalId(at))
        return false;
    at.SkipBlanks();
    if (at.Take("["sv) && !TakeSubset(at))
        return false;
    at.SkipBlanks();
    return at.Take(">"sv);
}
