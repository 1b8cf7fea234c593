#pragma once

#include <QString>
#include <QStringList>

/// The arguments as text, without the program's name; on Windows as they were typed, all in one.
QStringList CommandLineArguments(int argc, char **argv);

/// What follows the program's name, quoted or not, in a command line of Windows.
QString AfterProgramName(const QString &commandLine);

/// The catalog named on the command line as a full path; empty when there are no arguments. All arguments are one path;
/// there are no switches. A relative path belongs to the program's folder, or to the working folder when it is not
/// there.
QString CatalogFromCommandLine(const QStringList &arguments);
