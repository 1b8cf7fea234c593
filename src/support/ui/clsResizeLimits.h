#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

/// Keeps windows within a smallest and a largest size; one object serves all windows. The sizes are those inside the
/// frame, as everywhere in the program.
class clsResizeLimits
{
public:
    /// Limits a window, or changes its limits. The values are pixels or twips; 0 for a maximum means none.
    void AddLimits(QWidget &window, int MinX, int MinY, int MaxX, int MaxY, bool ValuesArePixels);

    /// Gives a window back the limits that it had before the first AddLimits.
    void RemoveFormLimits(QWidget &window);

    /// The same for every window that still exists.
    void RemoveAllLimits();

private:
    struct Entry
    {
        QPointer<QWidget> window;
        QSize earlierMinimum;
        QSize earlierMaximum;
    };

    static void Restore(const Entry &entry);

    std::vector<Entry> m_entries;
};
