#pragma once

#include "flatfile.h"
#include "paths.h"
#include "prompts.h"
#include "workspace.h"

#include <QTemporaryDir>

/// Prompts for work that asks nothing.
class NoPrompts : public UserPrompts
{
public:
    Answer Message(const QString &, const QString &, Icon, Buttons) override { return Answer::Cancel; }
    QString Input(const QString &, const QString &, const QString &) override { return {}; }
    QString OpenFile(const FileRequest &) override { return {}; }
    QString SaveFile(const FileRequest &) override { return {}; }
    void OpenWithDefaultProgram(const QString &) override {}
};

/// A program's folder that knows the formats of the made-up catalogs.
class BenchFolder
{
public:
    BenchFolder()
    {
        SetProgramFolder(m_dir.path());
        WriteFileAtomically(
            InFolder(m_dir.path(), QStringLiteral("formats.ini")),
            "[Formats]\r\nCD=Lossless\r\nDVD=Lossless\r\nFLAC=Lossless\r\nMP3=Lossy\r\nSHN=Lossless\r\nTape=Lossy\r\n");
    }

    QString Path(const QString &name) const { return InFolder(m_dir.path(), name); }

private:
    QTemporaryDir m_dir;
};

struct NoSurroundings
{
    BenchFolder folder;
    NoPrompts prompts;
};

/// Everything between a catalog file and the filled tree model, without the window.
struct OpenProgram : NoSurroundings, Workspace
{
    OpenProgram() : Workspace(prompts)
    {
        settings.LoadINI(folder.Path(QStringLiteral("discbook.ini")));
        formats.LoadFormats();
    }

    bool Open(const QString &path)
    {
        if (document.Load(path) != CatalogDocument::LoadResult::Loaded)
            return false;
        document.SetPath(path);
        tree.LoadTypeMenu();
        return tree.LoadShows();
    }
};
