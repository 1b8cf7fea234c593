#pragma once

#include <QString>
#include <QUrl>

/// What a path or address stands for, blanks around it apart: "https://…", "mailto:…" and the like are addresses,
/// absolute paths ("C:\x" too) and names of existing files are files, all else ("example.org", "host:8080/x") is a web
/// address without its "http://".
QUrl AddressOf(const QString &text);

/// Opens a file or address with the system's default program for it; a path of nothing but blanks does nothing. Whether
/// that works is not checked.
void OpenFileWithDefaultProgram(const QString &path);
