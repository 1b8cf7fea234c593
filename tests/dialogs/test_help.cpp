#include "chmfile.h"
#include "clsINI.h"
#include "frmHelp.h"
#include "helpcontents.h"
#include "kit.h"
#include "modHelp.h"

#include <QtWidgets>

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
    void initTestCase() { m_settings.LoadINI(m_folder.Path(u"discbook.ini"_s)); }

    void init()
    {
        ShowHelp(kHelpContents, m_settings, m_prompts, kFile);
        QCOMPARE(Windows().size(), 1);
        m_form = Windows().first();
        m_page = m_form->findChild<QTextBrowser *>();
        m_contents = m_form->findChild<QTreeWidget *>();
        QVERIFY(QTest::qWaitForWindowActive(m_form));
    }

    void cleanup()
    {
        QMetaObject::invokeMethod(qApp, "aboutToQuit");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(Windows().isEmpty());
    }

    void file()
    {
        const ChmFile file(kFile);
        QCOMPARE(file.TopicPage(kHelpContents), u"contents.html"_s);
        QCOMPARE(file.TopicPage(1001), u"second.html"_s);
        QCOMPARE(file.TopicPage(7), u"first.html"_s); // an unknown topic
        QCOMPARE(file.Title(), u"Test Help"_s);
        QVERIFY(file.Read(u"/first.html"_s));
        QVERIFY(!file.Read(u"/none.html"_s) && !file.Read(QString(600, u'x')));
    }

    void contents()
    {
        const auto topics = [](const QString &html) {
            QStringList lines;
            for (const HelpTopic &topic : ReadHelpContents(html))
                lines += QString::number(topic.level) + u' ' + topic.title + u' ' + topic.page;
            return lines.join(u'|');
        };
        const QString nested =
            uR"(<ul><li><object><param name="Name" value="A"><param name="Local" value="a.html"></object>
<ul><li><object><param name="Name" value="B"><param name="Local" value="b.html"></object></ul>
<li><object><param name="Name" value="C"></object></ul>)"_s;
        QCOMPARE(topics(nested), u"0 A a.html|1 B b.html|0 C "_s);
        const QString otherSpelling = uR"(<UL><LI><OBJECT type='x'><PARAM VALUE='R&amp;B &gt; "x"' NAME='name'>
<param name="local"  value = "r b.html" /></OBJECT></UL>)"_s;
        QCOMPARE(topics(otherSpelling), u"0 R&B > \"x\" r b.html"_s);
        QCOMPARE(topics(u"</ul></ul><object><param name='Name' value='no list'></object>"_s), u"0 no list "_s);
        QCOMPARE(topics(u"<object><param name='Local' value='no name'></object>"_s), u""_s);
    }

    void firstPage()
    {
        QVERIFY(!m_form->testAttribute(Qt::WA_QuitOnClose));
        QVERIFY(!m_page->document()->toHtml().contains(u"#123456"_s));
        // Tab goes through the links of a page that it has led to.
        for (const QWidget *next : std::initializer_list<QWidget *>{m_contents, m_page, m_page}) {
            QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
            QCOMPARE(m_form->focusWidget(), next);
        }
        QVERIFY(m_page->document()->toHtml().contains(uR"(– <img src="CD.png" alt="Disc" width="16" height="16")"_s));
        m_form->showMinimized();
        ShowHelp(1001, m_settings, m_prompts, kFile);
        QVERIFY(!m_form->isMinimized());
        QCOMPARE(Windows(), QList<frmHelp *>{m_form});
        QVERIFY(m_page->toPlainText().contains(u"The second page"_s));
    }

    void linksAndHistory()
    {
        ClickLink(u"inside"_s);
        QCOMPARE(Place(), u"chm:/second.html#below Two, below"_s);
        QTest::keyClick(m_contents, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(Place(), u"chm:/contents.html All"_s);
        QTest::keyClick(m_contents, Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(Place(), u"chm:/second.html#below Two, below"_s);
        QTest::keyClick(m_page, Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(Place(), u"chm:/contents.html All"_s);
        ClickLink(u"outside"_s);
        QCOMPARE(m_prompts.Opened(), QStringList(u"https://example.org/"_s));
        QCOMPARE(Place(), u"chm:/contents.html All"_s);
        m_page->setSource(QUrl(u"none.html"_s));
        QCOMPARE(m_page->toPlainText(), u"This page is not in the help file."_s);
    }

    void contentsLeadToPages()
    {
        QTest::keyClick(m_contents, Qt::Key_Down);
        QCOMPARE(Place(), u"chm:/second.html Two"_s);
        const QRect line = m_contents->visualItemRect(m_contents->topLevelItem(0)->child(1));
        QTest::mouseClick(m_contents->viewport(), Qt::LeftButton, {}, line.center());
        QCOMPARE(Place(), u"chm:/second.html#below Two, below"_s);
        m_form->resize(500, 400);
        QTest::keyClick(m_page, Qt::Key_Escape);
        QVERIFY(Windows().isEmpty());
        init();
        QCOMPARE(m_form->size(), QSize(500, 400));
    }

    // A download that broke off or was damaged is refused or lacks pages, and nothing worse.
    void damagedFiles()
    {
        const TestProgramFolder folder;
        QByteArray whole = ReadWholeFile(kFile);
        for (qsizetype size = 0; size < whole.size(); size += 97) {
            try {
                const ChmFile file(folder.Write(u"short.chm"_s, whole.first(size)));
                file.Read(u"second.html"_s);
            } catch (const ProgramError &error) {
                QCOMPARE(error.failure(), Failure::BadFile);
            }
        }
        whole[whole.indexOf("Test Help") - 1] = '\x7F'; // a title longer than the file says
        QCOMPARE(ChmFile(folder.Write(u"long.chm"_s, whole)).Title(), QString());
    }

private:
    /// The page, and the line of the contents that is marked.
    QString Place() const { return m_page->source().toString() + u' ' + m_contents->currentItem()->text(0); }

    void ClickLink(const QString &text)
    {
        QTextCursor cursor = m_page->document()->find(text);
        cursor.setPosition(cursor.selectionStart() + 1);
        QTest::mouseClick(m_page->viewport(), Qt::LeftButton, {}, m_page->cursorRect(cursor).center());
    }

    TestProgramFolder m_folder;
    ScriptedPrompts m_prompts;
    clsINI m_settings{m_prompts};
    frmHelp *m_form = nullptr;
    QTextBrowser *m_page = nullptr;
    QTreeWidget *m_contents = nullptr;
};

TEST_OF_SUITE(TestHelp)
#include "test_help.moc"
