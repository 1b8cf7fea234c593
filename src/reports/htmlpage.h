#pragma once

#include "walk.h"

#include <QString>

/// What a page holds besides a row with the main fields of each listing.
struct PageOptions
{
    bool format = false; ///< a column
    bool setList = false;
    bool comments = false;
    bool notes = false;
};

/// Writes the listings of the tree that are held in some format as one HTML table. Texts are written as they are,
/// markup characters included. Throws ProgramError; the file is then as it was.
void WriteHtmlPage(const QString &path, const QString &title, const PageOptions &options, const ReportSource &source);
