#pragma once

#include "catalogindex.h"
#include "xmlfile.h"
#include "xmlwriter.h"

#include <QDate>
#include <QObject>
#include <QString>
#include <QStringList>

/// The two lists that a catalog keeps beside its listings, as elements of one name.
enum class CatalogList { WebSources, RecordingTypes };

class CatalogEdits;
struct CatalogEdit;

/// The one catalog in memory: its tree, its path and whether it differs from its file.
///
/// Every change of the tree is an operation of the document, which marks it modified and signals what was changed.
/// Readers walk the elements themselves: they are handed out as pugi::xml_node and stay valid until the listing is
/// removed or the document is replaced. Both are signalled before they happen, so that whoever keeps an element can let
/// go of it.
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
    bool IsModified() const { return m_modified; }
    /// Counts the document as modified, for commands that do so whether they have changed anything or not.
    void MarkModified() { SetModified(true); }
    /// Gives up what was edited: the document is about to be replaced.
    void DropEdits() { SetModified(false); }

    /// The digest of the file's whole content as it was loaded or last saved; 0 of an empty document.
    quint64 ContentDigest() const { return m_file.digest; }

    /// Replaces the document by a file's. When that fails the document is as it was; the path and the modified flag are
    /// not touched either way.
    LoadResult Load(const QString &path);

    /// Does edits of an earlier run again, and counts the document as modified. To be called after Load, before anybody
    /// looks at the document: nothing but the flag is signalled. False when an edit made no sense.
    bool Restore(const CatalogEdits &edits);

    /// What it takes to do again what was done to a listing or a list.
    CatalogEdit EditOf(pugi::xml_node listing) const;
    CatalogEdit RemovalOf(pugi::xml_node listing) const;
    CatalogEdit EditOf(CatalogList list) const;

    /// Replaces the document by an empty one and clears the modified flag, so that it is never saved over a catalog.
    void Clear();

    /// Cleans the document, writes it to Path() and clears the modified flag. Throws ProgramError, or ReportedFailure
    /// when the clean-up failed; the file is then as it was and the flag still set.
    SavedXml Save();

    /// Writes a new catalog without listings to a file; the document in memory is not touched. Throws ProgramError.
    static SavedXml WriteNewCatalog(const QString &path);

    /// The Catalog element; null in an empty document.
    pugi::xml_node Catalog() const;
    const pugi::xml_document &Document() const { return *m_file.document; }

    /// The first listing with that ID ("" finds one without); null when there is none.
    pugi::xml_node Listing(const QString &id) const;
    /// The listing that is found by a listing's ID: that one itself, unless an earlier one has the same ID.
    pugi::xml_node FirstOfSameId(pugi::xml_node listing) const { return m_index.FirstOfSameId(listing); }
    qsizetype NumberOfListings() const { return m_index.size(); }

    /// The highest ID + 1. Throws ProgramError when that is beyond 32 bits.
    qint32 GetNextID() const;

    /// Appends a listing of a type with a new ID. Throws ProgramError without a Catalog element or a free ID.
    pugi::xml_node AppendListing(const QString &type);

    /// Appends a deep copy of a listing with a new ID and without wrong date, format, date added and seeder.
    pugi::xml_node AppendCopy(pugi::xml_node listing);

    /// Removes a listing of this catalog.
    void RemoveListing(pugi::xml_node listing);

    /// Sets an attribute of a listing, a name of Field.
    void SetField(pugi::xml_node listing, const char *field, const QString &value);

    /// Sets one of a listing's texts (SetList, Notes, Comment of Element).
    void SetText(pugi::xml_node listing, const char *element, const QString &text);

    /// Sets the format in which a listing is held. The first one dates the listing, none takes its date away.
    void SetFormat(pugi::xml_node listing, const QString &format, QDate today);

    /// The texts of a list's elements, in document order.
    QStringList Entries(CatalogList list) const;
    /// Appends an entry. Throws ProgramError without a Catalog element.
    void AddEntry(CatalogList list, const QString &text);
    /// Gives the first entry of that text another one. Throws ProgramError when there is none, and for a text with an
    /// apostrophe, which would end it in the query for the entry.
    void RenameEntry(CatalogList list, const QString &text, const QString &newText);
    /// Removes the first entry of that text. Throws like RenameEntry.
    void RemoveEntry(CatalogList list, const QString &text);

    // What looking at a catalog adds to it. It is not what the user edits, and leaves the document as unmodified as it
    // was.

    /// Gives a listing what showing it takes: a type, and its three texts.
    void CompleteListing(pugi::xml_node listing);
    /// Takes in a type that a listing has and the catalog does not know.
    void SupplyType(const QString &name);

signals:
    void modifiedChanged(bool modified);
    /// The document is about to be replaced; every element of it dies.
    void aboutToBeReplaced();
    /// What was written for a save is about to take the place of the file's content; this is its digest.
    void aboutToReplaceFile(quint64 digest);
    /// The document was cleaned and written.
    void saved();
    void listingAdded(pugi::xml_node listing);
    /// An attribute (Field) or text (Element) of a listing has another value, or was set to the one it had.
    void listingEdited(pugi::xml_node listing, const char *name);
    /// A listing is about to be removed.
    void listingAboutToBeRemoved(pugi::xml_node listing);
    /// The user has removed a listing; the clean-up of a save does not signal this.
    void listingRemoved();
    void entriesChanged(CatalogList list);

private:
    void SetModified(bool modified);
    void TakeInNew(pugi::xml_node listing);
    void SignalEdited(pugi::xml_node listing, const char *name);
    void SignalEntriesChanged(CatalogList list);
    void AppendEntry(const char *name, const QString &text);
    pugi::xml_node FindEntry(CatalogList list, const QString &text) const;
    /// The Catalog element; throws ProgramError when there is none.
    pugi::xml_node RequiredCatalog() const;
    pugi::xml_node AppendChild(const char *name);

    XmlFile m_file;
    CatalogIndex m_index;
    QString m_path;
    bool m_modified = false;
};
