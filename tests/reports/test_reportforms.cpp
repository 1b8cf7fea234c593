#include "clsResizeLimits.h"
#include "filesizelimit.h"
#include "frmList.h"
#include "frmViewAsWebpage.h"
#include "shows.h"

#include <QtWidgets>

namespace {

constexpr auto kShows = R"(
<Item ID='1' Type='Album' Year='1970' Venue='Caf&#233;' Format='FLAC'><SetList>s</SetList><Notes>n</Notes></Item>
<Item ID='2' Type='Album' Year='1971' Venue='b' Format='MP3'><Comment>c</Comment></Item>
<Item ID='3' Type='Album' Year='1972' Venue='c'/>
<Item ID='4' Type='Album' Year='1973' Venue='d' WrongDate='1'/>)";

struct PageForm : Shows
{
    frmViewAsWebpage form{Source(), settings, prompts};

    explicit PageForm(const QString &catalog = u"Shows"_s) : Shows(kShows, catalog)
    {
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
    }

    QCheckBox &Box(int index) { return *form.findChild<QCheckBox *>(u"chkCol%1"_s.arg(index)); }

    /// Views the page as that file, whose contents are returned.
    QByteArray View(const QString &name = u"out.html"_s)
    {
        prompts.ExpectSaveFile(u"Save as HTML file..."_s, folder.Path(name));
        QTest::mouseClick(form.findChild<QPushButton *>(u"cmdView"_s), Qt::LeftButton);
        return QFile::exists(folder.Path(name)) ? folder.Read(name) : QByteArray();
    }
};

struct ListForm : Shows
{
    clsResizeLimits limits;
    std::unique_ptr<frmList> form;

    explicit ListForm(ListKind kind = ListKind::NeedLossless, const QByteArray &listings = kShows) : Shows(listings)
    {
        Open(kind);
    }

    void Open(ListKind kind = ListKind::NeedLossless)
    {
        form = std::make_unique<frmList>(Source(), frmList::Services{settings, limits, prompts});
        QVERIFY(form->LoadList(kind));
        form->show();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
    }

    QListView &lst() const { return *form->findChild<QListView *>(u"lst"_s); }
    QModelIndex Line(int row) const { return lst().model()->index(row, 0); }

    void Export(const QString &path)
    {
        prompts.ExpectSaveFile(u"Export list to file"_s, path);
        form->findChild<QAction *>(u"mnuFileExport"_s)->trigger();
    }
    QByteArray Exported()
    {
        Export(folder.Path(u"out.txt"_s));
        return folder.Read(u"out.txt"_s);
    }
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

    void pageNames()
    {
        // A catalog's name, its page's file and title.
        const std::vector<std::array<QString, 3>> names = {
            {u" My Shows "_s, u"myshows.html"_s, u"My Shows"_s},
            {u"a.b"_s, u"a.b.html"_s, u"a.b"_s},
            {u"  "_s, u"collection.html"_s, u""_s}};
        for (const auto &[catalog, proposed, title] : names) {
            PageForm f(catalog);
            QVERIFY(f.View().contains("<title>" + title.toUtf8() + "</title>"));
            const UserPrompts::FileRequest asked = f.prompts.LastAsked().request;
            QCOMPARE(asked.proposed, proposed);
            QCOMPARE(asked.filter, u"HTML files (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*"_s);
            QCOMPARE(asked.extension, u"html"_s);
            QCOMPARE(asked.folder, QDir::cleanPath(f.folder.Path(u"."_s)));
            QCOMPARE(f.prompts.Opened(), QStringList(f.folder.Path(u"out.html"_s)));
            QVERIFY(!f.form.isVisible());
        }
    }

    void eachBoxBringsItsPartOfThePage()
    {
        const QByteArrayList parts{"<th>Format", "Set List:", "Comments:", "Notes:"};
        for (int box = 0; box < 4; ++box) {
            PageForm f;
            f.Box(box).setChecked(true);
            const QByteArray page = f.View();
            for (int part = 0; part < 4; ++part)
                QCOMPARE(page.contains(parts[part]), part == box);
        }
    }

    void cancelClosesTheFormAndFailureDoesNot()
    {
        const FailureRecorder failures;
        PageForm f;
        f.View(u"no such folder/out.html"_s);
        QCOMPARE(failures.Names(), QStringList(u"frmViewAsWebpage.mnuViewAsWebPage_Click"_s));
#ifdef Q_OS_UNIX
        f.folder.Write(u"out.html"_s, "earlier");
        const FileSizeLimit full(100);
        QCOMPARE(f.View(), "earlier");
#endif
        QVERIFY(f.form.isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
        f.prompts.ExpectSaveFile(u"Save as HTML file..."_s, {});
        QTest::keyClick(&f.form, Qt::Key_Return);
        QVERIFY(!f.form.isVisible());
        QCOMPARE(f.prompts.Opened(), QStringList());
    }

    void exportedLines()
    {
        ListForm f;
        QCOMPARE(f.Exported(), QByteArray("1971 - b\r\n1972 - c\r\n"));
        const UserPrompts::FileRequest asked = f.prompts.LastAsked().request;
        QCOMPARE(asked.proposed, u"Need Lossless.txt"_s);
        QCOMPARE(asked.filter, u"Text files (*.txt)|*.txt|All files (*.*)|*.*"_s);
        QCOMPARE(asked.extension, u"txt"_s);
        const FailureRecorder failures;
        f.Export(f.folder.Path(u"."_s));
        QCOMPARE(failures.Names(), QStringList(u"frmList.cmdExport_Click"_s));
        QVERIFY(f.form->isVisible());
        QCOMPARE(ListForm(ListKind::Lossless).Exported(), QByteArray("1970 - Caf\u00E9\r\n"));
        QCOMPARE(ListForm(ListKind::Lossless, "<Item ID='1' Type='Album' WrongDate='1'/>").Exported(), QByteArray());
    }

    // Only the screen gets a cut line, and all lines are as wide as the longest.
    void longLine()
    {
        const QByteArray text(5000, 'x');
        ListForm f(ListKind::DoNotHave, "<Item ID='1' Type='Album'/><Item ID='2' Type='Album' Venue='" + text + "'/>");
        QCOMPARE(f.Exported(), " - \r\n - " + text + "\r\n");
        const QString shown = f.Line(1).data().toString();
        QCOMPARE(shown.size(), 2001);
        QVERIFY(f.lst().sizeHintForIndex(f.Line(0)).width() > f.lst().fontMetrics().horizontalAdvance(shown));
    }

    void placeAndSize()
    {
        ListForm f;
        const QSize design = f.form->size();
        f.form->resize(10, 10);
        QCOMPARE(f.form->size(), design);
        f.form->resize(600, 450);
        const QRect inner = f.form->centralWidget()->rect();
        QTRY_COMPARE(f.lst().geometry(), QRect(8, 8, inner.width() - 16, inner.height() - 16));
        f.form->move(30, 40);
        QTest::keyClick(&f.lst(), Qt::Key_Escape);
        QVERIFY(!f.form->isVisible());
        const QByteArray stored = "[List]\r\nHeight=6750\r\nLeft=450\r\nTop=600\r\nWidth=9000\r\nWindowState=0\r\n";
        QCOMPARE(f.folder.Read(u"discbook.ini"_s), stored);
        f.Open();
        QCOMPARE(f.form->pos(), QPoint(30, 40));
        QCOMPARE(f.form->size(), QSize(600, 450));
        f.settings.WriteValue(u"List"_s, u"Width"_s, u"15"_s);
        f.Open();
        QCOMPARE(f.form->size(), QSize(design.width(), 450));
    }
};

QTEST_MAIN(TestReportForms)
#include "test_reportforms.moc"
