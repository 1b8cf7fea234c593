#pragma once

class QString;

/// Shows the topic of a context number in a help file by HTML Help of Windows, whose windows close when the program
/// ends. Throws ProgramError when there is no HTML Help or no window of it comes up.
void ShowHtmlHelp(const QString &path, int context);
