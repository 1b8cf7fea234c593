#include "clsResizeLimits.h"
#include "failures.h"
#include "frmList.h"
#include "frmViewAsWebpage.h"
#include "shows.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kShows = R"(
<Item ID='1' Type='Album' Year='1970' Venue='Caf&#233;' Format='FLAC'/>
<Item ID='2' Type='Album' Year='1971' Venue='b' Format='MP3'/>
<Item ID='3' Type='Album' Year='1972' Venue='c'/>
<Item ID='4' Type='Album' Year='1973' Venue='d' WrongDate='1'/>)";

const QString kPageDialog = u"Save as HTML file..."_s;
const QString kListDialog = u"Export list to file"_s;

/// Records the reports of failures instead of showing them.
class Reports
{
public:
    Reports()
        : m_earlier(InstallFailureReporter(
              [this](const FailureReport &report) { names.append(report.moduleName + u'/' + report.procName); }))
    {
    }
    ~Reports() { InstallFailureReporter(m_earlier); }
    Reports(const Reports &) = delete;
    Reports &operator=(const Reports &) = delete;

    QStringList names;

private:
    FailureReporter m_earlier;
};

struct PageForm : Shows
{
    frmViewAsWebpage form{Source(), settings, prompts};

    explicit PageForm(const QString &catalog = u"Shows"_s) : Shows(kShows, catalog)
    {
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
    }

    QCheckBox &Box(int index) { return *form.findChild<QCheckBox *>(u"chkCol%1"_s.arg(index)); }
    void View() { QTest::mouseClick(form.findChild<QPushButton *>(u"cmdView"_s), Qt::LeftButton); }
};

struct ListForm : Shows
{
    clsResizeLimits limits;
    std::unique_ptr<frmList> form;

    ListForm() : Shows(kShows) { Open(); }

    void Open(ListKind kind = ListKind::NeedLossless)
    {
        form = std::make_unique<frmList>(Source(), frmList::Services{settings, limits, prompts});
        QVERIFY(form->LoadList(kind));
        form->show();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
    }

    QListView &lst() const { return *form->findChild<QListView *>(u"lst"_s); }
    void Export() const { form->findChild<QAction *>(u"mnuFileExport"_s)->trigger(); }
    QString Setting(const QString &key) const { return settings.ReadString(u"List"_s, key); }
};

} // namespace

class TestReportForms : public QObject
{
    Q_OBJECT

private slots:
    void choicesAreRemembered()
    {
        PageForm f;
        QCOMPARE(f.form.windowTitle(), u"View as Webpage"_s);
        QTest::mouseClick(&f.Box(0), Qt::LeftButton, {}, {5, f.Box(0).height() / 2});
        QTest::keyClick(&f.Box(1), Qt::Key_Space);
        f.Box(2).click();
        for (const int byScreenReader : {2, 3})
            f.Box(byScreenReader).toggle();
        const QByteArray stored =
            "[WebPage]\r\nRecordingFormat=1\r\nRecordingNotes=1\r\nSetComments=0\r\nSetList=1\r\n";
        QCOMPARE(f.folder.Read(u"discbook.ini"_s), stored);

        QVERIFY(QFile::remove(f.folder.Path(u"discbook.ini"_s)));
        const frmViewAsWebpage again(f.Source(), f.settings, f.prompts);
        QString checked;
        for (const QCheckBox *box : again.findChildren<QCheckBox *>())
            checked += box->isChecked() ? u'1' : u'0';
        QCOMPARE(checked, u"1101"_s);
        QVERIFY2(!QFile::exists(f.folder.Path(u"discbook.ini"_s)), "loading has written");
    }

    void pageNames_data()
    {
        QTest::addColumn<QString>("catalog");
        QTest::addColumn<QString>("proposed");
        QTest::addColumn<QByteArray>("title");
        QTest::newRow("blanks and capitals") << u" My Shows "_s << u"myshows.html"_s << QByteArray("My Shows");
        QTest::newRow("dots") << u"a.b"_s << u"a.b.html"_s << QByteArray("a.b");
        QTest::newRow("blanks only") << u"  "_s << u"collection.html"_s << QByteArray();
    }

    void pageNames()
    {
        QFETCH(QString, catalog);
        QFETCH(QByteArray, title);
        PageForm f(catalog);
        const QString path = f.folder.Path(u"out.html"_s);
        f.prompts.ExpectSaveFile(kPageDialog, path);
        f.View();
        const UserPrompts::FileRequest asked = f.prompts.LastAsked().request;
        QTEST(asked.proposed, "proposed");
        QCOMPARE(asked.filter, u"HTML files (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*"_s);
        QCOMPARE(asked.extension, u"html"_s);
        QCOMPARE(asked.folder, QDir::cleanPath(f.folder.Path(u"."_s)));
        QVERIFY(f.folder.Read(u"out.html"_s).contains("<title>" + title + "</title>"));
        QCOMPARE(f.prompts.Opened(), QStringList(path));
        QVERIFY(!f.form.isVisible());
    }

    // Each box brings its own part of the page.
    void boxesMakeThePage_data()
    {
        QTest::addColumn<int>("box");
        QTest::addColumn<QByteArray>("part");
        QTest::newRow("format") << 0 << QByteArray("<td align='center'>FLAC</td>");
        QTest::newRow("set list") << 1 << QByteArray("Set List:");
        QTest::newRow("comments") << 2 << QByteArray("Comments:");
        QTest::newRow("notes") << 3 << QByteArray("Notes:");
    }

    void boxesMakeThePage()
    {
        QFETCH(int, box);
        PageForm f;
        f.document.Load(f.folder.Write(
            u"Full.xml"_s, "<Catalog><Item ID='1' Type='Album' Format='FLAC'><SetList>s</SetList><Notes>n</Notes>"
                           "<Comment>c</Comment></Item></Catalog>"));
        f.tree.LoadShows();
        f.Box(box).setChecked(true);
        f.prompts.ExpectSaveFile(kPageDialog, f.folder.Path(u"out.html"_s));
        f.View();
        const QByteArray page = f.folder.Read(u"out.html"_s);
        QTEST(
            QByteArray(
                page.contains("center") ? "<td align='center'>FLAC</td>"
                                        : page.mid(page.indexOf("top'>") + 5).split('<').first()),
            "part");
        QCOMPARE(page.count("colspan"), box == 0 ? 0 : 1);
    }

    void pageCancelled()
    {
        PageForm f;
        f.prompts.ExpectSaveFile(kPageDialog, {});
        QTest::keyClick(&f.form, Qt::Key_Return);
        QVERIFY(!f.form.isVisible());
        QCOMPARE(f.prompts.Opened(), QStringList());
    }

    void pageCannotBeWritten()
    {
        Reports reports;
        PageForm f;
        f.prompts.ExpectSaveFile(kPageDialog, f.folder.Path(u"no such folder/out.html"_s));
        f.View();
        QCOMPARE(reports.names, QStringList(u"frmViewAsWebpage/mnuViewAsWebPage_Click"_s));
        QCOMPARE(f.prompts.Opened(), QStringList());
        QVERIFY(f.form.isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void caption_data()
    {
        QTest::addColumn<ListKind>("kind");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("proposed");
        QTest::newRow("0") << ListKind::Lossless << u"List: Lossless - 1 out of 3"_s << u"Lossless.txt"_s;
        QTest::newRow("1") << ListKind::Lossy << u"List: Lossy - 1 out of 3"_s << u"Lossy.txt"_s;
        QTest::newRow("2") << ListKind::NeedLossless << u"List: Need Lossless - 2 out of 3"_s << u"Need Lossless.txt"_s;
        QTest::newRow("3") << ListKind::DoNotHave << u"List: Do Not Have - 1 out of 3"_s << u"Do Not Have.txt"_s;
    }

    void caption()
    {
        QFETCH(ListKind, kind);
        ListForm f;
        f.Open(kind);
        QTEST(f.form->windowTitle(), "caption");
        f.prompts.ExpectSaveFile(kListDialog, {});
        f.Export();
        const UserPrompts::FileRequest asked = f.prompts.LastAsked().request;
        QTEST(asked.proposed, "proposed");
        QCOMPARE(asked.filter, u"Text files (*.txt)|*.txt|All files (*.*)|*.*"_s);
        QCOMPARE(asked.extension, u"txt"_s);
    }

    void exportedBytes()
    {
        ListForm f;
        const QString path = f.folder.Path(u"out.txt"_s);
        f.prompts.ExpectSaveFile(kListDialog, path);
        f.Export();
        QCOMPARE(f.folder.Read(u"out.txt"_s), QByteArray("1971 - b\r\n1972 - c\r\n"));
        f.Open(ListKind::Lossless);
        f.prompts.ExpectSaveFile(kListDialog, path);
        f.Export();
        QCOMPARE(f.folder.Read(u"out.txt"_s), QByteArray("1970 - Caf\u00E9\r\n"));
        QVERIFY(f.form->isVisible());
    }

    void exportOfNothing()
    {
        Shows s("<Item ID='1' Type='Album' WrongDate='1'/>");
        clsResizeLimits limits;
        frmList form(s.Source(), {s.settings, limits, s.prompts});
        QVERIFY(form.LoadList(ListKind::Lossless));
        QCOMPARE(form.windowTitle(), u"List: Lossless - 0 out of 0"_s);
        s.prompts.ExpectSaveFile(kListDialog, s.folder.Path(u"out.txt"_s));
        form.findChild<QAction *>(u"mnuFileExport"_s)->trigger();
        QCOMPARE(s.folder.Read(u"out.txt"_s), QByteArray());
    }

    // Only the screen gets a cut line.
    void longLine()
    {
        Shows s("<Item ID='1' Type='Album' Format='FLAC' Venue='" + QByteArray(5000, 'x') + "'/>");
        clsResizeLimits limits;
        frmList form(s.Source(), {s.settings, limits, s.prompts});
        form.LoadList(ListKind::Lossless);
        const QString shown = form.findChild<QListView *>()->model()->index(0, 0).data().toString();
        QCOMPARE(shown.size(), 2001);
        s.prompts.ExpectSaveFile(kListDialog, s.folder.Path(u"out.txt"_s));
        form.findChild<QAction *>(u"mnuFileExport"_s)->trigger();
        QCOMPARE(s.folder.Read(u"out.txt"_s).size(), 3 + 5000 + 2);
    }

    void listCannotBeWritten()
    {
        Reports reports;
        ListForm f;
        f.prompts.ExpectSaveFile(kListDialog, f.folder.Path(u"."_s));
        f.Export();
        QCOMPARE(reports.names, QStringList(u"frmList/cmdExport_Click"_s));
        QVERIFY(f.form->isVisible());
    }

    void listOfAnotherCatalog()
    {
        Reports reports;
        ListForm f;
        const CatalogDocument empty;
        frmList form({f.tree.Model(), empty, f.formats}, {f.settings, f.limits, f.prompts});
        QVERIFY(!form.LoadList(ListKind::Lossy));
        QCOMPARE(reports.names, QStringList(u"frmList/LoadList"_s));
    }

    void resize()
    {
        const ListForm f;
        for (const QSize &size : {QSize(700, 500), QSize(900, 420)}) {
            f.form->resize(size);
            QCOMPARE(f.form->size(), size);
            const QRect inner = f.form->centralWidget()->rect();
            QTRY_COMPARE(f.lst().geometry(), QRect(8, 8, inner.width() - 16, inner.height() - 16));
        }
    }

    void positionIsRemembered()
    {
        ListForm f;
        const QSize design = f.form->size();
        f.form->resize(10, 10);
        QCOMPARE(f.form->size(), design);
        f.form->resize(600, 450);
        f.form->move(30, 40);
        QTest::keyClick(&f.lst(), Qt::Key_Escape);
        QVERIFY(!f.form->isVisible());
        QCOMPARE(f.Setting(u"Left"_s), u"450"_s);
        QCOMPARE(f.Setting(u"Top"_s), u"600"_s);
        QCOMPARE(f.Setting(u"Width"_s), u"9000"_s);
        QCOMPARE(f.Setting(u"Height"_s), u"6750"_s);
        f.Open();
        QCOMPARE(f.form->pos(), QPoint(30, 40));
        QCOMPARE(f.form->size(), QSize(600, 450));
        f.settings.WriteValue(u"List"_s, u"Width"_s, u"15"_s);
        f.Open();
        QCOMPARE(f.form->size(), QSize(design.width(), 450));
    }

    void longListOpensAtOnce()
    {
        LinesModel lines;
        QStringList many;
        for (int i = 0; i < 100'000; ++i)
            many.append(QString::number(i));
        lines.SetLines(many);
        QCOMPARE(lines.rowCount(), 100'000);
        QCOMPARE(lines.Longest(), u"10000"_s);
    }
};

QTEST_MAIN(TestReportForms)
#include "test_reportforms.moc"
