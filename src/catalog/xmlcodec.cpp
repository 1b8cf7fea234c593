#include "xmlcodec.h"

#include "codepages.h"

XmlCodec::XmlCodec(const QByteArray &name)
    : m_name(name),
      m_encoder(name.constData()),
      m_codePage(m_encoder.isValid() ? 0 : SystemCodePage(name))
{
}

std::optional<QByteArray> XmlCodec::KnownName(const QByteArray &name)
{
    const QStringDecoder decoder(name.constData());
    if (decoder.isValid())
        return QByteArray(decoder.name());
    return SystemCodePage(name) == 0 ? std::nullopt : std::optional(name);
}

std::optional<QString> XmlCodec::Decode(QByteArrayView bytes) const
{
    if (m_codePage != 0)
        return DecodeCodePage(bytes, m_codePage);
    QStringDecoder decoder(m_name.constData(), QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() || !text.isValidUtf16() ? std::nullopt : std::optional(text);
}

QByteArray XmlCodec::Encode(QStringView text)
{
    return m_codePage == 0 ? QByteArray(m_encoder.encode(text)) : EncodeCodePage(text, m_codePage);
}
