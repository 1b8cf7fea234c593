#pragma once

#include "frmMain.h"
#include "testworkspace.h"

#include <QtWidgets>

#include <memory>

/// The real window in a program's folder of its own, with the help file in place unless taken away.
struct Program : TestSurroundings
{
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<frmMain> window;
    FailureRecorder failures;

    /// Starts with that catalog, named Live; without one it is not started yet.
    explicit Program(const QByteArray &catalog = {})
    {
        folder.Write(ExecutableName() + u".chm"_s, "help");
        folder.Write(u"formats.ini"_s, "[Formats]\r\nCD=Lossless\r\nFLAC=Lossless\r\nMP3=Lossy\r\n");
        if (catalog.isEmpty())
            return;
        folder.Write(u"Live.xml"_s, catalog);
        Start({u"Live.xml"_s});
    }

    void Start(const QStringList &arguments = {}, bool sizeLimits = true)
    {
        window.reset();
        workspace = std::make_unique<Workspace>(prompts);
        window = std::make_unique<frmMain>(
            *workspace, prompts, frmMain::StartUp{.arguments = arguments, .sizeLimits = sizeLimits});
        window->Form_Load();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    QAction *Item(const char *name) const { return window->findChild<QAction *>(QLatin1StringView(name)); }
    void Choose(const char *name) const
    {
        QVERIFY2(Item(name) && Item(name)->isEnabled() && Item(name)->isVisible(), name);
        Item(name)->trigger();
    }
    QWidget &Field(const char *name) const { return *window->findChild<QWidget *>(QLatin1StringView(name)); }
    /// The control with that name, entered by Tab: what it holds is selected.
    QWidget &Enter(const char *name) const
    {
        if (window->focusWidget() != &Field(name))
            Field(name).setFocus(Qt::TabFocusReason);
        return Field(name);
    }
    QTreeView *Tree() const { return window->findChild<QTreeView *>(u"trv"_s); }
    QString CurrentKey() const { return Tree()->currentIndex().data(BrowseTreeModel::KeyRole).toString(); }
    /// What stands in the tree while it is empty.
    QString Hint() const { return Tree()->accessibleDescription(); }
    /// The first listing of the first group.
    void SelectListing() const { Tree()->setCurrentIndex(Tree()->model()->index(0, 0, Tree()->model()->index(0, 0))); }
    /// Changes the place of that listing, by a "y" before it.
    void Edit() const
    {
        SelectListing();
        QTest::keyClicks(&Field("txtVenue"), u"y"_s);
        QVERIFY(Item("mnuFileSave")->isEnabled());
    }
    QByteArray Settings() const { return folder.Read(ExecutableName() + u".ini"_s); }
    void WriteSettings(const QByteArray &text) const { folder.Write(ExecutableName() + u".ini"_s, text); }
};
