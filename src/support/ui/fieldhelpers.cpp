#include "fieldhelpers.h"

#include "failures.h"
#include "keycodes.h"
#include "modImageComboSubs.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>

namespace {

class EntryFilter : public QObject
{
public:
    EntryFilter(QWidget &entered, QLineEdit &edit) : QObject(&edit), m_edit(edit)
    {
        entered.installEventFilter(this);
        if (&entered != &edit)
            edit.installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::FocusIn)
            Enter(static_cast<QFocusEvent *>(event)->reason());
        else if (event->type() == QEvent::MouseButtonRelease && m_enteredByMouse)
            EndClick();
        return false;
    }

private:
    void Enter(Qt::FocusReason reason)
    {
        m_enteredByMouse = reason == Qt::MouseFocusReason;
        if (!m_enteredByMouse && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            m_edit.selectAll();
    }

    /// The click that enters a box puts the cursor somewhere, so the text is selected after it, unless the mouse itself
    /// has selected a part.
    void EndClick()
    {
        m_enteredByMouse = false;
        if (!m_edit.hasSelectedText())
            m_edit.selectAll();
    }

    QLineEdit &m_edit;
    bool m_enteredByMouse = false;
};

class WheelFilter : public QObject
{
public:
    explicit WheelFilter(QComboBox &box) : QObject(&box), m_box(box) { box.installEventFilter(this); }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || m_box.hasFocus())
            return false;
        event->ignore();
        return true;
    }

private:
    QComboBox &m_box;
};

class LengthFilter : public QObject
{
public:
    explicit LengthFilter(QLineEdit &edit) : QObject(&edit), m_edit(edit) { edit.installEventFilter(this); }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        return event->type() == QEvent::KeyPress && !Passes(CharacterCode(*static_cast<QKeyEvent *>(event)));
    }

private:
    bool Passes(int character) const
    {
        switch (character) {
        case 0:
        case VkBackspace:
        case VkTab:
        case VkEnter:
        case VkEscape:
            return true;
        case u'.':
            return !m_edit.text().contains(u'.');
        default:
            return character >= u'0' && character <= u'9';
        }
    }

    QLineEdit &m_edit;
};

/// A validator sees text by whatever way it comes in, and changes it before anybody else is told of it.
class IncomingText : public QValidator
{
public:
    IncomingText(QLineEdit &edit, bool capitals) : QValidator(&edit), m_capitals(capitals) { edit.setValidator(this); }

    State validate(QString &text, int & /*cursor*/) const override
    {
        std::ranges::transform(text, text.begin(), [this](QChar character) {
            const bool lineBreak = character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
                                   character == QChar::ParagraphSeparator;
            return lineBreak ? QChar(u' ') : m_capitals ? character.toUpper() : character;
        });
        return Acceptable;
    }

private:
    const bool m_capitals;
};

class StepFilter : public QObject
{
public:
    StepFilter(QComboBox &picker, const char *moduleName) : QObject(&picker), m_picker(picker), m_moduleName(moduleName)
    {
        picker.installEventFilter(this);
    }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        return event->type() == QEvent::KeyPress && icbFormat_KeyDown(*static_cast<QKeyEvent *>(event));
    }

private:
    bool icbFormat_KeyDown(const QKeyEvent &event)
    {
        const int keyCode = VirtualKeyCode(event);
        const int shift = ShiftState(event);
        Guarded(m_moduleName, "icbFormat_KeyDown", [&] { ImageComboKeyDown(m_picker, keyCode, shift); });
        // The combo box would search by the same letter once more, and step on.
        const bool steps = (keyCode >= Vk0 && keyCode <= Vk9) || (keyCode >= VkA && keyCode <= VkZ) ||
                           keyCode == VkDelete || keyCode == VkBackspace;
        return steps && shift == 0;
    }

    QComboBox &m_picker;
    const char *m_moduleName;
};

} // namespace

void SelectAllOnEntry(QLineEdit &edit)
{
    new EntryFilter(edit, edit);
}

void SelectAllOnEntry(QComboBox &box)
{
    new EntryFilter(box, *box.lineEdit());
}

void IgnoreWheelWithoutFocus(QComboBox &box)
{
    box.setFocusPolicy(Qt::StrongFocus);
    new WheelFilter(box);
}

void FilterLengthKeys(QLineEdit &edit)
{
    new LengthFilter(edit);
}

void KeepCapitals(QLineEdit &edit)
{
    new IncomingText(edit, true);
}

void KeepOneLine(QLineEdit &edit)
{
    new IncomingText(edit, false);
}

void StepByKeys(QComboBox &picker, const char *moduleName)
{
    new StepFilter(picker, moduleName);
}
