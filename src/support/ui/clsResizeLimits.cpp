#include "clsResizeLimits.h"

#include "twips.h"

#include <algorithm>

void clsResizeLimits::AddLimits(QWidget &window, int MinX, int MinY, int MaxX, int MaxY, bool ValuesArePixels)
{
    std::erase_if(m_entries, [](const Entry &entry) { return entry.window.isNull(); });
    const bool known =
        std::any_of(m_entries.cbegin(), m_entries.cend(), [&](const Entry &entry) { return entry.window == &window; });
    if (!known)
        m_entries.push_back({&window, window.minimumSize(), window.maximumSize()});
    const auto pixels = [ValuesArePixels](int value) { return ValuesArePixels ? value : PixelsFromTwips(value); };
    const auto maximum = [&](int value) { return value == 0 ? QWIDGETSIZE_MAX : pixels(value); };
    window.setMinimumSize(pixels(MinX), pixels(MinY));
    window.setMaximumSize(maximum(MaxX), maximum(MaxY));
}

void clsResizeLimits::RemoveFormLimits(QWidget &window)
{
    const auto found =
        std::find_if(m_entries.cbegin(), m_entries.cend(), [&](const Entry &entry) { return entry.window == &window; });
    if (found != m_entries.cend()) {
        Restore(*found);
        m_entries.erase(found);
    }
}

void clsResizeLimits::RemoveAllLimits()
{
    std::for_each(m_entries.cbegin(), m_entries.cend(), &clsResizeLimits::Restore);
    m_entries.clear();
}

void clsResizeLimits::Restore(const Entry &entry)
{
    if (!entry.window.isNull()) {
        entry.window->setMinimumSize(entry.earlierMinimum);
        entry.window->setMaximumSize(entry.earlierMaximum);
    }
}
