#pragma once

#include "listingindex.h"
#include "xmlfile.h"

#include <QObject>
#include <QString>
#include <QStringList>

/// The one catalog in memory: its tree, its path and whether it differs from its file.
///
/// Elements are handed out as pugi::xml_node; they stay valid until the listing is removed or the document is replaced.
/// Both are announced before they happen, so that whoever keeps an element can let go of it.
class CatalogDocument : public QObject
{
    Q_OBJECT

public:
    enum class LoadResult { Loaded, Unreadable, NotACatalog };

    CatalogDocument();

    /// The full path of the open catalog, "" until a catalog was opened. Set by whoever opens, after all went well.
    const QString &Path() const { return m_path; }
    void SetPath(const QString &path) { m_path = path; }

    /// Whether there are edits that the file does not have.
    bool IsChanged() const { return m_changed; }
    void SetChanged(bool changed);

    /// Replaces the document by a file's. When that fails the document is as it was; the path and the changed flag are
    /// not touched either way.
    LoadResult Load(const QString &path);

    /// Replaces the document by an empty one and clears the changed flag, so that it is never saved over a catalog.
    void Clear();

    /// Cleans the document, writes it to Path() and clears the changed flag. Throws ProgramError, or gives false when
    /// the clean-up failed, which was reported; the file is then as it was and the flag still set.
    bool Save();

    /// Writes a new catalog without listings to a file; the document in memory is not touched. Throws ProgramError.
    static void WriteNewCatalog(const QString &path);

    /// The Catalog element; null in an empty document.
    pugi::xml_node Catalog() const;
    const pugi::xml_document &Document() const { return *m_file.document; }

    /// The first listing with that ID ("" finds one without); null when there is none.
    pugi::xml_node Listing(const QString &id) const;
    qsizetype NumberOfListings() const { return m_index.size(); }

    /// The highest ID + 1. Throws ProgramError when that is beyond 32 bits.
    qint32 GetNextID() const;

    /// Appends a listing of a type with a new ID. Throws ProgramError without a Catalog element or a free ID.
    pugi::xml_node AppendListing(const QString &type);

    /// Appends a deep copy of a listing with a new ID and without wrong date, format, date added and seeder.
    pugi::xml_node AppendCopy(pugi::xml_node listing);

    /// Removes a listing of this catalog.
    void RemoveListing(pugi::xml_node listing);

    /// The texts of the Type and WebSource elements, in document order.
    QStringList Types() const;
    QStringList WebSources() const;
    void AppendType(const QString &name);

signals:
    void changedChanged(bool changed);
    /// The document is about to be replaced; every element of it dies.
    void aboutToBeReplaced();
    /// A listing is about to be removed.
    void listingAboutToBeRemoved(pugi::xml_node listing);

private:
    /// The Catalog element; throws ProgramError when there is none.
    pugi::xml_node RequiredCatalog() const;
    pugi::xml_node AppendChild(const char *name);
    QStringList ChildTexts(const char *name) const;

    XmlFile m_file;
    ListingIndex m_index;
    QString m_path;
    bool m_changed = false;
};
