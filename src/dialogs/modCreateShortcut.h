#pragma once

#include <QString>

class UserPrompts;

/// Puts a shortcut on the user's desktop that starts a program with one argument; one of that name is replaced. False
/// when the system does not make it.
bool CreateDesktopShortcut(const QString &name, const QString &target, const QString &arguments);

/// The menu command: asks for a name and makes a shortcut that opens a catalog of the program's folder.
void mnuFileMakeCatalogShortcut_Click(const QString &catalogPath, UserPrompts &prompts);
