#include "modOpenFolder.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// A host with a port is no scheme, but for those that take numbers; neither is one letter, which is a drive.
bool HasScheme(const QString &path)
{
    static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]+:"_s);
    static const QRegularExpression hostWithPort(uR"(^(?!(tel|sms|fax|news|javascript):)[^:/]+:[0-9]{1,5}([/?#]|$))"_s);
    return scheme.match(path).hasMatch() && !hostWithPort.match(path).hasMatch();
}

bool IsAbsolutePath(const QString &path)
{
    static const QRegularExpression root(uR"(^([/\\]|[A-Za-z]:))"_s);
    return root.match(path).hasMatch();
}

} // namespace

QUrl AddressOf(const QString &text)
{
    const QString path = text.trimmed();
    if (HasScheme(path))
        return QUrl(path);
    const QFileInfo file(path);
    if (!IsAbsolutePath(path) && !file.exists())
        return QUrl(u"http://"_s + path);
    return QUrl::fromLocalFile(file.absoluteFilePath());
}

void OpenFileWithDefaultProgram(const QString &path)
{
    if (!path.trimmed().isEmpty())
        QDesktopServices::openUrl(AddressOf(path));
}
