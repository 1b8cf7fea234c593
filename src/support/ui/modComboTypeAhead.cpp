#include "modComboTypeAhead.h"

#include "keycodes.h"

#include <QComboBox>
#include <QLineEdit>

#include <optional>

namespace {

constexpr int kFirstPrintable = 32;
constexpr int kLastPrintable = 127;

int FindFirstWithPrefix(const QComboBox &combo, const QString &prefix)
{
    for (int row = 0; row < combo.count(); ++row) {
        if (combo.itemText(row).startsWith(prefix, Qt::CaseInsensitive))
            return row;
    }
    return -1;
}

void ShowCompleted(QComboBox &combo, int row, qsizetype typedLength)
{
    combo.setCurrentIndex(row);
    // The index may have been this one already while the text was another.
    const QString text = combo.itemText(row);
    combo.setEditText(text);
    combo.lineEdit()->setSelection(static_cast<int>(typedLength), static_cast<int>(text.length() - typedLength));
}

/// What the box would hold as typed text; nothing when the key is used up without a search.
std::optional<QString> SearchText(QComboBox &combo, int keyAscii)
{
    const QLineEdit &edit = *combo.lineEdit();
    const QString text = edit.text();
    const bool selected = edit.hasSelectedText();
    const int start = selected ? edit.selectionStart() : edit.cursorPosition();
    if (keyAscii == VkBackspace) {
        if (start <= 1) {
            combo.setCurrentIndex(-1);
            combo.clearEditText();
            return std::nullopt;
        }
        return selected ? text.left(start - 1) : text.chopped(1);
    }
    if (keyAscii < kFirstPrintable || keyAscii > kLastPrintable)
        return std::nullopt;
    return (selected ? text.left(start) : text) + QChar(keyAscii);
}

} // namespace

int ComboTypeAhead(QComboBox &combo, int keyAscii, bool limitToList)
{
    const std::optional<QString> search = SearchText(combo, keyAscii);
    if (!search)
        return 0;
    const int row = FindFirstWithPrefix(combo, *search);
    if (row < 0)
        return limitToList ? 0 : keyAscii;
    ShowCompleted(combo, row, search->length());
    return 0;
}
