#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <vector>

/// Elements in document order. One is looked for from where the last was found, on and round the end, so that going
/// through all of them in their order, even to remove them, takes no longer than reading them.
class ElementList
{
public:
    void Append(pugi::xml_node element);
    /// Nothing when it is not there.
    void Remove(pugi::xml_node element);

    /// Which of them an element is, from 0 on; their number when it is not there.
    size_t PlaceOf(pugi::xml_node element) const;
    /// The element at a place; null when there are not so many.
    pugi::xml_node At(size_t place) const;

    /// In their order, with a null one for each that was removed.
    const std::vector<pugi::xml_node> &WithGaps() const { return m_elements; }

private:
    template<class Predicate>
    bool Seek(Predicate &&isWanted) const;

    std::vector<pugi::xml_node> m_elements;
    size_t m_size = 0;
    mutable size_t m_found = 0;
    mutable size_t m_place = 0; ///< of what was found: without the gaps before it
};
