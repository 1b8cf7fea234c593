#pragma once

#include "textbox.h"

/// A box in which every letter becomes a capital, however it comes in.
class CapitalsBox : public TextBox
{
    Q_OBJECT

public:
    using TextBox::TextBox;

protected:
    QString Typed(const QString &text) const override;
    QString Pasted(const QString &text) const override { return Typed(TextBox::Pasted(text)); }
};
