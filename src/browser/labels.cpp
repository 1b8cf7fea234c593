#include "labels.h"

#include "fields.h"
#include "flatfile.h"
#include "numbers.h"
#include "recordingtypes.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

void AppendPadded(std::string &text, double number, int width)
{
    // Nearly every date part is a small whole number; those need no QString.
    const auto whole = static_cast<int>(std::clamp(number, 0.0, 9999.0));
    if (whole != number) {
        text.append(PadNumber(number, width).toStdString());
        return;
    }
    const std::array<char, 4> digits{
        static_cast<char>('0' + whole / 1000), static_cast<char>('0' + whole / 100 % 10),
        static_cast<char>('0' + whole / 10 % 10), static_cast<char>('0' + whole % 10)};
    const int needed = whole >= 1000 ? 4 : whole >= 100 ? 3 : 2;
    text.append(digits.end() - std::max(width, needed), digits.end());
}

void AppendDatePart(std::string &date, double part, bool showUnknown)
{
    if (part >= 1)
        AppendPadded(date.append("-"), part, 2);
    else if (showUnknown)
        date.append("-??");
}

void AppendDate(std::string &text, const ListingFields &fields)
{
    const bool showUnknown = fields.look->unknownShown;
    if (fields.year == 0) {
        text.append(showUnknown ? "????" : "");
        return;
    }
    AppendPadded(text, fields.year, 4);
    AppendDatePart(text, fields.month, showUnknown);
    AppendDatePart(text, fields.day, showUnknown);
}

void AppendVenue(std::string &text, const ListingFields &fields)
{
    text.append(fields.venue);
    if (!fields.show.empty())
        text.append(" (").append(fields.show).append(")");
}

void ReplaceAll(std::string &text, std::string_view what, std::string_view with)
{
    if (text.find(what) == std::string::npos)
        return;
    std::string result;
    size_t from = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
        result.append(text, from, at - from).append(with);
        from = at + what.size();
    }
    text = result.append(text, from);
}

void AppendTitle(std::string &text, const ListingFields &fields)
{
    if (fields.look->dateFirst) {
        AppendDate(text, fields);
        text.append(" - ");
    }
    const size_t venue = text.size();
    AppendVenue(text, fields);
    // The date goes in after the venue, so a "%d" that is part of a venue or show takes the date as well.
    if (text.find('%', venue) != std::string::npos) {
        std::string replaced = text.substr(venue);
        ReplaceAll(replaced, "%d", ListingDateText(fields));
        text.replace(venue, std::string::npos, replaced);
    }
    if (!fields.look->dateFirst)
        AppendDate(text.append(" - "), fields);
    if (fields.wrongDate && fields.look->unknownShown)
        text.append(" (wrong date)");
}

/// Appends the details between two texts, or nothing when there are none.
void AppendDetails(std::string &text, const ListingFields &fields, const char *before, const char *after)
{
    if (fields.wrongDate)
        return;
    const char *separator = before;
    for (const std::string_view part :
         {fields.length, fields.look->sourceShown ? fields.source : std::string_view(), fields.grade}) {
        if (part.empty())
            continue;
        text.append(separator).append(part);
        separator = ", ";
    }
    if (separator != before)
        text.append(after);
}

} // namespace

ListingFields::ListingFields(pugi::xml_node listing)
{
    for (const pugi::xml_attribute attribute : listing.attributes()) {
        const std::string_view name = attribute.name();
        const std::string_view value = attribute.value();
        if (name == Field::kType)
            type = value;
        else if (name == Field::kYear)
            year = LeadingNumber(value);
        else if (name == Field::kMonth)
            month = LeadingNumber(value);
        else if (name == Field::kDay)
            day = LeadingNumber(value);
        else if (name == Field::kVenue)
            venue = value;
        else if (name == Field::kShow)
            show = value;
        else if (name == Field::kLength)
            length = value;
        else if (name == Field::kSource)
            source = value;
        else if (name == Field::kGrade)
            grade = value;
        else if (name == Field::kSeeder)
            seeder = value;
        else if (name == Field::kWrongDate)
            wrongDate = LeadingNumber(value) != 0;
    }
    look = &LookOf(type);
}

std::string ListingLabelUtf8(pugi::xml_node listing)
{
    constexpr size_t kUsualLength = 128;
    const ListingFields fields(listing);
    std::string label;
    label.reserve(kUsualLength);
    AppendTitle(label, fields);
    AppendDetails(label, fields, " (", ")");
    if (!fields.seeder.empty())
        label.append(" (").append(fields.seeder).append(")");
    return label;
}

QString ListingLabel(pugi::xml_node listing)
{
    return FromUtf8(ListingLabelUtf8(listing));
}

QString ListingTitle(pugi::xml_node listing)
{
    std::string title;
    AppendTitle(title, ListingFields(listing));
    return FromUtf8(title);
}

QString ListingDetails(pugi::xml_node listing)
{
    std::string details;
    AppendDetails(details, ListingFields(listing), "", "");
    return FromUtf8(details);
}

std::string ListingDateText(const ListingFields &fields)
{
    std::string date;
    AppendDate(date, fields);
    return date;
}

std::string SortKey(const std::string &label)
{
    std::string key;
    key.reserve(label.size());
    const char *const end = label.data() + label.size();
    for (const char *at = label.data(); at != end;) {
        const char *letter = at++;
        if ((*letter & 0x80) == 0) {
            key.push_back(*letter >= 'A' && *letter <= 'Z' ? static_cast<char>(*letter - 'A' + 'a') : *letter);
            continue;
        }
        // A run of other letters takes the long way.
        while (at != end && (*at & 0x80) != 0)
            ++at;
        key.append(FromUtf8({letter, at}).toCaseFolded().toUtf8().constData());
    }
    return key;
}
