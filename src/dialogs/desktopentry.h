#pragma once

#include <QByteArray>
#include <QString>

/// The contents of a desktop entry that starts a program with one argument.
QByteArray DesktopEntry(const QString &name, const QString &target, const QString &arguments);
