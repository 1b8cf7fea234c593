#pragma once

#include <QString>
#include <QStringList>

/// The name shown to the user: "Discbook".
QString ApplicationTitle();

/// The executable's name without folder and extension; settings and help file are named after it.
QString ExecutableName();

/// The folder in which settings, formats and catalogs live: the executable's own in a portable copy or a build tree,
/// the user's data folder in an installed layout (executable in `bin`, shipped files in `share/discbook` beside it).
QString ProgramFolder();

/// The folder of the files that come with the program and are only read (the help file): ProgramFolder() in a portable
/// copy, `share/discbook` in an installed layout.
QString SharedFolder();

/// Makes the user's data folder of an installed layout with copies of the shipped formats, pictures and samples. Does
/// nothing in a portable copy, nor when the folder holds anything: what the user deleted stays deleted. Throws
/// ProgramError when the folder cannot be made.
void PrepareProgramFolder();

/// Sets the folder that ProgramFolder() and SharedFolder() return, for tests and benchmarks.
void SetProgramFolder(const QString &folder);

/// Joins a folder and a file name with the system's separator.
QString InFolder(const QString &folder, const QString &name);

/// The path as it is opened and remembered: absolute, without "." and "..", with the system's separators. Links stay.
QString FullPath(const QString &path);

/// The path by which a file is told from all others, by whatever links it was reached; also of one that is not there.
QString CanonicalPath(const QString &path);

/// Makes a folder that is missing, and those above it. Throws ProgramError.
void MakeFolder(const QString &folder);

/// The start of a name, so short that with something added it is not too long for any file system.
QString ShortName(QString name);

/// The part of a path after its last "\" or "/"; without extension, cut before its last ".".
QString FileTitle(const QString &path, bool keepExtension = false);

/// The names (without folder) of the ordinary files in a folder that match a pattern such as "*.bmp", case ignored,
/// sorted by name without regard to case. Hidden files are left out.
QStringList FilesInFolder(const QString &folder, const QString &pattern);
