#include "program.h"

using namespace Qt::StringLiterals;
using Answer = UserPrompts::Answer;

namespace {

constexpr auto kBefore =
    R"(<Catalog>
<Item ID="1" Type="Concert" Year="1965" Month="5" Day="5" Venue="Magoo's Pizza Parlor, Menlo Park, CA" Length="3.47" Source="FM" Seeder="vine" Stored="Box 12" Format="CD" DateAdded="2016-02-17"/>
<Item ID="4" Type="Concert" Year="1965" Month="5" Day="26" Venue="Magoo's Pizza Parlor, Menlo Park, CA" Format="CD"><SetList>I'm A King Bee</SetList></Item>
<!-- bought at the door -->
<Item ID="12" Type="Concert" Year="1965" Month="12" Day="18" Venue="The Big Beat Club, Palo Alto, CA"><SetList>Midnight Hour, Caution</SetList></Item>
<Type>Radio</Type>
</Catalog>
)";

constexpr auto kAfter =
    R"(<Catalog>
	<Item ID="1" Type="Radio" Year="1966" Month="12" Day="31" Venue="The Matrix" Length="12.5" Source="SBD" Seeder="tree" Stored="Shelf 1" Format="MP3" DateAdded="2016-02-17" Show="early &amp; late" Grade="A-" WrongDate="1">
		<SetList>One\nTwo\tlive</SetList>
		<Notes>C:\\tape</Notes>
		<Comment>Köln 武道館</Comment>
	</Item>
	<!-- bought at the door -->
	<Item ID="12" Type="Concert" Year="1965" Month="12" Day="18" Venue="The Big Beat Club, Palo Alto, CA" DateAdded="@today" Format="CD">
		<SetList>Midnight Hour, Caution</SetList>
	</Item>
	<Type>Radio</Type>
	<Item ID="13" Type="Radio" Year="1966" Month="12" Day="31" Venue="The Matrix" Length="12.5" Source="SBD" Stored="Shelf 1" Show="early &amp; late" Grade="A-">
		<SetList>One\nTwo\tlive</SetList>
		<Notes>C:\\tape</Notes>
		<Comment>Köln 武道館</Comment>
	</Item>
</Catalog>
)";

/// A user at keyboard and mouse.
class User
{
public:
    explicit User(const Program &program) : m_program(program) {}

    /// Goes to a control and types; what was selected on entry is replaced.
    void Type(const char *name, const QString &text) const { ::Press(Go(name), text); }
    void Press(const char *name, const char *keys) const
    {
        QTest::keySequence(&Go(name), QKeySequence(QLatin1StringView(keys)));
    }

    QString Selected() const { return m_program.Tree()->currentIndex().data(BrowseTreeModel::KeyRole).toString(); }

    void ClickPicture() const
    {
        const QRect row = m_program.Tree()->visualRect(m_program.Tree()->currentIndex());
        QTest::mouseClick(m_program.Tree()->viewport(), Qt::LeftButton, {}, QPoint(row.left() + 10, row.center().y()));
    }

private:
    QWidget &Go(const char *name) const
    {
        QWidget &control = m_program.Field(name);
        if (m_program.window->focusWidget() != &control)
            control.setFocus(Qt::TabFocusReason);
        return control;
    }

    const Program &m_program;
};

} // namespace

class TestSession : public QObject
{
    Q_OBJECT

private slots:
    /// From opening to saving: the file is what a person wrote down beforehand.
    void aDaysWork()
    {
        Program program(kBefore);
        const User user(program);

        user.Press("trv", "Right");
        user.Press("trv", "Down");
        QCOMPARE(user.Selected(), u"s1"_s);
        user.Type("cboYear", u"1966"_s);
        user.Type("cboMonth", u"12"_s);
        user.Type("cboDay", u"31"_s);
        user.Type("txtVenue", u"The Matrix"_s);
        user.Type("txtShow", u"early & late"_s);
        user.Type("txtLength", u"12x.5.0\b"_s);
        user.Type("txtSource", u"SBD"_s);
        user.Type("txtGrade", u"a-"_s);
        user.Type("txtSeeder", u"tree"_s);
        user.Type("txtStoredIn", u"Shelf 1"_s);
        user.Press("icbFormat", "M");
        user.Press("chkWrongDate", "Space");
        user.Type("txtSetList", u"One\rTwo\tlive"_s);
        user.Type("txtSetNotes", u"C:\\tape"_s);
        user.Type("txtComment", u"Köln 武道館"_s);
        user.Press("cboType", "R");
        QCOMPARE(user.Selected(), u"s1"_s);
        QCOMPARE(program.Tree()->currentIndex().parent().data(BrowseTreeModel::KeyRole).toString(), u"Radio"_s);

        program.prompts.ExpectMessage(u"Verification"_s, Answer::Yes);
        user.Press("txtComment", "Shift+Ctrl+Ins");
        QCOMPARE(user.Selected(), u"s13"_s);
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 4 Items)"_s);

        // Up from the copy: its group, then the last listing of 1965 and the one before it.
        while (user.Selected() != u"s4"_s) {
            const QString before = user.Selected();
            user.Press("trv", "Ctrl+PgUp");
            QVERIFY(user.Selected() != before);
        }
        program.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::Yes);
        user.Press("trv", "Shift+Ctrl+Del");
        QCOMPARE(user.Selected(), u"s12"_s);
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 3 Items)"_s);

        user.ClickPicture();
        QTest::keyClick(program.window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!program.Item("mnuFileSave")->isEnabled());
        const QByteArray today = QDate::currentDate().toString(Qt::ISODate).toUtf8();
        QCOMPARE(program.folder.Read(u"Live.xml"_s), QByteArray(kAfter).replace("@today", today));

        program.Choose("mnuFileMRU0");
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 3 Items)"_s);
        QVERIFY(program.window->close());
        QVERIFY(program.failures.reports.empty());
    }

    void lookingChangesNothing()
    {
        Program program;
        const QByteArray sample = ReadWholeFile(QStringLiteral(DISCBOOK_SAMPLES "/Live.xml"));
        program.folder.Write(u"Live.xml"_s, sample);
        program.folder.Write(
            u"formats.ini"_s, ReadWholeFile(QStringLiteral(DISCBOOK_SAMPLES "/../formats/formats.ini")));
        program.Start({u"Live.xml"_s});
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 2373 Items)"_s);
        const User user(program);
        for (int i = 0; i < 60; ++i)
            user.Press("trv", i % 3 == 0 ? "Right" : "Down");
        for (int i = 0; i < 20; ++i)
            user.Press("txtSetList", "Ctrl+F3");
        QVERIFY(!program.Item("mnuFileSave")->isEnabled());
        QVERIFY(program.window->close());
        QCOMPARE(program.folder.Read(u"Live.xml"_s), sample);
    }
};

QTEST_MAIN(TestSession)
#include "test_session.moc"
