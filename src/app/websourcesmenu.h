#pragma once

#include <QAction>
#include <QObject>

#include <vector>

class CatalogDocument;
class QMenu;

/// The catalog's web sources as items of their menu.
class WebSourcesMenu : public QObject
{
    Q_OBJECT

public:
    /// Items go before `separator`. `document` must outlive this object.
    WebSourcesMenu(QMenu &menu, QAction &separator, const CatalogDocument &document);

    /// Rebuilds the items; runs by itself whenever the list is edited. The separator shows from the second source on.
    void LoadWebSources();

signals:
    /// An item was chosen: the address it stands for.
    void chosen(const QString &address);

private:
    void Rebuild();

    QMenu &m_menu;
    QAction &m_separator;
    const CatalogDocument &m_document;
    std::vector<QAction *> mnuWebSourcesOpen;
};
