#include "datecombos.h"

#include "combofilters.h"
#include "keycodes.h"
#include "modComboTypeAhead.h"
#include "textbox.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {

constexpr int kFirstYear = 1940;
constexpr int kMonths = 12;
constexpr int kDays = 31;

/// The text of a date box. What is pasted is kept as it stands, but for control characters and line ends; what an input
/// method composes goes the way of typed keys.
class DateEditor : public TextBox
{
public:
    explicit DateEditor(QComboBox &box) : TextBox(&box) {}

protected:
    QString Pasted(const QString &text) const override
    {
        return QString(text).removeIf([](QChar c) {
            return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
        });
    }

    void inputMethodEvent(QInputMethodEvent *event) override
    {
        for (const QChar c : event->commitString()) {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(parentWidget(), &key);
        }
    }
};

/// Hands every key that makes a character to the type-ahead and nothing of it to the box. A press of the arrow enters
/// the box too.
class TypeAheadFilter : public QObject
{
public:
    TypeAheadFilter(QComboBox &box, DateEditor &editor) : QObject(&box), m_box(box), m_editor(editor)
    {
        box.installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            m_editor.EnterBeside();
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto &key = *static_cast<QKeyEvent *>(event);
        const int character = CharacterCode(key);
        return character != 0 && ComboTypeAhead(m_box, character, true) == 0;
    }

private:
    QComboBox &m_box;
    DateEditor &m_editor;
};

void MakeDateBox(QComboBox &box, const QString &name)
{
    auto *editor = new DateEditor(box);
    editor->setAccessibleName(name);
    box.setLineEdit(editor);
    box.setInsertPolicy(QComboBox::NoInsert);
    box.setCompleter(nullptr);
    IgnoreWheelWithoutFocus(box);
    new TypeAheadFilter(box, *editor);
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
    MakeDateBox(year, u"Year"_s);
    MakeDateBox(month, u"Month"_s);
    MakeDateBox(day, u"Day"_s);
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
