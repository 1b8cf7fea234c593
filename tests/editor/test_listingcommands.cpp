#include "editorwindow.h"

using Answer = UserPrompts::Answer;

namespace {

// In the tree: y1990 (s1 s2 s3), Albums (s4), Radio (s5 s6).
constexpr auto kShows = R"(
<Item ID='1' Type='Concert' Year='1990' Month='1'/>
<Item ID='2' Type='Concert' Year='1990' Month='2' Format='FLAC' WrongDate='1'/>
<Item ID='3' Type='Concert' Year='1990' Month='3' Format='FLAC'/>
<Item ID='4' Type='Album' Venue='x' Format='MP3'/>
<Item ID='5' Type='Radio' Year='1991' Venue='a'/>
<Item ID='6' Type='Radio' Year='1992' Venue='b' Format='MP3'/>
<Type>Radio</Type>)";

constexpr auto kBoth = Qt::ControlModifier | Qt::ShiftModifier;

} // namespace

class TestListingCommands : public QObject
{
    Q_OBJECT

private slots:
    void keys_data()
    {
        Table<QString>("end")
            .Row("s1 Ctrl+F3", "s2")
            .Row("s3 Ctrl+PgUp", "s2")
            .Row("s3 Ctrl+PgDown", "Albums")
            .Row("s6 Ctrl+PgDown", "s6")
            .Row("y1990 Ctrl+PgUp", "y1990")
            .Row("s1 Ctrl+Shift+PgDown", "s3")
            .Row("s3 Ctrl+Shift+F3", "s4")
            .Row("s6 Ctrl+Shift+F3", "s6")
            .Row("s6 Ctrl+Shift+PgUp", "s4")
            .Row("s4 Ctrl+Shift+F2", "s3")
            .Row("s3 Ctrl+Shift+F2", "s3")
            .Row("s3 Ctrl+Shift+Alt+F2", "s3")
            .Row("s3 F3", "s3");
    }

    /// From the tree, a text box, a combo box that would change its value, and a box of several lines.
    void keys()
    {
        const QStringList step = QString::fromLatin1(QTest::currentDataTag()).split(u' ');
        for (const char *name : {"trv", "txtVenue", "cboMonth", "cboType", "icbFormat", "txtComment"}) {
            EditorWindow w(kShows);
            w.Select(step[0]);
            QWidget &from = w.Field(step[0] == "y1990"_L1 ? "trv" : name);
            from.setFocus();
            QTest::keySequence(&from, QKeySequence(step[1]));
            QTEST(w.CurrentKey(), "end");
            QVERIFY(!w.document.IsModified());
            QCOMPARE(w.Field("txtVenue").isVisible(), w.CurrentKey().startsWith(u's'));
        }
    }

    void commandKeys()
    {
        EditorWindow w(kShows, "s2");
        QWidget &venue = w.Field("txtVenue");
        venue.setFocus();
        QGuiApplication::clipboard()->setText(u"clip"_s);
        w.deleteListing.setEnabled(false);
        QTest::keyClick(&w.trv, Qt::Key_Delete, kBoth);
        w.deleteListing.setEnabled(true);
        w.prompts.ExpectMessage(u"Verification"_s, Answer::No);
        QTest::keyClick(&venue, Qt::Key_Insert, kBoth);
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::No);
        QTest::keyClick(&venue, Qt::Key_Delete, kBoth);
        QVERIFY(!w.document.IsModified());
    }

    void newSource_data()
    {
        const auto refusal = u"The current filter would not show a new recording so none can be added."_s;
        const auto noTypes = u"You are currently not viewing any recording types so none can be added."_s;
        Table<ViewFilter, QString>("filter", "refusal")
            .Row("all", ViewFilter::All, "")
            .Row("no types", ViewFilter::All, noTypes)
            .Row("lossless", ViewFilter::LosslessOnly, refusal)
            .Row("lossy", ViewFilter::LossyOnly, refusal)
            .Row("need lossless", ViewFilter::NeedLossless, "")
            .Row("do not have", ViewFilter::DoNotHave, "");
    }

    /// Added and selected, unless nobody would see it.
    void newSource()
    {
        QFETCH(ViewFilter, filter);
        QFETCH(QString, refusal);
        EditorWindow w(kShows, "s1");
        w.options.filter = filter;
        for (int type = 0; refusal.contains(u"types"_s) && type < w.types.count(); ++type)
            w.types.Toggle(type);
        if (!refusal.isEmpty())
            w.prompts.ExpectMessage(u"Can't Add"_s);
        w.commands.mnuFileNewSource_Click();
        const bool added = refusal.isEmpty();
        QCOMPARE(w.document.IsModified(), added);
        QCOMPARE(w.Item("7"), added ? "<Item ID='7' Type='Album'><SetList/><Notes/><Comment/></Item>" : "");
        QCOMPARE(w.CurrentKey(), added ? u"s7"_s : u"s1"_s);
        QCOMPARE(w.window.focusWidget() == &w.Field("cboType"), added);
        QVERIFY(w.trv.viewport()->rect().contains(w.Point(w.CurrentKey())));
        if (!added) {
            QCOMPARE(w.prompts.LastAsked().text, refusal);
            QCOMPARE(w.prompts.LastAsked().icon, UserPrompts::Icon::Information);
        }
    }

    void copying()
    {
        EditorWindow w(
            "<Item ID='9' Type='Concert' Seeder='j' Format='FLAC' DateAdded='2000-01-01' WrongDate='1' Other='o'>"
            "<Notes>n</Notes></Item>",
            "s9");
        w.prompts.ExpectMessage(u"Verification"_s, Answer::Yes);
        w.commands.mnuEditCopyListing_Click();
        QCOMPARE(
            w.prompts.LastAsked().text, u"Are you sure you want to make a copy of a listing marked as a wrong date?"_s);
        QCOMPARE(w.prompts.LastAsked().icon, UserPrompts::Icon::Question);
        QCOMPARE(
            w.Item("10"), "<Item ID='10' Type='Concert' Seeder='' Format='' DateAdded='' WrongDate='' Other='o'>"
                          "<Notes>n</Notes><SetList/><Comment/></Item>");
        QCOMPARE(w.CurrentKey(), u"s10"_s);
        QVERIFY(w.document.IsModified());
        QCOMPARE(w.window.focusWidget(), &w.Field("cboType"));
        w.commands.mnuEditCopyListing_Click();
        QCOMPARE(w.CurrentKey(), u"s11"_s);
    }

    /// The next listing of the group is selected, or the one before it, or the emptied group.
    void deleting()
    {
        for (const auto &[listing, selected] :
             {std::pair(u"s1"_s, u"s2"_s), {u"s2"_s, u"s3"_s}, {u"s6"_s, u"s5"_s}, {u"s4"_s, u"Albums"_s}}) {
            EditorWindow w(kShows);
            w.Select(listing);
            w.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::Yes);
            w.commands.mnuEditDeleteListing_Click();
            QCOMPARE(w.prompts.LastAsked().text, u"Are you sure you want to delete this listing?"_s);
            QCOMPARE(w.prompts.LastAsked().icon, UserPrompts::Icon::None);
            QVERIFY(!w.document.Listing(listing.sliced(1)));
            QCOMPARE(w.tree.ShownCount(), 5);
            QVERIFY(w.document.IsModified());
            QCOMPARE(w.CurrentKey(), selected);
            QCOMPARE(w.Field("txtVenue").isVisible(), selected != "Albums"_L1);
            QCOMPARE(w.fra.CurrentItem(), w.document.Listing(selected.sliced(1)));
        }
    }

    void selectAll()
    {
        EditorWindow w("<Item ID='1' Type='Album' Venue='x' Year='1990'><Comment>two</Comment></Item>", "s1");
        auto &venue = w.Find<QLineEdit>("txtVenue");
        venue.setFocus();
        venue.deselect();
        w.commands.mnuEditSelectAll_Click();
        QCOMPARE(venue.selectedText(), u"x"_s);
        auto &comment = w.Find<QPlainTextEdit>("txtComment");
        comment.setFocus();
        w.commands.mnuEditSelectAll_Click();
        QCOMPARE(comment.textCursor().selectedText(), u"two"_s);
    }

    /// The column that acts is the one in which the picture is painted, whatever the style makes of it.
    void pictureColumn()
    {
        EditorWindow w(kShows, "s1");
        const QRect row = w.trv.visualRect(w.trv.currentIndex());
        const QImage before = w.trv.viewport()->grab(row).toImage();
        w.tree.Model().SetPicture(*w.tree.Model().FindListing(u"1"_s), u"WrongDate"_s);
        const QImage after = w.trv.viewport()->grab(row).toImage();
        QList<int> painted, acting;
        for (int x = 0; x < row.width(); ++x) {
            const QRect column(x, 0, 1, row.height());
            if (before.copy(column) != after.copy(column))
                painted += x;
            if (w.mouse.IsOnPicture(w.Point("s1", x)))
                acting += x;
        }
        QCOMPARE(acting.size(), 16);
        QVERIFY(painted.size() >= 10 && painted.front() >= acting.front() && painted.back() <= acting.back());
        QVERIFY(!w.mouse.IsOnPicture({row.left() + 8, row.bottom() + 2}));
        w.Select("y1990");
        QVERIFY(!w.mouse.IsOnPicture(w.Point("y1990")));
    }

    void wideLabels()
    {
        QByteArray listings;
        for (int i = 10; i < 50; ++i)
            listings += "<Item ID='" + QByteArray::number(i) + "' Type='Album' Venue='" + QByteArray::number(i) + "'/>";
        listings += "<Item ID='1' Type='Album' Venue='&lt;b>wide" + QByteArray(200, 'x') + "'/>";
        EditorWindow w(listings, "s10");
        const auto toolTip = [&w] {
            const QPoint point = w.Point(w.CurrentKey());
            QHelpEvent help(QEvent::ToolTip, point, w.trv.viewport()->mapToGlobal(point));
            QCoreApplication::sendEvent(w.trv.viewport(), &help);
            return QToolTip::text();
        };
        QCOMPARE(toolTip(), QString());
        QScrollBar &bar = *w.trv.horizontalScrollBar();
        QCOMPARE(bar.maximum(), 0);

        // What comes up when the wide label is first seen does not cover it.
        for (w.trv.setFocus(); w.CurrentKey() != u"s1"_s; QTest::keyClick(&w.trv, Qt::Key_Down))
            QCoreApplication::processEvents();
        QTRY_VERIFY(bar.isVisible());
        QVERIFY(w.trv.viewport()->rect().bottom() >= w.trv.visualRect(w.trv.currentIndex()).bottom());
        QCOMPARE(w.trv.visualRect(w.trv.currentIndex()).width(), w.trv.sizeHintForIndex(w.trv.currentIndex()).width());
        QVERIFY(toolTip().contains(u"> - &lt;b&gt;widexx"_s));

        bar.setValue(10);
        QTest::keySequence(&w.trv, QKeySequence(u"Up, Down"_s));
        QCOMPARE(bar.value(), 10);
        w.Click("s1");
        QVERIFY(w.Item("1").contains("Format='FLAC'"));
        QTest::keyClick(&w.trv, Qt::Key_Left);
        QCOMPARE(w.CurrentKey(), u"Albums"_s);
        bar.setValue(10);
        QTest::keyClick(&w.trv, Qt::Key_Left);
        QVERIFY(!w.trv.isExpanded(w.trv.currentIndex()));
        w.tree.LoadShows();
        QTRY_COMPARE(bar.maximum(), 0);
    }

    void clickOnThePictureOfAnotherListing()
    {
        EditorWindow w(kShows, "s1");
        w.Click("s3", 60);
        QVERIFY(!w.document.IsModified());
        w.Select("s1");
        w.Click("s3");
        QCOMPARE(w.CurrentKey(), u"s3"_s);
        QVERIFY(w.Item("3").contains("Format='FLV'"));
        QVERIFY(!w.Item("1").contains("Format"));
    }

    void popup()
    {
        EditorWindow w(kShows, "Albums");
        w.Click("Albums", 8, Qt::RightButton);
        QVERIFY(!w.mouse.mnuPopup().isVisible());
        w.Select("s4");
        w.Click("s4", 8, Qt::RightButton);
        QVERIFY(w.mouse.mnuPopup().isVisible());
        QStringList items;
        for (const QAction *item : w.mouse.mnuPopup().actions())
            items += item->text() + (item->isChecked() ? u"*"_s : u""_s);
        QCOMPARE(items.join(u'|'), u"<Don't Have>|&FLAC|&FLV|&MP3*|&R&&B"_s);
        w.mouse.mnuPopup().close();
        QTest::keyClick(&w.trv, Qt::Key_F10, Qt::ShiftModifier);
        const QPoint corner = w.trv.visualRect(w.trv.currentIndex()).bottomLeft();
        QCOMPARE(w.mouse.mnuPopup().pos(), w.trv.viewport()->mapToGlobal(corner));
        QVERIFY(w.mouse.mnuPopup().actions()[3]->actionGroup()->isExclusive());
        QTest::keyClick(&w.mouse.mnuPopup(), Qt::Key_R);
        QVERIFY(!w.mouse.mnuPopup().isVisible());
        QVERIFY(w.Item("4").contains("Format='R&amp;B' DateAdded='2024-02-29'"));
    }
};

QTEST_MAIN(TestListingCommands)
#include "test_listingcommands.moc"
