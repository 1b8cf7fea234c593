#include "program.h"

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

constexpr auto kBoth = Qt::ShiftModifier | Qt::ControlModifier;

} // namespace

class TestSession : public QObject
{
    Q_OBJECT

private slots:
    /// From opening to saving: the file is what a person wrote down beforehand.
    void aDaysWork()
    {
        QByteArrayList today{QDate::currentDate().toString(Qt::ISODate).toUtf8()};
        Program program(kBefore);

        QTest::keyClick(&program.Enter("trv"), Qt::Key_Right);
        QTest::keyClick(&program.Enter("trv"), Qt::Key_Down);
        QCOMPARE(program.CurrentKey(), u"s1"_s);
        Press(program.Enter("cboYear"), u"1966"_s);
        Press(program.Enter("cboMonth"), u"12"_s);
        Press(program.Enter("cboDay"), u"31"_s);
        Press(program.Enter("txtVenue"), u"The Matrix"_s);
        Press(program.Enter("txtShow"), u"early & late"_s);
        Press(program.Enter("txtLength"), u"12x.5.0\b"_s);
        Press(program.Enter("txtSource"), u"SBD"_s);
        Press(program.Enter("txtGrade"), u"a-"_s);
        Press(program.Enter("txtSeeder"), u"tree"_s);
        Press(program.Enter("txtStoredIn"), u"Shelf 1"_s);
        QTest::keyClick(&program.Enter("icbFormat"), Qt::Key_M);
        QTest::keyClick(&program.Enter("chkWrongDate"), Qt::Key_Space);
        Press(program.Enter("txtSetList"), u"One\rTwo\tlive"_s);
        Press(program.Enter("txtSetNotes"), u"C:\\tape"_s);
        Press(program.Enter("txtComment"), u"Köln 武道館"_s);
        QTest::keyClick(&program.Enter("cboType"), Qt::Key_R);
        QCOMPARE(program.CurrentKey(), u"s1"_s);
        QCOMPARE(program.Tree()->currentIndex().parent().data(BrowseTreeModel::KeyRole).toString(), u"Radio"_s);

        program.prompts.ExpectMessage(u"Verification"_s, Answer::Yes);
        QTest::keyClick(&program.Enter("txtComment"), Qt::Key_Insert, kBoth);
        QCOMPARE(program.CurrentKey(), u"s13"_s);
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 4 Items)"_s);

        // Up from the copy: its group, then the last listing of 1965 and the one before it.
        while (program.CurrentKey() != u"s4"_s) {
            const QString before = program.CurrentKey();
            QTest::keyClick(&program.Enter("trv"), Qt::Key_PageUp, Qt::ControlModifier);
            QVERIFY(program.CurrentKey() != before);
        }
        program.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::Yes);
        QTest::keyClick(&program.Enter("trv"), Qt::Key_Delete, kBoth);
        QCOMPARE(program.CurrentKey(), u"s12"_s);
        QCOMPARE(program.window->windowTitle(), u"Discbook: Live (Showing 3 Items)"_s);

        const QRect row = program.Tree()->visualRect(program.Tree()->currentIndex());
        QTest::mouseClick(program.Tree()->viewport(), Qt::LeftButton, {}, {row.left() + 10, row.center().y()});
        QTest::keyClick(program.window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!program.Item("mnuFileSave")->isEnabled());
        today += QDate::currentDate().toString(Qt::ISODate).toUtf8(); // another day when it was midnight meanwhile
        const QByteArray saved = program.folder.Read(u"Live.xml"_s);
        QCOMPARE(QByteArray(saved).replace(today[0], "@today").replace(today[1], "@today"), kAfter);

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
        for (int i = 0; i < 60; ++i)
            QTest::keyClick(&program.Enter("trv"), i % 3 == 0 ? Qt::Key_Right : Qt::Key_Down);
        for (int i = 0; i < 20; ++i)
            QTest::keyClick(&program.Enter("txtSetList"), Qt::Key_F3, Qt::ControlModifier);
        QVERIFY(!program.Item("mnuFileSave")->isEnabled());
        QVERIFY(program.window->close());
        QCOMPARE(program.folder.Read(u"Live.xml"_s), sample);
    }
};

QTEST_MAIN(TestSession)
#include "test_session.moc"
