#pragma once

#include <QByteArrayView>

/// Elements nested deeper than this make a file unreadable; no catalog comes near.
inline constexpr int kMaxXmlDepth = 1000;

/// Whether XML allows a character.
constexpr bool IsXmlCharacter(char32_t c)
{
    if (c < 0x20)
        return c == '\t' || c == '\n' || c == '\r';
    return c < 0xD800 || (c > 0xDFFF && c < 0xFFFE) || (c > 0xFFFF && c <= 0x10FFFF);
}

/// What the check of a document's text tells.
enum class XmlForm {
    Malformed,
    Simple, ///< fields hold nothing but text, so that the parser tells layout from data
    Mixed,  ///< a field has elements, comments, instructions or CDATA, or text stands outside of fields
};

/// Checks whether UTF-8 text (without a byte-order mark) is a well-formed XML document in those points that the parser
/// lets pass: valid UTF-8 without forbidden control characters, declaration and document type by their grammar, one
/// document element with nothing but comments and instructions beside them, no repeated attribute, only the five
/// entities of XML and references to allowed characters, no "]]>" in text, bounded nesting. One linear pass; what the
/// parser checks itself (matching end tags) is left to it. A field is any element inside the document element but an
/// Item directly in it.
XmlForm CheckXml(QByteArrayView utf8);
