#include "modConvertTo12.h"

#include "catalogindex.h"
#include "failures.h"
#include "fields.h"
#include "modXMLSubs.h"
#include "numbers.h"
#include "paths.h"
#include "prompts.h"
#include "xmlfile.h"

#include <QScopeGuard>

#include <array>
#include <string>
#include <string_view>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "modConvertTo12";

/// Why a conversion does not take place.
struct Refusal
{
    QString text;
    QString title = u"Error during conversion"_s;
    UserPrompts::Icon icon = UserPrompts::Icon::Critical;
};

struct Input
{
    XmlFile catalog;
    XmlFile user;
};

bool HasRoot(const XmlFile &file, std::string_view name)
{
    const pugi::xml_node root = file.document->document_element();
    return root.name() == name && *root.attribute("xmlns").value() == '\0';
}

std::variant<Input, Refusal> LoadInput(const ConversionFiles &files)
{
    auto catalog = LoadXml(files.catalog);
    if (!catalog)
        return Refusal{u"Error reading catalog file."_s};
    if (!HasRoot(*catalog, Element::kCatalog))
        return Refusal{u"File does not appear to be a valid catalog file."_s};
    if (files.user.isEmpty())
        return Refusal{u"File is already compatible."_s, u"Conversion"_s, UserPrompts::Icon::Information};
    auto user = LoadXml(files.user);
    if (!user)
        return Refusal{u"Error reading user file."_s};
    if (!HasRoot(*user, "User"))
        return Refusal{u"File does not appear to be a valid user catalog file."_s};
    if (files.IsInBackupFolder())
        return Refusal{
            u"This catalog is a backup of an earlier conversion.  Please copy it and its user file to another folder first."_s};
    return Input{std::move(*catalog), std::move(*user)};
}

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

/// Merges every listing of the catalog and returns the highest ID.
qint32 MergeListings(pugi::xml_node catalog, pugi::xml_node user)
{
    CatalogIndex userItems;
    userItems.Build(user);
    qint32 highest = 0;
    for (const pugi::xml_node item : catalog.children(Element::kItem)) {
        const qint32 id = WholeNumber(ReadNumber(item, Field::kId));
        highest = qMax(highest, id);
        MergeItem(item, userItems.Find(std::to_string(id).c_str()));
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

/// Merges what the user file holds into the catalog: the user's data about its listings, then the listings that the
/// user added. Both trees change; linear in their size. Throws ProgramError when an ID is beyond 32 bits.
void MergeUserData(pugi::xml_node catalog, pugi::xml_node user)
{
    AppendUsersListings(catalog, user, MergeListings(catalog, user));
}

void PutMergedAside(const ConversionFiles &files, UserPrompts &prompts)
{
    if (const QString copy = files.PutMergedAside(); !copy.isEmpty())
        prompts.Message(
            u"What an earlier conversion of this catalog had left was moved to\r\n"_s + copy, u"Conversion"_s,
            UserPrompts::Icon::Information);
}

/// Does the work and returns what could not be kept of the old file; says why when there is none to do.
std::variant<QStringList, Refusal>
Convert(const ConversionFiles &files, UserPrompts &prompts, const ConversionObserver &observer)
{
    const auto working = [&observer](bool on) {
        if (observer.working)
            observer.working(on);
    };
    working(true);
    const auto finished = qScopeGuard([&working] { working(false); });

    auto input = LoadInput(files);
    if (auto *refusal = std::get_if<Refusal>(&input))
        return std::move(*refusal);
    const Input &loaded = std::get<Input>(input);
    MergeUserData(loaded.catalog.document->document_element(), loaded.user.document->document_element());
    CleanXML(*loaded.catalog.document);
    PutMergedAside(files, prompts);
    return files.Replace(loaded.catalog, [&observer](ConversionStep step) {
        if (observer.stepDone)
            observer.stepDone(step);
    });
}

} // namespace

QString UserFilePath(const QString &catalogPath)
{
    return catalogPath.chopped(qMin<qsizetype>(4, catalogPath.size())) + u" User.xml"_s;
}

bool ConvertFileTo12(
    const QString &catalogPath, const QString &userPath, UserPrompts &prompts, const ConversionObserver &observer)
{
    const auto converted = Guarded(kModule, "ConvertFileTo12", [&] {
        const auto answer = prompts.Message(
            u"The selected catalog needs to be updated to the version 1.2 format.  Would you like to do that now?"_s,
            u"Confirm conversion"_s, UserPrompts::Icon::Question, UserPrompts::Buttons::YesNo);
        if (answer != UserPrompts::Answer::Yes)
            return false;
        const auto result = Convert(ConversionFiles(catalogPath, userPath), prompts, observer);
        if (const auto *refusal = std::get_if<Refusal>(&result)) {
            prompts.Message(refusal->text, refusal->title, refusal->icon);
            return false;
        }
        if (observer.converted)
            observer.converted(std::get<QStringList>(result));
        return true;
    });
    return converted.value_or(false);
}

bool FinishInterruptedConversion(const QString &catalogPath)
{
    const auto finished = Guarded(kModule, "FinishInterruptedConversion", [&] {
        const ConversionFiles files(catalogPath, UserFilePath(catalogPath));
        if (!files.IsInterrupted())
            return false;
        files.Complete();
        return true;
    });
    return finished.value_or(false);
}

void FinishInterruptedConversions(const QString &folder)
{
    // Whatever was cut off, the backups have the names of the catalogs.
    for (const QString &name : FilesInFolder(ConversionBackupFolder(), u"*"_s))
        FinishInterruptedConversion(InFolder(folder, name));
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
