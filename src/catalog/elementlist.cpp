#include "elementlist.h"

void ElementList::Append(pugi::xml_node element)
{
    m_elements.push_back(element);
    ++m_size;
}

void ElementList::Remove(pugi::xml_node element)
{
    PlaceOf(element);
    m_elements[m_found] = {};
    --m_size;
}

size_t ElementList::PlaceOf(pugi::xml_node element) const
{
    Seek([&] { return m_elements[m_found] == element; });
    return m_place;
}

pugi::xml_node ElementList::At(size_t place) const
{
    if (place >= m_size)
        return {};
    Seek([&] { return m_place == place && m_elements[m_found]; });
    return m_elements[m_found];
}

template<class Predicate>
void ElementList::Seek(Predicate &&isWanted) const
{
    while (!isWanted()) {
        if (m_elements[m_found])
            ++m_place;
        if (++m_found == m_elements.size())
            m_found = m_place = 0;
    }
}
