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
constexpr auto kEscapedLineBreak = R"(\n)"_L1;
constexpr auto kTab = "\t"_L1;
constexpr auto kEscapedTab = R"(\t)"_L1;
constexpr auto kBackslash = R"(\)"_L1;
constexpr auto kTwoBackslashes = R"(\\)"_L1;

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

// QString::replace() moves the rest of a long text time and again.
QString Replaced(const QString &text, QLatin1StringView before, QLatin1StringView after)
{
    qsizetype at = text.indexOf(before);
    if (at < 0)
        return text;
    QString result;
    result.reserve(text.size());
    qsizetype from = 0;
    for (; at >= 0; at = text.indexOf(before, from)) {
        result += QStringView(text).mid(from, at - from);
        result += after;
        from = at + before.size();
    }
    return result += QStringView(text).mid(from);
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

std::vector<pugi::xml_node> AllElements(const pugi::xml_document &document)
{
    std::vector<pugi::xml_node> elements;
    for (pugi::xml_node node = document.first_child(); node;) {
        if (node.type() == pugi::node_element)
            elements.push_back(node);
        pugi::xml_node next = node.first_child();
        for (; node && !next; node = node.parent())
            next = node.next_sibling();
        node = next;
    }
    return elements;
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
    return UnescapeText(ElementText(element.child(name)));
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
    const pugi::xml_node first = element.first_child();
    if (IsText(first) && !first.next_sibling())
        return FromXml(first.value());
    std::string text;
    AppendText(element, text);
    return FromUtf8(text);
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

QString EscapeText(QString text)
{
    text = Replaced(WithoutOuterLineBreaks(text), kBackslash, kTwoBackslashes);
    return Replaced(Replaced(text, kLineBreak, kEscapedLineBreak), kTab, kEscapedTab);
}

QString UnescapeText(QString text)
{
    text = Replaced(Replaced(text, kEscapedTab, kTab), kEscapedLineBreak, kLineBreak);
    return Replaced(text, kTwoBackslashes, kBackslash);
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
        for (const pugi::xml_node element : AllElements(document)) {
            RemoveEmptyAttributes(element);
            if (element.first_attribute() || HasChildren(element) || element == documentElement)
                continue;
            if (removing)
                removing(element);
            element.parent().remove_child(element);
        }
    });
}
