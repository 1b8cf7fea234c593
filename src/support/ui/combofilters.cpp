#include "combofilters.h"

#include "failures.h"
#include "keycodes.h"
#include "modImageComboSubs.h"

#include <QComboBox>
#include <QKeyEvent>

namespace {

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

void IgnoreWheelWithoutFocus(QComboBox &box)
{
    box.setFocusPolicy(Qt::StrongFocus);
    new WheelFilter(box);
}

void StepByKeys(QComboBox &picker, const char *moduleName)
{
    new StepFilter(picker, moduleName);
}
