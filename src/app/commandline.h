#pragma once

#include <QString>
#include <QStringList>

/// The catalog named on the command line as a full path; empty when there are no arguments. All arguments are one path;
/// there are no switches. A relative path belongs to the program's folder, or to the working folder when it is not
/// there.
QString CatalogFromCommandLine(const QStringList &arguments);
