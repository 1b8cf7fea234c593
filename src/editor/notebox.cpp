#include "notebox.h"

#include "keycodes.h"
#include "xmlcheck.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

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

bool HasLongWord(QStringView text)
{
    constexpr qsizetype kLong = 10'000;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isSpace())
            start = i + 1;
        else if (i - start >= kLong)
            return true;
    }
    return false;
}

} // namespace

NoteBox::NoteBox(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, &NoteBox::FollowDirection);
}

QString NoteBox::Text() const
{
    // toPlainText would turn no-break spaces into spaces.
    return document()->toRawText().replace(QChar::ParagraphSeparator, "\r\n"_L1);
}

QSize NoteBox::minimumSizeHint() const
{
    const double margins = 2 * (frameWidth() + document()->documentMargin());
    return {QPlainTextEdit::minimumSizeHint().width(), fontMetrics().lineSpacing() + qRound(margins)};
}

void NoteBox::FollowDirection()
{
    QTextOption option = document()->defaultTextOption();
    const Qt::Alignment side = toPlainText().isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    if (option.alignment() == side)
        return;
    option.setAlignment(side);
    document()->setDefaultTextOption(option);
}

void NoteBox::SetText(const QString &text)
{
    const bool breaksWords = BreakLongWords(text);
    setPlainText(text);
    if (!breaksWords)
        setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

/// Before a text comes in: at the boundaries of words, the box would go through the whole of a word for each line that
/// the word fills. Returns whether words are now broken.
bool NoteBox::BreakLongWords(const QString &text)
{
    const bool isNeeded = HasLongWord(text);
    if (isNeeded)
        setWordWrapMode(QTextOption::WrapAnywhere);
    return isNeeded;
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
    const bool hadSelection = textCursor().hasSelection();
    if (hadSelection)
        EndStep();
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ControlModifier) {
        insertPlainText(u"\t"_s);
    } else if (isEnter && event->modifiers().testFlag(Qt::ShiftModifier)) {
        // By itself the box would insert a line separator, which is not a line break of the catalog.
        QKeyEvent plain(event->type(), event->key(), Qt::NoModifier, event->text());
        QPlainTextEdit::keyPressEvent(&plain);
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
    // What was typed over a selection goes on as a run; a cut and a deletion have ended.
    if (hadSelection && !TypesText(*event))
        EndStep();
}

/// What is composed from several keys belongs to the run of typing; the box by itself would make it a step.
void NoteBox::inputMethodEvent(QInputMethodEvent *event)
{
    const bool isWhole = event->preeditString().isEmpty() && event->replacementLength() == 0;
    if (!isWhole || event->commitString().isEmpty()) {
        QPlainTextEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent endOfComposing;
    QPlainTextEdit::inputMethodEvent(&endOfComposing);
    insertPlainText(QString(event->commitString()).removeIf(IsForbiddenInXml));
    ensureCursorVisible();
}

void NoteBox::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu(event->pos());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    EndStep();
    connect(menu, &QMenu::triggered, this, &NoteBox::EndStep);
    menu->popup(event->globalPos());
}

/// Nothing to insert, a picture on the clipboard, say, leaves the selected text alone.
void NoteBox::insertFromMimeData(const QMimeData *source)
{
    const QString text = source->text().removeIf(IsForbiddenInXml);
    if (text.isEmpty())
        return;
    EndStep();
    BreakLongWords(text);
    insertPlainText(text);
    EndStep();
    ensureCursorVisible();
}

/// Edits are joined to those before them only while the document counts as modified; nothing else hangs on that here.
void NoteBox::EndStep()
{
    document()->setModified(false);
}
