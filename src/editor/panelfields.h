#pragma once

#include "fields.h"

#include <QStringView>

#include <array>

/// A field of the panel: an attribute or a text of a listing, the control that shows it, and its place.
struct PanelField
{
    enum class Kind { Type, Date, Line, Length, Capitals, Format, Text, TrackList };

    Kind kind;
    const char *control;
    const char *label;
    QStringView caption;
    const char *name;    ///< of Field or Element
    const char *handler; ///< of edits, as error reports name it
    int row = 0;         ///< in the grid, with the label left of it; the texts stand one under another below the grid
    int column = 0;
    int columns = 1;
};

/// The fields of the grid, in the order in which Tab goes through them.
inline constexpr auto kPanelFields = [] {
    using enum PanelField::Kind;
    return std::to_array<PanelField>({
        {Type, "cboType", "lblType", u"&Type:", Field::kType, "cboType_Click", 0, 1, 3},
        {Date, "cboYear", "lblYear", u"&Year:", Field::kYear, "cboYear_Change", 1, 1},
        {Date, "cboMonth", "lblMonth", u"Month:", Field::kMonth, "cboMonth_Change", 1, 3},
        {Date, "cboDay", "lblDay", u"Day:", Field::kDay, "cboDay_Change", 1, 5},
        {Line, "txtVenue", "lblVenue", u"Ven&ue:", Field::kVenue, "txtVenue_Change", 2, 1, 5},
        {Line, "txtShow", "lblShow", u"&Concert:", Field::kShow, "txtShow_Change", 3, 1, 5},
        {Length, "txtLength", "lblLength", u"&Length:", Field::kLength, "txtLength_Change", 4, 1},
        {Line, "txtSource", "lblSource", u"Sou&rce:", Field::kSource, "txtSource_Change", 4, 3},
        {Capitals, "txtGrade", "lblGrade", u"&Grade:", Field::kGrade, "txtGrade_Change", 4, 5},
        {Line, "txtSeeder", "lblSeeder", u"&Seeder:", Field::kSeeder, "txtSeeder_Change", 5, 1, 2},
        {Line, "txtStoredIn", "lblStoredIn", u"Stored &in:", Field::kStored, "txtStoredIn_Change", 5, 4, 2},
        {Format, "icbFormat", "lblFormat", u"For&mat:", Field::kFormat, "icbFormat_Click", 6, 1, 3},
    });
}();

/// The texts below the grid, from top to bottom.
inline constexpr auto kPanelTexts = [] {
    using enum PanelField::Kind;
    return std::to_array<PanelField>({
        {TrackList, "txtSetList", "lblSetList", u"&Track list", Element::kSetList, "txtSetList_Change"},
        {Text, "txtSetNotes", "lblSetNotes", u"Set/Show &Notes", Element::kNotes, "txtSetNotes_Change"},
        {Text, "txtComment", "lblComments", u"Recording &Comments:", Element::kComment, "txtComment_Change"},
    });
}();
