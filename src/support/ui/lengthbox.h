#pragma once

#include "textbox.h"

/// The box of a length: of what is typed, only digits and one point go in. What is pasted there, and a length such as
/// "2:10:00" that comes from elsewhere, can be shown and edited.
class LengthBox : public TextBox
{
    Q_OBJECT

public:
    using TextBox::TextBox;

protected:
    QString Typed(const QString &text) const override;
};
