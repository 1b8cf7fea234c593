#include "elementlist.h"

void ElementList::Append(pugi::xml_node element)
{
    m_elements.push_back(element);
    ++m_size;
}

void ElementList::Remove(pugi::xml_node element)
{
    if (!Seek([&] { return m_elements[m_found] == element; }))
        return;
    m_elements[m_found] = {};
    --m_size;
}

size_t ElementList::PlaceOf(pugi::xml_node element) const
{
    return Seek([&] { return m_elements[m_found] == element; }) ? m_place : m_size;
}

pugi::xml_node ElementList::At(size_t place) const
{
    const bool isThere = place < m_size && Seek([&] { return m_place == place && m_elements[m_found]; });
    return isThere ? m_elements[m_found] : pugi::xml_node();
}

/// Once round, whatever memory running out in an addition has left.
template<class Predicate>
bool ElementList::Seek(Predicate &&isWanted) const
{
    for (size_t i = 0; i < m_elements.size(); ++i) {
        if (isWanted())
            return true;
        if (m_elements[m_found])
            ++m_place;
        if (++m_found == m_elements.size())
            m_found = m_place = 0;
    }
    return false;
}
