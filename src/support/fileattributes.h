#pragma once

#include <QString>
#include <QStringList>

/// Gives a file that is open and belongs to its owner alone what another file has: owner and group, permissions,
/// extended attributes, access lists among them. Where that does not work it goes on, and never gives anybody more
/// rights than the other file does. Returns what it could not give, in the user's words.
QStringList CopyAttributes(const QString &from, int handle);
