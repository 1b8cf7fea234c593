#pragma once

#include <pugixml.hpp>

#include <QString>

#include <string>
#include <string_view>

struct RecordingType;

/// The attributes by which a listing is shown, as they stand in the document, gathered in one walk.
struct ListingFields
{
    explicit ListingFields(pugi::xml_node listing);

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
    const RecordingType *look = nullptr;
};

/// The line by which a listing is shown: its title, then details and seeder in brackets where there are any.
QString ListingLabel(pugi::xml_node listing);

/// Venue and date in the order that the listing's type asks for.
QString ListingTitle(pugi::xml_node listing);

/// Length, source and grade, as far as known; empty for a wrong date.
QString ListingDetails(pugi::xml_node listing);

/// The date as "YYYY-MM-DD". For concerts and types of the user's own, unknown parts show as "????" and "-??"; for the
/// other built-in types they are left out. As UTF-8.
std::string ListingDateText(const ListingFields &fields);

/// The label as UTF-8, for whoever needs many: no QString is made on the way.
std::string ListingLabelUtf8(pugi::xml_node listing);

/// The text by which labels sort: case-folded UTF-8.
std::string SortKey(const std::string &label);
