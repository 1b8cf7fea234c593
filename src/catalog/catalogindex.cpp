#include "catalogindex.h"

#include "fields.h"

#include <cstring>

namespace {

const char *Id(pugi::xml_node listing)
{
    return listing.attribute(Field::kId).value();
}

} // namespace

void CatalogIndex::Clear()
{
    *this = {};
}

void CatalogIndex::Build(pugi::xml_node catalog)
{
    Clear();
    for (const pugi::xml_node element : catalog.children()) {
        if (std::strcmp(element.name(), Element::kItem) == 0)
            Append(element);
        else
            m_entries.Append(element);
    }
}

void CatalogIndex::Append(pugi::xml_node listing)
{
    const char *const id = Id(listing);
    if (const pugi::xml_node first = Find(id))
        m_others[{Id(first)}].Append(listing);
    else
        m_first.Insert(id, listing);
    ++m_size;
}

void CatalogIndex::Remove(pugi::xml_node listing)
{
    const char *const id = Id(listing);
    if (Find(id) == listing)
        RemoveFirst(id);
    else if (const auto others = m_others.find({id}); others != m_others.end())
        others->Remove(listing);
    --m_size;
}

// The next one of that ID becomes the first, and lends its attribute to the keys.
void CatalogIndex::RemoveFirst(const char *id)
{
    m_first.Remove(id);
    ElementList others = m_others.take({id});
    const pugi::xml_node next = others.At(0);
    if (!next)
        return;
    others.Remove(next);
    m_first.Insert(Id(next), next);
    m_others[{Id(next)}] = std::move(others);
}

pugi::xml_node CatalogIndex::FirstOfSameId(pugi::xml_node listing) const
{
    return m_others.isEmpty() ? listing : Find(Id(listing));
}

quint32 CatalogIndex::PlaceOf(pugi::xml_node listing) const
{
    const auto others = m_others.isEmpty() ? m_others.end() : m_others.find({Id(listing)});
    if (others == m_others.end() || Find(Id(listing)) == listing)
        return 0;
    return static_cast<quint32>(others->PlaceOf(listing) + 1);
}

pugi::xml_node CatalogIndex::At(const char *id, quint32 place) const
{
    if (place == 0)
        return Find(id);
    const auto others = m_others.find({id});
    return others != m_others.end() ? others->At(place - 1) : pugi::xml_node();
}
