#include "xmlwriter.h"

#include "atomicfile.h"
#include "contentdigest.h"
#include "xmlencoding.h"

#include <exception>
#include <string_view>

namespace {

constexpr qsizetype kPiece = 1 << 18;

// The document's line ends are LF; a CR is part of a text and would be read back as an LF.
void AppendXml(QByteArray &buffer, std::string_view text)
{
    for (size_t end = text.find('\r'); end != text.npos; end = text.find('\r')) {
        buffer.append(text.data(), static_cast<qsizetype>(end)).append("&#13;");
        text.remove_prefix(end + 1);
    }
    buffer.append(text.data(), static_cast<qsizetype>(text.size()));
}

class TextWriter final : public pugi::xml_writer
{
public:
    void write(const void *data, size_t size) override { AppendXml(text, {static_cast<const char *>(data), size}); }

    QByteArray text;
};

/// Takes the serialiser's text and writes it in the file's encoding. A failure is kept until Finish(): none goes
/// through the serialiser.
class FileWriter final : public pugi::xml_writer
{
public:
    FileWriter(const XmlEncoding &encoding, AtomicFile &file)
        : m_encoder(encoding),
          m_isUtf8(encoding.isUtf8()),
          m_file(file)
    {
        m_buffer.reserve(kPiece);
        WriteBytes(XmlEncoder(encoding).Start());
    }

    void write(const void *data, size_t size) override;
    /// Writes what is still to be written, and returns the digest of everything.
    quint64 Finish();

private:
    void WriteBuffer();
    void WriteBytes(const QByteArray &bytes);

    XmlEncoder m_encoder;
    bool m_isUtf8;
    AtomicFile &m_file;
    ContentDigester m_digester;
    QByteArray m_buffer;
    std::exception_ptr m_failure;
};

void FileWriter::write(const void *data, size_t size)
{
    if (m_failure)
        return;
    try {
        AppendXml(m_buffer, {static_cast<const char *>(data), size});
        if (m_buffer.size() >= kPiece)
            WriteBuffer();
    } catch (...) {
        m_failure = std::current_exception();
    }
}

void FileWriter::WriteBuffer()
{
    if (!m_isUtf8)
        m_buffer = m_encoder.Encode(m_buffer);
    WriteBytes(m_buffer);
    m_buffer.resize(0);
}

void FileWriter::WriteBytes(const QByteArray &bytes)
{
    m_file.Write(bytes.constData(), bytes.size());
    m_digester.Add(bytes);
}

quint64 FileWriter::Finish()
{
    if (m_failure)
        std::rethrow_exception(m_failure);
    WriteBuffer();
    return m_digester.Digest();
}

} // namespace

QByteArray XmlText(pugi::xml_node node)
{
    TextWriter writer;
    node.print(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return writer.text;
}

SavedXml SaveXml(
    const pugi::xml_document &document, const XmlEncoding &encoding, const QString &path, const QString &like,
    const std::function<void(quint64)> &aboutToReplace)
{
    AtomicFile file(path, like);
    FileWriter writer(encoding, file);
    document.save(writer, "\t", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    const quint64 digest = writer.Finish();
    if (aboutToReplace)
        aboutToReplace(digest);
    return {.digest = digest, .lost = file.Commit()};
}
