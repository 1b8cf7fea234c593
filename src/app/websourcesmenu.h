#pragma once

#include <QAction>
#include <QObject>
#include <QStringList>

#include <vector>

class QMenu;

/// The catalog's web sources as items of their menu.
class WebSourcesMenu : public QObject
{
    Q_OBJECT

public:
    /// Items go before `separator`.
    WebSourcesMenu(QMenu &menu, QAction &separator);

    /// Rebuilds the items. The separator shows from the second source on.
    void Load(const QStringList &sources);

signals:
    /// An item was chosen: the address it stands for.
    void chosen(const QString &address);

private:
    QMenu &m_menu;
    QAction &m_separator;
    std::vector<QAction *> mnuWebSourcesOpen;
};
