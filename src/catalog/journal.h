#pragma once

#include "besidefile.h"
#include "journalformat.h"

#include <QObject>

#include <memory>
#include <vector>

class CatalogDocument;

/// A journal that no living process holds; nobody else takes it as long as this one does.
struct FoundJournal
{
    std::unique_ptr<BesideFile> file;
    JournalContents contents;
};

/// The journals of a catalog that earlier runs have left, the newest first. Those that tell nothing which the catalog
/// of that content does not have are removed; of a damaged one there may be no edits left. What cannot be read is
/// reported.
std::vector<FoundJournal> FindJournals(const QString &catalog, quint64 digest);

/// Keeps a document's edits on the disk as long as they are not saved, so that they outlive the program. The file is
/// made with the first edit, and gone when the document is saved or replaced; it stays when this object ends before.
class Journal : public QObject
{
    Q_OBJECT

public:
    /// The document must outlive the journal. Nothing is written before Begin().
    explicit Journal(CatalogDocument &document);

    /// From now on the document is that of a file, told by its canonical path.
    void Begin(const QString &catalog);

    /// Goes on with a journal whose edits were restored; in a new file when it comes without one.
    void GoOnWith(FoundJournal found);

    /// Writes to the disk what the system still holds back. Nothing to do is nothing.
    void Flush();

    /// Gives up the edits that are not saved.
    void Discard();

signals:
    /// The edits could not be written; that is tried again with every Flush().
    void failed(const QString &reason);

private:
    template<class MakeEdit>
    void Record(MakeEdit &&makeEdit);
    void RecordSaving(quint64 digest);
    void Append(const QByteArray &record);
    void WriteAll();
    bool HasOutgrown() const;
    template<class Step>
    bool Try(Step &&step);

    CatalogDocument &m_document;
    QString m_catalog;
    QString m_path; ///< of all journals of the open catalog in this run: there is never more than one
    CatalogEdits m_edits;
    std::unique_ptr<BesideFile> m_file; ///< from the first edit on
    qint64 m_size = 0;
    qint64 m_firstSize = 0; ///< when all was written last
    bool m_isWhole = true;  ///< the file has all edits
    bool m_isFlushed = true;
    bool m_isNew = true; ///< the file's name is not on the disk yet
};
