#include "catalogdocument.h"
#include "clsINI.h"
#include "clsResizeLimits.h"
#include "failures.h"
#include "flatfile.h"
#include "frmSetup.h"
#include "modXMLSubs.h"
#include "scriptedprompts.h"
#include "showntypes.h"
#include "tests.h"

#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Asked = ScriptedPrompts::Asked;

/// The texts of the elements of that name, joined by "|".
QString Elements(const CatalogDocument &document, const char *name)
{
    QStringList texts;
    for (const pugi::xml_node element : document.Catalog().children(name))
        texts += ElementText(element);
    return texts.join(u'|');
}

} // namespace

class TestSetup : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_reports.clear();
        m_earlier = InstallFailureReporter([this](const FailureReport &report) {
            m_reports.append(report.moduleName + u'.' + report.procName + u' ' + QString::number(report.number));
        });
        m_prompts = std::make_unique<ScriptedPrompts>();
    }

    void cleanup()
    {
        m_form.reset();
        m_prompts.reset();
        InstallFailureReporter(m_earlier);
    }

    void loading_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("entries");
        QTest::newRow("types") << 1 << u"Setup recording types"_s << u"Radio|Live Video|Radio|"_s;
        QTest::newRow("web sources") << 0 << u"Setup web sources"_s << u"https://a/?x=1&y=2"_s;
    }

    void loading()
    {
        QFETCH(int, mode);
        Open(
            "<Type>Radio</Type><Item ID='1'><Type>deep</Type></Item><WebSource>https://a/?x=1&amp;y=2</WebSource>"
            "<Type><![CDATA[Live]]> Video</Type><Type>Radio</Type><Type/>",
            mode);
        QTEST(m_form->windowTitle(), "caption");
        QTEST(Entries(), "entries");
        QCOMPARE(lst()->currentRow(), 0);
        QVERIFY(Button(u"cmdDelete"_s)->isEnabled());
    }

    void adding_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QString>("entries");
        const QString reserved = u" matches a reserved word and is not allowed."_s;
        const QString listed = u" is already on the list."_s;
        QTest::newRow("a type") << 1 << u"R&B <x>"_s << QString() << u"TAPE|R&B <x>"_s;
        QTest::newRow("a web source") << 0 << u"http://b"_s << QString() << u"TAPE|http://b"_s;
        QTest::newRow("cancelled") << 1 << QString() << QString() << u"TAPE"_s;
        QTest::newRow("reserved") << 1 << u"conCert"_s << u"\"conCert\""_s + reserved << u"TAPE"_s;
        QTest::newRow("reserved, web source") << 0 << u"Video"_s << u"\"Video\""_s + reserved << u"TAPE"_s;
        QTest::newRow("a group's name is not reserved") << 1 << u"Albums"_s << QString() << u"TAPE|Albums"_s;
        QTest::newRow("listed") << 1 << u"tape"_s << u"\"tape\""_s + listed << u"TAPE"_s;
        QTest::newRow("not trimmed") << 1 << u" Tape "_s << QString() << u"TAPE| Tape "_s;
        QTest::newRow("reserved but for a blank") << 1 << u"Video "_s << QString() << u"TAPE|Video "_s;
        QTest::newRow("apostrophe") << 1 << u"60's"_s << QString() << u"TAPE|60's"_s;
    }

    void adding()
    {
        QFETCH(int, mode);
        QFETCH(QString, answer);
        QFETCH(QString, refusal);
        QFETCH(QString, entries);
        Open("<Type>TAPE</Type><WebSource>TAPE</WebSource><Item ID='1'/>", mode);
        m_prompts->ExpectInput(mode == 1 ? u"New recording type"_s : u"New web source"_s, answer);
        if (!refusal.isEmpty())
            m_prompts->ExpectMessage(u"Discbook"_s);
        QTest::mouseClick(Button(u"cmdAdd"_s), Qt::LeftButton);
        QCOMPARE(m_prompts->AllAsked()[0].text, mode == 1 ? u"Enter type:"_s : u"Enter address:"_s);
        QCOMPARE(m_prompts->AllAsked()[0].proposed, QString());
        if (!refusal.isEmpty()) {
            QCOMPARE(m_prompts->LastAsked().text, refusal);
            QCOMPARE(m_prompts->LastAsked().icon, UserPrompts::Icon::None);
        }
        QCOMPARE(Entries(), entries);
        QCOMPARE(Elements(m_document, mode == 1 ? "Type" : "WebSource"), entries);
        QCOMPARE(lst()->currentRow(), lst()->count() - 1);
        const bool added = entries.contains(u'|');
        QCOMPARE(m_document.Catalog().last_child().name() == std::string_view("Item"), !added);
        QCOMPARE(m_reports, QStringList());
    }

    void editing_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QString>("elements");
        const QString both = u"a|b|60's|a|CD"_s;
        QTest::newRow("renamed") << 1 << u" B&< "_s << u"a| B&< |60's|a|CD"_s << u"a| B&< |60's|a|CD"_s;
        QTest::newRow("cancelled") << 1 << QString() << both << both;
        QTest::newRow("to a reserved word")
            << 1 << u"Concert"_s << u"a|Concert|60's|a|CD"_s << u"a|Concert|60's|a|CD"_s;
        QTest::newRow("to another entry") << 1 << u"a"_s << u"a|a|60's|a|CD"_s << u"a|a|60's|a|CD"_s;
        QTest::newRow("the second of two") << 3 << u"z"_s << u"a|b|60's|z|CD"_s << u"z|b|60's|a|CD"_s;
        QTest::newRow("CDATA") << 4 << u"z"_s << u"a|b|60's|a|z"_s << u"a|b|60's|a|z"_s;
    }

    void editing()
    {
        QFETCH(int, row);
        QFETCH(QString, answer);
        Open(kTypes, 1);
        const QString old = lst()->item(row)->text();
        m_prompts->ExpectInput(u"Edit recording type"_s, answer);
        DoubleClick(row);
        QCOMPARE(m_prompts->LastAsked().text, u"Enter type:"_s);
        QCOMPARE(m_prompts->LastAsked().proposed, old);
        QTEST(Entries(), "entries");
        QTEST(Elements(m_document, "Type"), "elements");
        QCOMPARE(m_reports, QStringList());
    }

    void deleting_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("yes");
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QString>("elements");
        const QString all = u"a|b|60's|a|CD"_s;
        QTest::newRow("no") << 1 << false << all << all;
        QTest::newRow("yes") << 1 << true << u"a|60's|a|CD"_s << u"a|60's|a|CD"_s;
        QTest::newRow("the second of two") << 3 << true << u"a|b|60's|CD"_s << u"b|60's|a|CD"_s;
    }

    void deleting()
    {
        QFETCH(int, row);
        QFETCH(bool, yes);
        Open(kTypes, 1);
        lst()->setCurrentRow(row);
        m_prompts->ExpectMessage(u"Confirmation"_s, yes ? UserPrompts::Answer::Yes : UserPrompts::Answer::No);
        QTest::mouseClick(Button(u"cmdDelete"_s), Qt::LeftButton);
        QCOMPARE(m_prompts->LastAsked().text, u"Are you sure you want to remove this recording type?"_s);
        QCOMPARE(m_prompts->LastAsked().icon, UserPrompts::Icon::Question);
        QTEST(Entries(), "entries");
        QTEST(Elements(m_document, "Type"), "elements");
        QCOMPARE(lst()->currentRow(), yes ? 0 : row);
    }

    void deletingTheLast()
    {
        Open("<WebSource>w</WebSource>", 0);
        m_prompts->ExpectMessage(u"Confirmation"_s, UserPrompts::Answer::Yes);
        QTest::mouseClick(Button(u"cmdDelete"_s), Qt::LeftButton);
        QCOMPARE(m_prompts->LastAsked().text, u"Are you sure you want to remove this web source?"_s);
        QCOMPARE(lst()->count(), 0);
        QVERIFY(Button(u"cmdDelete"_s)->isEnabled());
        QTest::mouseClick(Button(u"cmdDelete"_s), Qt::LeftButton); // nothing is selected: nothing is asked
        QVERIFY(!m_document.Catalog().child("WebSource"));
    }

    // What cannot be found by its text is reported and left alone.
    void notFound_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<int>("number");
        QTest::newRow("apostrophe") << QByteArray("<Type>60's</Type>") << static_cast<int>(Failure::BadQuery);
        QTest::newRow("a query in the text")
            << QByteArray("<Type>x' or '1'='1</Type>") << static_cast<int>(Failure::BadQuery);
        QTest::newRow("text in two pieces")
            << QByteArray("<Type>a<!--x-->b</Type>") << static_cast<int>(Failure::Missing);
        QTest::newRow("no text") << QByteArray("<Type/>") << static_cast<int>(Failure::Missing);
    }

    void notFound()
    {
        QFETCH(QByteArray, type);
        QFETCH(int, number);
        Open(type + "<Type>other</Type>", 1);
        const QString before = Elements(m_document, "Type");
        m_prompts->ExpectInput(u"Edit recording type"_s, u"new"_s);
        DoubleClick(0);
        m_prompts->ExpectMessage(u"Confirmation"_s, UserPrompts::Answer::Yes);
        QTest::mouseClick(Button(u"cmdDelete"_s), Qt::LeftButton);
        const QString end = u' ' + QString::number(number);
        QCOMPARE(m_reports, QStringList({u"frmSetup.lst_DblClick"_s + end, u"frmSetup.cmdDelete_Click"_s + end}));
        QCOMPARE(Elements(m_document, "Type"), before);
        QCOMPARE(Entries(), before);
    }

    void addWithoutCatalogElement()
    {
        Open("", 1);
        m_document.Clear();
        m_prompts->ExpectInput(u"New recording type"_s, u"x"_s);
        QTest::mouseClick(Button(u"cmdAdd"_s), Qt::LeftButton);
        QCOMPARE(m_reports, QStringList(u"frmSetup.cmdAdd_Click 4"_s));
        QCOMPARE(lst()->count(), 0);
    }

    void keys()
    {
        Open(kTypes, 1);
        QCOMPARE(m_form->focusWidget(), lst());
        QTest::keyClick(lst(), Qt::Key_Down);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
            m_prompts->ExpectInput(u"Edit recording type"_s, QString());
            QTest::keyClick(lst(), key);
            QCOMPARE(m_prompts->LastAsked().proposed, u"b"_s);
        }
        m_prompts->ExpectMessage(u"Confirmation"_s, UserPrompts::Answer::Yes);
        QTest::keyClick(lst(), Qt::Key_Delete);
        QCOMPARE(Entries(), u"a|60's|a|CD"_s);
        m_prompts->ExpectInput(u"New recording type"_s, u"n"_s);
        QTest::keyClick(lst(), Qt::Key_A, Qt::AltModifier);
        QTRY_COMPARE(Entries(), u"a|60's|a|CD|n"_s); // the button is first shown pressed

        QVERIFY(m_form->isVisible());
        QTest::keyClick(Button(u"cmdOK"_s), Qt::Key_Return);
        QVERIFY(!m_form->isVisible());
    }

    void enterInAnEmptyListAnswersOk()
    {
        Open("", 1);
        QVERIFY(!Button(u"cmdDelete"_s)->isEnabled());
        QTest::keyClick(lst(), Qt::Key_Return);
        QVERIFY(!m_form->isVisible());
    }

    void size()
    {
        Open(kTypes, 1);
        const QSize first = m_form->size();
        const QSize list = lst()->size();
        m_form->resize(first / 2);
        QCOMPARE(m_form->size(), first);
        const QPoint ok = Button(u"cmdOK"_s)->pos();
        m_form->resize(first + QSize(100, 50));
        QTRY_COMPARE(lst()->size(), list + QSize(100, 50));
        QCOMPARE(Button(u"cmdOK"_s)->pos(), ok + QPoint(100, 50));
    }

private:
    static constexpr auto kTypes =
        "<Type>a</Type><Type>b</Type><Type>60's</Type><Type>a</Type><Type><![CDATA[CD]]></Type>";

    void Open(const QByteArray &inCatalog, int mode)
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"c.xml"_s);
        WriteFileAtomically(path, "<Catalog>" + inCatalog + "</Catalog>");
        QCOMPARE(m_document.Load(path), CatalogDocument::LoadResult::Loaded);
        m_form = std::make_unique<frmSetup>(m_document, m_types, *m_prompts, m_limits, nullptr);
        m_form->Init(static_cast<frmSetup::Mode>(mode));
        m_form->show();
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    }

    QListWidget *lst() const { return m_form->findChild<QListWidget *>(u"lst"_s); }
    QPushButton *Button(const QString &name) const { return m_form->findChild<QPushButton *>(name); }

    QString Entries() const
    {
        QStringList entries;
        for (int row = 0; row < lst()->count(); ++row)
            entries += lst()->item(row)->text();
        return entries.join(u'|');
    }

    void DoubleClick(int row) const
    {
        const QPoint at = lst()->visualItemRect(lst()->item(row)).center();
        QTest::mouseClick(lst()->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(lst()->viewport(), Qt::LeftButton, {}, at);
    }

    CatalogDocument m_document;
    ScriptedPrompts m_noPrompts;
    clsINI m_settings{m_noPrompts};
    ShownTypes m_types{m_settings};
    clsResizeLimits m_limits;
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<frmSetup> m_form;
    FailureReporter m_earlier;
    QStringList m_reports;
};

std::unique_ptr<QObject> CreateSetupTest()
{
    return std::make_unique<TestSetup>();
}

#include "test_setup.moc"
