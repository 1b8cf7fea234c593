#pragma once

#include <optional>
#include <string_view>
#include <vector>

/// Whether every "&" starts a reference to a character that XML allows or to one of the five entities; inside a
/// document type, to any entity.
bool HasOnlyReferences(std::string_view text, bool toAnyEntity = false);

/// A place in XML text that moves forward over what is expected there. Whatever returns false has found something else;
/// the place means nothing then.
class XmlCursor
{
public:
    explicit XmlCursor(std::string_view text) : m_at(text.data()), m_end(text.data() + text.size()) {}

    std::string_view Rest() const { return {m_at, static_cast<size_t>(m_end - m_at)}; }
    bool AtEnd() const { return m_at == m_end; }
    void Skip(size_t count) { m_at += count; }

    bool Take(std::string_view expected);
    bool SkipBehind(std::string_view end);
    bool SkipBehind(char end);
    /// Whether there were any.
    bool SkipBlanks();
    /// The name here, empty when there is none.
    std::string_view TakeName();
    /// The same for characters of a name in any order, a digit first too.
    std::string_view TakeToken();
    /// The value between quotes, nothing when there is none.
    std::optional<std::string_view> TakeQuoted();
    /// What stands behind "<!--".
    bool TakeComment();
    /// What stands behind "<?"; no declaration.
    bool TakeInstruction();
    /// Attributes up to the first thing that is none: each behind a blank, none repeated, none with a "<".
    bool TakeAttributes();

private:
    bool TakeValue();
    bool HasRepeatedName();

    const char *m_at;
    const char *m_end;
    std::vector<std::string_view> m_names; ///< of the attributes of one element
};
