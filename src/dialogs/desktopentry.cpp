#include "desktopentry.h"

using namespace Qt::StringLiterals;

namespace {

/// A text as the value of a key. Blanks at its start would be taken for layout.
QString EscapedValue(QString text)
{
    text.replace(u"\\"_s, u"\\\\"_s);
    text.replace(u"\n"_s, u"\\n"_s);
    text.replace(u"\r"_s, u"\\r"_s);
    text.replace(u"\t"_s, u"\\t"_s);
    if (text.startsWith(u' '))
        text.replace(0, 1, u"\\s"_s);
    return text;
}

/// A text as one argument of the command line, quoted whole. "%" would start a field code.
QString QuotedArgument(QString text)
{
    text.replace(u"\\"_s, u"\\\\"_s);
    for (const QChar c : {u'"', u'`', u'$'})
        text.replace(c, u'\\' + QString(c));
    text.replace(u"%"_s, u"%%"_s);
    return u'"' + text + u'"';
}

/// The command that starts a program. Its own path may hold neither a field code nor "=" (desktops look for the program
/// under the text as it stands in the file), so that a shell starts one that does.
QString Command(const QString &target, const QString &arguments)
{
    QString command = QuotedArgument(target) + u' ' + QuotedArgument(arguments);
    if (!target.contains(u'%') && !target.contains(u'='))
        return command;
    return u"/bin/sh -c "_s + QuotedArgument(u"exec \"$0\" \"$1\""_s) + u' ' + command;
}

} // namespace

QByteArray DesktopEntry(const QString &name, const QString &target, const QString &arguments)
{
    // The quoting of the command line is inside the value, so that its backslashes are doubled once more.
    const QString command = EscapedValue(Command(target, arguments));
    return (u"[Desktop Entry]\nType=Application\nVersion=1.0\nName="_s + EscapedValue(name) + u"\nExec="_s + command +
            u"\nIcon=discbook\nTerminal=false\n"_s)
        .toUtf8();
}
