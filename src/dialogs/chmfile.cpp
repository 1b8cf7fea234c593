#include "chmfile.h"

#include "failures.h"

#include <chm_lib.h>

#include <QDir>
#include <QFile>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

/// No page or picture of a help file comes near; a damaged file may claim anything.
constexpr LONGUINT64 kLargestFile = 64ULL * 1024 * 1024;

/// What a part of the system file is about.
enum SystemCode : quint16 { ContentsFileCode = 0, FirstPageCode = 2, TitleCode = 3 };

template<class Number>
Number NumberAt(const QByteArray &bytes, qsizetype at)
{
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

QString TextAt(const QByteArray &bytes, qsizetype at)
{
    return QString::fromUtf8(bytes.sliced(at, qMax<qsizetype>(0, bytes.indexOf('\0', at) - at)));
}

bool Resolve(chmFile *file, const QString &name, chmUnitInfo &info)
{
    const QByteArray path = (name.startsWith(u'/') ? name : u'/' + name).toUtf8();
    return path.size() < CHM_MAX_PATHLEN && chm_resolve_object(file, path.constData(), &info) == CHM_RESOLVE_SUCCESS;
}

} // namespace

void ChmFile::Close::operator()(chmFile *file) const
{
    chm_close(file);
}

ChmFile::ChmFile(const QString &path) : m_file(chm_open(QFile::encodeName(path).constData()))
{
    if (!m_file)
        throw ProgramError(Failure::BadFile, u"Not a help file: "_s + QDir::toNativeSeparators(path));
    ReadSystem();
    ReadTopics();
}

std::optional<QByteArray> ChmFile::Read(const QString &name) const
{
    chmUnitInfo info{};
    if (!Resolve(m_file.get(), name, info) || info.length > kLargestFile)
        return {};
    QByteArray bytes(static_cast<qsizetype>(info.length), Qt::Uninitialized);
    const LONGINT64 read = chm_retrieve_object(
        m_file.get(), &info, reinterpret_cast<unsigned char *>(bytes.data()), 0, static_cast<LONGINT64>(info.length));
    if (read != static_cast<LONGINT64>(info.length))
        return {};
    return bytes;
}

/// A version number, then parts of code, length and contents.
void ChmFile::ReadSystem()
{
    constexpr qsizetype kVersionSize = 4;
    constexpr qsizetype kHeadSize = 4;
    const QByteArray system = Read(u"#SYSTEM"_s).value_or(QByteArray());
    for (qsizetype at = kVersionSize; at + kHeadSize <= system.size();) {
        const auto code = NumberAt<quint16>(system, at);
        const auto length = NumberAt<quint16>(system, at + 2);
        at += kHeadSize;
        if (at + length > system.size())
            return;
        const QString text = TextAt(system.sliced(at, length), 0);
        if (code == ContentsFileCode)
            m_contentsFile = text;
        else if (code == FirstPageCode)
            m_firstPage = text;
        else if (code == TitleCode)
            m_title = text;
        at += length;
    }
}

/// The size of the list, then pairs of a context number and the place of a page's name in the table of texts.
void ChmFile::ReadTopics()
{
    constexpr qsizetype kPairSize = 8;
    const QByteArray topics = Read(u"#IVB"_s).value_or(QByteArray());
    const QByteArray strings = Read(u"#STRINGS"_s).value_or(QByteArray());
    for (qsizetype at = 4; at + kPairSize <= topics.size(); at += kPairSize) {
        const auto place = NumberAt<quint32>(topics, at + 4);
        if (place < static_cast<quint64>(strings.size()))
            m_topicPages.insert(NumberAt<quint32>(topics, at), TextAt(strings, place));
    }
}

QString ChmFile::TopicPage(int context) const
{
    const QString page = m_topicPages.value(static_cast<quint32>(context));
    chmUnitInfo info{};
    return !page.isEmpty() && Resolve(m_file.get(), page.section(u'#', 0, 0), info) ? page : m_firstPage;
}
