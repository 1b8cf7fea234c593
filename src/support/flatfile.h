#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>
#include <string_view>

/// Text of a flat file (settings, lists, logs) as bytes in the user's code page. What a Windows code page cannot hold
/// makes the whole text UTF-8 with a byte-order mark; it never becomes "?".
QByteArray EncodeFlatText(const QString &text);

/// Bytes of a flat file as text: a byte-order mark decides, else on Windows the user's code page, elsewhere UTF-8 where
/// the bytes are valid UTF-8 and Windows-1252 where they are not.
QString DecodeFlatText(const QByteArray &bytes);

/// UTF-8 as text. A U+FEFF at its start is a character like any other there, not the mark of a file.
QString FromUtf8(std::string_view utf8);

/// Whether nothing is at that path. Where the system does not say, something may be.
bool IsMissing(const QString &path);

/// Hands over a file piece by piece, an ordinary one: reading a pipe would wait for its other end, and a device may
/// have none. Throws ProgramError with the system's reason.
void ReadInPieces(const QString &path, const std::function<void(QByteArrayView)> &take);

/// The same in one piece.
QByteArray ReadWholeFile(const QString &path);

/// Puts bytes into a file in one step: written beside it, flushed to disk, then renamed over it, keeping permissions
/// (those of `like`, where that is named) and following a symbolic link. On failure the old file stays as it was and
/// ProgramError gives the system's reason.
void WriteFileAtomically(const QString &path, const QByteArray &bytes, const QString &like = {});

/// The same for text, encoded by EncodeFlatText.
void WriteFlatFile(const QString &path, const QString &text);
