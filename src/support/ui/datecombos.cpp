#include "datecombos.h"

#include "fieldhelpers.h"
#include "keycodes.h"
#include "modComboTypeAhead.h"

#include <QComboBox>
#include <QKeyEvent>

namespace {

constexpr int kFirstYear = 1940;
constexpr int kMonths = 12;
constexpr int kDays = 31;

/// Hands every key that makes a character to the type-ahead and nothing of it to the box.
class TypeAheadFilter : public QObject
{
public:
    explicit TypeAheadFilter(QComboBox &box) : QObject(&box), m_box(box) { box.installEventFilter(this); }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto &key = *static_cast<QKeyEvent *>(event);
        const int character = CharacterCode(key);
        return IsStrayAccessKey(key) || (character != 0 && ComboTypeAhead(m_box, character, true) == 0);
    }

private:
    /// An access key that belongs to nobody; the box would take it for a letter.
    static bool IsStrayAccessKey(const QKeyEvent &key)
    {
        return key.modifiers().testFlag(Qt::AltModifier) && CharacterCode(key) == 0 && !key.text().isEmpty();
    }

    QComboBox &m_box;
};

void MakeDateBox(QComboBox &box)
{
    box.setEditable(true);
    box.setInsertPolicy(QComboBox::NoInsert);
    box.setCompleter(nullptr);
    IgnoreWheelWithoutFocus(box);
    SelectAllOnEntry(box);
    new TypeAheadFilter(box);
}

void Empty(QComboBox &box)
{
    box.setCurrentIndex(-1);
    box.clearEditText();
}

void FillUpTo(QComboBox &box, int last)
{
    box.clear();
    for (int number = 1; number <= last; ++number)
        box.addItem(QString::number(number));
    Empty(box);
}

} // namespace

void MakeDateBoxes(QComboBox &year, QComboBox &month, QComboBox &day)
{
    MakeDateBox(year);
    MakeDateBox(month);
    MakeDateBox(day);
}

void FillDateBoxes(QComboBox &year, QComboBox &month, QComboBox &day, int currentYear)
{
    year.clear();
    for (int number = currentYear; number >= kFirstYear; --number)
        year.addItem(QString::number(number));
    Empty(year);
    FillUpTo(month, kMonths);
    FillUpTo(day, kDays);
}
