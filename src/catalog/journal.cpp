#include "journal.h"

#include "catalogdocument.h"
#include "contentdigest.h"
#include "failures.h"
#include "flatfile.h"
#include "paths.h"

#include <QDir>
#include <QUuid>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString RecoveryFolder()
{
    return InFolder(ProgramFolder(), u"Recovery"_s);
}

// What the names of all journals of a catalog have in common.
QString CatalogMark(const QString &catalog)
{
    return u'-' + QString::number(ContentDigest(catalog.toUtf8()), 16) + u'-';
}

QString NewJournalPath(const QString &catalog)
{
    const QString number = QUuid::createUuid().toString(QUuid::Id128);
    return InFolder(RecoveryFolder(), ShortName(FileTitle(catalog)) + CatalogMark(catalog) + number + u".journal"_s);
}

} // namespace

Journal::Journal(CatalogDocument &document) : m_document(document)
{
    connect(&document, &CatalogDocument::listingEdited, this, [this](pugi::xml_node listing) {
        Record([&] { return m_document.EditOf(listing); });
    });
    connect(&document, &CatalogDocument::listingAdded, this, [this](pugi::xml_node listing) {
        Record([&] { return m_document.EditOf(listing); });
        Flush();
    });
    connect(&document, &CatalogDocument::listingAboutToBeRemoved, this, [this](pugi::xml_node listing) {
        Record([&] { return m_document.RemovalOf(listing); });
    });
    connect(&document, &CatalogDocument::entriesChanged, this, [this](CatalogList list) {
        Record([&] { return m_document.EditOf(list); });
    });
    connect(&document, &CatalogDocument::aboutToReplaceFile, this, &Journal::RecordSaving);
    connect(&document, &CatalogDocument::listingRemoved, this, &Journal::Flush);
    connect(&document, &CatalogDocument::saved, this, &Journal::Discard);
    connect(&document, &CatalogDocument::aboutToBeReplaced, this, [this] {
        Discard();
        m_catalog.clear();
        m_path.clear();
    });
}

void Journal::Begin(const QString &catalog)
{
    m_catalog = catalog;
}

/// The file itself goes on, so that there is never a second one with the same edits. One that is not whole is written
/// anew in its place.
void Journal::GoOnWith(FoundJournal found)
{
    m_edits = std::move(found.contents.edits);
    m_isWhole = found.file && found.contents.isWhole;
    if (found.file)
        m_path = found.file->Target();
    m_file = std::move(found.file);
    m_firstSize = m_size = QFileInfo(m_path).size();
    m_isFlushed = false;
    Flush();
}

/// Runs what writes. Whatever it throws ends here: an edit does not fail because its journal does.
template<class Step>
bool Journal::Try(Step &&step)
{
    try {
        step();
        return true;
    } catch (const std::exception &error) {
        m_isWhole = false;
        emit failed(QString::fromUtf8(error.what()));
    }
    return false;
}

template<class MakeEdit>
void Journal::Record(MakeEdit &&makeEdit)
{
    if (m_catalog.isEmpty())
        return;
    Try([&] {
        CatalogEdit edit = makeEdit();
        const QByteArray record = m_isWhole ? JournalRecord(edit, m_edits.Earlier(edit)) : QByteArray();
        m_edits.Take(std::move(edit));
        m_isFlushed = false;
        if (m_isWhole)
            Append(record);
    });
}

/// When the program dies after the save but before the journal is gone, its edits are not offered again. A failure is
/// not told: nothing is lost by it.
void Journal::RecordSaving(quint64 digest)
{
    if (!m_file)
        return;
    try {
        if (!m_isWhole)
            WriteAll();
        Append(SavingRecord(digest));
        m_file->Flush();
    } catch (const std::exception &) {
        m_isWhole = false;
        m_isFlushed = false;
    }
}

void Journal::Append(const QByteArray &record)
{
    if (!m_file) {
        WriteAll();
        return;
    }
    m_file->Write(record.constData(), record.size());
    m_size += record.size();
}

/// A new file is flushed with the next Flush(); one that takes the place of another is at once.
void Journal::WriteAll()
{
    if (m_path.isEmpty())
        m_path = NewJournalPath(m_catalog);
    MakeFolder(RecoveryFolder());
    QByteArray bytes = JournalHead(m_catalog, m_document.ContentDigest());
    for (const CatalogEdit &edit : m_edits.All())
        bytes += JournalRecord(edit, {});
    auto file = std::make_unique<BesideFile>(m_path, BesideFile::Rights::OwnerOnly);
    file->CheckHeld(); // else other windows would offer these edits, or nobody ever
    file->Write(bytes.constData(), bytes.size());
    if (m_file)
        file->PlaceOver(*m_file);
    else
        file->Place(BesideFile::Flushing::Later);
    m_file = std::move(file);
    m_firstSize = m_size = bytes.size();
    m_isWhole = true;
    m_isNew = true;
}

bool Journal::HasOutgrown() const
{
    constexpr qint64 kAlwaysAllowed = 1 << 16;
    return m_size > 2 * m_firstSize + kAlwaysAllowed;
}

void Journal::Flush()
{
    if (m_isFlushed)
        return;
    m_isFlushed = Try([this] {
        if (!m_isWhole || HasOutgrown())
            WriteAll();
        m_file->Flush();
        if (std::exchange(m_isNew, false))
            FlushFolder(RecoveryFolder());
    });
}

void Journal::Discard()
{
    if (m_file)
        m_file->Remove();
    m_file.reset();
    m_edits = {};
    m_isWhole = true;
    m_isFlushed = true;
}

namespace {

/// What the last save has put in the catalog's place is not done to it again.
void LeaveOutSaved(JournalContents &contents, quint64 digest)
{
    if (contents.savedAs != digest)
        return;
    contents.digest = digest;
    contents.edits = std::move(contents.laterEdits);
    contents.isWhole = false; // of what is left
}

/// Nothing when another process holds it, or nothing was ever in it.
std::optional<FoundJournal> FindJournal(const QString &path, quint64 digest)
{
    auto file = BesideFile::Hold(path);
    if (!file)
        return std::nullopt;
    const QByteArray bytes = ReadWholeFile(path);
    if (IsOfLaterFormat(bytes))
        return std::nullopt;
    auto contents = ReadJournal(bytes);
    LeaveOutSaved(contents, digest);
    if (!contents.edits.IsEmpty() || contents.isDamaged)
        return FoundJournal{std::move(file), std::move(contents)};
    file->Remove();
    return std::nullopt;
}

} // namespace

std::vector<FoundJournal> FindJournals(const QString &catalog, quint64 digest)
{
    std::vector<FoundJournal> journals;
    RemoveUnfinishedIn(RecoveryFolder());
    const QDir folder(RecoveryFolder());
    const QString pattern = u'*' + CatalogMark(catalog) + u"*.journal"_s;
    for (const QString &name : folder.entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Time)) {
        Guarded("Journal", "FindJournals", [&] {
            auto found = FindJournal(InFolder(RecoveryFolder(), name), digest);
            if (found && (found->contents.catalog.isEmpty() || found->contents.catalog == catalog))
                journals.push_back(std::move(*found));
        });
    }
    return journals;
}
