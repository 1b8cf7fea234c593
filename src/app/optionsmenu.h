#pragma once

#include <QAction>
#include <QObject>

#include <vector>

class BrowseTree;
class MainMenu;
class ShownTypes;
class TreePane;
class clsINI;
struct ViewOptions;

/// The Options menu: what the tree shows. Every choice but the filter is written to the settings at once.
class OptionsMenu : public QObject
{
    Q_OBJECT

public:
    /// All must outlive this object.
    OptionsMenu(
        MainMenu &menu, clsINI &settings, ViewOptions &options, ShownTypes &types, BrowseTree &tree, TreePane &pane);

    /// Sets the check marks from the settings.
    void LoadSettings();

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
    TreePane &m_pane;
    std::vector<QAction *> mnuEditGroupsItem;
};
