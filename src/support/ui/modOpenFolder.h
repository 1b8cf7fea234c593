#pragma once

#include <QString>
#include <QUrl>

/// What a path or address stands for: "https://…", "mailto:…" and the like are addresses, "www.…" is a web address
/// unless there is such a file, all else is a file ("C:\x" too: one letter is a drive).
QUrl AddressOf(const QString &path);

/// Opens a file or address with the system's default program for it; an empty path does nothing. Whether that works is
/// not checked.
void OpenFileWithDefaultProgram(const QString &path);
