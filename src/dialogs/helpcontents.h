#pragma once

#include <QString>

#include <vector>

/// A line of a help file's table of contents.
struct HelpTopic
{
    QString title;
    QString page; ///< may name a place in a page, "page.html#place"; "" for a mere heading
    int level;    ///< 0 for the outermost ones
};

/// Reads a table of contents: nested lists of objects with a name and a page.
std::vector<HelpTopic> ReadHelpContents(const QString &html);
