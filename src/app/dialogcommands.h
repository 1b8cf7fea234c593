#pragma once

#include "searchcriteria.h"

#include <QObject>
#include <QString>

class BrowseTreeModel;
class CatalogDocument;
class FormatRegistry;
class QWidget;
class ShownTypes;
class TreePane;
class UserPrompts;
class clsINI;
class clsResizeLimits;
enum class ListKind;

/// The commands that open a dialog over the main window, with what follows from it.
class DialogCommands : public QObject
{
    Q_OBJECT

public:
    struct Services
    {
        CatalogDocument &document;
        TreePane &pane;
        const BrowseTreeModel &tree;
        FormatRegistry &formats;
        const ShownTypes &types;
        clsINI &settings;
        clsResizeLimits &limits;
        UserPrompts &prompts;
    };

    /// What is referred to must outlive this object.
    DialogCommands(const Services &services, QWidget &mainWindow);

    void mnuEditSearch_Click();
    void mnuListType_Click(ListKind kind);
    void mnuViewAsWebPage_Click();
    void mnuOptionsSetupTypes_Click();
    void mnuWebSourcesSetup_Click();
    void mnuFileMakeCatalogShortcut_Click();
    void mnuHelpContents_Click();
    void mnuHelpAbout_Click();

    /// Offers the catalogs of the program's folder; "" when none was chosen.
    QString SelectCatalog();

private:
    bool ShowFoundListings();

    Services m_services;
    QWidget &m_mainWindow;
    SearchCriteria m_criteria;
};
