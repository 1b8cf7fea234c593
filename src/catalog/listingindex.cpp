#include "listingindex.h"

#include "fields.h"
#include "numbers.h"

#include <algorithm>
#include <string_view>

namespace {

QByteArrayView Id(pugi::xml_node listing)
{
    return listing.attribute(Field::kId).value();
}

double Number(QByteArrayView id)
{
    return LeadingNumber(std::string_view(id.data(), static_cast<size_t>(id.size())));
}

/// Whether an ID is not written as a plain whole number, by which it could be looked up.
bool IsIrregular(QByteArrayView id)
{
    constexpr qsizetype kLongest = 15;
    const bool digits = std::ranges::all_of(id, [](char c) { return c >= '0' && c <= '9'; });
    return !digits || id.startsWith('0') || id.size() > kLongest;
}

} // namespace

void ListingIndex::Clear()
{
    *this = {};
}

void ListingIndex::Build(pugi::xml_node catalog)
{
    Clear();
    for (const pugi::xml_node listing : catalog.children(Element::kItem))
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
    m_irregularIds += IsIrregular(id) ? 1 : 0;
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
    m_irregularIds -= IsIrregular(id) ? 1 : 0;
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
        m_highest = FindHighestId();
        m_highestKnown = true;
    }
    return m_highest;
}

/// The highest ID left after the one that was went, which is nearly always just below it.
double ListingIndex::FindHighestId() const
{
    constexpr int kNear = 1000;
    if (m_irregularIds == 0) {
        for (auto id = static_cast<qint64>(m_highest), last = id - kNear; id > last; --id) {
            if (id <= 0 || m_first.contains(QByteArray::number(id)))
                return static_cast<double>(std::max<qint64>(id, 0));
        }
    }
    double highest = 0;
    for (auto listing = m_first.keyBegin(); listing != m_first.keyEnd(); ++listing)
        highest = std::max(highest, Number(*listing));
    return highest;
}
