#pragma once

#include "browsetree.h"
#include "catalogdocument.h"
#include "clsINI.h"
#include "formatregistry.h"
#include "programfolder.h"
#include "scriptedprompts.h"
#include "showntypes.h"
#include "walk.h"

/// A filled tree over a small catalog. FLAC and SHN are lossless, MP3 is lossy, Tape is of unknown class.
struct Shows
{
    TestProgramFolder folder;
    ScriptedPrompts prompts;
    clsINI settings{prompts};
    CatalogDocument document;
    FormatRegistry formats{prompts};
    ShownTypes types{settings};
    ViewOptions options;
    BrowseTree tree{document, formats, types, options};

    explicit Shows(const QByteArray &listings, const QString &name = QStringLiteral("Shows"))
    {
        folder.Write(
            QStringLiteral("formats.ini"), "[Formats]\r\nFLAC=Lossless\r\nMP3=Lossy\r\nSHN=Lossless\r\nTape=Reel\r\n");
        formats.LoadFormats();
        settings.LoadINI(folder.Path(QStringLiteral("discbook.ini")));
        const QString path = folder.Write(name + QStringLiteral(".xml"), "<Catalog>" + listings + "</Catalog>");
        document.Load(path);
        document.SetPath(path);
        types.LoadTypeMenu(name, document.Entries(CatalogList::RecordingTypes));
        tree.LoadShows();
    }

    ReportSource Source() { return {tree.Model(), document, formats}; }
};
