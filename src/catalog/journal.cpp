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
    MakeFolder(RecoveryFolder());
    const QString number = QUuid::createUuid().toString(QUuid::Id128);
    return InFolder(RecoveryFolder(), ShortName(FileTitle(catalog)) + CatalogMark(catalog) + number + u".journal"_s);
}

} // namespace

Journal::Journal(CatalogDocument &document) : m_document(document)
{
    connect(&document, &CatalogDocument::listingEdited, this, [this](pugi::xml_node listing) {
        Record(m_document.EditOf(listing));
    });
    connect(&document, &CatalogDocument::listingAdded, this, [this](pugi::xml_node listing) {
        Record(m_document.EditOf(listing));
        Flush();
    });
    connect(&document, &CatalogDocument::listingAboutToBeRemoved, this, [this](pugi::xml_node listing) {
        Record(m_document.RemovalOf(listing));
    });
    connect(&document, &CatalogDocument::entriesChanged, this, [this](CatalogList list) {
        Record(m_document.EditOf(list));
    });
    connect(&document, &CatalogDocument::listingRemoved, this, &Journal::Flush);
    connect(&document, &CatalogDocument::saved, this, &Journal::Discard);
    connect(&document, &CatalogDocument::aboutToBeReplaced, this, [this] {
        Discard();
        m_catalog.clear();
    });
}

void Journal::Begin(const QString &catalog)
{
    m_catalog = catalog;
}

bool Journal::GoOnWith(CatalogEdits edits)
{
    m_edits = std::move(edits);
    m_isFlushed = false;
    m_isWhole = false;
    Flush();
    return m_isWhole;
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

void Journal::Record(CatalogEdit edit)
{
    if (m_catalog.isEmpty())
        return;
    Try([&] {
        const QByteArray record = m_isWhole ? JournalRecord(edit, m_edits.Earlier(edit)) : QByteArray();
        m_edits.Take(std::move(edit));
        m_isFlushed = false;
        if (m_isWhole)
            Append(record);
    });
}

void Journal::Append(const QByteArray &record)
{
    if (!m_file) {
        WriteAll(BesideFile::Flushing::Later);
        return;
    }
    m_file->Write(record.constData(), record.size());
    m_size += record.size();
}

/// The new file is there before the old one goes.
void Journal::WriteAll(BesideFile::Flushing flushing)
{
    QByteArray bytes = JournalHead(m_catalog, m_document.ContentDigest());
    for (const CatalogEdit &edit : m_edits.All())
        bytes += JournalRecord(edit, {});
    auto file = std::make_unique<BesideFile>(NewJournalPath(m_catalog), BesideFile::Rights::OwnerOnly);
    file->Write(bytes.constData(), bytes.size());
    file->Place(flushing);
    std::swap(m_file, file);
    if (file)
        file->Remove();
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
            WriteAll(BesideFile::Flushing::Now);
        else
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

std::vector<FoundJournal> FindJournals(const QString &catalog)
{
    std::vector<FoundJournal> journals;
    RemoveUnfinishedIn(RecoveryFolder());
    const QDir folder(RecoveryFolder());
    const QString pattern = u'*' + CatalogMark(catalog) + u"*.journal"_s;
    for (const QString &name : folder.entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Time)) {
        const QString path = InFolder(RecoveryFolder(), name);
        auto file = BesideFile::Hold(path);
        auto contents = file ? ReadJournal(ReadWholeFile(path)) : std::nullopt;
        if (!contents || contents->catalog != catalog)
            continue;
        if (contents->edits.IsEmpty())
            file->Remove();
        else
            journals.push_back({std::move(file), std::move(*contents)});
    }
    return journals;
}
