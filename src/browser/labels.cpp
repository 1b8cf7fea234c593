#include "labels.h"

#include "numbers.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

/// The attributes that make a label, gathered in one walk: a tree of 100,000 listings builds every label once.
struct Fields
{
    std::string_view type;
    std::string_view venue;
    std::string_view show;
    std::string_view length;
    std::string_view source;
    std::string_view grade;
    std::string_view seeder;
    double year = 0;
    double month = 0;
    double day = 0;
    bool wrongDate = false;

    explicit Fields(pugi::xml_node listing);

    bool isVideo() const { return type == "Video"; }
    bool dateFirst() const { return type == "Album" || type == "Interview"; }
    /// Concerts and types of the user's own: unknown parts of the date are shown, and a wrong date is named.
    bool showsUnknown() const { return !dateFirst() && type != "Bootleg" && type != "Outtakes" && !isVideo(); }
};

Fields::Fields(pugi::xml_node listing)
{
    for (const pugi::xml_attribute attribute : listing.attributes()) {
        const std::string_view name = attribute.name();
        const std::string_view value = attribute.value();
        if (name == "Type")
            type = value;
        else if (name == "Year")
            year = LeadingNumber(value);
        else if (name == "Month")
            month = LeadingNumber(value);
        else if (name == "Day")
            day = LeadingNumber(value);
        else if (name == "Venue")
            venue = value;
        else if (name == "Show")
            show = value;
        else if (name == "Length")
            length = value;
        else if (name == "Source")
            source = value;
        else if (name == "Grade")
            grade = value;
        else if (name == "Seeder")
            seeder = value;
        else if (name == "WrongDate")
            wrongDate = LeadingNumber(value) != 0;
    }
}

std::string Padded(double number, int width)
{
    // Nearly every date part is a small whole number; those need no QString.
    const auto whole = static_cast<int>(std::clamp(number, 0.0, 9999.0));
    if (static_cast<double>(whole) != number)
        return PadNumber(number, width).toStdString();
    std::string digits = std::to_string(whole);
    if (digits.size() < static_cast<size_t>(width))
        digits.insert(0, static_cast<size_t>(width) - digits.size(), '0');
    return digits;
}

void AppendDatePart(std::string &date, double part, bool showUnknown)
{
    if (part >= 1)
        date.append("-").append(Padded(part, 2));
    else if (showUnknown)
        date.append("-??");
}

std::string DateText(const Fields &fields)
{
    const bool showUnknown = fields.showsUnknown();
    if (fields.year == 0)
        return showUnknown ? "????" : "";
    std::string date = Padded(fields.year, 4);
    AppendDatePart(date, fields.month, showUnknown);
    AppendDatePart(date, fields.day, showUnknown);
    return date;
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

std::string Title(const Fields &fields)
{
    std::string venue(fields.venue);
    if (!fields.show.empty())
        venue.append(" (").append(fields.show).append(")");

    std::string title = fields.dateFirst() || fields.showsUnknown() ? "%d - %v" : "%v - %d";
    if (fields.wrongDate && fields.showsUnknown())
        title.append(" (wrong date)");
    // The venue goes in first, so a "%d" that is part of a venue or show takes the date as well.
    ReplaceAll(title, "%v", venue);
    ReplaceAll(title, "%d", DateText(fields));
    return title;
}

std::string Details(const Fields &fields)
{
    if (fields.wrongDate)
        return {};
    const std::array parts{fields.length, fields.isVideo() ? std::string_view() : fields.source, fields.grade};
    std::string details;
    for (const std::string_view part : parts) {
        if (!details.empty() && !part.empty())
            details.append(", ");
        details.append(part);
    }
    return details;
}

} // namespace

std::string ListingLabelUtf8(pugi::xml_node listing)
{
    const Fields fields(listing);
    std::string label = Title(fields);
    if (const std::string details = Details(fields); !details.empty())
        label.append(" (").append(details).append(")");
    if (!fields.seeder.empty())
        label.append(" (").append(fields.seeder).append(")");
    return label;
}

QString ListingLabel(pugi::xml_node listing)
{
    return QString::fromStdString(ListingLabelUtf8(listing));
}

QString ListingTitle(pugi::xml_node listing)
{
    return QString::fromStdString(Title(Fields(listing)));
}

QString ListingDetails(pugi::xml_node listing)
{
    return QString::fromStdString(Details(Fields(listing)));
}

QString ListingDateText(pugi::xml_node listing)
{
    return QString::fromStdString(DateText(Fields(listing)));
}

std::string SortKey(std::string label)
{
    const bool ascii = std::all_of(label.begin(), label.end(), [](char c) { return (c & 0x80) == 0; });
    if (!ascii)
        return QString::fromStdString(label).toCaseFolded().toStdString();
    for (char &c : label) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return label;
}
