#pragma once

#include "searchcriteria.h"

#include <QObject>
#include <QString>

class BrowseTree;
class CatalogDocument;
class FormatRegistry;
class QWidget;
class ShownTypes;
class UserPrompts;
class clsINI;
class clsResizeLimits;
enum class ListKind;

/// The commands that open a dialog over the main window. What follows from a dialog is told by signals.
class DialogCommands : public QObject
{
    Q_OBJECT

public:
    struct Services
    {
        CatalogDocument &document;
        BrowseTree &tree;
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

signals:
    /// A search is about to empty the tree.
    void searchStarts();
    /// The tree holds what a search has found.
    void searchFinished();
    /// A search has found nothing, which the user was told.
    void nothingFound();
    /// The setup dialog was closed.
    void typesSetUp();
    void webSourcesSetUp();

private:
    bool ShowFoundListings();

    Services m_services;
    QWidget &m_mainWindow;
    SearchCriteria m_criteria;
};
