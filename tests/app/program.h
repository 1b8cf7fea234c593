#pragma once

#include "failurerecorder.h"
#include "frmMain.h"
#include "programfolder.h"
#include "scriptedprompts.h"
#include "workspace.h"

#include <QTest>
#include <QTreeView>

#include <memory>

/// The real window in a program's folder of its own, with the help file in place unless taken away.
struct Program
{
    TestProgramFolder folder;
    ScriptedPrompts prompts;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<frmMain> window;
    FailureRecorder failures;

    Program()
    {
        folder.Write(ExecutableName() + QStringLiteral(".chm"), "help");
        folder.Write(QStringLiteral("formats.ini"), "[Formats]\r\nCD=Lossless\r\nFLAC=Lossless\r\nMP3=Lossy\r\n");
    }

    void Start(const QString &catalog = {}, bool sizeLimits = true)
    {
        window.reset();
        workspace = std::make_unique<Workspace>(prompts);
        window = std::make_unique<frmMain>(
            *workspace, prompts,
            frmMain::StartUp{
                .arguments = catalog.isEmpty() ? QStringList() : QStringList(catalog), .sizeLimits = sizeLimits});
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
    QTreeView *Tree() const { return window->findChild<QTreeView *>(QStringLiteral("trv")); }
    QByteArray Settings() const { return folder.Read(ExecutableName() + QStringLiteral(".ini")); }
    void WriteSettings(const QByteArray &text) const { folder.Write(ExecutableName() + QStringLiteral(".ini"), text); }
};
