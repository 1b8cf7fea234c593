#include "modConvertTo12.h"

#include "catalogmerge.h"
#include "failures.h"
#include "fields.h"
#include "flatfile.h"
#include "modXMLSubs.h"
#include "paths.h"
#include "prompts.h"
#include "xmlfile.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include <optional>
#include <string_view>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kModule = "modConvertTo12";
constexpr auto kMergedSuffix = ".converted"_L1;

/// Why a conversion does not take place; without a text when that was reported already.
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

/// The file itself, there or not, when the path is a link to it: the link is to lead to the converted catalog.
QString WithoutLinks(const QString &path)
{
    constexpr int kMaxLinks = 40;
    QFileInfo info(path);
    for (int links = 0; info.isSymbolicLink() && links < kMaxLinks; ++links)
        info.setFile(info.symLinkTarget());
    return info.filePath();
}

/// All files that a conversion touches.
struct Files
{
    Files(const QString &catalogPath, const QString &userPath)
        : catalog(WithoutLinks(catalogPath)),
          user(userPath),
          merged(catalog + kMergedSuffix),
          backupFolder(InFolder(ProgramFolder(), u"Conversion Backup"_s)),
          catalogBackup(InFolder(backupFolder, FileTitle(catalog, true))),
          userBackup(InFolder(backupFolder, FileTitle(userPath, true)))
    {
    }

    QString catalog;
    QString user;
    QString merged;
    QString backupFolder;
    QString catalogBackup;
    QString userBackup;
};

bool HasRoot(const XmlFile &file, std::string_view name)
{
    const pugi::xml_node root = file.document->document_element();
    return root.name() == name && *root.attribute("xmlns").value() == '\0';
}

bool IsInBackupFolder(const Files &files)
{
    const QFileInfo backups(files.backupFolder);
    return backups.exists() && QFileInfo(QFileInfo(files.catalog).absolutePath()) == backups;
}

std::variant<Input, Refusal> LoadInput(const Files &files)
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
    if (IsInBackupFolder(files))
        return Refusal{
            u"This catalog is a backup of an earlier conversion.  Please copy it and its user file to another folder first."_s};
    return Input{std::move(*catalog), std::move(*user)};
}

void Delete(const QString &path)
{
    QFile file(path);
    if (!file.remove())
        throw ProgramError(Failure::Write, file.errorString() + u": "_s + QDir::toNativeSeparators(path));
}

void Rename(const QString &from, const QString &to)
{
    QFile file(from);
    if (!file.rename(to))
        throw ProgramError(Failure::Write, file.errorString() + u": "_s + QDir::toNativeSeparators(to));
}

void BackUp(const QString &path, const QString &backup)
{
    WriteFileAtomically(backup, ReadWholeFile(path));
}

void WriteMerged(const XmlFile &catalog, const Files &files)
{
    // One that a conversion cut off earlier has left; write-protected, it could not be replaced.
    QFile::remove(files.merged);
    SaveXml(*catalog.document, catalog.encoding, files.merged);
    QFile::setPermissions(files.merged, QFile::permissions(files.catalog));
}

/// Nothing is deleted before everything that is needed to go on lies on the disk. Once the catalog is gone, the merged
/// file stays whatever happens: FinishInterruptedConversion goes on from there.
void ReplaceFiles(const XmlFile &catalog, const Files &files, const std::function<void(ConversionStep)> &done)
{
    auto dropMerged = qScopeGuard([&files] { QFile::remove(files.merged); });
    WriteMerged(catalog, files);
    done(ConversionStep::MergedFileWritten);
    if (!QDir().mkpath(files.backupFolder))
        throw ProgramError(Failure::Write, u"Cannot make the folder "_s + files.backupFolder);
    BackUp(files.catalog, files.catalogBackup);
    done(ConversionStep::CatalogBackedUp);
    BackUp(files.user, files.userBackup);
    done(ConversionStep::UserFileBackedUp);
    Delete(files.catalog);
    dropMerged.dismiss();
    done(ConversionStep::CatalogDeleted);
    Delete(files.user);
    done(ConversionStep::UserFileDeleted);
    Rename(files.merged, files.catalog);
    done(ConversionStep::MergedFileRenamed);
}

/// Does the work; says why when there is none to do.
std::optional<Refusal> Convert(const Files &files, const ConversionObserver &observer)
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
    ReplaceFiles(loaded.catalog, files, [&observer](ConversionStep step) {
        if (observer.stepDone)
            observer.stepDone(step);
    });
    return {};
}

/// A merged file alone does not tell that the backups of its conversion were made; a user file that is not the one
/// backed up belongs to something else.
bool IsInterrupted(const Files &files)
{
    return !QFileInfo::exists(files.catalog) && QFileInfo::exists(files.merged) &&
           QFileInfo::exists(files.catalogBackup) && QFileInfo::exists(files.userBackup) &&
           (!QFileInfo::exists(files.user) || ReadWholeFile(files.user) == ReadWholeFile(files.userBackup));
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
        const auto refusal = Convert(Files(catalogPath, userPath), observer);
        if (refusal)
            prompts.Message(refusal->text, refusal->title, refusal->icon);
        return !refusal;
    });
    return converted.value_or(false);
}

bool FinishInterruptedConversion(const QString &catalogPath)
{
    const auto finished = Guarded(kModule, "FinishInterruptedConversion", [&] {
        const Files files(catalogPath, UserFilePath(catalogPath));
        if (!IsInterrupted(files))
            return false;
        if (QFileInfo::exists(files.user))
            Delete(files.user);
        Rename(files.merged, files.catalog);
        return true;
    });
    return finished.value_or(false);
}

void FinishInterruptedConversions(const QString &folder)
{
    for (const QString &name : FilesInFolder(folder, u"*"_s + kMergedSuffix))
        FinishInterruptedConversion(InFolder(folder, name.chopped(kMergedSuffix.size())));
}
