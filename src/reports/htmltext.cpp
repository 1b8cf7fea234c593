#include "htmltext.h"

#include "flatfile.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <cstring>

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

void AppendCharacter(std::string &page, char32_t character)
{
    if (const char byte = ByteOf(character))
        page.push_back(byte);
    else
        page.append("&#").append(std::to_string(static_cast<uint>(character))).push_back(';');
}

/// The length of the ASCII text that a text starts with.
size_t PlainLength(std::string_view text)
{
    // Nearly all text is plain, so it is looked through by eight characters at a time.
    constexpr quint64 kHighBits = 0x8080808080808080;
    size_t length = 0;
    for (quint64 eight = 0; length + sizeof eight <= text.size(); length += sizeof eight) {
        std::memcpy(&eight, text.data() + length, sizeof eight);
        if ((eight & kHighBits) != 0)
            break;
    }
    return static_cast<size_t>(std::find_if_not(text.begin() + length, text.end(), kIsAscii) - text.begin());
}

} // namespace

void AppendHtmlText(std::string &page, std::string_view text)
{
    for (;;) {
        const size_t plain = PlainLength(text);
        page.append(text, 0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            return;
        const auto other = static_cast<size_t>(std::ranges::find_if(text, kIsAscii) - text.begin());
        for (const uint character : FromUtf8(text.substr(0, other)).toUcs4())
            AppendCharacter(page, character);
        text.remove_prefix(other);
    }
}
