#include "QtPrompts.h"
#include "modCommonDialog.h"
#include "modOpenFolder.h"
#include "tests.h"
#include "waitcursor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

using Answer = UserPrompts::Answer;
using Buttons = UserPrompts::Buttons;

template<class Dialog, class Action>
void WhenOpen(Action action)
{
    QTimer::singleShot(0, qApp, [action] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        action(*dialog);
        if (dialog->isVisible()) {
            dialog->reject();
            QFAIL("the dialog did not close");
        }
    });
}

void TypeName(QFileDialog &dialog, const QString &name)
{
    auto *edit = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s);
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
}

void AnswerBox(const QString &text, QMessageBox::StandardButton button)
{
    WhenOpen<QMessageBox>([=](QMessageBox &box) {
        QVERIFY2(box.text().contains(text), qPrintable(box.text()));
        box.button(button)->click();
    });
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        for (const QString &name : {u"taken.txt"_s, u"README"_s}) {
            QFile file(m_folder->filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void message_data()
    {
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<int>("key");
        QTest::addColumn<Answer>("answer");

        const int enter = Qt::Key_Return;
        const int escape = Qt::Key_Escape;
        QTest::newRow("Ok, Enter") << Buttons::Ok << enter << Answer::Ok;
        QTest::newRow("Ok, Escape") << Buttons::Ok << escape << Answer::Ok;
        QTest::newRow("YesNo, Enter") << Buttons::YesNo << enter << Answer::Yes;
        QTest::newRow("YesNo, Escape") << Buttons::YesNo << escape << Answer::No;
        QTest::newRow("YesNoCancel, Enter") << Buttons::YesNoCancel << enter << Answer::Yes;
        QTest::newRow("YesNoCancel, Escape") << Buttons::YesNoCancel << escape << Answer::Cancel;
        QTest::newRow("YesNoCancel, No") << Buttons::YesNoCancel << 0 << Answer::No;
    }

    void message()
    {
        QFETCH(Buttons, buttons);
        QFETCH(int, key);
        const WaitCursor loading;
        QWidget hidden;
        QtPrompts prompts;
        prompts.SetMainWindow(&hidden);
        WhenOpen<QMessageBox>([key](QMessageBox &box) {
            QVERIFY(!QGuiApplication::overrideCursor());
            QVERIFY2(!box.parentWidget(), "a window that is not shown yet loses its place as an owner");
            QCOMPARE(box.windowTitle(), u"Title"_s);
            QCOMPARE(box.icon(), QMessageBox::NoIcon);
            const auto *label = box.findChild<QLabel *>(u"qt_msgbox_label"_s);
            QCOMPARE(label->textFormat(), Qt::PlainText);
            QCOMPARE(label->text(), u"<b>R&B</b>\n?"_s);
            if (key == 0)
                box.button(QMessageBox::No)->click();
            else
                QTest::keyClick(&box, Qt::Key(key));
        });
        QTEST(prompts.Message(u"<b>R&B</b>\r\n?"_s, u"Title"_s, UserPrompts::Icon::None, buttons), "answer");
        QVERIFY(QGuiApplication::overrideCursor());
    }

    void input_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("answer");

        QTest::newRow("as proposed") << QString() << int(Qt::Key_Return) << u"R&B"_s;
        QTest::newRow("typed over it") << u"Soul"_s << int(Qt::Key_Return) << u"Soul"_s;
        QTest::newRow("cancelled") << u"Soul"_s << int(Qt::Key_Escape) << QString();
        QTest::newRow("pasted lines") << u"a\r\nb\tc"_s << int(Qt::Key_Return) << u"abc"_s;
    }

    void input()
    {
        QFETCH(QString, typed);
        QFETCH(int, key);
        QtPrompts prompts;
        WhenOpen<QInputDialog>([=](QInputDialog &dialog) {
            const auto *label = dialog.findChild<QLabel *>();
            QCOMPARE(label->textFormat(), Qt::PlainText);
            QVERIFY(label->buddy()); // which makes a single "&" a mnemonic
            QCOMPARE(label->text(), u"<i>A && B</i>"_s);
            auto *edit = dialog.findChild<QLineEdit *>();
            if (!typed.isEmpty())
                edit->insert(typed);
            QTest::keyClick(edit, Qt::Key(key));
        });
        QTEST(prompts.Input(u"<i>A & B</i>"_s, u"Title"_s, u"R&B"_s), "answer");
    }

    void nameFilters_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("qt");

        QTest::newRow("one") << u"Text files (*.txt)|*.txt"_s << QStringList{u"Text files (*.txt) (*.txt)"_s};
        QTest::newRow("two patterns, all files")
            << u"HTML files (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*"_s
            << QStringList{u"HTML files (*.html;*.htm) (*.html *.htm)"_s, u"All files (*.*) (*)"_s};
        QTest::newRow("description without patterns") << u"Logs|*.log"_s << QStringList{u"Logs (*.log)"_s};
        QTest::newRow("pattern missing") << u"Logs|*.log|All"_s << QStringList{u"Logs (*.log)"_s};
        QTest::newRow("none") << u""_s << QStringList{};
    }

    void nameFilters()
    {
        QFETCH(QString, filter);
        QTEST(NameFilters(filter), "qt");
    }

    void openFile()
    {
        QtPrompts prompts;
        WhenOpen<QFileDialog>([](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), u"Open Catalog"_s);
            TypeName(dialog, u"README"_s);
        });
        UserPrompts::FileRequest request{
            .title = u"Open Catalog"_s,
            .filter = u"All files (*.*)|*.*"_s,
            .folder = m_folder->path(),
            .extension = u"xml"_s,
            .proposed = {}};
        QCOMPARE(prompts.OpenFile(request), QDir::toNativeSeparators(m_folder->filePath(u"README"_s)));

        request.folder = QDir::rootPath();
        request.proposed = m_folder->filePath(u"taken.txt"_s);
        WhenOpen<QFileDialog>([this](QFileDialog &dialog) {
            QCOMPARE(dialog.directory(), QDir(m_folder->path()));
            QCOMPARE(dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)->text(), u"taken.txt"_s);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QCOMPARE(prompts.OpenFile(request), QString());
    }

    void saveFile_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QString>("saved");

        const QString isNew = u"\nThis file does not exist."_s;
        QTest::newRow("extension added") << u"README"_s << isNew << u"README.txt"_s;
        QTest::newRow("added behind dots") << u"Vol. 2"_s << isNew << u"Vol. 2.txt"_s;
        QTest::newRow("not one of the filter's") << u"new.*"_s << isNew << u"new.*.txt"_s;
        QTest::newRow("one of the filter's") << u"new.LOG"_s << isNew << u"new.LOG"_s;
        QTest::newRow("existing, by its added extension") << u"taken"_s << u" already exists"_s << u"taken.txt"_s;
    }

    void saveFile()
    {
        QFETCH(QString, typed);
        QFETCH(QString, question);
        QFETCH(QString, saved);
        QtPrompts prompts;
        WhenOpen<QFileDialog>([=](QFileDialog &dialog) {
            AnswerBox(saved + question, QMessageBox::Yes);
            TypeName(dialog, typed);
        });
        const UserPrompts::FileRequest request{
            .title = u"Export list to file"_s,
            .filter = u"Text files (*.txt)|*.txt;*.log|All files (*.*)|*.*"_s,
            .folder = m_folder->path(),
            .extension = u"txt"_s,
            .proposed = u"list.txt"_s};
        QCOMPARE(prompts.SaveFile(request), QDir::toNativeSeparators(m_folder->filePath(saved)));
    }

    void saveFileRefused()
    {
        QtPrompts prompts;
        WhenOpen<QFileDialog>([](QFileDialog &dialog) {
            WhenOpen<QMessageBox>([](QMessageBox &box) {
                WhenOpen<QFileDialog>([](QFileDialog &again) { again.reject(); });
                box.button(QMessageBox::No)->click();
            });
            TypeName(dialog, u"new.txt"_s);
        });
        QCOMPARE(
            prompts.SaveFile({.title = {}, .filter = {}, .folder = m_folder->path(), .extension = {}, .proposed = {}}),
            QString());
    }

    void address_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("address");

        const auto row = [](const QString &path, const QString &address) {
            QTest::newRow(qPrintable(path)) << path << address;
        };
        row(u"https://example.org/a?b=c&d#e"_s, u"https://example.org/a?b=c&d#e"_s);
        row(u"mailto:me@example.org"_s, u"mailto:me@example.org"_s);
        row(u" example.org/x.html\t"_s, u"http://example.org/x.html"_s);
        row(u"host:8080"_s, u"http://host:8080"_s);
        row(u"example.org:80/x"_s, u"http://example.org:80/x"_s);
        row(u"/tmp/a b#1.html"_s, u"file:///tmp/a b%231.html"_s);
    }

    void address()
    {
        QFETCH(QString, path);
        QTEST(AddressOf(path).toString(), "address");
        for (const QString &file :
             {u"C:\\music"_s, u"\\\\a\\b"_s, QDir().relativeFilePath(m_folder->filePath(u"README"_s))})
            QVERIFY2(AddressOf(file).isLocalFile(), qPrintable(file));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

std::unique_ptr<QObject> CreateDialogsTest()
{
    return std::make_unique<TestDialogs>();
}

#include "test_dialogs.moc"
