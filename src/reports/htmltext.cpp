#include "htmltext.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <array>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace {

constexpr auto kIsAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };

#ifdef Q_OS_WIN

/// The one byte of a character in the user's code page, 0 when it has none.
char ByteOf(char32_t character)
{
    if (character > 0xFFFF || GetACP() == CP_UTF8)
        return 0;
    const auto wide = static_cast<wchar_t>(character);
    std::array<char, 4> bytes{};
    BOOL replaced = FALSE;
    const int count = WideCharToMultiByte(
        CP_ACP, WC_NO_BEST_FIT_CHARS, &wide, 1, bytes.data(), static_cast<int>(bytes.size()), nullptr, &replaced);
    return count == 1 && !replaced ? bytes[0] : '\0';
}

#else

/// The code page is UTF-8, of which only ASCII characters are single bytes.
char ByteOf(char32_t)
{
    return '\0';
}

#endif

void AppendCharacter(QByteArray &page, char32_t character)
{
    if (const char byte = ByteOf(character))
        page.append(byte);
    else
        page.append("&#").append(QByteArray::number(static_cast<uint>(character))).append(';');
}

} // namespace

void AppendHtmlText(QByteArray &page, std::string_view text)
{
    while (!text.empty()) {
        const auto plain = static_cast<size_t>(std::ranges::find_if_not(text, kIsAscii) - text.begin());
        page.append(text.data(), static_cast<qsizetype>(plain));
        text.remove_prefix(plain);
        const auto other = static_cast<size_t>(std::ranges::find_if(text, kIsAscii) - text.begin());
        for (const uint character : QString::fromUtf8(text.data(), static_cast<qsizetype>(other)).toUcs4())
            AppendCharacter(page, character);
        text.remove_prefix(other);
    }
}
