#pragma once

#include "failurerecorder.h"
#include "frmMain.h"
#include "table.h"
#include "testworkspace.h"
#include "typist.h"

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
        folder.Write(ExecutableName() + QStringLiteral(".chm"), "help");
        folder.Write(QStringLiteral("formats.ini"), "[Formats]\r\nCD=Lossless\r\nFLAC=Lossless\r\nMP3=Lossy\r\n");
        if (catalog.isEmpty())
            return;
        folder.Write(QStringLiteral("Live.xml"), catalog);
        Start({QStringLiteral("Live.xml")});
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
    QTreeView *Tree() const { return window->findChild<QTreeView *>(QStringLiteral("trv")); }
    /// The first listing of the first group.
    void SelectListing() const { Tree()->setCurrentIndex(Tree()->model()->index(0, 0, Tree()->model()->index(0, 0))); }
    QByteArray Settings() const { return folder.Read(ExecutableName() + QStringLiteral(".ini")); }
    void WriteSettings(const QByteArray &text) const { folder.Write(ExecutableName() + QStringLiteral(".ini"), text); }
};
