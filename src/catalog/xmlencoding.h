#pragma once

#include <QByteArray>

#include <memory>
#include <optional>

/// The encoding of an XML file: the name by which Qt knows it and whether the file starts with a byte-order mark.
/// A new catalog is UTF-8 without one.
struct XmlEncoding
{
    QByteArray name = QByteArrayLiteral("UTF-8");
    bool byteOrderMark = false;

    bool isUtf8() const { return name == "UTF-8"; }
};

/// The encoding that a file's first bytes tell: byte-order mark, else the pattern of its first characters, else the
/// declaration, else UTF-8. Nothing when the declaration names an encoding that nobody here can read, or one in which
/// it could not stand there as it does.
std::optional<XmlEncoding> DetectXmlEncoding(QByteArrayView head);

/// The bytes (with their byte-order mark) as UTF-8 without one; nothing when they are not valid in that encoding.
std::optional<QByteArray> DecodeXml(QByteArrayView bytes, const XmlEncoding &encoding);

/// Turns the serialiser's UTF-8 into a file's bytes piece by piece. A character that the encoding lacks becomes a
/// character reference.
class XmlEncoder
{
public:
    explicit XmlEncoder(XmlEncoding encoding);
    ~XmlEncoder();
    XmlEncoder(const XmlEncoder &) = delete;
    XmlEncoder &operator=(const XmlEncoder &) = delete;

    /// What stands before the first character: the byte-order mark or nothing.
    QByteArray Start() const;

    /// The bytes of the next piece; a piece may end inside a character.
    QByteArray Encode(QByteArrayView utf8);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
