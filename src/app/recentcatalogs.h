#pragma once

#include <QObject>
#include <QStringList>

class clsINI;

/// The catalogs opened last, the most recent first, kept in the settings. Paths are compared exactly, case included;
/// whether a file is still there is found out when it is opened.
class RecentCatalogs : public QObject
{
    Q_OBJECT

public:
    static constexpr qsizetype kMaximum = 4;

    /// `settings` must outlive this object.
    explicit RecentCatalogs(clsINI &settings) : m_settings(settings) {}

    const QStringList &Paths() const { return m_paths; }

    /// Reads the list from the settings, as much of it as is kept.
    void Load();
    /// Puts a path at the top and writes the list.
    void AddToMRU(const QString &path);
    /// Takes a path that does not open off the list, writes the list and reads it back. Nothing when it is not there.
    void Remove(const QString &path);

signals:
    void changed();

private:
    void SaveMRU();

    clsINI &m_settings;
    QStringList m_paths;
};
