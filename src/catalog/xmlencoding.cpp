#include "xmlencoding.h"

#include "xmlcodec.h"

#include <pugixml.hpp>

#include <QHash>
#include <QStringDecoder>

#include <array>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

struct Signature
{
    std::string_view bytes;
    const char *name;
};

// The longer before those that they start with.
constexpr std::array kByteOrderMarks = {
    Signature{"\xEF\xBB\xBF"sv, "UTF-8"},    Signature{"\xFF\xFE\0\0"sv, "UTF-32LE"},
    Signature{"\0\0\xFE\xFF"sv, "UTF-32BE"}, Signature{"\xFF\xFE"sv, "UTF-16LE"},
    Signature{"\xFE\xFF"sv, "UTF-16BE"},
};

// "<" and what follows it in every document.
constexpr std::array kFirstCharacters = {
    Signature{"<\0\0\0"sv, "UTF-32LE"},
    Signature{"\0\0\0<"sv, "UTF-32BE"},
    Signature{"<\0"sv, "UTF-16LE"},
    Signature{"\0<"sv, "UTF-16BE"},
};

template<size_t Count>
const Signature *FindSignature(const std::array<Signature, Count> &signatures, std::string_view head)
{
    for (const Signature &signature : signatures) {
        if (head.starts_with(signature.bytes))
            return &signature;
    }
    return nullptr;
}

std::string_view ByteOrderMark(const XmlEncoding &encoding)
{
    if (encoding.byteOrderMark) {
        for (const Signature &mark : kByteOrderMarks) {
            if (encoding.name == mark.name)
                return mark.bytes;
        }
    }
    return {};
}

bool IsUnicode(const QByteArray &name)
{
    return name.startsWith("UTF-");
}

// Otherwise the declaration would not say what it was just read to say. Two characters that the older Asian encodings
// have their own signs for are left out.
bool KeepsAscii(const QByteArray &name)
{
    QByteArray ascii;
    for (char c = ' '; c < '~'; ++c) {
        if (c != '\\')
            ascii += c;
    }
    return XmlCodec(name).Encode(QString::fromLatin1(ascii)) == ascii;
}

std::optional<XmlEncoding> DeclaredEncoding(std::string_view head)
{
    const size_t end = head.find("?>"sv);
    if (!head.starts_with("<?xml"sv) || end == head.npos)
        return XmlEncoding{};
    pugi::xml_document document;
    document.load_buffer(head.data(), end + 2, pugi::parse_declaration | pugi::parse_fragment, pugi::encoding_utf8);
    const pugi::xml_attribute declared = document.first_child().attribute("encoding");
    if (!declared)
        return XmlEncoding{};
    const auto name = XmlCodec::KnownName(declared.value());
    if (!name || !KeepsAscii(*name))
        return std::nullopt;
    return XmlEncoding{*name, false};
}

} // namespace

std::optional<XmlEncoding> DetectXmlEncoding(QByteArrayView head)
{
    const std::string_view start(head.data(), static_cast<size_t>(head.size()));
    if (const Signature *mark = FindSignature(kByteOrderMarks, start))
        return XmlEncoding{mark->name, true};
    if (const Signature *first = FindSignature(kFirstCharacters, start))
        return XmlEncoding{first->name, false};
    return DeclaredEncoding(start);
}

std::optional<QByteArray> DecodeXml(QByteArrayView bytes, const XmlEncoding &encoding)
{
    const QByteArrayView content = bytes.sliced(static_cast<qsizetype>(ByteOrderMark(encoding).size()));
    const auto text = XmlCodec(encoding.name).Decode(content);
    // The Unicode decoders overlook a cut-off character and codes beyond the last one.
    if (!text || (IsUnicode(encoding.name) && XmlCodec(encoding.name).Encode(*text) != content))
        return std::nullopt;
    return text->toUtf8();
}

struct XmlEncoder::State
{
    explicit State(XmlEncoding kept) : encoding(std::move(kept)), codec(encoding.name) {}

    bool Lacks(char32_t c);
    QString WithReferences(const QString &text);

    XmlEncoding encoding;
    XmlCodec codec;
    QStringDecoder fromUtf8{QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom};
    QHash<char32_t, bool> lacking;
};

// Encoders differ in how they tell; what comes back from the bytes does not.
bool XmlEncoder::State::Lacks(char32_t c)
{
    const auto known = lacking.constFind(c);
    if (known != lacking.constEnd())
        return *known;
    const QString text = QString::fromUcs4(&c, 1);
    XmlCodec probe(encoding.name);
    const bool lacks = probe.Decode(probe.Encode(text)) != text;
    lacking.insert(c, lacks);
    return lacks;
}

QString XmlEncoder::State::WithReferences(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const char32_t c : text.toUcs4()) {
        if (Lacks(c))
            result += u"&#%1;"_s.arg(static_cast<quint32>(c));
        else
            result += QChar::fromUcs4(c);
    }
    return result;
}

XmlEncoder::XmlEncoder(XmlEncoding encoding) : m_state(std::make_unique<State>(std::move(encoding))) {}

XmlEncoder::~XmlEncoder() = default;

QByteArray XmlEncoder::Start() const
{
    const std::string_view mark = ByteOrderMark(m_state->encoding);
    return {mark.data(), static_cast<qsizetype>(mark.size())};
}

QByteArray XmlEncoder::Encode(QByteArrayView utf8)
{
    if (m_state->encoding.isUtf8())
        return utf8.toByteArray();
    const QString text = m_state->fromUtf8.decode(utf8);
    return m_state->codec.Encode(IsUnicode(m_state->encoding.name) ? text : m_state->WithReferences(text));
}
