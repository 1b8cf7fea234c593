#pragma once

#include "testworkspace.h"
#include "walk.h"

/// A filled tree over a small catalog. FLAC and SHN are lossless, MP3 is lossy, Tape is of unknown class.
struct Shows : TestWorkspace
{
    explicit Shows(const QByteArray &listings, const QString &name = QStringLiteral("Shows"))
    {
        Open(listings, "FLAC=Lossless\r\nMP3=Lossy\r\nSHN=Lossless\r\nTape=Reel\r\n", {}, name);
        tree.LoadShows();
    }

    ReportSource Source() { return {tree.Model(), document, formats}; }
};
