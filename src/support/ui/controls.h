#pragma once

#include "showntext.h"

#include <QLabel>

#include <utility>

/// A text as it is shown where "&" marks an access key.
inline QString ShownCaption(const QString &text)
{
    return ShownText(text).replace(u'&', QLatin1StringView("&&"));
}

/// Makes a control and gives it the name by which it is found. `arguments` are those that its constructor takes before
/// the parent.
template<class Control, class... Arguments>
Control *MakeControl(QWidget *parent, QAnyStringView name, Arguments &&...arguments)
{
    auto *control = new Control(std::forward<Arguments>(arguments)..., parent);
    control->setObjectName(name);
    return control;
}

/// Makes the caption that stands beside a control: its access key leads there, and screen readers name the control by
/// it.
inline QLabel *MakeLabel(QWidget &control, const QString &caption, QAnyStringView name = {})
{
    auto *label = MakeControl<QLabel>(control.parentWidget(), name, caption);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(&control);
    return label;
}
