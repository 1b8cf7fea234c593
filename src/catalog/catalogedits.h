#pragma once

#include <QByteArray>

#include <list>
#include <map>
#include <tuple>

/// An edit of a catalog, told so that it can be done again.
struct CatalogEdit
{
    enum class Kind : quint8 {
        Listing, ///< a listing was changed or added: it is now like this
        Removal, ///< a listing was removed
        Entries, ///< a list was changed: its entries are now these
    };

    Kind kind = Kind::Listing;
    QByteArray id;     ///< of the listing; the name of the elements of a list
    quint32 place = 0; ///< which of the listings that have this ID at that moment
    QByteArray text;   ///< the listing as XML; the texts of the entries, each with a NUL behind it
};

/// Edits in their order, without those that a later one of the same listing or list makes up for.
class CatalogEdits
{
public:
    CatalogEdits() = default;
    CatalogEdits(CatalogEdits &&) = default;
    CatalogEdits &operator=(CatalogEdits &&) = default;

    void Take(CatalogEdit edit);

    /// The text of the edit that this one makes up for; "" when there is none.
    QByteArray Earlier(const CatalogEdit &edit) const;
    /// The same, taken out: the edit is to be taken in with it changed.
    QByteArray TakeText(const CatalogEdit &edit);

    bool IsEmpty() const { return m_edits.empty(); }
    const std::list<CatalogEdit> &All() const { return m_edits; }

private:
    using Key = std::tuple<CatalogEdit::Kind, QByteArray, quint32>;

    void TakeRemoval(CatalogEdit removal);

    std::list<CatalogEdit> m_edits;
    /// The edits of which a later one would take the place.
    std::map<Key, std::list<CatalogEdit>::iterator> m_latest;
};
