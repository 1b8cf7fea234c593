#include "modImageComboSubs.h"

#include "keycodes.h"

#include <QComboBox>

namespace {

void SelectByEditText(QComboBox &combo)
{
    const QString text = combo.currentText();
    const int row = text.isEmpty() ? 0 : combo.findData(text, kItemKeyRole);
    if (row >= 0)
        combo.setCurrentIndex(row);
}

bool BeginsWith(const QComboBox &combo, int row, QChar wanted)
{
    const QString text = combo.itemText(row);
    return !text.isEmpty() && text.front().toUpper() == wanted;
}

void SelectNextWith(QComboBox &combo, QChar wanted)
{
    const int count = combo.count();
    const int current = combo.currentIndex();
    for (int step = 1; step < count; ++step) {
        const int row = (current + step) % count;
        if (BeginsWith(combo, row, wanted)) {
            combo.setCurrentIndex(row);
            return;
        }
    }
}

} // namespace

void ImageComboKeyDown(QComboBox &imageCombo, int keyCode, int shift)
{
    if (imageCombo.currentIndex() < 0)
        SelectByEditText(imageCombo);
    if (shift != 0)
        return;
    if (keyCode == VkDelete || keyCode == VkBackspace) {
        // The first item chosen again is a choice too, which no change of index would tell.
        if (imageCombo.currentIndex() == 0)
            emit imageCombo.activated(0);
        imageCombo.setCurrentIndex(0);
    } else if ((keyCode >= Vk0 && keyCode <= Vk9) || (keyCode >= VkA && keyCode <= VkZ)) {
        SelectNextWith(imageCombo, QChar(keyCode));
    } else if (keyCode == VkEnter || keyCode == VkEscape) {
        SelectByEditText(imageCombo);
    }
}
