#include "filecopy.h"

#include "atomicfile.h"
#include "contentdigest.h"
#include "flatfile.h"

std::optional<quint64> FileDigest(const QString &path)
{
    if (IsMissing(path))
        return std::nullopt;
    ContentDigester digester;
    ReadInPieces(path, [&](QByteArrayView piece) { digester.Add(piece); });
    return digester.Digest();
}

quint64 CopyWholeFile(const QString &from, const QString &to)
{
    AtomicFile copy(to, from);
    ContentDigester digester;
    ReadInPieces(from, [&](QByteArrayView piece) {
        copy.Write(piece.data(), piece.size());
        digester.Add(piece);
    });
    copy.Commit();
    return digester.Digest();
}
