#include "lengthbox.h"

QString LengthBox::Typed(const QString &text) const
{
    QString typed;
    for (const QChar c : text) {
        const bool firstPoint = c == u'.' && !this->text().contains(c) && !typed.contains(c);
        if (firstPoint || (c >= u'0' && c <= u'9'))
            typed += c;
    }
    return typed;
}
