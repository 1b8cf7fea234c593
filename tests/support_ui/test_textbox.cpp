#include "capitalsbox.h"
#include "datecombos.h"
#include "lengthbox.h"
#include "tests.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A box of each kind on the screen, and one more control beside them.
struct Boxes
{
    QWidget window;
    TextBox text{&window};
    CapitalsBox capitals{&window};
    LengthBox length{&window};
    QComboBox year{&window};
    QComboBox month{&window};
    QComboBox day{&window};
    QListWidget other{&window};

    Boxes()
    {
        MakeDateBoxes(year, month, day);
        FillDateBoxes(year, month, day, 2024);
        int y = 0;
        for (QWidget *control :
             std::initializer_list<QWidget *>{&text, &capitals, &length, &year, &month, &day, &other})
            control->setGeometry(0, y++ * 40, 300, 30);
        other.addItems({u"one"_s, u"two"_s});
        other.setCurrentRow(0);
        window.resize(300, 300);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    QLineEdit &Edit(const QString &kind)
    {
        return kind == u"capitals" ? capitals : kind == u"length" ? length : kind == u"year" ? *year.lineEdit() : text;
    }
};

void Commit(QWidget &box, const QString &text)
{
    QInputMethodEvent composed;
    composed.setCommitString(text);
    QCoreApplication::sendEvent(&box, &composed);
}

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

/// Does what a script tells in the control that has the focus: "^x" is Ctrl+X, "\b" Backspace, "<"
/// goes back by one, "~x" composes an x, "{" and "}" are Cut and Paste of the menu; all else is typed.
void Play(QWidget &window, const QString &script)
{
    QWidget &box = *window.focusWidget();
    for (qsizetype i = 0; i < script.size(); ++i) {
        switch (script[i].unicode()) {
        case u'^':
            QTest::keyClick(&box, script[++i].toLatin1(), Qt::ControlModifier);
            break;
        case u'\b':
            QTest::keyClick(&box, Qt::Key_Backspace);
            break;
        case u'<':
            QTest::keyClick(&box, Qt::Key_Left);
            break;
        case u'~':
            Commit(box, QString(script[++i]));
            break;
        case u'{':
            ChooseInMenu(box, u"Cu&t"_s);
            break;
        case u'}':
            ChooseInMenu(box, u"&Paste"_s);
            break;
        default:
            QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, QString(script[i]), Qt::NoModifier);
        }
    }
}

} // namespace

class TestTextBox : public QObject
{
    Q_OBJECT

private slots:
    void goesIn_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("text");
        QTest::newRow("line end") << u"text"_s << u"Fire\r\n"_s << u"^v"_s << u"Fire"_s;
        QTest::newRow("gaps") << u"text"_s << u"\n\ta\tb\r\nc\v"_s << u"x^vy"_s << u"xa b cy"_s;
        QTest::newRow("controls") << u"text"_s << u" a\x01\u0085\u2028b "_s << u"}"_s << u" a b "_s;
        QTest::newRow("nothing left of it") << u"text"_s << u"\n"_s << u"abc^a^v"_s << u"abc"_s;
        QTest::newRow("composed") << u"text"_s << u""_s << u"caf~é"_s << u"café"_s;
        QTest::newRow("capitals") << u"capitals"_s << u"b\né"_s << u"aß<^v~ü"_s << u"AB ÉÜß"_s;
        QTest::newRow("length") << u"length"_s << u"2:10"_s << u"a1.2.,~é~5"_s << u"1.25"_s;
        QTest::newRow("pasted length") << u"length"_s << u"2:10"_s << u"77^a^x8^z^z^y^v"_s << u"77"_s;
        QTest::newRow("date") << u"year"_s << u"1x"_s << u"~éa1~9~7"_s << u"1979"_s;
        QTest::newRow("pasted date") << u"year"_s << u" 20\t25x\n"_s << u"}^z^a"_s << u" 2025x"_s;
    }

    void goesIn()
    {
        QFETCH(QString, kind);
        QFETCH(QString, clipboard);
        QFETCH(QString, script);
        Boxes boxes;
        QGuiApplication::clipboard()->setText(clipboard);
        boxes.Edit(kind).setFocus();
        // An empty box is entered with nothing selected.
        Play(boxes.window, script);
        QTEST(boxes.Edit(kind).text(), "text");
    }

    void undoes_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("states"); // the text, and what it is after each Ctrl+Z
        QTest::newRow("typing") << u"text"_s << u"ab~éc"_s << u"abéc||"_s;
        QTest::newRow("pastes") << u"text"_s << u"a^v^v}b"_s << u"aP QP QP Qb|aP QP QP Q|aP QP Q|aP Q|a||"_s;
        QTest::newRow("cut of a part") << u"text"_s << u"abc^a^x"_s << u"|abc||"_s;
        QTest::newRow("cut of all, then typing") << u"text"_s << u"abc^a^xde"_s << u"de||abc||"_s;
        QTest::newRow("cut by the menu") << u"text"_s << u"abc^a{d"_s << u"d||abc||"_s;
        QTest::newRow("deletion, then typing") << u"text"_s << u"abc\b\bd"_s << u"ad|a|abc||"_s;
        QTest::newRow("deletion of the only one") << u"text"_s << u"a^a\bb"_s << u"b||a||"_s;
        QTest::newRow("small letters") << u"capitals"_s << u"a^vb"_s << u"AP QB|AP Q|A||"_s;
    }

    void undoes()
    {
        QFETCH(QString, kind);
        QFETCH(QString, script);
        Boxes boxes;
        QGuiApplication::clipboard()->setText(u"p\nq"_s.toUpper());
        QLineEdit &edit = boxes.Edit(kind);
        edit.setFocus();
        Play(boxes.window, script);
        QStringList states{edit.text()};
        while (edit.isUndoAvailable()) {
            Play(boxes.window, u"^z"_s);
            states += edit.text();
        }
        QTEST(states.join(u'|') + u'|', "states");
    }

    void pictureLeavesTheSelection()
    {
        Boxes boxes;
        auto *picture = new QMimeData;
        picture->setImageData(QImage(2, 2, QImage::Format_RGB32));
        QGuiApplication::clipboard()->setMimeData(picture);
        boxes.text.setText(u"abc"_s);
        boxes.text.setFocus();
        Play(boxes.window, u"^v"_s);
        QCOMPARE(boxes.text.text(), u"abc"_s);
    }

    void longTextKeepsItsTail()
    {
        Boxes boxes;
        boxes.text.setText(QString(40000, u'x') + u'y');
        boxes.text.setFocus();
        boxes.text.end(false);
        Play(boxes.window, u"z"_s);
        QVERIFY(boxes.text.text().endsWith(u"xyz"_s));
    }

    void entry_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<bool>("selects");
        for (const auto reason :
             {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason, Qt::OtherFocusReason})
            QTest::addRow("%d", reason) << int(reason) << true;
        for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason})
            QTest::addRow("%d", reason) << int(reason) << false;
    }

    void entry()
    {
        QFETCH(int, reason);
        Boxes boxes;
        for (QLineEdit *edit : {static_cast<QLineEdit *>(&boxes.text), boxes.year.lineEdit()}) {
            edit->setText(u"1990"_s);
            boxes.other.setFocus();
            edit->setFocus(Qt::FocusReason(reason));
            QTEST(edit->selectedText() == u"1990"_s, "selects");
        }
    }

    void entryByMouse()
    {
        Boxes boxes;
        const auto click = [](QLineEdit &edit, Qt::MouseButton button) {
            QTest::mouseClick(&edit, button, {}, {2, edit.height() / 2}, QApplication::doubleClickInterval() * 2);
        };
        for (QLineEdit *edit : {static_cast<QLineEdit *>(&boxes.text), boxes.year.lineEdit()}) {
            edit->setText(u"1990"_s);
            boxes.other.setFocus();
            click(*edit, Qt::LeftButton);
            QCOMPARE(edit->selectedText(), u"1990"_s);
            click(*edit, Qt::LeftButton);
            QCOMPARE(edit->selectedText(), QString());
        }
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

std::unique_ptr<QObject> CreateTextBoxTest()
{
    return std::make_unique<TestTextBox>();
}

#include "test_textbox.moc"
