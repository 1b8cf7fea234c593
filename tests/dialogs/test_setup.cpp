#include "clsResizeLimits.h"
#include "frmSetup.h"
#include "testworkspace.h"

#include <QtWidgets>

namespace {

using Answer = UserPrompts::Answer;

constexpr auto kTypes = "<Type>a</Type><Type>b</Type><Type>60's</Type><Type>a</Type><Type><![CDATA[CD]]></Type>";

/// The dialog on the screen, over a catalog of these elements.
struct Fixture : TestWorkspace
{
    clsResizeLimits limits;
    FailureRecorder failures;
    frmSetup form{document, types, prompts, limits, nullptr};

    explicit Fixture(const QByteArray &elements, frmSetup::Mode mode = frmSetup::RecordingTypes)
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

    /// The same as the catalog has it.
    QString Elements() const { return document.Entries(CatalogList::RecordingTypes).join(u'|'); }
};

} // namespace

class TestSetup : public QObject
{
    Q_OBJECT

private slots:
    void loading()
    {
        Fixture f("<Type>Radio</Type><Item ID='1'><Type>deep</Type></Item><WebSource>https://a/?x=1&amp;y=2</WebSource>"
                  "<Type><![CDATA[Live]]> Video</Type><Type>Radio</Type><Type/>");
        QCOMPARE(f.Entries(), u"Radio|Live Video|Radio|"_s);
        QCOMPARE(f.lst().currentRow(), 0);
        QVERIFY(f.Button(u"cmdOK"_s).x() > f.lst().geometry().right());
        const QSize first = f.form.size();
        f.form.resize(first / 2);
        QCOMPARE(f.form.size(), first);
    }

    void adding()
    {
        Fixture f("<Type>TAPE</Type>");
        for (const QString &type : {u"R&B <x>"_s, u"Albums"_s, u" Tape "_s}) { // a group's name is free, blanks count
            f.prompts.ExpectInput(u"New recording type"_s, type);
            f.Click(u"cmdAdd"_s);
            QCOMPARE(f.lst().currentItem()->text(), type);
        }
        QCOMPARE(f.prompts.LastAsked().text, u"Enter type:"_s);
        QCOMPARE(f.prompts.LastAsked().proposed, QString());
        QCOMPARE(f.Elements(), u"TAPE|R&B <x>|Albums| Tape "_s);
    }

    void refusing()
    {
        Fixture f("<Type>TAPE</Type>");
        for (const QString &text :
             {u"\"albuM\" matches a reserved word and is not allowed."_s, u"\"tape\" is already on the list."_s}) {
            f.prompts.ExpectInput(u"New recording type"_s, text.section(u'"', 1, 1));
            f.prompts.ExpectMessage(u"Discbook"_s);
            f.Click(u"cmdAdd"_s);
            QCOMPARE(f.prompts.LastAsked().text, text);
        }
        QCOMPARE(f.Entries(), u"TAPE"_s);
        QCOMPARE(f.Elements(), u"TAPE"_s);
    }

    void editing()
    {
        // A reserved word and another entry are taken too; of two entries the first one in the catalog is renamed.
        const std::vector<std::tuple<int, QString, QString, QString>> edits = {
            {1, u" B&< "_s, u"a| B&< |60's|a|CD"_s, u"a| B&< |60's|a|CD"_s},
            {1, u"Concert"_s, u"a|Concert|60's|a|CD"_s, u"a|Concert|60's|a|CD"_s},
            {1, u"a"_s, u"a|a|60's|a|CD"_s, u"a|a|60's|a|CD"_s},
            {3, u"z"_s, u"a|b|60's|z|CD"_s, u"z|b|60's|a|CD"_s},
            {4, u"z"_s, u"a|b|60's|a|z"_s, u"a|b|60's|a|z"_s}};
        for (const auto &[row, answer, entries, elements] : edits) {
            Fixture f(kTypes);
            f.prompts.ExpectInput(u"Edit recording type"_s, answer);
            f.DoubleClick(row);
            QCOMPARE(f.Entries(), entries);
            QCOMPARE(f.Elements(), elements);
        }
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
        Fixture f("<Type>t</Type><WebSource>x&amp;y</WebSource>", frmSetup::WebSources);
        QCOMPARE(f.form.windowTitle(), u"Setup web sources"_s);
        QCOMPARE(f.Entries(), u"x&y"_s);
        f.prompts.ExpectInput(u"New web source"_s, u"http://b"_s);
        f.Click(u"cmdAdd"_s);
        QCOMPARE(f.prompts.LastAsked().text, u"Enter address:"_s);
        QCOMPARE(f.document.Entries(CatalogList::WebSources), QStringList({u"x&y"_s, u"http://b"_s}));
        for (int i = 0; i < 2; ++i) {
            f.prompts.ExpectMessage(u"Confirmation"_s, Answer::Yes);
            f.Click(u"cmdDelete"_s);
        }
        QCOMPARE(f.prompts.LastAsked().text, u"Are you sure you want to remove this web source?"_s);
        QCOMPARE(f.document.Entries(CatalogList::WebSources), QStringList());
        QVERIFY(f.Button(u"cmdDelete"_s).isEnabled());
        f.Click(u"cmdDelete"_s); // nothing is selected: nothing is asked
    }

    // What cannot be found by its text is reported and left alone.
    void notFound()
    {
        const std::vector<std::tuple<QByteArray, Failure, QString>> types = {
            {"<Type>60's</Type>", Failure::BadQuery, u"Not an expression: /Catalog/Type[text()='60's']"_s},
            {"<Type>' or '</Type>", Failure::BadQuery, u"Not an expression: /Catalog/Type[text()='' or '']"_s},
            {"<Type>a<!--x-->b</Type>", Failure::Missing, u"No such Type: ab"_s},
            {"<Type/>", Failure::Missing, u"No such Type: "_s}};
        for (const auto &[type, failure, description] : types) {
            Fixture f(type + "<Type>other</Type>");
            const QString before = f.Elements();
            f.prompts.ExpectInput(u"Edit recording type"_s, u"new"_s);
            f.DoubleClick(0);
            f.prompts.ExpectMessage(u"Confirmation"_s, Answer::Yes);
            f.Click(u"cmdDelete"_s);
            QCOMPARE(f.failures.Names(), QStringList({u"frmSetup.lst_DblClick"_s, u"frmSetup.cmdDelete_Click"_s}));
            for (const auto &report : f.failures.reports)
                QVERIFY(report.number == static_cast<int>(failure) && report.description == description);
            QCOMPARE(f.Elements(), before);
            QCOMPARE(f.Entries(), before);
        }
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
        QVERIFY(f.form.isVisible());
        QTest::keyClick(&f.Button(u"cmdOK"_s), Qt::Key_Return);
        QVERIFY(!f.form.isVisible());
    }
};

TEST_OF_SUITE(TestSetup)
#include "test_setup.moc"
