#pragma once

#include "elementlist.h"
#include "idmap.h"

#include <pugixml.hpp>

#include <QHash>

#include <vector>

/// What stands in a catalog, so that nobody walks through its listings to find something. Keys are the document's own
/// ID attributes, which never change once a listing is in the catalog.
class CatalogIndex
{
public:
    void Clear();
    /// Takes in the elements of a catalog.
    void Build(pugi::xml_node catalog);
    /// Takes in a listing that stands behind all others.
    void Append(pugi::xml_node listing);
    void Remove(pugi::xml_node listing);

    /// The first listing in document order with that ID; null when there is none. A listing without an ID has the empty
    /// one.
    pugi::xml_node Find(const char *id) const { return m_first.Find(id); }
    /// The first listing in document order that has the ID of this one.
    pugi::xml_node FirstOfSameId(pugi::xml_node listing) const;
    /// Which of the listings with its ID a listing is, from 0 on in document order.
    quint32 PlaceOf(pugi::xml_node listing) const;
    /// The listing of an ID and a place; null when there is none.
    pugi::xml_node At(const char *id, quint32 place) const;
    /// The highest ID, read as a number; 0 when there is none.
    double HighestId() const { return m_first.Highest(); }
    qsizetype size() const { return m_size; }

    /// The elements that are no listings, in document order, with a null one for each that was removed.
    const std::vector<pugi::xml_node> &Entries() const { return m_entries.WithGaps(); }
    /// Takes in an entry that stands behind all others.
    void AppendEntry(pugi::xml_node entry) { m_entries.Append(entry); }
    void RemoveEntry(pugi::xml_node entry) { m_entries.Remove(entry); }

private:
    void RemoveFirst(const char *id);

    /// The first listing of each ID.
    IdMap<pugi::xml_node> m_first;
    /// Later listings of an ID that several have. Empty in a sound catalog.
    QHash<TextKey, ElementList> m_others;
    ElementList m_entries;
    qsizetype m_size = 0;
};
