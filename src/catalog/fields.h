#pragma once

/// The elements of a catalog file.
namespace Element {

inline constexpr auto kCatalog = "Catalog";
inline constexpr auto kItem = "Item"; ///< a listing
inline constexpr auto kType = "Type";
inline constexpr auto kWebSource = "WebSource";
inline constexpr auto kSetList = "SetList"; ///< this and the two below are texts of a listing
inline constexpr auto kNotes = "Notes";
inline constexpr auto kComment = "Comment";

} // namespace Element

/// The attributes of a listing.
namespace Field {

inline constexpr auto kId = "ID";
inline constexpr auto kType = "Type";
inline constexpr auto kYear = "Year";
inline constexpr auto kMonth = "Month";
inline constexpr auto kDay = "Day";
inline constexpr auto kWrongDate = "WrongDate";
inline constexpr auto kVenue = "Venue";
inline constexpr auto kShow = "Show";
inline constexpr auto kLength = "Length";
inline constexpr auto kSource = "Source";
inline constexpr auto kGrade = "Grade";
inline constexpr auto kSeeder = "Seeder";
inline constexpr auto kStored = "Stored";
inline constexpr auto kFormat = "Format";
inline constexpr auto kDateAdded = "DateAdded";

} // namespace Field
