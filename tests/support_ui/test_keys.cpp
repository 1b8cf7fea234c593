#include "keycodes.h"
#include "modComboTypeAhead.h"
#include "modImageComboSubs.h"
#include "tests.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList Years()
{
    QStringList years;
    for (int year = 2024; year >= 1940; --year)
        years.append(QString::number(year));
    return years;
}

class DateBox : public QComboBox
{
public:
    explicit DateBox(const QStringList &entries)
    {
        setEditable(true);
        setCompleter(nullptr);
        addItems(entries);
        clearEditText();
    }

    int lastResult = -1;

protected:
    void keyPressEvent(QKeyEvent *event) override { lastResult = ComboTypeAhead(*this, CharacterCode(*event), true); }
};

class Picker : public QComboBox
{
public:
    Picker()
    {
        for (const QString &name : {u""_s, u"8-track"_s, u"CD"_s, u"FLAC"_s, u"flute"_s, u"MP3"_s})
            addItem(name, name);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        ImageComboKeyDown(*this, VirtualKeyCode(*event), ShiftState(*event));
    }
};

/// Types characters; "\b", "\r" and "\x1b" are the keys of those codes.
void Type(QWidget &widget, const QString &keys)
{
    for (const QChar key : keys) {
        switch (key.unicode()) {
        case u'\b':
            QTest::keyClick(&widget, Qt::Key_Backspace);
            break;
        case u'\r':
            QTest::keyClick(&widget, Qt::Key_Return);
            break;
        case u'\x1b':
            QTest::keyClick(&widget, Qt::Key_Escape);
            break;
        default:
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(key), Qt::NoModifier);
        }
    }
}

} // namespace

class TestKeys : public QObject
{
    Q_OBJECT

private slots:
    void typeAhead_data()
    {
        const QStringList months{u"1"_s, u"2"_s, u"10"_s, u"11"_s, u"12"_s};
        const QStringList names{u"Flute"_s, u"FLAC"_s, u"Flat"_s};
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("selected");

        QTest::newRow("first digit") << Years() << u"1"_s << u"1999"_s << u"999"_s;
        QTest::newRow("three digits") << Years() << u"197"_s << u"1979"_s << u"9"_s;
        QTest::newRow("refused in the middle") << Years() << u"193"_s << u"1999"_s << u"99"_s;
        QTest::newRow("no month begins so") << months << u"0"_s << u""_s << u""_s;
        QTest::newRow("an entry is a prefix of another") << months << u"1"_s << u"1"_s << u""_s;
        QTest::newRow("longer entry") << months << u"12"_s << u"12"_s << u""_s;
        QTest::newRow("beyond the last digit") << months << u"123"_s << u"12"_s << u""_s;
        QTest::newRow("letter") << Years() << u"a"_s << u""_s << u""_s;
        QTest::newRow("case ignored, list order") << names << u"fL"_s << u"Flute"_s << u"ute"_s;
        QTest::newRow("case of the entry shown") << names << u"fla"_s << u"FLAC"_s << u"C"_s;
        QTest::newRow("blank") << Years() << u" "_s << u""_s << u""_s;
        QTest::newRow("beyond 127") << QStringList{u"été"_s} << u"é"_s << u""_s << u""_s;
        QTest::newRow("backspace widens the search") << Years() << u"197\b"_s << u"1999"_s << u"99"_s;
        QTest::newRow("backspace on the first clears") << Years() << u"1\b"_s << u""_s << u""_s;
        QTest::newRow("backspace in an empty box") << Years() << u"\b"_s << u""_s << u""_s;
        QTest::newRow("the same entry again") << Years() << u"1\b1"_s << u"1999"_s << u"999"_s;
        QTest::newRow("Enter is swallowed") << Years() << u"19\r"_s << u"1999"_s << u"99"_s;
        QTest::newRow("Escape is swallowed") << Years() << u"19\x1b"_s << u"1999"_s << u"99"_s;
    }

    void typeAhead()
    {
        QFETCH(QStringList, entries);
        QFETCH(QString, keys);
        DateBox box(entries);
        Type(box, keys);
        QTEST(box.currentText(), "text");
        QTEST(box.lineEdit()->selectedText(), "selected");
        QCOMPARE(box.lastResult, 0);
    }

    void typeAheadInGivenText_data()
    {
        QTest::addColumn<QString>("before"); // the cursor, or the selection, stands at the bars
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("selected");

        QTest::newRow("backspace, nothing selected") << u"1985|"_s << u"\b"_s << u"1989"_s << u"9"_s;
        QTest::newRow("backspace removes the last, not the one before the cursor")
            << u"19|85"_s << u"\b"_s << u"1989"_s << u"9"_s;
        QTest::newRow("backspace after the first") << u"1|999"_s << u"\b"_s << u""_s << u""_s;
        QTest::newRow("backspace, selected from the first") << u"1|99|9"_s << u"\b"_s << u""_s << u""_s;
        QTest::newRow("backspace, all selected") << u"|1985|"_s << u"\b"_s << u""_s << u""_s;
        QTest::newRow("backspace, no such entry") << u"185|0|"_s << u"\b"_s << u"1850"_s << u"0"_s;
        QTest::newRow("typed over all") << u"|1985|"_s << u"2"_s << u"2024"_s << u"024"_s;
        QTest::newRow("typed over the tail") << u"19|85|"_s << u"7"_s << u"1979"_s << u"9"_s;
        QTest::newRow("typed over the middle, the rest goes") << u"1|98|5"_s << u"9"_s << u"1999"_s << u"99"_s;
        QTest::newRow("appended wherever the cursor is") << u"1|98"_s << u"5"_s << u"1985"_s << u""_s;
    }

    void typeAheadInGivenText()
    {
        QFETCH(QString, before);
        QFETCH(QString, key);
        DateBox box(Years());
        const QStringList parts = before.split(u'|');
        box.setEditText(parts.join(QString()));
        const auto start = static_cast<int>(parts[0].size());
        if (parts.size() == 3)
            box.lineEdit()->setSelection(start, static_cast<int>(parts[1].size()));
        else
            box.lineEdit()->setCursorPosition(start);
        Type(box, key);
        QTEST(box.currentText(), "text");
        QTEST(box.lineEdit()->selectedText(), "selected");
    }

    void typeAheadTakesAnEntryWhoseTextWasOverwritten()
    {
        DateBox box(Years());
        Type(box, u"1"_s);
        box.setEditText(QString());
        Type(box, u"1"_s);
        QCOMPARE(box.currentText(), u"1999"_s);
    }

    void typeAheadWithoutLimitPassesTheKeyOn()
    {
        DateBox box(Years());
        QCOMPARE(ComboTypeAhead(box, u'x', false), u'x');
        QCOMPARE(ComboTypeAhead(box, VkEnter, false), 0);
        box.setEditText(u"abc"_s);
        QCOMPARE(ComboTypeAhead(box, VkBackspace, false), VkBackspace);
        QCOMPARE(box.currentText(), u"abc"_s);
    }

    void imageCombo_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("to");

        const int none = Qt::NoModifier;
        QTest::newRow("first match") << 0 << QList<int>{Qt::Key_F} << none << 3;
        QTest::newRow("twice, lower-case text") << 0 << QList<int>{Qt::Key_F, Qt::Key_F} << none << 4;
        QTest::newRow("around the end") << 0 << QList<int>{Qt::Key_F, Qt::Key_F, Qt::Key_F} << none << 3;
        QTest::newRow("backwards around the end") << 5 << QList<int>{Qt::Key_C} << none << 2;
        QTest::newRow("the only one stays") << 2 << QList<int>{Qt::Key_C} << none << 2;
        QTest::newRow("no match") << 2 << QList<int>{Qt::Key_Z} << none << 2;
        QTest::newRow("digit") << 5 << QList<int>{Qt::Key_8} << none << 1;
        QTest::newRow("digit of the keypad") << 5 << QList<int>{Qt::Key_8} << int(Qt::KeypadModifier) << 5;
        QTest::newRow("Shift") << 2 << QList<int>{Qt::Key_F} << int(Qt::ShiftModifier) << 2;
        QTest::newRow("Ctrl") << 2 << QList<int>{Qt::Key_Delete} << int(Qt::ControlModifier) << 2;
        QTest::newRow("Alt") << 2 << QList<int>{Qt::Key_F} << int(Qt::AltModifier) << 2;
        QTest::newRow("Delete") << 4 << QList<int>{Qt::Key_Delete} << none << 0;
        QTest::newRow("Backspace") << 4 << QList<int>{Qt::Key_Backspace} << none << 0;
        QTest::newRow("Enter keeps the chosen one") << 4 << QList<int>{Qt::Key_Return} << none << 4;
        QTest::newRow("no choice: the first, then the search") << -1 << QList<int>{Qt::Key_F} << none << 3;
        QTest::newRow("no choice and Shift: the first") << -1 << QList<int>{Qt::Key_F} << int(Qt::ShiftModifier) << 0;
        QTest::newRow("any other key") << 2 << QList<int>{Qt::Key_F3} << none << 2;
    }

    void imageCombo()
    {
        QFETCH(int, from);
        QFETCH(QList<int>, keys);
        QFETCH(int, modifiers);
        Picker picker;
        picker.setCurrentIndex(from);
        for (const int key : keys)
            QTest::keyClick(&picker, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTEST(picker.currentIndex(), "to");
    }

    void imageComboTakesTheKeyInItsEditText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("to");

        QTest::newRow("a key") << u"MP3"_s << int(VkEscape) << 5;
        QTest::newRow("nothing typed") << u""_s << int(VkEnter) << 0;
        QTest::newRow("no key") << u"mp3"_s << int(VkEnter) << -1;
        QTest::newRow("the search starts after it") << u"FLAC"_s << int('F') << 4;
    }

    void imageComboTakesTheKeyInItsEditText()
    {
        QFETCH(QString, text);
        QFETCH(int, key);
        Picker picker;
        picker.setEditable(true);
        picker.setCurrentIndex(-1);
        picker.setEditText(text);
        ImageComboKeyDown(picker, key, 0);
        QTEST(picker.currentIndex(), "to");
    }

    void imageComboWithoutItems()
    {
        QComboBox empty;
        ImageComboKeyDown(empty, 'F', 0);
        ImageComboKeyDown(empty, VkDelete, 0);
        QCOMPARE(empty.currentIndex(), -1);
    }

    void codes_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("virtualKey");
        QTest::addColumn<int>("character");

        const int none = Qt::NoModifier;
        const int ctrl = Qt::ControlModifier;
        const int alt = Qt::AltModifier;
        QTest::newRow("letter") << int(Qt::Key_F) << none << u"f"_s << 70 << 102;
        QTest::newRow("capital") << int(Qt::Key_F) << int(Qt::ShiftModifier) << u"F"_s << 70 << 70;
        QTest::newRow("keypad") << int(Qt::Key_7) << int(Qt::KeypadModifier) << u"7"_s << 103 << 55;
        QTest::newRow("keypad Enter") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << u"\r"_s << 13 << 13;
        QTest::newRow("Delete types nothing") << int(Qt::Key_Delete) << none << u"\x7f"_s << 46 << 0;
        QTest::newRow("Tab types nothing") << int(Qt::Key_Tab) << none << u"\t"_s << 9 << 0;
        QTest::newRow("Backspace without a text") << int(Qt::Key_Backspace) << none << u""_s << 8 << 8;
        QTest::newRow("Insert") << int(Qt::Key_Insert) << none << u""_s << 45 << 0;
        QTest::newRow("Page Up") << int(Qt::Key_PageUp) << ctrl << u""_s << 33 << 0;
        QTest::newRow("F3") << int(Qt::Key_F3) << none << u""_s << 114 << 0;
        QTest::newRow("Ctrl+C") << int(Qt::Key_C) << ctrl << u"\x03"_s << 67 << 3;
        QTest::newRow("Alt+C") << int(Qt::Key_C) << alt << u"c"_s << 67 << 0;
        QTest::newRow("AltGr") << int(Qt::Key_At) << (ctrl | alt) << u"@"_s << 0 << 64;
    }

    void codes()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, text);
        const QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), text);
        QTEST(VirtualKeyCode(event), "virtualKey");
        QTEST(CharacterCode(event), "character");
    }
};

std::unique_ptr<QObject> CreateKeysTest()
{
    return std::make_unique<TestKeys>();
}

#include "test_keys.moc"
