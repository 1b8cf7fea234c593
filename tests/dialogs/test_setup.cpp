#include "clsResizeLimits.h"
#include "failurerecorder.h"
#include "frmSetup.h"
#include "modXMLSubs.h"
#include "suite.h"
#include "table.h"
#include "testworkspace.h"
#include "typist.h"

#include <QListWidget>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

using enum frmSetup::Mode;
using Answer = UserPrompts::Answer;

constexpr auto kTypes = "<Type>a</Type><Type>b</Type><Type>60's</Type><Type>a</Type><Type><![CDATA[CD]]></Type>";

/// The dialog on the screen, over a catalog of these elements.
struct Fixture : TestWorkspace
{
    clsResizeLimits limits;
    FailureRecorder failures;
    frmSetup form{document, types, prompts, limits, nullptr};

    explicit Fixture(const QByteArray &elements, frmSetup::Mode mode = RecordingTypes)
    {
        Open(elements, {});
        form.Init(mode);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
    }

    QListWidget &lst() const { return *form.findChild<QListWidget *>(u"lst"_s); }
    QPushButton &Button(const QString &name) const { return *form.findChild<QPushButton *>(name); }
    void Click(const QString &name) const { QTest::mouseClick(&Button(name), Qt::LeftButton); }
    void DoubleClick(int row) const { ::DoubleClick(lst(), lst().model()->index(row, 0)); }

    QString Entries() const
    {
        QStringList entries;
        for (int row = 0; row < lst().count(); ++row)
            entries += lst().item(row)->text();
        return entries.join(u'|');
    }

    /// The texts of the catalog's elements, in their order.
    QString Elements() const
    {
        QStringList texts;
        for (const pugi::xml_node element : document.Catalog().children())
            texts += ElementText(element);
        return texts.join(u'|');
    }
};

} // namespace

class TestSetup : public QObject
{
    Q_OBJECT

private slots:
    void loading_data()
    {
        Table<frmSetup::Mode, QString, QString>("mode", "caption", "entries")
            .Row("types", RecordingTypes, u"Setup recording types"_s, u"Radio|Live Video|Radio|"_s)
            .Row("web sources", WebSources, u"Setup web sources"_s, u"https://a/?x=1&y=2"_s);
    }

    void loading()
    {
        QFETCH(frmSetup::Mode, mode);
        const Fixture f(
            "<Type>Radio</Type><Item ID='1'><Type>deep</Type></Item><WebSource>https://a/?x=1&amp;y=2</WebSource>"
            "<Type><![CDATA[Live]]> Video</Type><Type>Radio</Type><Type/>",
            mode);
        QTEST(f.form.windowTitle(), "caption");
        QTEST(f.lst().accessibleName(), "caption");
        QTEST(f.Entries(), "entries");
        QCOMPARE(f.lst().currentRow(), 0);
        QVERIFY(f.Button(u"cmdDelete"_s).isEnabled());
    }

    void adding_data()
    {
        Table<QString, QString>("answer", "refusal")
            .Row("a type", u"R&B <x>"_s, {})
            .Row("reserved", u"conCert"_s, u"\"conCert\" matches a reserved word and is not allowed."_s)
            .Row("a group's name is not reserved", u"Albums"_s, {})
            .Row("listed", u"tape"_s, u"\"tape\" is already on the list."_s)
            .Row("not trimmed", u" Tape "_s, {});
    }

    void adding()
    {
        QFETCH(QString, answer);
        QFETCH(QString, refusal);
        Fixture f("<Type>TAPE</Type><Item ID='1'/>");
        f.prompts.ExpectInput(u"New recording type"_s, answer);
        if (!refusal.isEmpty())
            f.prompts.ExpectMessage(u"Discbook"_s);
        f.Click(u"cmdAdd"_s);
        QCOMPARE(f.prompts.AllAsked()[0].proposed, QString());
        QCOMPARE(f.prompts.LastAsked().text, refusal.isEmpty() ? u"Enter type:"_s : refusal);
        QCOMPARE(f.Entries(), refusal.isEmpty() ? u"TAPE|"_s + answer : u"TAPE"_s);
        QCOMPARE(f.Elements(), refusal.isEmpty() ? u"TAPE||"_s + answer : u"TAPE|"_s);
        QCOMPARE(f.lst().currentRow(), f.lst().count() - 1);
    }

    void editing_data()
    {
        Table<int, QString, QString, QString>("row", "answer", "entries", "elements")
            .Row("renamed", 1, u" B&< "_s, u"a| B&< |60's|a|CD"_s, u"a| B&< |60's|a|CD"_s)
            .Row("to a reserved word", 1, u"Concert"_s, u"a|Concert|60's|a|CD"_s, u"a|Concert|60's|a|CD"_s)
            .Row("to another entry", 1, u"a"_s, u"a|a|60's|a|CD"_s, u"a|a|60's|a|CD"_s)
            .Row("the second of two", 3, u"z"_s, u"a|b|60's|z|CD"_s, u"z|b|60's|a|CD"_s)
            .Row("CDATA", 4, u"z"_s, u"a|b|60's|a|z"_s, u"a|b|60's|a|z"_s);
    }

    void editing()
    {
        QFETCH(int, row);
        QFETCH(QString, answer);
        Fixture f(kTypes);
        const QString old = f.lst().item(row)->text();
        f.prompts.ExpectInput(u"Edit recording type"_s, answer);
        f.DoubleClick(row);
        QCOMPARE(f.prompts.LastAsked().text, u"Enter type:"_s);
        QCOMPARE(f.prompts.LastAsked().proposed, old);
        QTEST(f.Entries(), "entries");
        QTEST(f.Elements(), "elements");
    }

    void deleting()
    {
        Fixture f(kTypes);
        f.lst().setCurrentRow(3);
        f.prompts.ExpectMessage(u"Confirmation"_s, Answer::No);
        f.Click(u"cmdDelete"_s);
        QCOMPARE(f.prompts.LastAsked().text, u"Are you sure you want to remove this recording type?"_s);
        QCOMPARE(f.prompts.LastAsked().icon, UserPrompts::Icon::Question);
        QCOMPARE(f.Elements(), u"a|b|60's|a|CD"_s);
        QCOMPARE(f.lst().currentRow(), 3);
        f.prompts.ExpectMessage(u"Confirmation"_s, Answer::Yes);
        f.Click(u"cmdDelete"_s);
        QCOMPARE(f.Entries(), u"a|b|60's|CD"_s);
        QCOMPARE(f.Elements(), u"b|60's|a|CD"_s);
        QCOMPARE(f.lst().currentRow(), 0);
    }

    void webSources()
    {
        Fixture f("<WebSource>w</WebSource>", WebSources);
        f.prompts.ExpectInput(u"New web source"_s, u"Video"_s);
        f.prompts.ExpectMessage(u"Discbook"_s); // the types' reserved words are those of both lists
        f.Click(u"cmdAdd"_s);
        f.prompts.ExpectInput(u"New web source"_s, u"http://b"_s);
        f.Click(u"cmdAdd"_s);
        QCOMPARE(f.prompts.LastAsked().text, u"Enter address:"_s);
        QCOMPARE(f.Elements(), u"w|http://b"_s);
        for (int i = 0; i < 2; ++i) {
            f.prompts.ExpectMessage(u"Confirmation"_s, Answer::Yes);
            f.Click(u"cmdDelete"_s);
        }
        QCOMPARE(f.prompts.LastAsked().text, u"Are you sure you want to remove this web source?"_s);
        QCOMPARE(f.Entries() + f.Elements(), u""_s);
        QVERIFY(f.Button(u"cmdDelete"_s).isEnabled());
        f.Click(u"cmdDelete"_s); // nothing is selected: nothing is asked
    }

    // What cannot be found by its text is reported and left alone.
    void notFound_data()
    {
        Table<QByteArray, Failure>("type", "failure")
            .Row("apostrophe", "<Type>60's</Type>", Failure::BadQuery)
            .Row("a query in the text", "<Type>x' or '1'='1</Type>", Failure::BadQuery)
            .Row("text in two pieces", "<Type>a<!--x-->b</Type>", Failure::Missing)
            .Row("no text", "<Type/>", Failure::Missing);
    }

    void notFound()
    {
        QFETCH(QByteArray, type);
        QFETCH(Failure, failure);
        Fixture f(type + "<Type>other</Type>");
        const QString before = f.Elements();
        f.prompts.ExpectInput(u"Edit recording type"_s, u"new"_s);
        f.DoubleClick(0);
        f.prompts.ExpectMessage(u"Confirmation"_s, Answer::Yes);
        f.Click(u"cmdDelete"_s);
        QCOMPARE(f.failures.Names(), QStringList({u"frmSetup.lst_DblClick"_s, u"frmSetup.cmdDelete_Click"_s}));
        for (const FailureReport &report : f.failures.reports)
            QCOMPARE(report.number, static_cast<int>(failure));
        QCOMPARE(f.Elements(), before);
        QCOMPARE(f.Entries(), before);
    }

    void withoutCatalogElement()
    {
        Fixture f("");
        f.document.Clear();
        f.prompts.ExpectInput(u"New recording type"_s, u"x"_s);
        f.Click(u"cmdAdd"_s);
        QCOMPARE(f.failures.Names(), QStringList(u"frmSetup.cmdAdd_Click"_s));
        QVERIFY(!f.Button(u"cmdDelete"_s).isEnabled());
        QTest::keyClick(&f.lst(), Qt::Key_Return); // in an empty list it answers OK
        QVERIFY(!f.form.isVisible());
    }

    void keys()
    {
        Fixture f(kTypes);
        QCOMPARE(f.form.focusWidget(), &f.lst());
        QTest::keyClick(&f.lst(), Qt::Key_Down);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
            f.prompts.ExpectInput(u"Edit recording type"_s, {});
            QTest::keyClick(&f.lst(), key);
            QCOMPARE(f.prompts.LastAsked().proposed, u"b"_s);
        }
        f.prompts.ExpectMessage(u"Confirmation"_s, Answer::Yes);
        QTest::keyClick(&f.lst(), Qt::Key_Delete);
        QCOMPARE(f.Entries(), u"a|60's|a|CD"_s);
        f.prompts.ExpectInput(u"New recording type"_s, {});
        QTest::keyClick(&f.lst(), Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(f.prompts.LastAsked().title, u"New recording type"_s); // the button is first shown pressed
        QCOMPARE(f.Entries(), u"a|60's|a|CD"_s);
        QVERIFY(f.form.isVisible());
        QTest::keyClick(&f.Button(u"cmdOK"_s), Qt::Key_Return);
        QVERIFY(!f.form.isVisible());
    }

    void size()
    {
        Fixture f(kTypes);
        const QSize first = f.form.size();
        const QSize list = f.lst().size();
        f.form.resize(first / 2);
        QCOMPARE(f.form.size(), first);
        f.form.resize(first + QSize(100, 50));
        QTRY_COMPARE(f.lst().size(), list + QSize(100, 50));
    }
};

TEST_OF_SUITE(TestSetup)

#include "test_setup.moc"
