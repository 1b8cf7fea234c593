// The parts are criteria and the fields of the one listing that is looked through. A query finds it exactly when it has
// what is looked for; only an apostrophe in a value, or no criterion, may make a query fail.
#include "catalogdocument.h"
#include "fields.h"
#include "findlistings.h"
#include "kit.h"
#include "searchcriteria.h"

#include <algorithm>
#include <vector>

void Check(const QByteArray &input)
{
    static CatalogDocument document;
    if (document.NumberOfListings() == 0) {
        document.Load(Write(u"Catalog.xml"_s, "<Catalog/>"));
        document.AppendListing({});
    }
    Parts parts(input);
    const bool isOr = parts.Next() == "or";
    const SearchCriteria criteria{
        .year = parts.Next().toInt(),
        .venue = parts.NextText(),
        .notes = parts.NextText(),
        .joiner = isOr ? u"or"_s : u"and"_s};
    const QString year = parts.NextText();
    const QString venue = parts.NextText();
    const QString notes = parts.NextText().remove(u'\\');
    const pugi::xml_node listing = document.Listing(u"1"_s);
    document.SetField(listing, Field::kYear, year);
    document.SetField(listing, Field::kVenue, venue);
    document.SetText(listing, Element::kNotes, notes);

    std::vector<bool> has;
    if (criteria.year > 0)
        has.push_back(year == QString::number(criteria.year));
    if (!criteria.venue.isEmpty())
        has.push_back(venue.contains(criteria.venue, Qt::CaseInsensitive));
    if (!criteria.notes.isEmpty())
        has.push_back(EscapeText(notes).contains(criteria.notes, Qt::CaseInsensitive));
    const bool isExpected = std::ranges::find(has, isOr) == has.end() ? !isOr : isOr;
    const bool isOdd = (criteria.venue + criteria.notes).contains(u'\'');
    const bool isAscii = std::ranges::all_of(input, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    try {
        const bool isFound = !FindListings(document, BuildSearchQuery(criteria)).empty();
        assert(!has.empty() && (isOdd || !isAscii || isFound == isExpected));
    } catch (const ProgramError &) {
        assert(has.empty() || isOdd);
    }
}
