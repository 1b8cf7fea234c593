#pragma once

#include "prompts.h"

#include <QStringList>

class QWidget;

/// A filter of the program, "description|pattern|description|pattern", as name filters of Qt. Patterns are separated by
/// ";";
/// "*.*" means every file, one without a dot in its name too.
QStringList NameFilters(const QString &filter);

/// Shows the open dialog and returns the full path of an existing file, empty when cancelled.
QString OpenFileDialog(QWidget *owner, const UserPrompts::FileRequest &request);

/// Shows the save dialog and returns the full path, with the default extension unless the name ends in one of the
/// filter's; empty when cancelled. Asks before an existing file is chosen, and before a new one would be made.
QString SaveFileDialog(QWidget *owner, const UserPrompts::FileRequest &request);
