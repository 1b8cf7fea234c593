#include "modXMLSubs.h"

#include "failures.h"
#include "fields.h"
#include "flatfile.h"
#include "numbers.h"
#include "xmlcheck.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "modXMLSubs";
constexpr auto kLineBreak = "\r\n"_L1;

// These are found and replaced in UTF-8.
constexpr std::string_view kLineBreakBytes = "\r\n";
constexpr std::string_view kEscapedLineBreak = R"(\n)";
constexpr std::string_view kTab = "\t";
constexpr std::string_view kEscapedTab = R"(\t)";
constexpr std::string_view kBackslash = R"(\)";
constexpr std::string_view kTwoBackslashes = R"(\\)";

bool IsAllowedAlone(QChar c)
{
    return !c.isSurrogate() && IsXmlCharacter(c.unicode());
}

QString WithoutForbidden(const QString &text)
{
    QString allowed;
    allowed.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (IsAllowedAlone(text[i])) {
            allowed += text[i];
        } else if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            allowed += text[i];
            allowed += text[++i];
        }
    }
    return allowed;
}

bool IsText(pugi::xml_node node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

void AppendText(pugi::xml_node element, std::string &text)
{
    for (const pugi::xml_node child : element.children()) {
        if (IsText(child))
            text += child.value();
        else
            AppendText(child, text);
    }
}

void Replace(std::string &text, std::string_view before, std::string_view after)
{
    size_t at = text.find(before);
    if (at == text.npos)
        return;
    std::string result;
    result.reserve(text.size());
    size_t from = 0;
    for (; at != text.npos; at = text.find(before, from)) {
        result.append(text, from, at - from).append(after);
        from = at + before.size();
    }
    text = result.append(text, from);
}

std::string ElementTextUtf8(pugi::xml_node element)
{
    std::string text;
    AppendText(element, text);
    return text;
}

void Unescape(std::string &text)
{
    Replace(text, kEscapedTab, kTab);
    Replace(text, kEscapedLineBreak, kLineBreakBytes);
    Replace(text, kTwoBackslashes, kBackslash);
}

QString WithoutOuterLineBreaks(const QString &text)
{
    QStringView rest = text;
    while (rest.startsWith(kLineBreak))
        rest = rest.sliced(kLineBreak.size());
    while (rest.endsWith(kLineBreak))
        rest.chop(kLineBreak.size());
    return rest.toString();
}

// From the last character to the first, so that only closed brackets guard their commas.
QString SplitAtCommas(const QString &text)
{
    constexpr QStringView kOpening = u"([{";
    constexpr QStringView kClosing = u")]}";
    std::array<qsizetype, 3> pending{};
    qsizetype allPending = 0;
    std::vector<qsizetype> commas;
    for (qsizetype i = text.size() - 1; i >= 0; --i) {
        const qsizetype closing = kClosing.indexOf(text[i]);
        const qsizetype opening = kOpening.indexOf(text[i]);
        if (closing >= 0) {
            ++pending[static_cast<size_t>(closing)];
            ++allPending;
        } else if (opening >= 0 && pending[static_cast<size_t>(opening)] > 0) {
            --pending[static_cast<size_t>(opening)];
            --allPending;
        } else if (text[i] == u',' && allPending == 0) {
            commas.push_back(i);
        }
    }
    std::ranges::reverse(commas);
    QString lines;
    qsizetype from = 0;
    for (const qsizetype comma : commas) {
        lines += QStringView(text).mid(from, comma - from);
        lines += kLineBreak;
        from = comma + 1;
    }
    return lines += QStringView(text).mid(from);
}

QString WithoutLeadingSpaces(const QString &lines)
{
    QString result;
    result.reserve(lines.size());
    qsizetype from = 0;
    for (qsizetype at = lines.indexOf(kLineBreak); at >= 0; at = lines.indexOf(kLineBreak, from)) {
        const qsizetype end = at + kLineBreak.size();
        result += QStringView(lines).mid(from, end - from);
        from = end;
        while (from < lines.size() && lines[from] == u' ')
            ++from;
    }
    return result += QStringView(lines).mid(from);
}

/// What follows a node in document order when it, with all inside it, is passed over.
pugi::xml_node NextBehind(pugi::xml_node node)
{
    while (node && !node.next_sibling())
        node = node.parent();
    return node.next_sibling();
}

void RemoveEmptyAttributes(pugi::xml_node element)
{
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute;) {
        const pugi::xml_attribute next = attribute.next_attribute();
        if (*attribute.value() == '\0')
            element.remove_attribute(attribute);
        attribute = next;
    }
}

// An empty text is no node in the file.
bool HasChildren(pugi::xml_node element)
{
    return std::ranges::any_of(
        element.children(), [](pugi::xml_node child) { return child.type() != pugi::node_pcdata || *child.value(); });
}

} // namespace

QString FromXml(const char *text)
{
    return FromUtf8(text);
}

QByteArray ToXml(const QString &text)
{
    return std::ranges::all_of(text, IsAllowedAlone) ? text.toUtf8() : WithoutForbidden(text).toUtf8();
}

QString ReadAttribute(pugi::xml_node element, const char *name)
{
    return FromXml(element.attribute(name).value());
}

double ReadNumber(pugi::xml_node element, const char *name)
{
    return LeadingNumber(std::string_view(element.attribute(name).value()));
}

bool IsWrongDate(pugi::xml_node listing)
{
    return ReadNumber(listing, Field::kWrongDate) != 0;
}

void WriteAttribute(pugi::xml_node element, const char *name, const QString &value)
{
    pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute)
        attribute = element.append_attribute(name);
    attribute.set_value(ToXml(value).constData());
}

QString ReadTextElement(pugi::xml_node element, const char *name)
{
    return FromUtf8(ReadTextElementUtf8(element, name));
}

std::string ReadTextElementUtf8(pugi::xml_node element, const char *name)
{
    std::string text = ElementTextUtf8(element.child(name));
    Unescape(text);
    return text;
}

void WriteTextElement(pugi::xml_node element, const char *name, const QString &text)
{
    pugi::xml_node child = element.child(name);
    if (!child)
        child = element.append_child(name);
    SetElementText(child, EscapeText(text));
}

QString ElementText(pugi::xml_node element)
{
    return FromUtf8(ElementTextUtf8(element));
}

void SetElementText(pugi::xml_node element, const QString &text)
{
    const QByteArray value = ToXml(text);
    element.remove_children();
    if (!value.isEmpty())
        element.append_child(pugi::node_pcdata).set_value(value.constData());
}

QString NullToEmpty(const char *value)
{
    return value ? FromXml(value) : u""_s;
}

QString EscapeText(const QString &text)
{
    std::string escaped = ToXml(WithoutOuterLineBreaks(text)).toStdString();
    Replace(escaped, kBackslash, kTwoBackslashes);
    Replace(escaped, kLineBreakBytes, kEscapedLineBreak);
    Replace(escaped, kTab, kEscapedTab);
    return FromUtf8(escaped);
}

QString UnescapeText(const QString &text)
{
    std::string unescaped = text.toStdString();
    Unescape(unescaped);
    return FromUtf8(unescaped);
}

QString ParseSetList(const QString &text)
{
    const auto layOut = [&text] {
        return WithoutLeadingSpaces(text.contains(kLineBreak) ? text : SplitAtCommas(text));
    };
    return Reported(kModule, "ParseSetList", layOut);
}

void CleanXML(pugi::xml_document &document, const std::function<void(pugi::xml_node)> &removing)
{
    Reported(kModule, "CleanXML", [&] {
        const pugi::xml_node documentElement = document.document_element();
        for (pugi::xml_node node = document.first_child(); node;) {
            const pugi::xml_node element = node;
            const bool isElement = element.type() == pugi::node_element;
            if (isElement)
                RemoveEmptyAttributes(element);
            if (!isElement || element.first_attribute() || HasChildren(element) || element == documentElement) {
                node = element.first_child() ? element.first_child() : NextBehind(element);
                continue;
            }
            node = NextBehind(element);
            if (removing)
                removing(element);
            element.parent().remove_child(element);
        }
    });
}
