#pragma once

#include "kit.h"
#include "workspace.h"

struct TestSurroundings
{
    TestProgramFolder folder;
    ScriptedPrompts prompts;
};

/// A workspace in a program's folder of its own, with scripted prompts.
struct TestWorkspace : TestSurroundings, Workspace
{
    TestWorkspace() : Workspace(prompts) {}

    /// Loads formats and settings, opens a catalog of these listings and reads its types; the tree is left empty.
    void Open(
        const QByteArray &listings, const QByteArray &formatLines, const QByteArray &settingLines = {},
        const QString &name = QStringLiteral("Shows"))
    {
        folder.Write(QStringLiteral("formats.ini"), "[Formats]\r\n" + formatLines);
        formats.LoadFormats();
        settings.LoadINI(folder.Write(QStringLiteral("discbook.ini"), settingLines));
        const QString path = folder.Write(name + QStringLiteral(".xml"), "<Catalog>" + listings + "</Catalog>");
        document.Load(path);
        document.SetPath(path);
        tree.LoadTypeMenu();
    }
};
