#include "listingindex.h"

#include "numbers.h"

#include <algorithm>
#include <string_view>

namespace {

QByteArrayView Id(pugi::xml_node listing)
{
    return listing.attribute("ID").value();
}

double Number(QByteArrayView id)
{
    return LeadingNumber(std::string_view(id.data(), static_cast<size_t>(id.size())));
}

} // namespace

void ListingIndex::Clear()
{
    *this = {};
}

void ListingIndex::Build(pugi::xml_node catalog)
{
    Clear();
    for (const pugi::xml_node listing : catalog.children("Item"))
        Append(listing);
}

void ListingIndex::Append(pugi::xml_node listing)
{
    const QByteArrayView id = Id(listing);
    pugi::xml_node &first = m_first[id];
    if (!first)
        first = listing;
    else
        m_others[Id(first)].push_back(listing);
    m_highest = std::max(m_highest, Number(id));
    ++m_size;
}

void ListingIndex::Remove(pugi::xml_node listing)
{
    const QByteArrayView id = Id(listing);
    if (Find(id) == listing)
        RemoveFirst(id);
    else if (const auto others = m_others.find(id); others != m_others.end())
        std::erase(*others, listing);
    m_highestKnown = m_highestKnown && Number(id) < m_highest;
    --m_size;
}

// The next one of that ID becomes the first, and lends its attribute to the keys.
void ListingIndex::RemoveFirst(QByteArrayView id)
{
    m_first.remove(id);
    std::vector<pugi::xml_node> others = m_others.take(id);
    if (others.empty())
        return;
    const pugi::xml_node next = others.front();
    others.erase(others.begin());
    m_first.insert(Id(next), next);
    m_others[Id(next)] = std::move(others);
}

pugi::xml_node ListingIndex::Find(QByteArrayView id) const
{
    return m_first.value(id);
}

double ListingIndex::HighestId() const
{
    if (!m_highestKnown) {
        m_highest = 0;
        for (auto listing = m_first.keyBegin(); listing != m_first.keyEnd(); ++listing)
            m_highest = std::max(m_highest, Number(*listing));
        m_highestKnown = true;
    }
    return m_highest;
}
