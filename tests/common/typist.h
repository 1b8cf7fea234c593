#pragma once

#include <QString>

class QAbstractItemView;
class QModelIndex;
class QWidget;

/// Presses keys on a widget: "\b" is Backspace, "\t" Ctrl+Tab, "\r" Enter, "\x1b" Escape, "←" the left arrow, "^z"
/// Ctrl+Z; "~é" composes an é. All else is typed.
void Press(QWidget &widget, const QString &keys);

/// The same on a widget that is given the focus first.
void Type(QWidget &widget, const QString &keys);

/// One notch down, the pointer on the widget.
void TurnWheel(QWidget &widget);

/// Clicks twice on a line of a view, which must be in sight.
void DoubleClick(QAbstractItemView &view, const QModelIndex &index);
