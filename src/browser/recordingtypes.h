#pragma once

#include <QString>

#include <array>
#include <string_view>

/// What the program knows of a recording type: where its listings stand in the tree, and how they are shown.
struct RecordingType
{
    std::string_view name;
    std::string_view group;   ///< key and caption of its group; empty: one group a year
    std::string_view picture; ///< of its group
    bool dateFirst = true;    ///< in a label, before the venue or title
    bool unknownShown = true; ///< unknown parts of the date show as "??", and a wrong date is named
    bool sourceShown = true;  ///< in a label
    bool hasTitle = false;    ///< where others have a venue
    bool hasConcert = true;   ///< the name of the show or event
};

/// The built-in types, in the order of the Types to Show menu.
inline constexpr std::array kBuiltInTypes{
    RecordingType{"Album", "Albums", "CD", true, false, true, true, false},
    RecordingType{"Concert", "", ""},
    RecordingType{"Bootleg", "Bootlegs", "CD", false, false, true, true, false},
    RecordingType{"Interview", "Interviews", "Interview", true, false, true, false, false},
    RecordingType{"Outtakes", "Outtakes", "Music", false, false, true, true, false},
    RecordingType{"Video", "Videos", "Video", false, false, false, true, false},
};

/// Position of a built-in type among them; -1 for a type of the user's own. Names are compared exactly, and a listing
/// without a type is a concert.
int FindBuiltInType(std::string_view name);

/// How listings of a type are shown. Types of the user's own are shown like concerts.
const RecordingType &LookOf(std::string_view typeName);
