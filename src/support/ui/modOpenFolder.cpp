#include "modOpenFolder.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

QUrl AddressOf(const QString &path)
{
    static const QRegularExpression scheme(u"^[A-Za-z][A-Za-z0-9+.-]+:"_s);
    if (scheme.match(path).hasMatch()) {
        return QUrl(path);
    }
    const QFileInfo file(path);
    if (path.startsWith(u"www."_s, Qt::CaseInsensitive) && !file.exists()) {
        return QUrl(u"http://"_s + path);
    }
    return QUrl::fromLocalFile(file.absoluteFilePath());
}

void OpenFileWithDefaultProgram(const QString &path)
{
    if (!path.isEmpty()) {
        QDesktopServices::openUrl(AddressOf(path));
    }
}
