#include "typist.h"

#include <QAbstractItemView>
#include <QTest>
#include <QWheelEvent>

namespace {

void Compose(QWidget &widget, const QString &text)
{
    QInputMethodEvent composed;
    composed.setCommitString(text);
    QCoreApplication::sendEvent(&widget, &composed);
}

} // namespace

void Press(QWidget &widget, const QString &keys)
{
    for (qsizetype i = 0; i < keys.size(); ++i) {
        switch (keys[i].unicode()) {
        case u'\b':
            QTest::keyClick(&widget, Qt::Key_Backspace);
            break;
        case u'\t':
            QTest::keyClick(&widget, Qt::Key_Tab, Qt::ControlModifier);
            break;
        case u'\r':
            QTest::keyClick(&widget, Qt::Key_Return);
            break;
        case u'\x1b':
            QTest::keyClick(&widget, Qt::Key_Escape);
            break;
        case u'←':
            QTest::keyClick(&widget, Qt::Key_Left);
            break;
        case u'^':
            QTest::keyClick(&widget, keys[++i].toLatin1(), Qt::ControlModifier);
            break;
        case u'~':
            Compose(widget, QString(keys[++i]));
            break;
        default:
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(keys[i]), Qt::NoModifier);
        }
    }
}

void Type(QWidget &widget, const QString &keys)
{
    widget.setFocus(Qt::OtherFocusReason);
    Press(widget, keys);
}

void TurnWheel(QWidget &widget)
{
    QWheelEvent turn(
        widget.rect().center(), widget.mapToGlobal(widget.rect().center()), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &turn);
}

void DoubleClick(QAbstractItemView &view, const QModelIndex &index)
{
    const QPoint at = view.visualRect(index).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at);
}
