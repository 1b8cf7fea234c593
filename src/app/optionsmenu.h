#pragma once

#include <QAction>
#include <QObject>

#include <vector>

class BrowseTree;
class MainMenu;
class QTreeView;
class ShownTypes;
class clsINI;
struct ViewOptions;

/// The Options menu: what the tree shows. Every choice but the filter is written to the settings at once.
class OptionsMenu : public QObject
{
    Q_OBJECT

public:
    /// `trv` shows the tree's model. All must outlive this object.
    OptionsMenu(
        MainMenu &menu, clsINI &settings, ViewOptions &options, ShownTypes &types, BrowseTree &tree, QTreeView &trv);

    /// Sets the check marks from the settings.
    void LoadSettings();

signals:
    /// The tree is to be loaded anew.
    void reloadWanted();
    /// A type was shown or hidden: the types are to be read anew, then the tree.
    void typesChosen();

private:
    void mnuViewFilter_Click(int index);
    void mnuEditGroupsItem_Click(int index);
    void mnuEditShowWrongDate_Click();
    void mnuEditShowYearTotals_Click();
    void mnuOptionsOpenMRUOnStartup_Click();

    void ShowTypes();
    QAction *AddTypeItem();

    MainMenu &m_menu;
    clsINI &m_settings;
    ViewOptions &m_options;
    ShownTypes &m_types;
    BrowseTree &m_tree;
    QTreeView &m_trv;
    std::vector<QAction *> mnuEditGroupsItem;
};
