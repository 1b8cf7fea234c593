#pragma once

#include <string>
#include <string_view>

/// Appends UTF-8 text to a page as single bytes. Pages declare no charset, so a character beyond the bytes of the
/// user's code page is written as a numeric character reference. Nothing else is escaped.
void AppendHtmlText(std::string &page, std::string_view text);
