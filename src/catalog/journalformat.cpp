#include "journalformat.h"

#include "contentdigest.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

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

constexpr qsizetype kBeforeContent = sizeof(quint64) + sizeof(quint32); ///< the digest and the size of a record

/// Where the record there would end; nothing when that is behind the end of all.
std::optional<qsizetype> EndOfRecord(const QByteArray &bytes, qsizetype at)
{
    const qsizetype rest = bytes.size() - at - kBeforeContent;
    if (rest < 0)
        return std::nullopt;
    const qsizetype size = qFromBigEndian<quint32>(bytes.constData() + at + sizeof(quint64));
    return size <= rest ? std::optional(at + kBeforeContent + size) : std::nullopt;
}

/// The content of the record there, as long as the bytes are; nothing when it is not whole.
std::optional<QByteArray> RecordAt(const QByteArray &bytes, qsizetype at)
{
    const auto end = EndOfRecord(bytes, at);
    if (!end)
        return std::nullopt;
    const qsizetype from = at + kBeforeContent;
    const auto content = QByteArray::fromRawData(bytes.constData() + from, *end - from);
    const bool isWhole = qFromBigEndian<quint64>(bytes.constData() + at) == ContentDigest(content);
    return isWhole ? std::optional(content) : std::nullopt;
}

/// Whether these are no more than what a death in the middle of writing leaves: nothing that was ever written, or a
/// record that was cut off. One whose size is damaged seems to be that too, but for the records behind it.
bool IsCutOff(const QByteArray &rest)
{
    if (rest.count('\0') == rest.size())
        return true;
    if (EndOfRecord(rest, 0))
        return false;
    for (qsizetype at = 1; at < rest.size(); ++at) {
        if (RecordAt(rest, at))
            return false;
    }
    return true;
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

bool TakeHead(JournalContents &contents, const QByteArray &head)
{
    QDataStream stream(head);
    QByteArray catalog;
    if (!Unpack(stream, catalog, contents.digest))
        return false;
    contents.catalog = QString::fromUtf8(catalog);
    return true;
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

JournalContents ReadJournal(const QByteArray &bytes)
{
    JournalContents contents;
    const bool isMarked = bytes.startsWith(kMark);
    qsizetype at = isMarked ? kMark.size() : 0;
    const auto takeNext = [&] {
        const auto record = RecordAt(bytes, at);
        if (!record || !(at == kMark.size() ? TakeHead(contents, *record) : TakeRecord(contents, *record)))
            return false;
        at += kBeforeContent + record->size();
        return true;
    };
    while (isMarked && at < bytes.size() && takeNext())
        ;
    contents.isWhole = at == bytes.size() && !contents.catalog.isEmpty();
    contents.isDamaged = !kMark.startsWith(bytes) && !IsCutOff(bytes.sliced(at));
    return contents;
}
