#include "textbox.h"

#include "keycodes.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool IsControl(QChar c)
{
    return c.category() == QChar::Other_Control;
}

/// Line breaks and tabs stand between words; other control characters stand for nothing.
bool IsGap(QChar c)
{
    return (c >= u'\t' && c <= u'\r') || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

QStringView WithoutOuterGaps(QStringView text)
{
    while (!text.isEmpty() && IsGap(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && IsGap(text.back()))
        text.chop(1);
    return text;
}

} // namespace

TextBox::TextBox(QWidget *parent) : QLineEdit(parent)
{
    setMaxLength(std::numeric_limits<int>::max());
}

QString TextBox::Pasted(const QString &text) const
{
    QString line = QString(text).replace("\r\n"_L1, "\n"_L1);
    line = WithoutOuterGaps(line).toString();
    std::ranges::replace_if(line, IsGap, QChar(u' '));
    return line.removeIf(IsControl);
}

void TextBox::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    switch (event->reason()) {
    case Qt::MouseFocusReason:
        m_enteredByMouse = true;
        break;
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        break;
    default:
        selectAll();
    }
}

void TextBox::EnterBeside()
{
    if (std::exchange(m_enteredByMouse, false))
        selectAll();
}

void TextBox::mousePressEvent(QMouseEvent *event)
{
    m_enteredByMouse = m_enteredByMouse && event->button() == Qt::LeftButton;
    QLineEdit::mousePressEvent(event);
}

/// The click that enters a box puts the cursor somewhere, so the text is selected after it, unless the mouse itself has
/// selected a part. Only what the mouse has selected goes to the selection that a middle click pastes.
void TextBox::mouseReleaseEvent(QMouseEvent *event)
{
    const bool enters = std::exchange(m_enteredByMouse, false);
    const QClipboard &clipboard = *QGuiApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard.supportsSelection()) {
        deselect();
        Insert(Pasted(clipboard.text(QClipboard::Selection)));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
    if (enters && !hasSelectedText())
        selectAll();
}

void TextBox::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste)) {
        Paste();
    } else if (event->matches(QKeySequence::Cut)) {
        Cut();
    } else if (TypesText(*event)) {
        QKeyEvent typed(event->type(), event->key(), event->modifiers(), Typed(event->text()));
        if (!typed.text().isEmpty())
            QLineEdit::keyPressEvent(&typed);
    } else if (!DeletePart(*event)) {
        QLineEdit::keyPressEvent(event);
    }
}

/// Deletes what is selected, or what a key deletes at once: a word, or up to the end. False for any other key.
bool TextBox::DeletePart(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::DeleteStartOfWord))
        cursorWordBackward(true);
    else if (event.matches(QKeySequence::DeleteEndOfWord))
        cursorWordForward(true);
    else if (event.matches(QKeySequence::DeleteEndOfLine))
        end(true);
    else if (event.matches(QKeySequence::DeleteCompleteLine))
        selectAll();
    else if (!hasSelectedText() || (event.key() != Qt::Key_Backspace && event.key() != Qt::Key_Delete))
        return false;
    RemoveSelection();
    return true;
}

void TextBox::inputMethodEvent(QInputMethodEvent *event)
{
    // What is being composed takes the place of the selected text at once, so it is judged like what comes of it.
    const QString composing = Typed(event->preeditString());
    const bool isWhole = composing.size() == event->preeditString().size();
    QInputMethodEvent typed(composing, isWhole ? event->attributes() : QList<QInputMethodEvent::Attribute>());
    typed.setCommitString(
        Typed(TextBox::Pasted(event->commitString())), event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&typed);
}

void TextBox::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The items bear no names, so they are known by the captions that Qt gives them.
    const auto take = [&](const QString &caption, void (TextBox::*command)()) {
        for (QAction *item : menu->actions()) {
            if (item->text().startsWith(caption)) {
                item->disconnect(this);
                connect(item, &QAction::triggered, this, command);
            }
        }
    };
    take(QLineEdit::tr("Cu&t"), &TextBox::Cut);
    take(QLineEdit::tr("&Paste"), &TextBox::Paste);
    take(QLineEdit::tr("Delete"), &TextBox::RemoveSelection);
    menu->popup(event->globalPos());
}

void TextBox::dropEvent(QDropEvent *event)
{
    QMimeData cleaned;
    cleaned.setText(Pasted(event->mimeData()->text()));
    QDropEvent drop(event->position(), event->possibleActions(), &cleaned, event->buttons(), event->modifiers());
    drop.setDropAction(event->dropAction());
    EndStep();
    QLineEdit::dropEvent(&drop);
    EndStep();
    event->setDropAction(drop.dropAction());
    event->setAccepted(drop.isAccepted());
}

void TextBox::Paste()
{
    Insert(Pasted(QGuiApplication::clipboard()->text()));
}

void TextBox::Cut()
{
    copy();
    RemoveSelection();
}

/// Nothing to insert, a picture on the clipboard, say, leaves the selected text alone.
void TextBox::Insert(const QString &pasted)
{
    if (pasted.isEmpty())
        return;
    EndStep();
    insert(pasted);
    EndStep();
}

/// Typing that follows the removal of a selection is undone together with it, unless the cursor has moved in between.
/// In an emptied box it cannot move: there the first character is removed by itself, which is another kind of removal
/// and ends the step.
void TextBox::RemoveSelection()
{
    if (!hasSelectedText())
        return;
    if (selectedText().size() == text().size()) {
        setSelection(1, static_cast<int>(text().size()) - 1);
        if (hasSelectedText())
            del();
        end(false);
        backspace();
    } else {
        del();
        EndStep();
    }
}

/// A move of the cursor ends a step.
void TextBox::EndStep()
{
    if (hasSelectedText())
        return;
    const int cursor = cursorPosition();
    setCursorPosition(cursor > 0 ? cursor - 1 : cursor + 1);
    setCursorPosition(cursor);
}
