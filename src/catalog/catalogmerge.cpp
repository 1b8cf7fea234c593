#include "catalogmerge.h"

#include "fields.h"
#include "listingindex.h"
#include "modConvertTo12.h"
#include "modXMLSubs.h"
#include "numbers.h"

#include <array>
#include <string>

using namespace Qt::StringLiterals;

namespace {

/// The formats by their old codes, from 1 on.
const std::array<QString, 10> &FormatNames()
{
    static const std::array<QString, 10> names = {u"FLAC"_s, u"MP3"_s, u"SHN"_s, u"CD"_s,   u"LP"_s,
                                                  u"Tape"_s, u"VHS"_s, u"DVD"_s, u"MPEG"_s, u"Quicktime"_s};
    return names;
}

bool Has(pugi::xml_node element, const char *attribute)
{
    return !element.attribute(attribute).empty();
}

/// Turns an old format code into a format. Codes of several letters tell of a lossless copy by "D", else of a lossy one
/// by "M".
void WriteFormat(pugi::xml_node item, pugi::xml_node userItem)
{
    if (!Has(userItem, "FileType"))
        return;
    const QString code = ReadAttribute(userItem, "FileType");
    if (code.contains(u'D'))
        WriteAttribute(userItem, "FileType", u"1"_s);
    else if (code.contains(u'M'))
        WriteAttribute(userItem, "FileType", u"2"_s);
    WriteAttribute(item, Field::kFormat, FormatNameFromCode(ReadAttribute(userItem, "FileType")));
}

void CopyAttribute(pugi::xml_node item, const char *name, pugi::xml_node userItem, const char *userName)
{
    if (Has(userItem, userName))
        WriteAttribute(item, name, ReadAttribute(userItem, userName));
}

void WriteMerged(const char *name, pugi::xml_node item, pugi::xml_node userItem)
{
    WriteAttribute(item, name, MergedAttribute(name, item, userItem));
}

/// A listing without a type in either file keeps none; it reads as a concert.
void MergeItem(pugi::xml_node item, pugi::xml_node userItem)
{
    WriteMerged(Field::kWrongDate, item, userItem);
    WriteMerged(Field::kType, item, userItem);
    WriteFormat(item, userItem);
    CopyAttribute(item, Field::kSeeder, userItem, Field::kSeeder);
    CopyAttribute(item, Field::kStored, userItem, Field::kStored);
    CopyAttribute(item, Field::kDateAdded, userItem, "Date");
    for (const char *name :
         {Field::kYear, Field::kMonth, Field::kDay, Field::kVenue, Field::kShow, Field::kLength, Field::kSource,
          Field::kGrade})
        WriteMerged(name, item, userItem);
    for (const char *name : {Element::kSetList, Element::kNotes, Element::kComment})
        MergeChild(name, item, userItem);
}

/// Merges every listing of the catalog and gives the highest ID.
qint32 MergeListings(pugi::xml_node catalog, pugi::xml_node user)
{
    ListingIndex userItems;
    userItems.Build(user);
    qint32 highest = 0;
    for (const pugi::xml_node item : catalog.children(Element::kItem)) {
        const qint32 id = WholeNumber(ReadNumber(item, Field::kId));
        highest = qMax(highest, id);
        MergeItem(item, userItems.Find(std::to_string(id)));
    }
    return highest;
}

void AppendUsersListings(pugi::xml_node catalog, pugi::xml_node user, double highest)
{
    for (const pugi::xml_node userItem : user.children(Element::kItem)) {
        if (!ReadAttribute(userItem, Field::kId).contains(u'u'))
            continue;
        const pugi::xml_node item = catalog.append_copy(userItem);
        WriteAttribute(item, Field::kId, QString::number(WholeNumber(++highest)));
        WriteFormat(item, item);
    }
}

} // namespace

void MergeUserData(pugi::xml_node catalog, pugi::xml_node user)
{
    AppendUsersListings(catalog, user, MergeListings(catalog, user));
}

QString FormatNameFromCode(const QString &code)
{
    const double number = LeadingNumber(code);
    for (size_t i = 0; i < FormatNames().size(); ++i) {
        if (number == static_cast<double>(i + 1))
            return FormatNames().at(i);
    }
    return code == "0"_L1 ? QString() : code;
}

QString MergedAttribute(const char *name, pugi::xml_node catalogItem, pugi::xml_node userItem)
{
    return ReadAttribute(Has(userItem, name) ? userItem : catalogItem, name);
}

void MergeChild(const char *name, pugi::xml_node catalogItem, pugi::xml_node userItem)
{
    const pugi::xml_node child = userItem.child(name);
    if (!child)
        return;
    catalogItem.remove_child(name);
    catalogItem.append_copy(child);
    userItem.remove_child(child);
}
