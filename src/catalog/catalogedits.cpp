#include "catalogedits.h"

#include <limits>
#include <utility>

using Kind = CatalogEdit::Kind;

void CatalogEdits::Take(CatalogEdit edit)
{
    if (edit.kind == Kind::Removal) {
        TakeRemoval(std::move(edit));
        return;
    }
    const Key key(edit.kind, edit.id, edit.place);
    if (const auto latest = m_latest.find(key); latest != m_latest.end())
        latest->second->text = std::move(edit.text);
    else
        m_latest[key] = m_edits.insert(m_edits.end(), std::move(edit));
}

// Those of that ID behind it move up by one place.
void CatalogEdits::TakeRemoval(CatalogEdit removal)
{
    const Key key(Kind::Listing, removal.id, removal.place);
    if (const auto latest = m_latest.find(key); latest != m_latest.end()) {
        m_edits.erase(latest->second);
        m_latest.erase(latest);
    }
    const auto end = m_latest.upper_bound({Kind::Listing, removal.id, std::numeric_limits<quint32>::max()});
    for (auto latest = m_latest.upper_bound(key); latest != end;) {
        auto moved = m_latest.extract(latest++);
        --std::get<quint32>(moved.key());
        m_latest.insert(std::move(moved));
    }
    m_edits.push_back(std::move(removal));
}

QByteArray CatalogEdits::Earlier(const CatalogEdit &edit) const
{
    const auto latest = m_latest.find({edit.kind, edit.id, edit.place});
    return latest == m_latest.end() ? QByteArray() : latest->second->text;
}

QByteArray CatalogEdits::TakeText(const CatalogEdit &edit)
{
    const auto latest = m_latest.find({edit.kind, edit.id, edit.place});
    return latest == m_latest.end() ? QByteArray() : std::exchange(latest->second->text, {});
}
