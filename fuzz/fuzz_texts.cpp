// The parts are the fields of a listing, and what else is written and read as text.
#include "fields.h"
#include "htmltext.h"
#include "kit.h"
#include "labels.h"
#include "numbers.h"

#include <algorithm>

static void CheckNotes(const QString &text)
{
    pugi::xml_document document;
    WriteTextElement(document, Element::kNotes, text);
    const QString stored = ElementText(document.child(Element::kNotes));
    assert(stored == EscapeText(text) && !stored.contains(u'\t'));
    const QString shown = ReadTextElement(document, Element::kNotes);
    assert(shown == UnescapeText(stored) && (text.contains(u'\\') || text.contains(shown)));
}

static void CheckSetList(const QString &text)
{
    const auto words = [](QString lines) {
        return lines.removeIf([](QChar c) { return c == u' ' || c == u',' || c == u'\r' || c == u'\n'; });
    };
    const QString lines = ParseSetList(text);
    assert(words(lines) == words(text) && ParseSetList(lines) == lines);
}

static void CheckNumber(const QString &text)
{
    const double number = LeadingNumber(text);
    assert(number == LeadingNumber(std::string_view(text.toStdString())));
    assert(!IsNumeric(text) || number == text.trimmed().toDouble());
}

static void CheckLabel(pugi::xml_node listing)
{
    const std::string label = ListingLabelUtf8(listing);
    const QString shown = ListingLabel(listing);
    assert(shown.toStdString() == label && SortKey(label) == shown.toCaseFolded().toStdString());
    assert(shown.startsWith(ListingTitle(listing)) && shown.contains(ListingDetails(listing)));
    assert(shown.contains(FromUtf8(ListingDateText(ListingFields(listing)))));
    std::string page;
    AppendHtmlText(page, label);
    assert(std::ranges::all_of(page, [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
}

void Check(const QByteArray &input)
{
    pugi::xml_document document;
    const pugi::xml_node listing = document.append_child(Element::kItem);
    Parts parts(input);
    for (const char *name :
         {Field::kType, Field::kYear, Field::kMonth, Field::kDay, Field::kVenue, Field::kShow, Field::kLength,
          Field::kSource, Field::kGrade, Field::kSeeder, Field::kWrongDate}) {
        const QString text = parts.NextText();
        CheckNotes(text);
        CheckSetList(text);
        CheckNumber(text);
        WriteAttribute(listing, name, text);
    }
    CheckLabel(listing);
}
