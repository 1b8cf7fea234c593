#include "xmlcodec.h"

#ifdef Q_OS_WIN

#include <QHash>

#include <qt_windows.h>

using namespace Qt::StringLiterals;

namespace {

unsigned SystemCodePage(const QByteArray &name)
{
    static const QHash<QByteArray, unsigned> pages = {
        {"us-ascii", 20127U},    {"ascii", 20127U},   {"koi8-r", 20866U}, {"koi8-u", 21866U},    {"shift_jis", 932U},
        {"gb2312", 936U},        {"gbk", 936U},       {"big5", 950U},     {"euc-kr", 949U},      {"euc-jp", 51932U},
        {"iso-2022-jp", 50220U}, {"gb18030", 54936U}, {"ibm850", 850U},   {"windows-874", 874U}, {"ibm437", 437U},
    };
    const QByteArray key = name.toLower();
    if (key.startsWith("windows-125"))
        return key.mid(8).toUInt();
    if (key.startsWith("iso-8859-"))
        return 28590U + key.mid(9).toUInt();
    return pages.value(key, 0U);
}

QString DecodeCodePage(QByteArrayView bytes, unsigned page, bool &valid)
{
    const int size = static_cast<int>(bytes.size());
    QString text(size, u'\0');
    const int length = MultiByteToWideChar(
        page, MB_ERR_INVALID_CHARS, bytes.data(), size, reinterpret_cast<wchar_t *>(text.data()), size);
    valid = length > 0 || size == 0;
    text.truncate(length);
    return text;
}

QByteArray EncodeCodePage(QStringView text, unsigned page)
{
    const auto *wide = reinterpret_cast<const wchar_t *>(text.utf16());
    const int size = static_cast<int>(text.size());
    QByteArray bytes(WideCharToMultiByte(page, 0, wide, size, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(page, 0, wide, size, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes;
}

} // namespace

#else

namespace {

// Qt knows the encodings itself.
unsigned SystemCodePage(const QByteArray &)
{
    return 0;
}

QString DecodeCodePage(QByteArrayView, unsigned, bool &valid)
{
    valid = false;
    return {};
}

QByteArray EncodeCodePage(QStringView, unsigned)
{
    return {};
}

} // namespace

#endif

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
    if (m_codePage != 0) {
        bool valid = false;
        const QString text = DecodeCodePage(bytes, m_codePage, valid);
        return valid ? std::optional(text) : std::nullopt;
    }
    QStringDecoder decoder(m_name.constData(), QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() || !text.isValidUtf16() ? std::nullopt : std::optional(text);
}

QByteArray XmlCodec::Encode(QStringView text)
{
    return m_codePage == 0 ? QByteArray(m_encoder.encode(text)) : EncodeCodePage(text, m_codePage);
}
