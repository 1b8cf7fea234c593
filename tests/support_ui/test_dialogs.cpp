#include "QtPrompts.h"
#include "kit.h"
#include "modCommonDialog.h"
#include "modOpenFolder.h"
#include "waitcursor.h"

#include <QtWidgets>

namespace {

using Answer = UserPrompts::Answer;
using Buttons = UserPrompts::Buttons;
using Icon = UserPrompts::Icon;

/// Hands the next dialog that opens to `action`, which must close it.
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
    auto *edit = dialog.findChild<QLineEdit *>();
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        m_folder.Write(u"taken.txt"_s, {});
        m_folder.Write(u"README"_s, {});
    }

    void messages()
    {
        using Box = QMessageBox;
        const std::vector<std::tuple<Buttons, Icon, Box::Icon, Qt::Key, Answer>> cases = {
            {Buttons::Ok, Icon::None, Box::NoIcon, Qt::Key_Return, Answer::Ok},
            {Buttons::Ok, Icon::Information, Box::Information, Qt::Key_Escape, Answer::Ok},
            {Buttons::YesNo, Icon::Question, Box::Question, Qt::Key_Return, Answer::Yes},
            {Buttons::YesNo, Icon::Critical, Box::Critical, Qt::Key_Escape, Answer::No},
            {Buttons::YesNoDefaultNo, Icon::Question, Box::Question, Qt::Key_Return, Answer::No},
            {Buttons::YesNoDefaultNo, Icon::Question, Box::Question, Qt::Key_Escape, Answer::No},
            {Buttons::YesNoCancel, Icon::None, Box::NoIcon, Qt::Key_Return, Answer::Yes},
            {Buttons::YesNoCancel, Icon::None, Box::NoIcon, Qt::Key_Escape, Answer::Cancel},
            {Buttons::YesNoOrNeither, Icon::None, Box::NoIcon, Qt::Key_Escape, Answer::Cancel},
            {Buttons::YesNoOrNeither, Icon::None, Box::NoIcon, Qt::Key_N, Answer::No}};
        const WaitCursor loading;
        for (const auto &[buttons, icon, shown, key, answer] : cases) {
            QWidget hidden;
            QtPrompts prompts;
            prompts.SetMainWindow(&hidden);
            const bool cancels = buttons == Buttons::YesNoCancel;
            WhenOpen<QMessageBox>([&expected = shown, &pressed = key, cancels](QMessageBox &box) {
                QVERIFY(!box.button(Box::Cancel) || box.button(Box::Cancel)->isVisible() == cancels);
                QVERIFY(!QGuiApplication::overrideCursor());
                QVERIFY2(!box.parentWidget(), "a window that is not shown yet loses its place as an owner");
                QCOMPARE(box.windowTitle(), u"Title"_s);
                QCOMPARE(box.icon(), expected);
                QCOMPARE(box.textFormat(), Qt::PlainText);
                QCOMPARE(box.text(), u"<b>R&B</b>\n?"_s);
                if (pressed == Qt::Key_N)
                    box.button(QMessageBox::No)->click();
                else
                    QTest::keyClick(&box, pressed);
            });
            QCOMPARE(prompts.Message(u"<b>R&B</b>\r\n?"_s, u"Title"_s, icon, buttons), answer);
            QVERIFY(QGuiApplication::overrideCursor());
        }
    }

    void inputs()
    {
        // What is typed, and the answer.
        const std::vector<std::tuple<QString, Qt::Key, QString>> cases = {
            {{}, Qt::Key_Return, u"R&B"_s},
            {u"Soul"_s, Qt::Key_Return, u"Soul"_s},
            {u"Soul"_s, Qt::Key_Escape, {}},
            {u"a\r\nb\tc"_s, Qt::Key_Return, u"abc"_s}};
        for (const auto &[typed, key, answer] : cases) {
            WhenOpen<QInputDialog>([&text = typed, &pressed = key](QInputDialog &dialog) {
                QCOMPARE(dialog.windowTitle(), u"Title"_s);
                const auto *label = dialog.findChild<QLabel *>();
                QCOMPARE(label->textFormat(), Qt::PlainText);
                QVERIFY(label->buddy()); // which makes a single "&" a mnemonic
                QCOMPARE(label->text(), u"<i>A && B</i>\n?"_s);
                auto *edit = dialog.findChild<QLineEdit *>();
                if (!text.isEmpty())
                    edit->insert(text);
                QTest::keyClick(edit, pressed);
            });
            QCOMPARE(QtPrompts().Input(u"<i>A & B</i>\r\n?"_s, u"Title"_s, u"R&B"_s), answer);
        }
    }

    void nameFilters()
    {
        const QHash<QString, QStringList> expected{
            {u"Text files (*.txt)|*.txt"_s, {u"Text files (*.txt) (*.txt)"_s}},
            {u"Pages (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*"_s,
             {u"Pages (*.html;*.htm) (*.html *.htm)"_s, u"All files (*.*) (*)"_s}},
            {u"Logs|*.log|pattern missing"_s, {u"Logs (*.log)"_s}},
            {u""_s, {}}};
        for (auto [filter, qt] : expected.asKeyValueRange())
            QCOMPARE(NameFilters(filter), qt);
    }

    void openFile()
    {
        QtPrompts prompts;
        WhenOpen<QFileDialog>([](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), u"Open Catalog"_s);
            QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFile);
            TypeName(dialog, u"README"_s);
        });
        UserPrompts::FileRequest request = Request();
        QCOMPARE(prompts.OpenFile(request), QDir::toNativeSeparators(m_folder.Path(u"README"_s)));

        request.folder = QDir::rootPath();
        request.proposed = m_folder.Path(u"taken.txt"_s);
        WhenOpen<QFileDialog>([this](QFileDialog &dialog) {
            QCOMPARE(dialog.directory(), QDir(m_folder.Path({})));
            QCOMPARE(dialog.findChild<QLineEdit *>()->text(), u"taken.txt"_s);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QCOMPARE(prompts.OpenFile(request), QString());
    }

    void saveFile()
    {
        const QString isNew = u"\nThis file does not exist.\nDo you want to create it?"_s;
        const QString taken = u" already exists.\nDo you want to replace it?"_s;
        // What is typed, the name that it gets, and the question.
        const std::vector<std::array<QString, 3>> names = {
            {u"README"_s, u"README.txt"_s, isNew},
            {u"Vol. 2"_s, u"Vol. 2.txt"_s, isNew},
            {u"new.*"_s, u"new.*.txt"_s, isNew},
            {u"new.LOG"_s, u"new.LOG"_s, isNew},
            {u"taken"_s, u"taken.txt"_s, taken}};
        for (const auto &[typed, saved, question] : names) {
            WhenOpen<QFileDialog>([&, &name = typed, text = saved + question](QFileDialog &dialog) {
                WhenOpen<QMessageBox>([&, text](QMessageBox &box) {
                    QCOMPARE(box.text(), text);
                    QCOMPARE(box.textFormat(), Qt::PlainText);
                    QCOMPARE(box.defaultButton() == box.button(QMessageBox::Yes), text.endsWith(isNew));
                    box.button(QMessageBox::Yes)->click();
                });
                QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
                TypeName(dialog, name);
            });
            QCOMPARE(QtPrompts().SaveFile(Request()), QDir::toNativeSeparators(m_folder.Path(saved)));
        }
    }

    void saveFileRefusedAndCancelled()
    {
        QtPrompts prompts;
        WhenOpen<QFileDialog>([](QFileDialog &dialog) {
            WhenOpen<QMessageBox>([](QMessageBox &box) {
                WhenOpen<QFileDialog>([](QFileDialog &again) { again.reject(); });
                QTest::keyClick(&box, Qt::Key_Escape);
            });
            TypeName(dialog, u"new"_s);
        });
        QCOMPARE(prompts.SaveFile(Request({})), QString());
    }

    void address()
    {
        for (const QString &scheme : {u"http"_s, u"https"_s, u"mailto"_s, u"file"_s})
            QDesktopServices::setUrlHandler(scheme, this, "TakeOpened");
        const QHash<QString, QString> expected{
            {u"https://example.org/a?b=c&d#e"_s, u"https://example.org/a?b=c&d#e"_s},
            {u"mailto:me@example.org"_s, u"mailto:me@example.org"_s},
            {u" example.org/x.html\t"_s, u"http://example.org/x.html"_s},
            {u"host:8080"_s, u"http://host:8080"_s},
            {u"example.org:80/x"_s, u"http://example.org:80/x"_s},
            {u"/tmp/a b#1.html"_s, u"file:///tmp/a b%231.html"_s},
            {u" \t"_s, {}}};
        for (auto [path, url] : expected.asKeyValueRange()) {
            QtPrompts().OpenWithDefaultProgram(path);
            QCOMPARE(std::exchange(m_opened, {}), url);
        }
        for (const QString &file : {u"C:\\music"_s, u"\\\\a\\b"_s, QDir().relativeFilePath(m_folder.Path(u"README"_s))})
            QVERIFY2(AddressOf(file).isLocalFile(), qPrintable(file));
    }

private:
    Q_INVOKABLE void TakeOpened(const QUrl &address) { m_opened += address.toString(); }

    UserPrompts::FileRequest Request(const QString &filter = u"Text files|*.txt;*.log|All files (*.*)|*.*"_s) const
    {
        return {
            .title = u"Open Catalog"_s,
            .filter = filter,
            .folder = m_folder.Path({}),
            .extension = u"txt"_s,
            .proposed = u"list.txt"_s};
    }

    const TestProgramFolder m_folder;
    QString m_opened;
};

TEST_OF_SUITE(TestDialogs)
#include "test_dialogs.moc"
