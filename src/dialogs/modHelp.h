#pragma once

#include <QString>

class UserPrompts;
class clsINI;

/// The number of the help file's table of contents.
inline constexpr int kHelpContents = 1000;

/// The program's help file, whether it is there or not.
QString HelpFilePath();

/// Shows the topic of a context number in a help file, the program's own when no path is given. A window of our own
/// keeps its place in the settings, which must outlive it.
void ShowHelp(int context, clsINI &settings, UserPrompts &prompts, const QString &path = {});
