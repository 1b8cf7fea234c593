#include "recentmenu.h"

#include "mainmenu.h"
#include "paths.h"
#include "recentcatalogs.h"

#include <QMenu>

using namespace Qt::StringLiterals;

RecentMenu::RecentMenu(QMenu &menu, QAction &separator, QAction &end, const RecentCatalogs &recent)
    : QObject(&menu),
      m_menu(menu),
      m_separator(separator),
      m_end(end),
      m_recent(recent)
{
    menu.setToolTipsVisible(true); // two catalogs may have one name
    connect(&recent, &RecentCatalogs::changed, this, &RecentMenu::Rebuild);
    Rebuild();
}

void RecentMenu::Rebuild()
{
    for (QAction *item : mnuFileMRU) {
        m_menu.removeAction(item);
        item->deleteLater();
    }
    mnuFileMRU.clear();
    const QStringList &paths = m_recent.Paths();
    for (qsizetype i = 0; i < paths.size(); ++i) {
        auto *item = new QAction(u"&%1 "_s.arg(i + 1) + MenuText(FileTitle(paths[i])), &m_menu);
        item->setObjectName(u"mnuFileMRU%1"_s.arg(i));
        item->setStatusTip(paths[i]);
        item->setToolTip(paths[i]);
        connect(item, &QAction::triggered, this, [this, path = paths[i]] { emit chosen(path); });
        m_menu.insertAction(&m_end, item);
        mnuFileMRU.push_back(item);
    }
    m_separator.setVisible(!paths.isEmpty());
}
