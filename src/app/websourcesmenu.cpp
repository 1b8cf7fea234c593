#include "websourcesmenu.h"

#include "catalogdocument.h"
#include "failures.h"
#include "mainmenu.h"

#include <QMenu>

using namespace Qt::StringLiterals;

WebSourcesMenu::WebSourcesMenu(QMenu &menu, QAction &separator, const CatalogDocument &document)
    : QObject(&menu),
      m_menu(menu),
      m_separator(separator),
      m_document(document)
{
    connect(&document, &CatalogDocument::entriesChanged, this, &WebSourcesMenu::LoadWebSources);
}

void WebSourcesMenu::LoadWebSources()
{
    Guarded("frmMain", "LoadWebSources", [this] { Rebuild(); });
}

void WebSourcesMenu::Rebuild()
{
    const QStringList sources = m_document.Entries(CatalogList::WebSources);
    for (QAction *item : mnuWebSourcesOpen) {
        m_menu.removeAction(item);
        item->deleteLater();
    }
    mnuWebSourcesOpen.clear();
    for (const QString &address : sources) {
        auto *item = new QAction(MenuText(address), &m_menu);
        item->setObjectName(u"mnuWebSourcesOpen%1"_s.arg(mnuWebSourcesOpen.size()));
        connect(item, &QAction::triggered, this, [this, address] { emit chosen(address); });
        m_menu.insertAction(&m_separator, item);
        mnuWebSourcesOpen.push_back(item);
    }
    m_separator.setVisible(sources.size() > 1);
}
