#include "typist.h"

#include <QAbstractItemView>
#include <QHash>
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
    static const QHash<QChar, QKeyCombination> special{
        {u'\b', Qt::Key_Backspace},
        {u'\t', Qt::CTRL | Qt::Key_Tab},
        {u'\r', Qt::Key_Return},
        {u'\x1b', Qt::Key_Escape},
        {u'←', Qt::Key_Left}};
    for (qsizetype i = 0; i < keys.size(); ++i) {
        if (const auto key = special.constFind(keys[i]); key != special.constEnd())
            QTest::keyClick(&widget, key->key(), key->keyboardModifiers());
        else if (keys[i] == u'^')
            QTest::keyClick(&widget, keys[++i].toLatin1(), Qt::ControlModifier);
        else if (keys[i] == u'~')
            Compose(widget, QString(keys[++i]));
        else
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(keys[i]), Qt::NoModifier);
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
