#include "notebox.h"

#include "xmlcheck.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool IsForbiddenInXml(QChar c)
{
    return !c.isSurrogate() && !IsXmlCharacter(c.unicode());
}

/// The text without line breaks at both ends, as it is stored.
QStringView WithoutOuterBreaks(QStringView text)
{
    while (text.startsWith("\r\n"_L1))
        text = text.sliced(2);
    while (text.endsWith("\r\n"_L1))
        text.chop(2);
    return text;
}

} // namespace

NoteBox::NoteBox(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
}

QString NoteBox::Text() const
{
    // toPlainText would turn no-break spaces into spaces.
    return document()->toRawText().replace(QChar::ParagraphSeparator, "\r\n"_L1);
}

void NoteBox::SetText(const QString &text)
{
    setPlainText(text);
}

void NoteBox::RefreshText(const QString &text)
{
    const QString shown = Text();
    if (shown == text || WithoutOuterBreaks(shown) == text)
        return;
    const int fromEnd = document()->characterCount() - textCursor().position();
    SetText(text);
    QTextCursor cursor = textCursor();
    cursor.setPosition(std::max(0, document()->characterCount() - fromEnd));
    setTextCursor(cursor);
}

void NoteBox::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ControlModifier) {
        insertPlainText(u"\t"_s);
    } else if (isEnter && event->modifiers().testFlag(Qt::ShiftModifier)) {
        // By itself the box would insert a line separator, which is not a line break of the catalog.
        QKeyEvent plain(event->type(), event->key(), Qt::NoModifier, event->text());
        QPlainTextEdit::keyPressEvent(&plain);
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void NoteBox::insertFromMimeData(const QMimeData *source)
{
    QString text = source->text();
    text.removeIf(IsForbiddenInXml);
    insertPlainText(text);
    ensureCursorVisible();
}
