#include "journalformat.h"

#include "contentdigest.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace {

constexpr QByteArrayView kMark("Discbook journal 1\n");
constexpr QByteArrayView kAnyMark("Discbook journal ");
constexpr quint8 kSaving = 3; ///< where an edit has its kind

template<class... Values>
QByteArray Packed(const Values &...values)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    (stream << ... << values);
    return bytes;
}

/// Whether there was all of it.
template<class... Values>
bool Unpack(QDataStream &stream, Values &...values)
{
    stream.setVersion(QDataStream::Qt_6_0);
    (stream >> ... >> values);
    return stream.status() == QDataStream::Ok;
}

template<class... Values>
QByteArray Record(const Values &...values)
{
    const QByteArray content = Packed(values...);
    return Packed(ContentDigest(content), content);
}

/// The next record's content; nothing at the end, and when it is not whole.
std::optional<QByteArray> NextRecord(QDataStream &stream)
{
    quint64 digest = 0;
    QByteArray content;
    const bool isWhole = Unpack(stream, digest, content) && digest == ContentDigest(content);
    return isWhole ? std::optional(content) : std::nullopt;
}

/// The edit of a record, its text made whole from that of the earlier edit; nothing for what no edit has.
std::optional<CatalogEdit> EditOf(const QByteArray &record, CatalogEdits &before)
{
    QDataStream stream(record);
    CatalogEdit edit;
    quint8 kind = 0;
    quint32 start = 0;
    quint32 end = 0;
    QByteArray middle;
    if (!Unpack(stream, kind, edit.id, edit.place, start, end, middle) || kind > quint8(CatalogEdit::Kind::Entries))
        return std::nullopt;
    edit.kind = static_cast<CatalogEdit::Kind>(kind);
    if (qsizetype(start) + qsizetype(end) > before.Earlier(edit).size())
        return std::nullopt;
    edit.text = before.TakeText(edit); // not copied for each key that was typed
    edit.text.replace(start, edit.text.size() - start - end, middle);
    return edit;
}

/// Takes up what a record tells; false when it makes no sense.
bool TakeRecord(JournalContents &contents, const QByteArray &record)
{
    QDataStream stream(record);
    quint8 kind = 0;
    if (Unpack(stream, kind) && kind == kSaving) {
        contents.laterEdits = {};
        return Unpack(stream, contents.savedAs);
    }
    auto edit = EditOf(record, contents.edits);
    if (!edit)
        return false;
    if (contents.savedAs != 0)
        contents.laterEdits.Take(*edit);
    contents.edits.Take(std::move(*edit));
    return true;
}

} // namespace

QByteArray JournalHead(const QString &catalog, quint64 digest)
{
    return kMark.toByteArray() + Record(catalog.toUtf8(), digest);
}

QByteArray JournalRecord(const CatalogEdit &edit, const QByteArray &earlier)
{
    const QByteArray &text = edit.text;
    const auto start = std::ranges::mismatch(text, earlier).in1 - text.begin();
    const auto most = std::min(text.size(), earlier.size()) - start;
    const auto end = std::mismatch(text.rbegin(), text.rbegin() + most, earlier.rbegin()).first - text.rbegin();
    const QByteArray middle = text.sliced(start, text.size() - start - end);
    return Record(quint8(edit.kind), edit.id, edit.place, quint32(start), quint32(end), middle);
}

QByteArray SavingRecord(quint64 digest)
{
    return Record(kSaving, digest);
}

// A beginning of our own mark is a journal that was cut off.
bool IsOfLaterFormat(const QByteArray &bytes)
{
    return bytes.startsWith(kAnyMark) && !bytes.startsWith(kMark) && !kMark.startsWith(bytes);
}

std::optional<JournalContents> ReadJournal(const QByteArray &bytes)
{
    if (!bytes.startsWith(kMark))
        return std::nullopt;
    QDataStream stream(bytes);
    stream.skipRawData(static_cast<int>(kMark.size()));
    const auto head = NextRecord(stream);
    if (!head)
        return std::nullopt;
    JournalContents contents;
    QByteArray catalog;
    QDataStream headStream(*head);
    if (!Unpack(headStream, catalog, contents.digest))
        return std::nullopt;
    contents.catalog = QString::fromUtf8(catalog);
    while (!stream.atEnd()) {
        const auto record = NextRecord(stream);
        if (!record || !TakeRecord(contents, *record))
            return contents;
    }
    contents.isWhole = true;
    return contents;
}
