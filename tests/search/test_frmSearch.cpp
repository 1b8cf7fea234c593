#include "formatregistry.h"
#include "frmSearch.h"
#include "kit.h"

#include <QtWidgets>

namespace {

/// The dialog on the screen, over formats FLAC, Flute and MP3.
struct Fixture
{
    TestProgramFolder folder;
    ScriptedPrompts prompts;
    FormatRegistry formats{prompts};
    SearchCriteria criteria;
    std::unique_ptr<frmSearch> form;

    explicit Fixture(SearchCriteria remembered = {}) : criteria(std::move(remembered))
    {
        folder.Write(u"formats.ini"_s, "[Formats]\r\nFLAC=Lossless\r\nFlute=Lossy\r\nMP3=Lossy\r\n");
        formats.LoadFormats();
        form = std::make_unique<frmSearch>(criteria, QStringList{u"Album"_s, u"Concert"_s, u"Radio"_s}, formats);
        form->show();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
    }

    QWidget &Field(const QString &name) const { return *form->findChild<QWidget *>(name); }
    QComboBox &Combo(const QString &name) const { return *form->findChild<QComboBox *>(name); }
    QRadioButton &Option(int index) const { return *form->findChildren<QRadioButton *>()[index]; }
    bool CanSearch() const { return Field(u"cmdOK"_s).isEnabled(); }
    void Click(const QString &name) const { QTest::mouseClick(&Field(name), Qt::LeftButton); }

    /// Types into a field, given as "name=keys".
    QWidget &Enter(const QString &entry) const
    {
        QWidget &field = Field(entry.section(u'=', 0, 0));
        field.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&field, entry.section(u'=', 1));
        return field;
    }
};

QString Shown(const Fixture &f)
{
    QStringList texts;
    for (const auto *name : {"cboType", "cboYear", "cboMonth", "cboDay", "icbFormat"})
        texts.append(f.Combo(QLatin1StringView(name)).currentText());
    for (const QLineEdit *box :
         f.Field(u"txtVenue"_s).parent()->findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly))
        texts.append(box->text());
    return texts.join(u'|');
}

const SearchCriteria kEverything{u"Concert"_s, 1997,     12,      3,       u"v"_s, u"c"_s, u"0.5"_s, u"s"_s,
                                 u"A"_s,       u"MP3"_s, u"se"_s, u"st"_s, u"t"_s, u"n"_s, u"co"_s,  u"or"_s};

} // namespace

class TestFrmSearch : public QObject
{
    Q_OBJECT

private slots:
    void labelsNameTheFields()
    {
        const Fixture f;
        QCOMPARE(f.form->windowTitle(), u"Search"_s);
        QStringList captions;
        for (const QLabel *label : f.form->findChildren<QLabel *>()) {
            captions.append(label->text() + u'>' + label->buddy()->objectName());
            QVERIFY2(label->geometry().right() < label->buddy()->x(), qPrintable(label->text()));
        }
        QCOMPARE(
            captions.join(u' '),
            u"&Type:>cboType Month:>cboMonth Day:>cboDay &Year:>cboYear &Concert:>txtShow Ven&ue:>txtVenue "
            "&Length:>txtLength Sou&rce:>txtSource &Grade:>txtGrade For&mat:>icbFormat &Seeder:>txtSeeder "
            "Stored &in:>txtStoredIn &Track list>txtSetList &Notes:>txtSetNotes &Comments:>txtComment"_s);
    }

    // A blank is enough: only what is stored is trimmed.
    void textInAnyFieldEnablesOK()
    {
        const Fixture f;
        for (const QString &entry :
             u"cboType=r|icbFormat=f|cboYear=1|cboMonth=1|cboDay=1|txtLength=1|txtShow= |txtVenue= |txtSource= |"
             "txtGrade= |txtSeeder= |txtStoredIn= |txtSetList= |txtSetNotes= |txtComment= "_s.split(u'|')) {
            QWidget &field = f.Enter(entry);
            QVERIFY2(f.CanSearch(), qPrintable(entry));
            QTest::keyClick(&field, entry == u"cboType=r" ? Qt::Key_Home : Qt::Key_Backspace);
            QVERIFY2(!f.CanSearch(), qPrintable(entry));
        }
    }

    void ok()
    {
        Fixture f;
        for (const QString &entry :
             u"cboType=r|cboYear=x197|cboMonth=1|cboDay=31|txtShow=1|txtLength=1:2.3x.4|txtSource=4|"
             "txtGrade=ab|icbFormat=ff|txtSeeder=5|txtStoredIn=6|txtSetList=7|txtSetNotes=8|txtComment=9"_s.split(u'|'))
            f.Enter(entry);
        QGuiApplication::clipboard()->setText(u"  two words \n"_s);
        QTest::keySequence(&f.Enter(u"txtVenue"_s), QKeySequence::Paste);
        QTest::mouseClick(&f.Option(1), Qt::LeftButton);
        for (const auto *name : {"cboYear", "cboMonth", "cboDay"}) { // They swallow Enter and Escape.
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
                QTest::keyClick(&f.Field(QLatin1StringView(name)), key);
        }
        QVERIFY(f.form->isVisible());
        QTest::keyClick(&f.Field(u"txtComment"_s), Qt::Key_Return);
        QVERIFY(!f.form->isVisible());
        QVERIFY(!f.form->Cancelled());
        QCOMPARE(f.criteria.joiner, u"or"_s);
        QCOMPARE(Shown(Fixture(f.criteria)), u"Radio|1979|1|31|Flute|1|two words|12.34|4|AB|5|6|7|8|9"_s);
    }

    void remembered_data()
    {
        Table<SearchCriteria, QString, bool>("criteria", "shown", "canSearch")
            .Row("all", kEverything, u"Concert|1997|12|3|MP3|c|v|0.5|s|A|se|st|t|n|co"_s, true)
            .Row("nothing that the lists hold", {.type = u"concert"_s, .format = u"flac"_s}, u"||||||||||||||"_s, false)
            .Row("length 0", {.length = u"0.0"_s}, u"||||||||||||||"_s, false)
            .Row("none of the years", {.year = 1492}, u"|1492|||||||||||||"_s, true);
    }

    // Turning the wheel over a box without the focus changes nothing.
    void remembered()
    {
        QFETCH(SearchCriteria, criteria);
        const Fixture f(criteria);
        f.Field(u"txtVenue"_s).setFocus();
        for (QComboBox *box : f.form->findChildren<QComboBox *>())
            TurnWheel(*box);
        QTEST(Shown(f), "shown");
        QTEST(f.CanSearch(), "canSearch");
        QVERIFY(f.Option(0).isChecked());
    }

    void reset()
    {
        Fixture f(kEverything);
        QTest::mouseClick(&f.Option(1), Qt::LeftButton);
        f.Click(u"cmdReset"_s);
        QCOMPARE(Shown(f), u"|1997|12|3|||||||||||"_s);
        QCOMPARE(Shown(Fixture(f.criteria)), u"|1997|12|3|||||||||||"_s);
        QCOMPARE(f.criteria.joiner, u"and"_s);
        QVERIFY(!f.CanSearch());
        QVERIFY(f.Option(0).isChecked());
        // What a date box still shows can be chosen again.
        f.Combo(u"cboYear"_s).showPopup();
        QTest::keyClick(f.Combo(u"cboYear"_s).view(), Qt::Key_Return);
        QCOMPARE(Shown(f), u"|1997|12|3|||||||||||"_s);
        QVERIFY(f.CanSearch());
    }

    // A number beyond 32 bits can be pasted; the failure is reported, and the dialog stays.
    void numberTooBig()
    {
        Fixture f({.venue = u"before"_s});
        const FailureRecorder failures;
        f.Combo(u"cboYear"_s).setEditText(u"99999999999"_s);
        f.Enter(u"txtVenue=after"_s);
        f.Click(u"cmdOK"_s);
        QCOMPARE(failures.Names(), QStringList(u"frmSearch.cmdOK_Click"_s));
        QVERIFY(f.form->isVisible());
        f.Click(u"cmdCancel"_s);
        QVERIFY(!f.form->isVisible());
        QVERIFY(f.form->Cancelled());
        QCOMPARE(f.criteria.venue, u"before"_s);
    }
};

QTEST_MAIN(TestFrmSearch)
#include "test_frmSearch.moc"
