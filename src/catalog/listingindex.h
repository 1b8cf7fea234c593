#pragma once

#include <pugixml.hpp>

#include <QByteArrayView>
#include <QHash>

#include <vector>

/// Finds listings by ID without walking the document. Keys are views of the document's own ID attributes, which never
/// change once a listing is in the catalog.
class ListingIndex
{
public:
    void Clear();
    /// Takes in all Item elements of a catalog.
    void Build(pugi::xml_node catalog);
    /// Takes in a listing that stands behind all others.
    void Append(pugi::xml_node listing);
    void Remove(pugi::xml_node listing);

    /// The first listing in document order with that ID; null when there is none. A listing without an ID has the empty
    /// one.
    pugi::xml_node Find(QByteArrayView id) const;
    /// The highest ID, read as a number; 0 when there is none.
    double HighestId() const;
    qsizetype size() const { return m_size; }

private:
    void RemoveFirst(QByteArrayView id);
    double FindHighestId() const;

    /// The first listing of each ID; the key views this listing's attribute.
    QHash<QByteArrayView, pugi::xml_node> m_first;
    /// Later listings of an ID that several have, in document order, under the same key. Empty in a sound catalog.
    QHash<QByteArrayView, std::vector<pugi::xml_node>> m_others;
    qsizetype m_size = 0;
    qsizetype m_irregularIds = 0; ///< listings whose ID is not written as a plain whole number
    mutable double m_highest = 0;
    mutable bool m_highestKnown = true;
};
