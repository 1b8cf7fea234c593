#include "application.h"
#include "chmfile.h"
#include "failures.h"
#include "flatfile.h"
#include "frmHelp.h"
#include "helpcontents.h"
#include "modHelp.h"
#include "paths.h"
#include "scriptedprompts.h"

#include <QAction>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

const QString kFile = QStringLiteral(HELP_FILE);

QList<frmHelp *> Windows()
{
    QList<frmHelp *> forms;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *form = qobject_cast<frmHelp *>(window); form && form->isVisible())
            forms.append(form);
    }
    return forms;
}

} // namespace

class TestHelp : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ShowHelp(kHelpContents, m_prompts, kFile);
        QCOMPARE(Windows().size(), 1);
        m_form = Windows().first();
        m_page = m_form->findChild<QTextBrowser *>();
        m_contents = m_form->findChild<QTreeWidget *>();
        QVERIFY(QTest::qWaitForWindowActive(m_form));
    }

    void cleanup()
    {
        m_form->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(Windows().isEmpty());
    }

    void file_data()
    {
        QTest::addColumn<int>("context");
        QTest::addColumn<QString>("page");
        QTest::newRow("contents") << kHelpContents << u"contents.html"_s;
        QTest::newRow("another") << 1001 << u"second.html"_s;
        QTest::newRow("unknown") << 7 << u"first.html"_s;
    }

    void file()
    {
        QFETCH(int, context);
        const ChmFile file(kFile);
        QTEST(file.TopicPage(context), "page");
        QCOMPARE(file.Title(), u"Test Help"_s);
        QVERIFY(file.Read(u"/first.html"_s).value_or(QByteArray()).contains("The first page"));
        QVERIFY(!file.Read(u"/none.html"_s));
        QVERIFY(!file.Read(QString(600, u'x')));
    }

    void contents_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("topics");
        QTest::newRow("nested")
            << uR"(<ul><li><object><param name="Name" value="A"><param name="Local" value="a.html"></object>
<ul><li><object><param name="Name" value="B"><param name="Local" value="b.html#x"></object></ul>
<li><object><param name="Name" value="C"></object></ul>)"_s
            << u"0 A a.html|1 B b.html#x|0 C "_s;
        QTest::newRow("spelling") << uR"(<UL><LI><OBJECT type='x'><PARAM VALUE='R&amp;B &gt; "x"' NAME='name'>
<param name="local"  value = "r b.html" /></OBJECT></UL>)"_s
                                  << u"0 R&B > \"x\" r b.html"_s;
        QTest::newRow("no name, no list") << u"<object><param name=\"Local\" value=\"a\"></object><object>"
                                             "<param name=\"Name\" value=\"<b>\"></object></ul></ul>"_s
                                          << u""_s;
        QTest::newRow("nothing") << u""_s << u""_s;
    }

    void contents()
    {
        QFETCH(QString, html);
        QStringList topics;
        for (const HelpTopic &topic : ReadHelpContents(html))
            topics += QString::number(topic.level) + u' ' + topic.title + u' ' + topic.page;
        QTEST(topics.join(u'|'), "topics");
    }

    void firstPage()
    {
        QCOMPARE(m_form->windowTitle(), u"Test Help"_s);
        QVERIFY(m_page->toPlainText().contains(u"All pages \u2013"_s));
        QVERIFY(!m_page->document()->resource(QTextDocument::ImageResource, QUrl(u"CD.png"_s)).isNull());
        QCOMPARE(m_contents->topLevelItemCount(), 1);
        QCOMPARE(m_contents->currentItem()->text(0), u"All"_s);
        ShowHelp(1001, m_prompts, kFile);
        QCOMPARE(Windows(), QList<frmHelp *>{m_form});
        QVERIFY(m_page->toPlainText().contains(u"The second page"_s));
    }

    void linksAndHistory()
    {
        ClickLink(u"inside"_s);
        QCOMPARE(m_page->source(), QUrl(u"chm:/second.html#below"_s));
        QVERIFY(m_page->toPlainText().contains(u"The second page"_s));
        QCOMPARE(m_contents->currentItem()->text(0), u"Two, below"_s);
        QTest::keyClick(m_page, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(m_page->source(), QUrl(u"chm:/contents.html"_s));
        QCOMPARE(m_contents->currentItem()->text(0), u"All"_s);
        QTest::keyClick(m_page, Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(m_page->source(), QUrl(u"chm:/second.html#below"_s));
        QTest::keyClick(m_contents, Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(m_page->source(), QUrl(u"chm:/contents.html"_s));
        ClickLink(u"outside"_s);
        QCOMPARE(m_prompts.Opened(), QStringList(u"https://example.org/"_s));
        QCOMPARE(m_page->source(), QUrl(u"chm:/contents.html"_s));
        m_page->setSource(QUrl(u"none.html"_s));
        QCOMPARE(m_page->toPlainText(), u"This page is not in the help file."_s);
    }

    void contentsLeadToPages()
    {
        QTest::keyClick(m_contents, Qt::Key_Down);
        QCOMPARE(m_page->source(), QUrl(u"chm:/second.html"_s));
        const QRect line = m_contents->visualItemRect(m_contents->topLevelItem(0)->child(1));
        QTest::mouseClick(m_contents->viewport(), Qt::LeftButton, {}, line.center());
        QCOMPARE(m_page->source(), QUrl(u"chm:/second.html#below"_s));
        QTest::keyClick(m_page, Qt::Key_Escape);
        QVERIFY(Windows().isEmpty());
    }

    void unusableFiles()
    {
        const QTemporaryDir folder;
        SetProgramFolder(folder.path());
        const QString path = HelpFilePath();
        QCOMPARE(path, folder.filePath(u"test_help.chm"_s));
        QStringList reports;
        const FailureReporter earlier = InstallFailureReporter([&reports](const FailureReport &report) {
            reports += report.moduleName + u'.' + report.procName + u' ' + QString::number(report.number);
        });
        ShowHelp(kHelpContents, m_prompts);
        WriteFileAtomically(path, "no help");
        ShowHelp(kHelpContents, m_prompts);
        InstallFailureReporter(earlier);
        SetProgramFolder({});
        QCOMPARE(reports, QStringList(2, u"modHelp.ShowHelp 5"_s));
        QCOMPARE(Windows().size(), 1);
    }

    // A download that broke off is refused or lacks pages, and nothing worse.
    void truncatedFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"short.chm"_s);
        const QByteArray whole = ReadWholeFile(kFile);
        for (qsizetype size = 0; size < whole.size(); size += 97) {
            WriteFileAtomically(path, whole.first(size));
            try {
                const ChmFile file(path);
                file.Read(u"second.html"_s);
            } catch (const ProgramError &error) {
                QCOMPARE(error.failure(), Failure::BadFile);
            }
        }
    }

private:
    void ClickLink(const QString &text)
    {
        QTextCursor cursor = m_page->document()->find(text);
        cursor.setPosition(cursor.selectionStart() + 1);
        QTest::mouseClick(m_page->viewport(), Qt::LeftButton, {}, m_page->cursorRect(cursor).center());
    }

    ScriptedPrompts m_prompts;
    frmHelp *m_form = nullptr;
    QTextBrowser *m_page = nullptr;
    QTreeWidget *m_contents = nullptr;
};

int main(int argc, char *argv[])
{
    const Application application(argc, argv);
    TestHelp test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_help.moc"
