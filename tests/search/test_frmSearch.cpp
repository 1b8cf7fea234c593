#include "failures.h"
#include "formatregistry.h"
#include "frmSearch.h"
#include "programfolder.h"
#include "scriptedprompts.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;

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
        Open();
    }

    void Open()
    {
        form = std::make_unique<frmSearch>(criteria, QStringList{u"Album"_s, u"Concert"_s, u"Radio"_s}, formats);
        form->show();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
    }

    QComboBox &Combo(const QString &name) const { return *form->findChild<QComboBox *>(name); }
    QLineEdit &Text(const QString &name) const { return *form->findChild<QLineEdit *>(name); }
    QPushButton &Button(const QString &name) const { return *form->findChild<QPushButton *>(name); }
    QRadioButton &Option(int index) const { return *form->findChildren<QRadioButton *>()[index]; }
    bool CanSearch() const { return Button(u"cmdOK"_s).isEnabled(); }
    void Click(const QString &name) const { QTest::mouseClick(&Button(name), Qt::LeftButton); }

    /// Types into a field that the user enters by Tab.
    void Type(QWidget &field, const QString &text) const
    {
        field.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&field, text);
    }
};

QString Shown(const Fixture &f)
{
    QStringList texts;
    for (const auto *name : {"cboType", "cboYear", "cboMonth", "cboDay", "icbFormat"})
        texts.append(f.Combo(QLatin1StringView(name)).currentText());
    for (const auto *name :
         {"txtShow", "txtVenue", "txtLength", "txtSource", "txtGrade", "txtSeeder", "txtStoredIn", "txtSetList",
          "txtSetNotes", "txtComment"})
        texts.append(f.Text(QLatin1StringView(name)).text());
    return texts.join(u'|');
}

QString Stored(const SearchCriteria &c)
{
    const QString date = u"%1|%2|%3"_s.arg(c.year).arg(c.month).arg(c.day);
    const QStringList copy{c.length, c.source, c.grade, c.format, c.seeder, c.storedIn};
    const QStringList texts{c.trackList, c.notes, c.comments, c.joiner};
    return (QStringList{c.type, date, c.venue, c.concert} + copy + texts).join(u'|');
}

SearchCriteria Everything()
{
    return {u"Concert"_s, 1997,     12,      3,       u"v"_s, u"c"_s, u"1.5"_s, u"s"_s,
            u"A"_s,       u"MP3"_s, u"se"_s, u"st"_s, u"t"_s, u"n"_s, u"co"_s,  u"or"_s};
}

} // namespace

class TestFrmSearch : public QObject
{
    Q_OBJECT

private slots:
    void opens()
    {
        const Fixture f;
        QCOMPARE(f.form->windowTitle(), u"Search"_s);
        QCOMPARE(Shown(f), u"||||||||||||||"_s);
        QVERIFY(!f.CanSearch());
        QVERIFY(f.Option(0).isChecked());
        QVERIFY(f.form->Cancelled());
        QCOMPARE(f.Combo(u"cboYear"_s).itemText(0), QString::number(QDate::currentDate().year()));
        QCOMPARE(f.Combo(u"cboYear"_s).itemText(f.Combo(u"cboYear"_s).count() - 1), u"1940"_s);
        QCOMPARE(f.Combo(u"cboMonth"_s).count(), 12);
        QCOMPARE(f.Combo(u"cboDay"_s).count(), 31);
        QVERIFY(!f.Combo(u"icbFormat"_s).itemIcon(3).isNull());
        for (const QLabel *label : f.form->findChildren<QLabel *>())
            QVERIFY2(label->buddy(), qPrintable(label->text()));
    }

    void enablesOK_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("keys");
        for (const auto *name :
             {"txtShow", "txtVenue", "txtSource", "txtGrade", "txtSeeder", "txtStoredIn", "txtSetList", "txtSetNotes",
              "txtComment"})
            QTest::newRow(name) << QString::fromLatin1(name) << u" "_s;
        for (const auto *name : {"txtLength", "cboYear", "cboMonth", "cboDay"})
            QTest::newRow(name) << QString::fromLatin1(name) << u"1"_s;
        QTest::newRow("cboType") << u"cboType"_s << u"r"_s;
        QTest::newRow("icbFormat") << u"icbFormat"_s << u"f"_s;
    }

    void enablesOK()
    {
        QFETCH(QString, field);
        QFETCH(QString, keys);
        const Fixture f;
        auto *widget = f.form->findChild<QWidget *>(field);
        f.Type(*widget, keys);
        QVERIFY(f.CanSearch());
        QTest::keyClick(widget, field == u"cboType" ? Qt::Key_Home : Qt::Key_Backspace);
        QVERIFY(!f.CanSearch());
    }

    void ok()
    {
        Fixture f;
        f.Type(f.Combo(u"cboType"_s), u"r"_s);
        f.Type(f.Combo(u"cboYear"_s), u"x197"_s);
        f.Type(f.Combo(u"cboMonth"_s), u"1"_s);
        f.Type(f.Combo(u"cboDay"_s), u"31"_s);
        f.Type(f.Text(u"txtShow"_s), u"1"_s);
        QGuiApplication::clipboard()->setText(u"  two words \n"_s);
        f.Type(f.Text(u"txtVenue"_s), {});
        QTest::keySequence(&f.Text(u"txtVenue"_s), QKeySequence::Paste);
        f.Type(f.Text(u"txtLength"_s), u"1:2.3x.4"_s);
        f.Type(f.Text(u"txtSource"_s), u"4"_s);
        f.Type(f.Text(u"txtGrade"_s), u"ab"_s);
        f.Type(f.Combo(u"icbFormat"_s), u"ff"_s);
        f.Type(f.Text(u"txtSeeder"_s), u"5"_s);
        f.Type(f.Text(u"txtStoredIn"_s), u"6"_s);
        f.Type(f.Text(u"txtSetList"_s), u"7"_s);
        f.Type(f.Text(u"txtSetNotes"_s), u"8"_s);
        f.Type(f.Text(u"txtComment"_s), u"9"_s);
        QTest::mouseClick(&f.Option(1), Qt::LeftButton);
        f.Click(u"cmdOK"_s);
        QVERIFY(!f.form->Cancelled());
        QVERIFY(!f.form->isVisible());
        QCOMPARE(Stored(f.criteria), u"Radio|1979|1|31|two words|1|12.34|4|AB|Flute|5|6|7|8|9|or"_s);
    }

    void remembered_data()
    {
        QTest::addColumn<SearchCriteria>("criteria");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("canSearch");

        QTest::newRow("all") << Everything() << u"Concert|1997|12|3|MP3|c|v|1.5|s|A|se|st|t|n|co"_s << true;
        QTest::newRow("length 0") << SearchCriteria{.length = u"0.0"_s} << u"||||||||||||||"_s << false;
        QTest::newRow("type in another case, a year and a format out of the list")
            << SearchCriteria{.type = u"concert"_s, .year = 1492, .format = u"flac"_s} << u"|1492|||||||||||||"_s
            << true;
    }

    void remembered()
    {
        QFETCH(SearchCriteria, criteria);
        const Fixture f(criteria);
        QTEST(Shown(f), "shown");
        QTEST(f.CanSearch(), "canSearch");
        QVERIFY(f.Option(0).isChecked());
    }

    void reset()
    {
        Fixture f(Everything());
        QTest::mouseClick(&f.Option(1), Qt::LeftButton);
        f.Click(u"cmdReset"_s);
        QCOMPARE(Shown(f), u"|1997|12|3|||||||||||"_s);
        QCOMPARE(Stored(f.criteria), u"|1997|12|3||||||||||||and"_s);
        QVERIFY(!f.CanSearch());
        QVERIFY(f.Option(0).isChecked());
        QVERIFY(f.form->Cancelled());
        // What a date box still shows can be chosen again.
        f.Combo(u"cboYear"_s).showPopup();
        QTest::keyClick(f.Combo(u"cboYear"_s).view(), Qt::Key_Return);
        QCOMPARE(Shown(f), u"|1997|12|3|||||||||||"_s);
        QVERIFY(f.CanSearch());
    }

    void cancel_data()
    {
        QTest::addColumn<QString>("by");
        QTest::newRow("button") << u"button"_s;
        QTest::newRow("frame") << u"frame"_s;
    }

    void cancel()
    {
        QFETCH(QString, by);
        Fixture f;
        f.Type(f.Text(u"txtVenue"_s), u"x"_s);
        if (by == u"button")
            f.Click(u"cmdCancel"_s);
        else
            f.form->close();
        QVERIFY(!f.form->isVisible());
        QVERIFY(f.form->Cancelled());
        QCOMPARE(f.criteria.venue, u""_s);
    }

    void enter_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("closes");
        for (const auto *name : {"cboType", "txtVenue", "txtLength", "icbFormat"})
            QTest::newRow(name) << QString::fromLatin1(name) << true;
        for (const auto *name : {"cboYear", "cboMonth", "cboDay"})
            QTest::newRow(name) << QString::fromLatin1(name) << false;
    }

    // A date box swallows Enter and Escape.
    void enter()
    {
        QFETCH(QString, field);
        QFETCH(bool, closes);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            Fixture f({.venue = u"x"_s});
            auto *widget = f.form->findChild<QWidget *>(field);
            widget->setFocus();
            QTest::keyClick(widget, key);
            QCOMPARE(f.form->isVisible(), !closes);
            QCOMPARE(f.form->Cancelled(), !closes || key == Qt::Key_Escape);
        }
    }

    // A number beyond 32 bits can be pasted; the failure is reported, and the dialog stays as it was.
    void numberTooBig()
    {
        Fixture f({.venue = u"before"_s});
        QString reported;
        const FailureReporter earlier = InstallFailureReporter(
            [&](const FailureReport &report) { reported = report.moduleName + report.procName; });
        f.Combo(u"cboYear"_s).setEditText(u"99999999999"_s);
        f.Text(u"txtVenue"_s).setText(u"after"_s);
        f.Click(u"cmdOK"_s);
        InstallFailureReporter(earlier);
        QCOMPARE(reported, u"frmSearchcmdOK_Click"_s);
        QVERIFY(f.form->isVisible());
        QVERIFY(f.form->Cancelled());
        QCOMPARE(f.criteria.venue, u"before"_s);
    }
};

QTEST_MAIN(TestFrmSearch)
#include "test_frmSearch.moc"
