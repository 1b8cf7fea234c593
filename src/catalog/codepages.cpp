#include "codepages.h"

#ifdef Q_OS_WIN

#include <QHash>

#include <qt_windows.h>

#include <algorithm>

namespace {

constexpr unsigned kEucJp = 20932;
constexpr unsigned kIso2022Jp = 50220;

bool HasHighBit(char byte)
{
    return static_cast<unsigned char>(byte) >= 0x80;
}

// Whether a byte of EUC-JP starts a character of two.
bool IsLead(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value == 0x8E || value >= 0xA1;
}

// Characters of Japan's supplementary set are 0x8F and two bytes with the high bit. The system leaves the 0x8F away and
// takes the second high bit instead.
constexpr char kSupplementary = '\x8F';

std::optional<QByteArray> ToSystemEucJp(QByteArrayView bytes)
{
    QByteArray result;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const bool supplementary = bytes[i] == kSupplementary;
        i += supplementary ? 1 : 0;
        if (!supplementary && !IsLead(bytes[i])) {
            result += bytes[i];
            continue;
        }
        if (i + 1 >= bytes.size() || !IsLead(bytes[i]) || !HasHighBit(bytes[i + 1]))
            return std::nullopt;
        const char second = bytes[i + 1];
        result += bytes[i++];
        result += supplementary ? static_cast<char>(second & 0x7F) : second;
    }
    return result;
}

QByteArray FromSystemEucJp(const QByteArray &bytes)
{
    QByteArray result;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (!IsLead(bytes[i]) || i + 1 >= bytes.size()) {
            result += bytes[i];
            continue;
        }
        if (!HasHighBit(bytes[i + 1]))
            result += kSupplementary;
        result += bytes[i++];
        result += static_cast<char>(bytes[i] | '\x80');
    }
    return result;
}

std::optional<QString> Decode(QByteArrayView bytes, unsigned page, DWORD flags)
{
    const int size = static_cast<int>(bytes.size());
    QString text(size, u'\0');
    const int length =
        MultiByteToWideChar(page, flags, bytes.data(), size, reinterpret_cast<wchar_t *>(text.data()), size);
    text.truncate(length);
    return length > 0 || size == 0 ? std::optional(text) : std::nullopt;
}

// The system does not tell what is invalid in it, and takes no flag that asks for that.
std::optional<QString> DecodeIso2022Jp(QByteArrayView bytes)
{
    if (std::any_of(bytes.begin(), bytes.end(), HasHighBit))
        return std::nullopt;
    auto text = Decode(bytes, kIso2022Jp, 0);
    return text && !text->contains(QChar::ReplacementCharacter) ? text : std::nullopt;
}

} // namespace

unsigned SystemCodePage(const QByteArray &name)
{
    static const QHash<QByteArray, unsigned> pages = {
        {"us-ascii", 20127U},
        {"ascii", 20127U},
        {"koi8-r", 20866U},
        {"koi8-u", 21866U},
        {"shift_jis", 932U},
        {"gb2312", 936U},
        {"gbk", 936U},
        {"big5", 950U},
        {"euc-kr", 949U},
        {"euc-jp", kEucJp},
        {"ibm850", 850U},
        {"windows-874", 874U},
        {"iso-2022-jp", kIso2022Jp},
        {"gb18030", 54936U},
        {"ibm437", 437U},
    };
    const QByteArray key = name.toLower();
    if (key.startsWith("windows-125"))
        return key.mid(8).toUInt();
    if (key.startsWith("iso-8859-"))
        return 28590U + key.mid(9).toUInt();
    return pages.value(key, 0U);
}

std::optional<QString> DecodeCodePage(QByteArrayView bytes, unsigned page)
{
    if (page == kIso2022Jp)
        return DecodeIso2022Jp(bytes);
    if (page != kEucJp)
        return Decode(bytes, page, MB_ERR_INVALID_CHARS);
    const auto system = ToSystemEucJp(bytes);
    return system ? Decode(*system, page, MB_ERR_INVALID_CHARS) : std::nullopt;
}

QByteArray EncodeCodePage(QStringView text, unsigned page)
{
    const auto *wide = reinterpret_cast<const wchar_t *>(text.utf16());
    const int size = static_cast<int>(text.size());
    QByteArray bytes(WideCharToMultiByte(page, 0, wide, size, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(page, 0, wide, size, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return page == kEucJp ? FromSystemEucJp(bytes) : bytes;
}

#else

// Qt knows the encodings itself.
unsigned SystemCodePage(const QByteArray &)
{
    return 0;
}

std::optional<QString> DecodeCodePage(QByteArrayView, unsigned)
{
    return std::nullopt;
}

QByteArray EncodeCodePage(QStringView, unsigned)
{
    return {};
}

#endif
