#include "capitalsbox.h"
#include "datecombos.h"
#include "keycodes.h"
#include "kit.h"
#include "lengthbox.h"
#include "modComboTypeAhead.h"
#include "modImageComboSubs.h"

#include <QtWidgets>

namespace {

/// Puts a text into a box. Two bars stand around what is selected, a single one is the cursor.
void SetBarred(QLineEdit &edit, const QString &barred)
{
    const QStringList parts = barred.split(u'|');
    edit.setText(parts.join(QString()));
    edit.setCursorPosition(static_cast<int>(parts[0].size()));
    if (parts.size() == 3)
        edit.cursorForward(true, static_cast<int>(parts[1].size()));
}

/// The text, with bars around what is selected.
QString Barred(const QLineEdit &edit)
{
    QString text = edit.text();
    if (edit.hasSelectedText())
        text.insert(edit.selectionEnd(), u'|').insert(edit.selectionStart(), u'|');
    return text;
}

/// A box of each kind on the screen, and one more control beside them.
struct Boxes
{
    QWidget window;
    TextBox text{&window};
    CapitalsBox capitals{&window};
    LengthBox length{&window};
    QComboBox year{&window}, month{&window}, day{&window};
    QListWidget other{&window};

    Boxes()
    {
        MakeDateBoxes(year, month, day);
        other.addItems({u"one"_s, u"two"_s});
        other.setCurrentRow(0);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    QLineEdit &Edit(const QString &kind)
    {
        return kind == u"capitals" ? capitals : kind == u"length" ? length : kind == u"year" ? *year.lineEdit() : text;
    }
};

void ChooseInMenu(QWidget &box, const QString &item)
{
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(5, 5), box.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&box, &asked);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    for (QAction *action : menu->actions()) {
        if (action->text().startsWith(item))
            action->trigger();
    }
    menu->close();
}

/// Types into the box that has the focus; "{", "}" and "#" are Cut, Paste and Delete of its menu.
void Play(const QWidget &window, const QString &script)
{
    static const QRegularExpression aroundItems(u"(?<=[{}#])|(?=[{}#])"_s);
    for (const QString &step : script.split(aroundItems, Qt::SkipEmptyParts)) {
        const auto item = u"{}#"_s.indexOf(step);
        if (item < 0)
            Press(*window.focusWidget(), step);
        else
            ChooseInMenu(*window.focusWidget(), QStringList{u"Cu&t"_s, u"&Paste"_s, u"Delete"_s}[item]);
    }
}

/// What a date box of these entries shows after keys; at first it holds a text.
QString TypedAhead(const QStringList &entries, const QString &keys, const QString &before = {})
{
    QComboBox box, month, day;
    MakeDateBoxes(box, month, day);
    box.addItems(entries);
    SetBarred(*box.lineEdit(), before);
    const QSignalSpy chosen(&box, &QComboBox::activated);
    Press(box, keys);
    const int row = box.findText(box.currentText());
    const bool inStep = row < 0 || row == box.currentIndex();
    return inStep && chosen.isEmpty() ? Barred(*box.lineEdit()) : u"(another entry)"_s;
}

/// The entry that a picker has chosen after keys; an editable one shows a text while it has none chosen (-1).
int Picked(int from, const QList<int> &keys, int shift = 0, const QString &typed = {})
{
    QComboBox picker;
    picker.setEditable(true);
    for (const QString &name : {u""_s, u"8-track"_s, u"CD"_s, u"FLAC"_s, u"flute"_s, u"MP3"_s})
        picker.addItem(name, name);
    picker.setCurrentIndex(from);
    if (from < 0)
        picker.setEditText(typed);
    for (const int key : keys)
        ImageComboKeyDown(picker, key, shift);
    return picker.currentIndex();
}

/// The virtual key and the character of a key.
QPair<int, int> Codes(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    const QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    return {VirtualKeyCode(event), CharacterCode(event)};
}

/// What a box holds that was played into from the clipboard. An empty box is entered with nothing selected.
QString Entered(const QString &kind, const QString &clipboard, const QString &script)
{
    Boxes boxes;
    boxes.year.addItems({u"1999"_s, u"1979"_s});
    boxes.year.clearEditText();
    QGuiApplication::clipboard()->setText(clipboard);
    boxes.Edit(kind).setFocus();
    Play(boxes.window, script);
    return boxes.Edit(kind).text();
}

/// The text of a box that was played into, and what it is after each Ctrl+Z.
QString Undone(const QString &kind, const QString &script)
{
    Boxes boxes;
    QGuiApplication::clipboard()->setText(u"P\nQ"_s);
    QLineEdit &edit = boxes.Edit(kind);
    edit.setFocus();
    Play(boxes.window, script);
    QString states = edit.text();
    while (edit.isUndoAvailable()) {
        Press(edit, u"^z"_s);
        states += u'|' + edit.text();
    }
    return states;
}

} // namespace

class TestBoxes : public QObject
{
    Q_OBJECT

private slots:
    void typeAhead()
    {
        const QStringList years{u"2024"_s, u"1999"_s, u"1989"_s, u"1985"_s, u"1979"_s, u"1940"_s};
        QCOMPARE(TypedAhead(years, u"197"_s), u"197|9|"_s);
        QCOMPARE(TypedAhead(years, u"193"_s), u"19|99|"_s);
        QCOMPARE(TypedAhead(years, u"19\r"_s), u"19|99|"_s);
        // Over the same entry, over the tail, over the middle (the rest goes), and appended wherever the cursor is.
        QCOMPARE(TypedAhead(years, u"2"_s, u"|1985|"_s), u"2|024|"_s);
        QCOMPARE(TypedAhead(years, u"7"_s, u"19|85|"_s), u"197|9|"_s);
        QCOMPARE(TypedAhead(years, u"9"_s, u"1|98|5"_s), u"19|99|"_s);
        QCOMPARE(TypedAhead(years, u"5"_s, u"1|98"_s), u"1985"_s);
        // Backspace widens the search.
        QCOMPARE(TypedAhead(years, u"197\b"_s), u"19|99|"_s);
        QCOMPARE(TypedAhead(years, u"\b"_s, u"1985|"_s), u"198|9|"_s);
        QCOMPARE(TypedAhead(years, u"\b"_s, u"19|85"_s), u"198|9|"_s);
        for (const QString &all : {u"1|999"_s, u"1|99|9"_s, u"|1985|"_s})
            QCOMPARE(TypedAhead(years, u"\b"_s, all), u""_s);
        QCOMPARE(TypedAhead(years, u"\b"_s, u"185|0|"_s), u"185|0|"_s);

        QCOMPARE(TypedAhead({u"1"_s, u"2"_s, u"10"_s}, u"0"_s), u""_s);
        QCOMPARE(TypedAhead({u"1"_s, u"2"_s, u"10"_s}, u"1"_s), u"1"_s);
        QCOMPARE(TypedAhead({u"Flute"_s, u"FLAC"_s}, u"fL"_s), u"Fl|ute|"_s);
        QCOMPARE(TypedAhead({u"Flute"_s, u"FLAC"_s}, u"fla"_s), u"FLA|C|"_s);
        for (const QString &character : {u" "_s, u"\x7f"_s})
            QCOMPARE(TypedAhead({character}, character), character);
        QCOMPARE(TypedAhead({u"\u0080"_s}, u"\u0080"_s), u""_s);
    }

    void dateBoxesAreFilledAfresh()
    {
        Boxes boxes;
        FillDateBoxes(boxes.year, boxes.month, boxes.day, 1940);
        FillDateBoxes(boxes.year, boxes.month, boxes.day, 1943);
        QString filled;
        for (const QComboBox *box : {&boxes.year, &boxes.month, &boxes.day})
            filled += u"%1-%2(%3) "_s.arg(box->itemText(0), box->itemText(box->count() - 1)).arg(box->count());
        QCOMPARE(filled, u"1943-1940(4) 1-12(12) 1-31(31) "_s);
        QCOMPARE(boxes.year.currentText() + boxes.month.currentText() + boxes.day.currentText(), QString());
    }

    void imageCombo()
    {
        QCOMPARE(Picked(0, {'F', 'F'}), 4);
        QCOMPARE(Picked(0, {'F', 'F', 'F'}), 3);
        QCOMPARE(Picked(5, {'C'}), 2);
        QCOMPARE(Picked(5, {'8'}), 1);
        QCOMPARE(Picked(5, {VkKeypad0 + 8}), 5);
        QCOMPARE(Picked(2, {'F'}, ShiftBitShift), 2);
        QCOMPARE(Picked(2, {VkDelete}, ShiftBitCtrl), 2);
        QCOMPARE(Picked(4, {VkDelete}), 0);
        QCOMPARE(Picked(4, {VkBackspace}), 0);
        QCOMPARE(Picked(4, {VkEnter}), 4);
        // Nothing chosen: the first or what is typed, then the search.
        QCOMPARE(Picked(-1, {'F'}), 3);
        QCOMPARE(Picked(-1, {'F'}, ShiftBitShift), 0);
        QCOMPARE(Picked(-1, {VkEnter}), 0);
        QCOMPARE(Picked(-1, {VkEscape}, 0, u"MP3"_s), 5);
        QCOMPARE(Picked(-1, {VkEnter}, 0, u"mp3"_s), -1);
        QCOMPARE(Picked(-1, {'F'}, 0, u"FLAC"_s), 4);
    }

    void codes()
    {
        using Pair = QPair<int, int>;
        const Qt::KeyboardModifiers none, ctrl = Qt::ControlModifier;
        QCOMPARE(Codes(Qt::Key_F, none, u"f"_s), Pair(70, 102));
        QCOMPARE(Codes(Qt::Key_9, none, u"9"_s), Pair(57, 57));
        QCOMPARE(Codes(Qt::Key_7, Qt::KeypadModifier, u"7"_s), Pair(103, 55));
        QCOMPARE(Codes(Qt::Key_Enter, Qt::KeypadModifier, u"\r"_s), Pair(13, 13));
        QCOMPARE(Codes(Qt::Key_Delete, none, u"\x7f"_s), Pair(46, 0));
        QCOMPARE(Codes(Qt::Key_Tab, none, u"\t"_s), Pair(9, 0));
        QCOMPARE(Codes(Qt::Key_Backspace, none, {}), Pair(8, 8));
        QCOMPARE(Codes(Qt::Key_PageUp, ctrl, {}), Pair(33, 0));
        QCOMPARE(Codes(Qt::Key_F3, none, {}), Pair(114, 0));
        QCOMPARE(Codes(Qt::Key_C, ctrl, u"\x03"_s), Pair(67, 3));
        QCOMPARE(Codes(Qt::Key_C, Qt::AltModifier, u"c"_s), Pair(67, 0));
        QCOMPARE(Codes(Qt::Key_At, ctrl | Qt::AltModifier, u"@"_s), Pair(0, 64)); // AltGr
        const auto pastes = [](auto... key) { return IsPasteOfX11(QKeyEvent(QEvent::KeyPress, key...)); };
        QVERIFY(pastes(Qt::Key_F18, none) && pastes(Qt::Key_Insert, ctrl | Qt::ShiftModifier));
        QVERIFY(!pastes(Qt::Key_Insert, Qt::ShiftModifier) && !pastes(Qt::Key_C, ctrl | Qt::ShiftModifier));
    }

    void goesIn()
    {
        QCOMPARE(Entered(u"text"_s, u"\n\ta\tb\r\nc\v"_s, u"x^vy"_s), u"xa b cy"_s);
        QCOMPARE(Entered(u"text"_s, u" a\x01\u0085\u2028b "_s, u"}"_s), u" a b "_s);
        QCOMPARE(Entered(u"text"_s, u"\n"_s, u"abc^a^v"_s), u"abc"_s);
        QCOMPARE(Entered(u"text"_s, QString(40000, u'x'), u"^vz"_s), QString(40000, u'x') + u'z');
        QCOMPARE(Entered(u"text"_s, {}, u"caf~é"_s), u"café"_s);
        QCOMPARE(Entered(u"capitals"_s, u"b\né"_s, u"aß←^v~ü"_s), u"AB ÉÜß"_s);
        QCOMPARE(Entered(u"length"_s, u"2:10"_s, u"a1.2.,~é~5"_s), u"1.25"_s);
        QCOMPARE(Entered(u"length"_s, u"2:10"_s, u"77^a^x8^z^z^y^v"_s), u"77"_s);
        QCOMPARE(Entered(u"year"_s, u"1x"_s, u"~éa1~9~7"_s), u"1979"_s);
        QCOMPARE(Entered(u"year"_s, u" 20\t25x\n"_s, u"}^z^a"_s), u" 2025x"_s);
    }

    void drop()
    {
        Boxes boxes;
        QMimeData dropped;
        dropped.setText(u"\na\tb\n"_s);
        QDragEnterEvent entered({2, 2}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop({2, 2}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&boxes.text, &entered);
        QCoreApplication::sendEvent(&boxes.text, &drop);
        QCOMPARE(boxes.text.text(), u"a b"_s);
    }

    void undoesEachPasteCutAndDeletionByItself()
    {
        QCOMPARE(Undone(u"text"_s, u"ab~éc"_s), u"abéc|"_s);
        QCOMPARE(Undone(u"text"_s, u"a^v^v}b"_s), u"aP QP QP Qb|aP QP QP Q|aP QP Q|aP Q|a|"_s);
        QCOMPARE(Undone(u"text"_s, u"abc^a^x"_s), u"|abc|"_s);
        QCOMPARE(Undone(u"text"_s, u"abc^a^xde"_s), u"de||abc|"_s);
        for (const QString &byMenu : {u"abc^a{d"_s, u"abc^a#d"_s})
            QCOMPARE(Undone(u"text"_s, byMenu), u"d||abc|"_s);
        QCOMPARE(Undone(u"text"_s, u"abc\b\bd"_s), u"ad|a|abc|"_s);
        QCOMPARE(Undone(u"text"_s, u"a^a\bb"_s), u"b||a|"_s);
        QCOMPARE(Undone(u"text"_s, u"ab cd^\bx"_s), u"ab x|ab |ab cd|"_s);
        QCOMPARE(Undone(u"capitals"_s, u"a^vb"_s), u"AP QB|AP Q|A|"_s);
    }

    void entrySelectsAll()
    {
        Boxes boxes;
        for (QLineEdit *edit : {&boxes.Edit(u"text"_s), &boxes.Edit(u"year"_s)}) {
            edit->setText(u"1990"_s);
            const auto selectedAfter = [&boxes, edit](Qt::FocusReason reason) {
                boxes.other.setFocus();
                edit->setFocus(reason);
                return edit->selectedText();
            };
            for (const auto reason : {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason})
                QCOMPARE(selectedAfter(reason), u"1990"_s);
            edit->deselect();
            for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason})
                QCOMPARE(selectedAfter(reason), QString());
            boxes.other.setFocus();
            for (const QString &selected : {u"1990"_s, QString()}) { // a second click takes it away
                QTest::mouseClick(
                    edit, Qt::LeftButton, {}, {2, edit->height() / 2}, QApplication::doubleClickInterval() * 2);
                QCOMPARE(edit->selectedText(), selected);
            }
        }
        boxes.other.setFocus();
        QTest::mouseClick(&boxes.year, Qt::LeftButton, {}, {boxes.year.width() - 8, boxes.year.height() / 2});
        boxes.year.hidePopup();
        QCOMPARE(boxes.Edit(u"year"_s).selectedText(), u"1990"_s); // by the arrow
    }

    void composingWhatIsRefusedErasesNothing()
    {
        Boxes boxes;
        boxes.length.setText(u"45.10"_s);
        boxes.length.setFocus(Qt::TabFocusReason);
        for (const QString &composing : {u"n"_s, QString()}) {
            QInputMethodEvent event(composing, {});
            QCoreApplication::sendEvent(&boxes.length, &event);
        }
        QCOMPARE(boxes.length.text(), u"45.10"_s);
    }

    /// Whatever takes letters: boxes and a list.
    void strayKeys()
    {
        Boxes boxes;
        boxes.text.setText(u"abc"_s);
        boxes.length.setText(u"1"_s);
        boxes.year.setEditText(u"1990"_s);
        for (QWidget *control : QWidgetList{&boxes.text, &boxes.length, &boxes.year, &boxes.other}) {
            control->setFocus();
            for (const Qt::KeyboardModifier modifier : {Qt::AltModifier, Qt::MetaModifier}) {
                for (const char key : {'t', '2'})
                    QTest::keyClick(control, key, modifier);
            }
            QTest::keyClick(control, Qt::Key_Insert, Qt::ControlModifier | Qt::ShiftModifier);
        }
        QCOMPARE(boxes.text.text() + boxes.length.text() + boxes.year.currentText(), u"abc11990"_s);
        QCOMPARE(boxes.other.currentRow(), 0);
    }
};

TEST_OF_SUITE(TestBoxes)
#include "test_boxes.moc"
