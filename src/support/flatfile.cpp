#include "flatfile.h"

#include "atomicfile.h"
#include "failures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <array>
#include <filesystem>
#include <string>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_WIN

QByteArray EncodeLocal(const QString &text)
{
    QByteArray bytes = text.toLocal8Bit();
    if (QString::fromLocal8Bit(bytes) == text)
        return bytes;
    return "\xEF\xBB\xBF" + text.toUtf8();
}

QString DecodeLocal(const QByteArray &bytes)
{
    return QString::fromLocal8Bit(bytes);
}

#else

// What Windows-1252 has at 0x80 to 0x9F; everywhere else it is Latin-1. Its five gaps stay control characters.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString FromWindows1252(const QByteArray &bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c >= u'\x80' && c < u'\xA0')
            c = kWindows1252[c.unicode() - 0x80U];
    }
    return text;
}

// A U+FEFF at the start would be taken for a mark.
QByteArray EncodeLocal(const QString &text)
{
    return text.startsWith(QChar::ByteOrderMark) ? "\xEF\xBB\xBF" + text.toUtf8() : text.toUtf8();
}

// A file that came from a Windows system is rarely valid UTF-8 by chance.
QString DecodeLocal(const QByteArray &bytes)
{
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : FromWindows1252(bytes);
}

#endif

} // namespace

QByteArray EncodeFlatText(const QString &text)
{
    return EncodeLocal(text);
}

QString DecodeFlatText(const QByteArray &bytes)
{
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return QStringDecoder(*marked).decode(bytes);
    return DecodeLocal(bytes);
}

QString FromUtf8(std::string_view utf8)
{
    // Of several Qt takes the first away.
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    const std::string marked = utf8.starts_with(kMark) ? std::string(kMark).append(utf8) : std::string();
    const std::string_view whole = marked.empty() ? utf8 : marked;
    return QString::fromUtf8(whole.data(), static_cast<qsizetype>(whole.size()));
}

bool IsMissing(const QString &path)
{
    std::error_code error;
    return !std::filesystem::exists(QFileInfo(path).filesystemFilePath(), error) && !error;
}

void ReadInPieces(const QString &path, const std::function<void(QByteArrayView)> &take)
{
    constexpr qsizetype kPiece = 1 << 18;
    const auto fail = [&path](const QString &reason) {
        throw ProgramError(Failure::Read, reason + u": "_s + QDir::toNativeSeparators(path));
    };
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        fail(u"Not an ordinary file"_s);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        QByteArray piece(kPiece, Qt::Uninitialized);
        for (qint64 size = 0; (size = file.read(piece.data(), kPiece)) > 0;)
            take(QByteArrayView(piece).first(size));
    }
    if (file.error() != QFileDevice::NoError)
        fail(file.errorString());
}

QByteArray ReadWholeFile(const QString &path)
{
    QByteArray bytes;
    ReadInPieces(path, [&bytes](QByteArrayView piece) { bytes.append(piece); });
    return bytes;
}

void WriteFileAtomically(const QString &path, const QByteArray &bytes, const QString &like)
{
    AtomicFile file(path, like);
    file.Write(bytes.constData(), bytes.size());
    file.Commit();
}

void WriteFlatFile(const QString &path, const QString &text)
{
    WriteFileAtomically(path, EncodeFlatText(text));
}
