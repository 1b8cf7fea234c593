#pragma once

#include "numbers.h"
#include "textkey.h"

#include <QHash>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <vector>

/// What belongs to the ID of a listing; a value that is false stands for nothing. IDs are texts, but nearly always the
/// whole numbers from 1 on: those are places in a list, and only others are hashed. An ID lives as long as its entry.
template<class Value>
class IdMap
{
public:
    Value Find(const char *id) const
    {
        const size_t place = PlaceOf(id);
        if (place < m_numbered.size() && m_numbered[place])
            return m_numbered[place];
        return m_others.isEmpty() ? Value() : m_others.value({id});
    }

    /// Adds the value of an ID that has none.
    void Insert(const char *id, Value value)
    {
        const size_t place = PlaceOf(id);
        if (place >= m_numbered.size() && place < kSpare * static_cast<size_t>(m_size) + kFew)
            m_numbered.resize(place + 1);
        if (place < m_numbered.size())
            m_numbered[place] = value;
        else
            m_others.insert({id}, value);
        ++m_size;
    }

    /// Removes the value of an ID that has one.
    void Remove(const char *id)
    {
        const size_t place = PlaceOf(id);
        --m_size;
        if (place < m_numbered.size() && m_numbered[place])
            m_numbered[place] = {};
        else
            m_others.remove({id});
        while (!m_numbered.empty() && !m_numbered.back())
            m_numbered.pop_back();
    }

    /// The highest ID, read as a number; 0 when there is none.
    double Highest() const
    {
        double highest = m_numbered.empty() ? 0 : static_cast<double>(m_numbered.size() - 1);
        for (auto id = m_others.keyBegin(); id != m_others.keyEnd(); ++id)
            highest = std::max(highest, LeadingNumber(std::string_view(id->text)));
        return highest;
    }

    qsizetype size() const { return m_size; }

private:
    static constexpr size_t kSpare = 4; ///< a list may be this many times as long as it has entries
    static constexpr size_t kFew = 1000;
    static constexpr size_t kNowhere = SIZE_MAX;

    /// The number that an ID is written as in the plainest way.
    static size_t PlaceOf(const char *id)
    {
        constexpr size_t kMostDigits = 9;
        const size_t length = std::strlen(id);
        size_t place = kNowhere;
        if (*id < '1' || *id > '9' || length > kMostDigits)
            return kNowhere;
        const auto [end, error] = std::from_chars(id, id + length, place);
        return end == id + length ? place : kNowhere;
    }

    std::vector<Value> m_numbered; ///< ends with an entry
    QHash<TextKey, Value> m_others;
    qsizetype m_size = 0;
};
