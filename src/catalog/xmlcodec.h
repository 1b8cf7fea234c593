#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>

#include <optional>

/// Turns bytes of one named encoding into text and text into bytes.
class XmlCodec
{
public:
    explicit XmlCodec(const QByteArray &name);

    /// The usual name of an encoding; nothing when it is unknown.
    static std::optional<QByteArray> KnownName(const QByteArray &name);

    /// A whole text; nothing when the bytes are not valid.
    std::optional<QString> Decode(QByteArrayView bytes) const;
    /// The next piece of a text. What the encoding lacks becomes some other character.
    QByteArray Encode(QStringView text);

private:
    QByteArray m_name;
    QStringEncoder m_encoder;
    unsigned m_codePage; ///< of the system, for what Qt does not know; else 0
};
