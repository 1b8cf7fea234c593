#include "editorwindow.h"
#include "table.h"
#include "treewalk.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QToolTip>

using namespace Qt::StringLiterals;

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

QString Walk(const EditorWindow &w, const QString &from, QModelIndex (*step)(const QModelIndex &))
{
    const BrowseTreeModel &model = w.tree.Model();
    QString keys = from;
    const BrowseTree::Group *group = model.FindGroup(from);
    QModelIndex node = group ? model.IndexOf(*group) : model.IndexOf(*model.FindListing(from.sliced(1)));
    for (QModelIndex next = step(node); next != node; next = step(node)) {
        node = next;
        keys += u' ' + model.NodeKey(node);
    }
    return keys;
}

} // namespace

class TestListingCommands : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(kAnyWarning); }

    void walkers()
    {
        const EditorWindow w(kShows);
        QCOMPARE(Walk(w, u"y1990"_s, &GetNextNode), u"y1990 s1 s2 s3 Albums s4 Radio s5 s6"_s);
        QCOMPARE(Walk(w, u"s6"_s, &GetPreviousNode), u"s6 s5 Radio s4 Albums s3 s2 s1 y1990"_s);
        QVERIFY(!GetNextNode({}).isValid() && !GetPreviousNode({}).isValid());
    }

    void keys_data()
    {
        constexpr auto kCtrl = Qt::ControlModifier;
        const auto both = Qt::ControlModifier | Qt::ShiftModifier;
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("end");
        const auto row = [](const char *start, Qt::Key key, Qt::KeyboardModifiers modifiers, const char *end) {
            QTest::addRow("%s %s", start, qPrintable(QKeySequence(key | modifiers).toString()))
                << QString::fromLatin1(start) << int(key) << modifiers << QString::fromLatin1(end);
        };
        row("s1", Qt::Key_PageDown, kCtrl, "s2");
        row("s1", Qt::Key_F3, kCtrl, "s2");
        row("s3", Qt::Key_PageUp, kCtrl, "s2");
        row("s3", Qt::Key_F2, kCtrl, "s2");
        row("s3", Qt::Key_PageDown, kCtrl, "Albums");
        row("s6", Qt::Key_PageDown, kCtrl, "s6");
        row("y1990", Qt::Key_PageUp, kCtrl, "y1990");
        row("s1", Qt::Key_PageDown, both, "s3");
        row("s3", Qt::Key_F3, both, "s4");
        row("s6", Qt::Key_F3, both, "s6");
        row("s6", Qt::Key_PageUp, both, "s4");
        row("s4", Qt::Key_F2, both, "s3");
        row("s3", Qt::Key_F2, both, "s3");
        row("s3", Qt::Key_F2, both | Qt::AltModifier, "s3");
        row("s3", Qt::Key_F3, Qt::NoModifier, "s3");
    }

    /// From the tree, a text box, a combo box that would change its value, and a box of several lines.
    void keys()
    {
        QFETCH(QString, start);
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        for (const QString &name :
             {u"trv"_s, u"txtVenue"_s, u"cboMonth"_s, u"cboType"_s, u"icbFormat"_s, u"txtComment"_s}) {
            EditorWindow w(kShows);
            w.SelectKey(start);
            QWidget &from = name == u"trv"_s || start == u"y1990"_s ? static_cast<QWidget &>(w.trv) : w.Field(name);
            from.setFocus();
            QTest::keyClick(&from, Qt::Key(key), modifiers);
            QTEST(w.CurrentKey(), "end");
            QVERIFY(!w.document.IsModified());
            QCOMPARE(w.Field(u"txtVenue"_s).isVisible(), !w.tree.Model().GroupAt(w.trv.currentIndex()));
        }
    }

    void keyIsUsedUpOnlyByAStep()
    {
        EditorWindow w(kShows);
        w.trv.setCurrentIndex({});
        QVERIFY(!w.keys.Form_KeyDown(34, 2));
        w.Select(u"6"_s);
        QVERIFY(!w.keys.Form_KeyDown(34, 2));
        QVERIFY(w.keys.Form_KeyDown(33, 2));
    }

    void commandKeys()
    {
        EditorWindow w(kShows);
        const auto both = Qt::ControlModifier | Qt::ShiftModifier;
        w.Select(u"2"_s);
        auto &venue = w.Find<QLineEdit>("txtVenue");
        venue.setFocus();
        QGuiApplication::clipboard()->setText(u"clip"_s);
        w.copyListing.setEnabled(false);
        w.deleteListing.setEnabled(false);
        QTest::keyClick(&w.trv, Qt::Key_Delete, both);
        w.copyListing.setEnabled(true);
        w.deleteListing.setEnabled(true);
        w.prompts.ExpectMessage(u"Verification"_s, Answer::No);
        QTest::keyClick(&venue, Qt::Key_Insert, both);
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::No);
        QTest::keyClick(&venue, Qt::Key_Delete, both);
        QVERIFY(!w.document.IsModified());
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::Yes);
        QTest::keyClick(&venue, Qt::Key_Delete, both);
        QCOMPARE(w.document.NumberOfListings(), 5);
    }

    void newSource()
    {
        EditorWindow w(kShows);
        w.commands.mnuFileNewSource_Click();
        QCOMPARE(w.Item(u"7"_s), uR"(<Item ID="7" Type="Album"><SetList/><Notes/><Comment/></Item>)"_s);
        QCOMPARE(w.CurrentKey(), u"s7"_s);
        QVERIFY(w.document.IsModified());
        QCOMPARE(w.window.focusWidget()->objectName(), u"cboType"_s);
        QVERIFY(w.trv.viewport()->rect().intersects(w.trv.visualRect(w.trv.currentIndex())));
    }

    void newSourceThatNobodyWouldSee_data()
    {
        const auto refusal = u"The current filter would not show a new recording so none can be added."_s;
        Table<ViewFilter, QString>("filter", "refusal")
            .Row(
                "no types", ViewFilter::All,
                u"You are currently not viewing any recording types so none can be added."_s)
            .Row("lossless", ViewFilter::LosslessOnly, refusal)
            .Row("lossy", ViewFilter::LossyOnly, refusal)
            .Row("need lossless", ViewFilter::NeedLossless, QString())
            .Row("do not have", ViewFilter::DoNotHave, QString());
    }

    void newSourceThatNobodyWouldSee()
    {
        QFETCH(ViewFilter, filter);
        QFETCH(QString, refusal);
        EditorWindow w("<Item ID='1' Type='Album'/>");
        w.options.filter = filter;
        for (int type = 0; filter == ViewFilter::All && type < w.types.count(); ++type)
            w.types.Toggle(type);
        if (!refusal.isEmpty())
            w.prompts.ExpectMessage(u"Can't Add"_s);
        w.commands.mnuFileNewSource_Click();
        if (!refusal.isEmpty()) {
            QCOMPARE(w.prompts.LastAsked().text, refusal);
            QCOMPARE(w.prompts.LastAsked().icon, UserPrompts::Icon::Information);
        }
        QCOMPARE(w.document.IsModified(), refusal.isEmpty());
        QCOMPARE(w.document.NumberOfListings(), refusal.isEmpty() ? 2 : 1);
        QCOMPARE(w.CurrentKey() == u"s2"_s, refusal.isEmpty());
    }

    void copying()
    {
        EditorWindow w(
            "<Item ID='9' Type='Concert' Year='1990' Venue='v' Show='s' Length='1' Source='FM' Grade='A' Seeder='j' "
            "Stored='b' Format='FLAC' DateAdded='2000-01-01' WrongDate='1' Other='o'><Notes>n</Notes></Item>");
        w.Select(u"9"_s);
        w.prompts.ExpectMessage(u"Verification"_s, Answer::No);
        w.commands.mnuEditCopyListing_Click();
        QVERIFY(!w.document.IsModified());
        w.prompts.ExpectMessage(u"Verification"_s, Answer::Yes);
        w.commands.mnuEditCopyListing_Click();
        const ScriptedPrompts::Asked asked = w.prompts.LastAsked();
        QCOMPARE(asked.text, u"Are you sure you want to make a copy of a listing marked as a wrong date?"_s);
        QCOMPARE(asked.icon, UserPrompts::Icon::Question);
        QCOMPARE(
            w.Item(u"10"_s),
            uR"(<Item ID="10" Type="Concert" Year="1990" Venue="v" Show="s" Length="1" Source="FM" Grade="A" Seeder="" )"
            uR"(Stored="b" Format="" DateAdded="" WrongDate="" Other="o">)"
            uR"(<Notes>n</Notes><SetList/><Comment/></Item>)"_s);
        QCOMPARE(w.CurrentKey(), u"s10"_s);
        QVERIFY(w.document.IsModified());
        QCOMPARE(w.window.focusWidget()->objectName(), u"cboType"_s);
        w.commands.mnuEditCopyListing_Click();
        QCOMPARE(w.CurrentKey(), u"s11"_s);
    }

    void deleting_data()
    {
        Table<QString, QString>("id", "selected")
            .Row("first", u"1"_s, u"s2"_s)
            .Row("middle", u"2"_s, u"s3"_s)
            .Row("last of its group", u"6"_s, u"s5"_s)
            .Row("only one of its group", u"4"_s, u"Albums"_s);
    }

    void deleting()
    {
        QFETCH(QString, id);
        QFETCH(QString, selected);
        EditorWindow w(kShows);
        w.Select(id);
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::No);
        w.commands.mnuEditDeleteListing_Click();
        QVERIFY(!w.document.IsModified());
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, Answer::Yes);
        w.commands.mnuEditDeleteListing_Click();
        QCOMPARE(w.prompts.LastAsked().text, u"Are you sure you want to delete this listing?"_s);
        QCOMPARE(w.prompts.LastAsked().icon, UserPrompts::Icon::None);
        QVERIFY(!w.document.Listing(id));
        QVERIFY(!w.tree.Model().FindListing(id));
        QCOMPARE(w.tree.ShownCount(), 5);
        QVERIFY(w.document.IsModified());
        QCOMPARE(w.CurrentKey(), selected);
        const bool listing = selected.startsWith(u's');
        QCOMPARE(w.Field(u"txtVenue"_s).isVisible(), listing);
        QCOMPARE(w.fra.CurrentItem(), listing ? w.document.Listing(selected.sliced(1)) : pugi::xml_node());
    }

    void selectAll_data()
    {
        Table<QString, QString>("control", "selected")
            .Row("text box", u"txtVenue"_s, u"x"_s)
            .Row("several lines", u"txtComment"_s, u"two"_s)
            .Row("combo box", u"cboYear"_s, u""_s)
            .Row("picker", u"icbFormat"_s, u""_s);
    }

    void selectAll()
    {
        QFETCH(QString, control);
        EditorWindow w("<Item ID='1' Type='Album' Venue='x' Year='1990'><Comment>two</Comment></Item>");
        w.Select(u"1"_s);
        QWidget &field = w.Field(control);
        field.setFocus();
        auto *line = control == u"txtVenue"_s ? qobject_cast<QLineEdit *>(&field) : field.findChild<QLineEdit *>();
        if (line)
            line->deselect();
        w.commands.mnuEditSelectAll_Click();
        const auto *box = qobject_cast<QPlainTextEdit *>(&field);
        QTEST(line ? line->selectedText() : box ? box->textCursor().selectedText() : QString(), "selected");
    }

    /// The column that acts is the one in which the picture is painted, whatever the style makes of it.
    void pictureColumn()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        const QRect row = w.trv.visualRect(w.trv.currentIndex());
        const QImage before = w.trv.viewport()->grab(row).toImage();
        w.tree.Model().SetPicture(*w.tree.Model().FindListing(u"1"_s), u"WrongDate"_s);
        const QImage after = w.trv.viewport()->grab(row).toImage();
        int painted = 0;
        int acting = 0;
        for (int x = 0; x < row.width(); ++x) {
            const QRect column(x, 0, 1, row.height());
            const bool acts = w.mouse.IsOnPicture({row.left() + x, row.center().y()});
            const bool differs = before.copy(column) != after.copy(column);
            QVERIFY(acts || !differs);
            acting += acts ? 1 : 0;
            painted += differs ? 1 : 0;
        }
        QCOMPARE(acting, 16);
        QVERIFY(painted >= 10);
        QVERIFY(!w.mouse.IsOnPicture({row.left() + 8, row.bottom() + 2}));
        w.SelectKey(u"y1990"_s);
        QVERIFY(!w.mouse.IsOnPicture(w.PicturePoint()));
    }

    void wideLabels()
    {
        QByteArray listings;
        for (int i = 10; i < 50; ++i)
            listings += "<Item ID='" + QByteArray::number(i) + "' Type='Album' Venue='" + QByteArray::number(i) + "'/>";
        EditorWindow w(listings + "<Item ID='1' Type='Album' Venue='&lt;b>wide" + QByteArray(200, 'x') + "'/>");
        const auto toolTip = [&w](const QPoint &point) {
            QHelpEvent help(QEvent::ToolTip, point, w.trv.viewport()->mapToGlobal(point));
            QCoreApplication::sendEvent(w.trv.viewport(), &help);
            return QToolTip::text();
        };
        w.Select(u"10"_s);
        QCOMPARE(toolTip(w.PicturePoint()), QString());
        QScrollBar &bar = *w.trv.horizontalScrollBar();
        QCOMPARE(bar.maximum(), 0);

        // What comes up when the wide label is first seen does not cover it.
        for (w.trv.setFocus(); w.CurrentKey() != u"s1"_s; QTest::keyClick(&w.trv, Qt::Key_Down))
            QCoreApplication::processEvents();
        QTRY_VERIFY(bar.isVisible());
        QVERIFY(w.trv.viewport()->rect().bottom() >= w.trv.visualRect(w.trv.currentIndex()).bottom());
        QVERIFY(toolTip(w.PicturePoint()).contains(u"> - &lt;b&gt;widexx"_s));

        bar.setValue(10);
        QTest::keyClick(&w.trv, Qt::Key_Up);
        QTest::keyClick(&w.trv, Qt::Key_Down);
        QCOMPARE(bar.value(), 10);
        QTest::mouseClick(w.trv.viewport(), Qt::LeftButton, {}, w.PicturePoint());
        QVERIFY(w.Item(u"1"_s).contains(uR"(Format="FLAC")"_s));
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
        EditorWindow w(kShows);
        w.Select(u"3"_s);
        w.Select(u"1"_s);
        const QRect row = w.trv.visualRect(w.tree.Model().IndexOf(*w.tree.Model().FindListing(u"3"_s)));
        QTest::mouseClick(w.trv.viewport(), Qt::LeftButton, {}, {row.left() + 60, row.center().y()});
        QVERIFY(!w.document.IsModified());
        w.Select(u"1"_s);
        QTest::mouseClick(w.trv.viewport(), Qt::LeftButton, {}, {row.left() + 8, row.center().y()});
        QCOMPARE(w.CurrentKey(), u"s3"_s);
        QVERIFY(w.Item(u"3"_s).contains(uR"(Format="FLV")"_s));
        QVERIFY(!w.Item(u"1"_s).contains(u"Format"_s));
    }

    void popup()
    {
        EditorWindow w(kShows);
        w.SelectKey(u"Albums"_s);
        QTest::mouseClick(w.trv.viewport(), Qt::RightButton, {}, w.PicturePoint());
        QVERIFY(!w.mouse.mnuPopup().isVisible());
        w.Select(u"4"_s);
        QTest::mouseClick(w.trv.viewport(), Qt::RightButton, {}, w.PicturePoint());
        QVERIFY(w.mouse.mnuPopup().isVisible());
        QStringList items;
        for (const QAction *item : w.mouse.mnuPopup().actions())
            items += item->text() + (item->isChecked() ? u"*"_s : u""_s);
        QCOMPARE(items.join(u'|'), u"<Don't Have>|&FLAC|&FLV|&MP3*|&R&&B"_s);
        QTest::keyClick(&w.mouse.mnuPopup(), Qt::Key_R);
        QVERIFY(!w.mouse.mnuPopup().isVisible());
        QVERIFY(w.Item(u"4"_s).contains(uR"(Format="R&amp;B" DateAdded="2024-02-29")"_s));
    }
};

QTEST_MAIN(TestListingCommands)
#include "test_listingcommands.moc"
