#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// The number of the system's own code page for an encoding that Qt does not know; 0 when there is none.
unsigned SystemCodePage(const QByteArray &name);

/// The text of bytes in a code page; nothing when they are not valid in it.
std::optional<QString> DecodeCodePage(QByteArrayView bytes, unsigned page);

/// The bytes of a text in a code page. What the page lacks does not come back when they are decoded.
QByteArray EncodeCodePage(QStringView text, unsigned page);
