#pragma once

#include <pugixml.hpp>

#include <QString>

#include <functional>
#include <string>

/// UTF-8 text of the document as a QString.
QString FromXml(const char *text);

/// Text as UTF-8 for the document, without the control characters that XML forbids (and lone surrogates).
QByteArray ToXml(const QString &text);

/// The attribute's text, "" when there is none.
QString ReadAttribute(pugi::xml_node element, const char *name);

/// The attribute's numeric value: its leading number, else 0.
double ReadNumber(pugi::xml_node element, const char *name);

/// Whether a listing is marked as having a wrong date.
bool IsWrongDate(pugi::xml_node listing);

/// Sets an attribute, made at the end when there is none.
void WriteAttribute(pugi::xml_node element, const char *name, const QString &value);

/// The unescaped text of the child element of that name, "" when there is none.
QString ReadTextElement(pugi::xml_node element, const char *name);

/// The same as UTF-8, for whoever reads many: no QString is made on the way.
std::string ReadTextElementUtf8(pugi::xml_node element, const char *name);

/// Sets the text of the child element of that name (made at the end when there is none) to the escaped text.
void WriteTextElement(pugi::xml_node element, const char *name, const QString &text);

/// All text inside an element, CDATA sections and nested elements included.
QString ElementText(pugi::xml_node element);

/// Replaces everything inside an element by one text.
void SetElementText(pugi::xml_node element, const QString &text);

/// "" for a null text, else the text.
QString NullToEmpty(const char *value);

/// Text as it is stored in SetList, Notes and Comment: line breaks at both ends cut off, then "\" doubled, CR LF
/// written as "\n" and tab as "\t".
QString EscapeText(const QString &text);

/// The stored text as it is shown. Not the exact reverse of EscapeText: a backslash before "t" or "n" does not survive.
/// Catalogs rely on these rules.
QString UnescapeText(const QString &text);

/// An unescaped track list laid out one track a line. A text with line breaks is only relieved of blanks at the start
/// of its lines (but not of the first); one without is split at commas that stand outside brackets.
QString ParseSetList(const QString &text);

/// Removes every empty attribute, and every element that then has neither attributes nor children. The elements are
/// those that the document had before: a parent emptied by the clean-up itself stays, and so does the document element,
/// since a file without one does not open. `removing` is called for each element first. Throws ReportedFailure;
/// the document is cleaned in part then.
void CleanXML(pugi::xml_document &document, const std::function<void(pugi::xml_node)> &removing = {});
