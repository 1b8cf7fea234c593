#pragma once

#include <pugixml.hpp>

#include <QObject>
#include <QString>

class BrowseTree;
class CatalogDocument;
class DetailPanel;
class QTreeView;
class ShownTypes;
class UserPrompts;

/// The commands that add, copy and delete listings, and Select All.
class ListingCommands : public QObject
{
    Q_OBJECT

public:
    /// All must outlive this object.
    ListingCommands(
        CatalogDocument &document, BrowseTree &tree, const ShownTypes &types, DetailPanel &panel, QTreeView &trv,
        UserPrompts &prompts);

    void mnuFileNewSource_Click();
    void mnuEditCopyListing_Click();
    void mnuEditDeleteListing_Click();
    void mnuEditSelectAll_Click();

    /// Adds a copy of a listing to the catalog and selects it.
    void AddNewShowToList(pugi::xml_node listing);

    /// Removes the listing with that node key from catalog and tree.
    void DeleteShow(const QString &key);

private:
    bool HasNextID() const;
    void ShowNew(pugi::xml_node listing);

    CatalogDocument &m_document;
    BrowseTree &m_tree;
    const ShownTypes &m_types;
    DetailPanel &m_panel;
    QTreeView &m_trv;
    UserPrompts &m_prompts;
};
