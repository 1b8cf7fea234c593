#include "capitalsbox.h"
#include "datecombos.h"
#include "keycodes.h"
#include "lengthbox.h"
#include "modComboTypeAhead.h"
#include "modImageComboSubs.h"
#include "suite.h"
#include "table.h"
#include "typist.h"

#include <QSignalSpy>
#include <QtWidgets>

using namespace Qt::StringLiterals;

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

} // namespace

class TestBoxes : public QObject
{
    Q_OBJECT

private slots:
    void typeAhead_data()
    {
        const QStringList years{u"2024"_s, u"1999"_s, u"1989"_s, u"1985"_s, u"1979"_s, u"1940"_s};
        const QStringList months{u"1"_s, u"2"_s, u"10"_s, u"11"_s, u"12"_s};
        const QStringList names{u"Flute"_s, u"FLAC"_s, u"Flat"_s};
        Table<QStringList, QString, QString, QString>("entries", "before", "keys", "shown")
            .Row("three digits", years, {}, u"197"_s, u"197|9|"_s)
            .Row("refused in the middle", years, {}, u"193"_s, u"19|99|"_s)
            .Row("no month begins so", months, {}, u"0"_s, u""_s)
            .Row("an entry is a prefix of another", months, {}, u"1"_s, u"1"_s)
            .Row("case ignored, list order", names, {}, u"fL"_s, u"Fl|ute|"_s)
            .Row("case of the entry shown", names, {}, u"fla"_s, u"FLA|C|"_s)
            .Row("blank", {u" "_s}, {}, u" "_s, u" "_s)
            .Row("last character", {u"\x7f"_s}, {}, u"\x7f"_s, u"\x7f"_s)
            .Row("beyond it", {u"\u0080"_s}, {}, u"\u0080"_s, u""_s)
            .Row("Enter is swallowed", years, {}, u"19\r"_s, u"19|99|"_s)
            .Row("the same entry, overwritten", years, u"|1985|"_s, u"2"_s, u"2|024|"_s)
            .Row("typed over the tail", years, u"19|85|"_s, u"7"_s, u"197|9|"_s)
            .Row("typed over the middle, the rest goes", years, u"1|98|5"_s, u"9"_s, u"19|99|"_s)
            .Row("appended wherever the cursor is", years, u"1|98"_s, u"5"_s, u"1985"_s)
            .Row("backspace widens the search", years, {}, u"197\b"_s, u"19|99|"_s)
            .Row("backspace, nothing selected", years, u"1985|"_s, u"\b"_s, u"198|9|"_s)
            .Row("backspace before the cursor", years, u"19|85"_s, u"\b"_s, u"198|9|"_s)
            .Row("backspace after the first", years, u"1|999"_s, u"\b"_s, u""_s)
            .Row("backspace, selected from the first", years, u"1|99|9"_s, u"\b"_s, u""_s)
            .Row("backspace, all selected", years, u"|1985|"_s, u"\b"_s, u""_s)
            .Row("backspace, no such entry", years, u"185|0|"_s, u"\b"_s, u"185|0|"_s);
    }

    void typeAhead()
    {
        QFETCH(QStringList, entries);
        QFETCH(QString, before);
        QFETCH(QString, keys);
        QComboBox box, month, day;
        MakeDateBoxes(box, month, day);
        box.addItems(entries);
        SetBarred(*box.lineEdit(), before);
        const QSignalSpy chosen(&box, &QComboBox::activated);
        Press(box, keys);
        QTEST(Barred(*box.lineEdit()), "shown");
        const int row = box.findText(box.currentText());
        QVERIFY(row < 0 || row == box.currentIndex());
        QVERIFY(chosen.isEmpty());
    }

    void typeAheadWithoutLimitPassesTheKeyOn()
    {
        Boxes boxes;
        boxes.year.addItem(u"1999"_s);
        boxes.year.setEditText(u"abc"_s);
        QCOMPARE(ComboTypeAhead(boxes.year, u'x', false), u'x');
        QCOMPARE(ComboTypeAhead(boxes.year, VkEnter, false), 0);
        QCOMPARE(ComboTypeAhead(boxes.year, VkBackspace, false), VkBackspace);
        QCOMPARE(boxes.year.currentText(), u"abc"_s);
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

    void imageCombo_data()
    {
        // "typed" is what an editable picker holds while nothing is chosen (-1).
        Table<int, QString, QList<int>, int, int>("from", "typed", "keys", "shift", "to")
            .Row("twice, lower-case text", 0, {}, {'F', 'F'}, 0, 4)
            .Row("around the end", 0, {}, {'F', 'F', 'F'}, 0, 3)
            .Row("backwards around the end", 5, {}, {'C'}, 0, 2)
            .Row("digit", 5, {}, {'8'}, 0, 1)
            .Row("digit of the keypad", 5, {}, {VkKeypad0 + 8}, 0, 5)
            .Row("Shift", 2, {}, {'F'}, ShiftBitShift, 2)
            .Row("Ctrl", 2, {}, {VkDelete}, ShiftBitCtrl, 2)
            .Row("Delete", 4, {}, {VkDelete}, 0, 0)
            .Row("Backspace", 4, {}, {VkBackspace}, 0, 0)
            .Row("Enter keeps the chosen one", 4, {}, {VkEnter}, 0, 4)
            .Row("no choice: the first, then the search", -1, {}, {'F'}, 0, 3)
            .Row("no choice and Shift: the first", -1, {}, {'F'}, ShiftBitShift, 0)
            .Row("a key typed", -1, u"MP3"_s, {VkEscape}, 0, 5)
            .Row("nothing typed", -1, {}, {VkEnter}, 0, 0)
            .Row("no key typed", -1, u"mp3"_s, {VkEnter}, 0, -1)
            .Row("the search starts after what is typed", -1, u"FLAC"_s, {'F'}, 0, 4);
    }

    void imageCombo()
    {
        QFETCH(int, from);
        QFETCH(QString, typed);
        QFETCH(QList<int>, keys);
        QFETCH(int, shift);
        QComboBox picker;
        picker.setEditable(true);
        for (const QString &name : {u""_s, u"8-track"_s, u"CD"_s, u"FLAC"_s, u"flute"_s, u"MP3"_s})
            picker.addItem(name, name);
        picker.setCurrentIndex(from);
        if (from < 0)
            picker.setEditText(typed);
        for (const int key : keys)
            ImageComboKeyDown(picker, key, shift);
        QTEST(picker.currentIndex(), "to");
    }

    void codes_data()
    {
        const Qt::KeyboardModifiers none, ctrl = Qt::ControlModifier, alt = Qt::AltModifier, pad = Qt::KeypadModifier;
        Table<Qt::Key, Qt::KeyboardModifiers, QString, int, int>("key", "modifiers", "text", "code", "character")
            .Row("letter", Qt::Key_F, none, u"f"_s, 70, 102)
            .Row("digit", Qt::Key_9, none, u"9"_s, 57, 57)
            .Row("keypad", Qt::Key_7, pad, u"7"_s, 103, 55)
            .Row("keypad Enter", Qt::Key_Enter, pad, u"\r"_s, 13, 13)
            .Row("Delete types nothing", Qt::Key_Delete, none, u"\x7f"_s, 46, 0)
            .Row("Tab types nothing", Qt::Key_Tab, none, u"\t"_s, 9, 0)
            .Row("Backspace without a text", Qt::Key_Backspace, none, {}, 8, 8)
            .Row("Page Up", Qt::Key_PageUp, ctrl, {}, 33, 0)
            .Row("F3", Qt::Key_F3, none, {}, 114, 0)
            .Row("Ctrl+C", Qt::Key_C, ctrl, u"\x03"_s, 67, 3)
            .Row("Alt+C", Qt::Key_C, alt, u"c"_s, 67, 0)
            .Row("AltGr", Qt::Key_At, ctrl | alt, u"@"_s, 0, 64);
    }

    void codes()
    {
        QFETCH(Qt::Key, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(QString, text);
        const QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QTEST(VirtualKeyCode(event), "code");
        QTEST(CharacterCode(event), "character");
    }

    void goesIn_data()
    {
        Table<QString, QString, QString, QString>("kind", "clipboard", "script", "text")
            .Row("gaps", u"text"_s, u"\n\ta\tb\r\nc\v"_s, u"x^vy"_s, u"xa b cy"_s)
            .Row("controls", u"text"_s, u" a\x01\u0085\u2028b "_s, u"}"_s, u" a b "_s)
            .Row("nothing left of it", u"text"_s, u"\n"_s, u"abc^a^v"_s, u"abc"_s)
            .Row("long", u"text"_s, QString(40000, u'x'), u"^vz"_s, QString(40000, u'x') + u'z')
            .Row("composed", u"text"_s, {}, u"caf~é"_s, u"café"_s)
            .Row("capitals", u"capitals"_s, u"b\né"_s, u"aß←^v~ü"_s, u"AB ÉÜß"_s)
            .Row("length", u"length"_s, u"2:10"_s, u"a1.2.,~é~5"_s, u"1.25"_s)
            .Row("pasted length", u"length"_s, u"2:10"_s, u"77^a^x8^z^z^y^v"_s, u"77"_s)
            .Row("date", u"year"_s, u"1x"_s, u"~éa1~9~7"_s, u"1979"_s)
            .Row("pasted date", u"year"_s, u" 20\t25x\n"_s, u"}^z^a"_s, u" 2025x"_s);
    }

    void goesIn()
    {
        QFETCH(QString, kind);
        QFETCH(QString, clipboard);
        QFETCH(QString, script);
        Boxes boxes;
        boxes.year.addItems({u"1999"_s, u"1979"_s});
        boxes.year.clearEditText();
        QGuiApplication::clipboard()->setText(clipboard);
        // An empty box is entered with nothing selected.
        boxes.Edit(kind).setFocus();
        Play(boxes.window, script);
        QTEST(boxes.Edit(kind).text(), "text");
    }

    void drop()
    {
        Boxes boxes;
        QMimeData dropped;
        dropped.setText(u"\na\tb\n"_s);
        QDragEnterEvent entered({2, 2}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop({2, 2}, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        for (QEvent *event : std::initializer_list<QEvent *>{&entered, &drop})
            QCoreApplication::sendEvent(&boxes.text, event);
        QCOMPARE(boxes.text.text(), u"a b"_s);
    }

    void undoes_data()
    {
        Table<QString, QString, QString>("kind", "script", "states") // the text, and what it is after each Ctrl+Z
            .Row("typing", u"text"_s, u"ab~éc"_s, u"abéc||"_s)
            .Row("pastes", u"text"_s, u"a^v^v}b"_s, u"aP QP QP Qb|aP QP QP Q|aP QP Q|aP Q|a||"_s)
            .Row("cut of a part", u"text"_s, u"abc^a^x"_s, u"|abc||"_s)
            .Row("cut of all, then typing", u"text"_s, u"abc^a^xde"_s, u"de||abc||"_s)
            .Row("cut by the menu", u"text"_s, u"abc^a{d"_s, u"d||abc||"_s)
            .Row("deletion by the menu", u"text"_s, u"abc^a#d"_s, u"d||abc||"_s)
            .Row("deletion, then typing", u"text"_s, u"abc\b\bd"_s, u"ad|a|abc||"_s)
            .Row("deletion of the only one", u"text"_s, u"a^a\bb"_s, u"b||a||"_s)
            .Row("a word deleted, then typing", u"text"_s, u"ab cd^\bx"_s, u"ab x|ab |ab cd||"_s)
            .Row("small letters", u"capitals"_s, u"a^vb"_s, u"AP QB|AP Q|A||"_s);
    }

    void undoes()
    {
        QFETCH(QString, kind);
        QFETCH(QString, script);
        Boxes boxes;
        QGuiApplication::clipboard()->setText(u"P\nQ"_s);
        QLineEdit &edit = boxes.Edit(kind);
        edit.setFocus();
        Play(boxes.window, script);
        QString states = edit.text() + u'|';
        while (edit.isUndoAvailable()) {
            Press(edit, u"^z"_s);
            states += edit.text() + u'|';
        }
        QTEST(states, "states");
    }

    void entryByKey()
    {
        Boxes boxes;
        const auto selectedAfter = [&](QLineEdit &edit, Qt::FocusReason reason) {
            edit.setText(u"1990"_s);
            boxes.other.setFocus();
            edit.setFocus(reason);
            return edit.selectedText();
        };
        for (QLineEdit *edit : {&boxes.Edit(u"text"_s), &boxes.Edit(u"year"_s)}) {
            for (const auto reason : {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason})
                QCOMPARE(selectedAfter(*edit, reason), u"1990"_s);
            for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason})
                QCOMPARE(selectedAfter(*edit, reason), QString());
        }
    }

    void entryByMouse()
    {
        Boxes boxes;
        for (QLineEdit *edit : {&boxes.Edit(u"text"_s), &boxes.Edit(u"year"_s)}) {
            edit->setText(u"1990"_s);
            boxes.other.setFocus();
            for (const QString &selected : {u"1990"_s, QString()}) {
                QTest::mouseClick(
                    edit, Qt::LeftButton, {}, {2, edit->height() / 2}, QApplication::doubleClickInterval() * 2);
                QCOMPARE(edit->selectedText(), selected);
            }
        }
    }

    void entryByTheArrow()
    {
        Boxes boxes;
        boxes.Edit(u"year"_s).setText(u"1990"_s);
        boxes.other.setFocus();
        QTest::mouseClick(&boxes.year, Qt::LeftButton, {}, {boxes.year.width() - 8, boxes.year.height() / 2});
        boxes.year.hidePopup();
        QCOMPARE(boxes.Edit(u"year"_s).selectedText(), u"1990"_s);
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
        for (QWidget *control :
             std::initializer_list<QWidget *>{&boxes.text, &boxes.length, &boxes.year, &boxes.other}) {
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
