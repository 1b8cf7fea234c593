#pragma once

#include <QAction>
#include <QObject>

#include <vector>

class QMenu;
class RecentCatalogs;

/// The recent catalogs as items of the File menu, "&1 Live" and so on, above a separator of theirs.
class RecentMenu : public QObject
{
    Q_OBJECT

public:
    /// Items go before `end`; `separator` stands above them and shows only when there is one.
    RecentMenu(QMenu &menu, QAction &separator, QAction &end, const RecentCatalogs &recent);

signals:
    /// An item was chosen: the path it stands for.
    void chosen(const QString &path);

private:
    void Rebuild();

    QMenu &m_menu;
    QAction &m_separator;
    QAction &m_end;
    const RecentCatalogs &m_recent;
    std::vector<QAction *> mnuFileMRU;
};
