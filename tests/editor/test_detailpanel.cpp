#include "editorwindow.h"
#include "table.h"

#include "notebox.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr auto kShows = R"(
<Item ID='1' Type='Concert' Year='1994' Month='07' Venue='Hall' Format='FLAC' DateAdded='2001-2-3 10:00'/>
<Item ID='2' Year='1999x' Day='x' Venue='Barn' WrongDate='2'><Notes>a\nb\\c</Notes></Item>
<Item ID='3' Type='Album' Venue='Best' Length='2:10:00' Format='MP3'><SetList>one, two (a, b), three</SetList></Item>
<Item ID='4' Type='Radio' Year='1990' Venue='Studio' DateAdded='last week'/>
<Type>Radio</Type>)";

/// What the panel shows, control by control.
QString Shown(const EditorWindow &w)
{
    QStringList texts;
    for (const char *name : {"cboType", "cboYear", "cboMonth", "cboDay"})
        texts += w.Find<QComboBox>(name).currentText();
    for (const char *name : {"txtVenue", "txtLength", "txtGrade"})
        texts += w.Find<QLineEdit>(name).text();
    texts += w.Find<QComboBox>("icbFormat").currentText();
    texts += w.Find<QCheckBox>("chkWrongDate").isChecked() ? u"wrong"_s : u""_s;
    texts += w.Find<QLabel>("lblDateAdded").text() + (w.Find<QPushButton>("cmdClearDate").isEnabled() ? u"*"_s : u""_s);
    texts += w.Find<QLabel>("lblVenue").text() + (w.Find<QLineEdit>("txtShow").isVisible() ? u" Show"_s : u""_s);
    for (const char *name : {"txtSetList", "txtSetNotes", "txtComment"})
        texts += w.Find<NoteBox>(name).Text().replace("\r\n"_L1, "/"_L1);
    return texts.join(u'|');
}

void ChooseByMouse(QComboBox &box, int row)
{
    box.showPopup();
    QAbstractItemView &list = *box.view();
    const QPoint point = list.visualRect(box.model()->index(row, 0)).center();
    QTest::mouseMove(list.viewport(), point);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, point);
    QTRY_VERIFY(!list.isVisible());
}

} // namespace

class TestDetailPanel : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(kAnyWarning); }

    void filling_data()
    {
        Table<QString, QString>("id", "shown")
            .Row("concert", u"1"_s, u"Concert|1994|7|0|Hall|||FLAC||2001-02-03*|Ven&ue Show|||"_s)
            .Row("no type, odd numbers", u"2"_s, u"Concert|1999|0|0|Barn||||wrong||Ven&ue Show||a/b\\c|"_s)
            .Row("album", u"3"_s, u"Album|0|0|0|Best|2:10:00||MP3|||T&itle|one/two (a, b)/three||"_s)
            .Row("type of the user's own", u"4"_s, u"Radio|1990|0|0|Studio|||||last week*|Ven&ue Show|||"_s);
    }

    void filling()
    {
        QFETCH(QString, id);
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        w.Select(id);
        QTEST(Shown(w), "shown");
        QCOMPARE(w.fra.title(), u"Recording Information for ID "_s + id);
    }

    void browsingChangesNothing()
    {
        EditorWindow w(kShows);
        for (const char *id : {"1", "2", "3", "4", "3", "2", "1"}) {
            w.Select(QString::fromLatin1(id));
            QCoreApplication::processEvents();
        }
        w.window.setFont(QFont(u"Sans"_s, 14));
        QPalette dark;
        dark.setColor(QPalette::Base, Qt::black);
        w.fra.setPalette(dark);
        QCoreApplication::processEvents();
        w.types.Toggle(w.types.Find(u"Bootleg"_s));
        QVERIFY(!w.document.IsModified());
        QCOMPARE(
            w.Item(u"2"_s), uR"(<Item ID="2" Year="1999x" Day="x" Venue="Barn" WrongDate="2" Type="Concert">)"
                            uR"(<Notes>a\nb\\c</Notes><SetList/><Comment/></Item>)"_s);
        QCOMPARE(
            w.Item(u"3"_s), uR"(<Item ID="3" Type="Album" Venue="Best" Length="2:10:00" Format="MP3">)"
                            uR"(<SetList>one, two (a, b), three</SetList><Notes/><Comment/></Item>)"_s);
    }

    void edits_data()
    {
        Table<QString, QString>("keys", "stored")
            .Row("cboYear", u"195"_s, uR"( Year="1959")"_s)
            .Row("cboYear cleared", u"1\b"_s, uR"( Year="")"_s)
            .Row("cboMonth", u"12"_s, uR"( Month="12")"_s)
            .Row("cboDay", u"3"_s, uR"( Day="3")"_s)
            .Row("txtVenue", u"<&\"é"_s, uR"( Venue="&lt;&amp;&quot;é")"_s)
            .Row("txtVenue taken back", u"ab^z"_s, uR"( Venue="Hall")"_s)
            .Row("txtShow", u"Night 2"_s, uR"( Show="Night 2")"_s)
            .Row("txtLength", u"x1.2,.5\b"_s, uR"( Length="1.2")"_s)
            .Row("txtSource", u"SBD"_s, uR"( Source="SBD")"_s)
            .Row("txtGrade", u"aß-"_s, uR"( Grade="Aß-")"_s)
            .Row("txtSeeder", u"joe"_s, uR"( Seeder="joe")"_s)
            .Row("txtStoredIn", u"Box"_s, uR"( Stored="Box")"_s)
            .Row("txtSetList", u"a, b"_s, u"<SetList>a, b</SetList>"_s)
            .Row("txtSetNotes", u"a\\"_s, u"<Notes>a\\\\</Notes>"_s)
            .Row("txtComment", u"a"_s, u"<Comment>a</Comment>"_s);
    }

    /// Each field writes its own part of the listing, and nothing else.
    void edits()
    {
        QFETCH(QString, keys);
        QFETCH(QString, stored);
        EditorWindow w("<Item ID='1' Type='Concert' Year='1994' Month='7' Venue='Hall'/><Item ID='2' Type='Album'/>");
        w.Select(u"1"_s);
        const auto rest = [&w](const QString &part) {
            const QString name = part.section(QRegularExpression(u"[ <=>]+"_s), 1, 1);
            const QRegularExpression own(u" %1=\"[^\"]*\"|<%1>.*</%1>|<%1/>"_s.arg(name));
            return w.Item(u"1"_s).remove(own);
        };
        const QString before = rest(stored);
        Type(w.Field(QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0)), keys);
        QVERIFY2(w.Item(u"1"_s).contains(stored), qPrintable(w.Item(u"1"_s)));
        QCOMPARE(rest(stored), before);
        QVERIFY(w.document.IsModified());
        QCOMPARE(w.CurrentKey(), u"s1"_s);
    }

    void aRefusedKeyIsNoEdit()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        Type(w.Field(u"cboYear"_s), u"3a"_s);
        QVERIFY(!w.document.IsModified());
    }

    void notes_data()
    {
        Table<QString, QString, QString>("pasted", "keys", "stored")
            .Row("line breaks", u"a\r\nb\nc"_s, u"\rd"_s, u"a\\nb\\nc\\nd"_s)
            .Row("tabs", u"a\tb"_s, u"\tc"_s, u"a\\tb\\tc"_s)
            .Row("no-break space", u"a\u00a0b"_s, u"\u00a0"_s, u"a\u00a0b\u00a0"_s)
            .Row("backslashes, markup", u"C:\\new <x & y"_s, u""_s, u"C:\\\\new &lt;x &amp; y"_s)
            .Row("outer breaks", u"\n\na"_s, u"\r\r"_s, u"a"_s)
            .Row("forbidden characters", u"a\x0b\x0c\x01"_s, u"b"_s, u"ab"_s)
            .Row("beyond 16 bits", u"𝄞"_s, u""_s, u"𝄞"_s)
            .Row("undo", u"a"_s, u"b\rc^z^z^z"_s, u"a"_s);
    }

    void notes()
    {
        QFETCH(QString, pasted);
        QFETCH(QString, keys);
        QFETCH(QString, stored);
        EditorWindow w("<Item ID='1' Type='Album'/>");
        w.Select(u"1"_s);
        auto &box = w.Find<NoteBox>("txtComment");
        QGuiApplication::clipboard()->setText(pasted);
        box.setFocus();
        box.paste();
        Type(box, keys);
        QCOMPARE(w.Item(u"1"_s).section(u"<Comment>"_s, 1).section(u"</Comment>"_s, 0, 0), stored);
        QVERIFY(w.document.IsModified());
    }

    void shiftedEnterIsALineBreak()
    {
        NoteBox box(nullptr);
        QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(box.Text(), u"\r\n"_s);
    }

    void noteSteps_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("states"); // the text, and what it is after each Ctrl+Z
        QTest::newRow("typing") << u"ab~éc"_s << u"abéc||"_s;
        QTest::newRow("pastes") << u"a^v^vb"_s << u"aPPb|aPP|aP|a||"_s;
        QTest::newRow("cut, typing") << u"abc^a^xd"_s << u"d||abc||"_s;
        QTest::newRow("deletions of both kinds") << u"abc^v\b^a\bd"_s << u"d||abc|abcP|abc||"_s;
        QTest::newRow("typed over a selection") << u"abc^axy"_s << u"xy|abc||"_s;
    }

    void noteSteps()
    {
        QFETCH(QString, keys);
        EditorWindow w("<Item ID='1' Type='Album'/>");
        w.Select(u"1"_s);
        auto &box = w.Find<NoteBox>("txtComment");
        QGuiApplication::clipboard()->setText(u"P"_s);
        Type(box, keys);
        QStringList states{box.Text()};
        for (; box.document()->isUndoAvailable(); states += box.Text())
            Type(box, u"^z"_s);
        QTEST(states.join(u'|') + u'|', "states");
    }

    void pictureLeavesTheSelection()
    {
        NoteBox box(nullptr);
        box.SetText(u"abc"_s);
        box.selectAll();
        auto *picture = new QMimeData;
        picture->setImageData(QImage(2, 2, QImage::Format_RGB32));
        QGuiApplication::clipboard()->setMimeData(picture);
        box.paste();
        QCOMPARE(box.Text(), u"abc"_s);
    }

    void focusOfAHiddenField_data()
    {
        // The path names the nodes gone through, and what is done in between: a key or a click in the tree, another
        // field.
        Table<QString, QString, QString>("field", "path", "focus")
            .Row("album", u"txtShow"_s, u"s3"_s, u"trv"_s)
            .Row("album and back", u"txtShow"_s, u"s3 s1"_s, u"txtShow"_s)
            .Row("group", u"txtVenue"_s, u"y1994"_s, u"trv"_s)
            .Row("across a group", u"txtComment"_s, u"y1994 s3"_s, u"txtComment"_s)
            .Row("field of another kind", u"txtShow"_s, u"y1994 s3"_s, u"trv"_s)
            .Row("date cleared", u"cmdClearDate"_s, u"s3"_s, u"trv"_s)
            .Row("a key in the tree", u"txtVenue"_s, u"y1994 key s3"_s, u"trv"_s)
            .Row("a click in the tree", u"txtVenue"_s, u"y1994 click s3"_s, u"trv"_s)
            .Row("another field", u"txtShow"_s, u"s3 other s1"_s, u"trv"_s);
    }

    void focusOfAHiddenField()
    {
        QFETCH(QString, field);
        QFETCH(QString, path);
        EditorWindow w(kShows);
        w.trv.setObjectName("trv"_L1);
        w.Select(u"1"_s);
        w.Field(field).setFocus();
        for (const QString &step : path.split(u' ')) {
            if (step == "key"_L1) {
                QTest::keyClick(&w.trv, Qt::Key_Right);
            } else if (step == "click"_L1) {
                QTest::mouseClick(w.trv.viewport(), Qt::LeftButton, {}, w.trv.viewport()->rect().bottomLeft());
            } else if (step == "other"_L1) {
                w.Field(u"txtSeeder"_s).setFocus();
                w.trv.setFocus();
            } else {
                w.SelectKey(step);
            }
        }
        QWidget *focused = w.window.focusWidget();
        QTEST(focused->objectName(), "focus");
        if (const auto *box = qobject_cast<QLineEdit *>(focused))
            QVERIFY(!box->hasSelectedText());
        if (focused == &w.trv)
            QTest::keyClicks(focused, u"z "_s);
        QVERIFY(!w.document.IsModified());
    }

    void secondPressOfClearWritesNowhere()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        w.Field(u"cmdClearDate"_s).setFocus();
        QTest::keyClick(w.window.focusWidget(), Qt::Key_Space);
        const QString cleared = w.Item(u"1"_s);
        QVERIFY(cleared.contains(uR"(DateAdded="")"_s));
        QTest::keyClick(w.window.focusWidget(), Qt::Key_Space);
        QCOMPARE(w.Item(u"1"_s), cleared);
    }

    /// Of two listings with one ID, the first of a hidden type.
    void nodeIsItsOwnListing()
    {
        EditorWindow w("<Item ID='1' Type='Album' Venue='hidden'/><Item ID='1' Type='Video' Venue='shown'/>");
        w.types.Toggle(w.types.Find(u"Album"_s));
        w.tree.LoadShows();
        w.Select(u"1"_s);
        Type(w.Field(u"txtSource"_s), u"x"_s);
        QCOMPARE(w.Item(u"1"_s), uR"(<Item ID="1" Type="Album" Venue="hidden"/>)"_s);
        QVERIFY(QString::fromUtf8(w.fra.CurrentItem().attribute("Source").value()) == u"x"_s);
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, UserPrompts::Answer::Yes);
        w.commands.mnuEditDeleteListing_Click();
        QCOMPARE(w.document.NumberOfListings(), 1);
        QCOMPARE(w.Item(u"1"_s), uR"(<Item ID="1" Type="Album" Venue="hidden"/>)"_s);
        QVERIFY(!w.tree.Model().FindListing(u"1"_s));
    }

    void editedRowStaysInSight()
    {
        QByteArray listings;
        for (int id = 1; id <= 200; ++id)
            listings += "<Item ID='" + QByteArray::number(id) + "' Type='Video' Venue='m'/>";
        EditorWindow w(listings);
        w.Select(u"1"_s);
        w.trv.scrollTo(w.trv.currentIndex());
        Type(w.Field(u"txtVenue"_s), u"z"_s);
        QCOMPARE(w.trv.currentIndex().row(), 199);
        QVERIFY(w.trv.viewport()->rect().contains(w.trv.visualRect(w.trv.currentIndex())));
    }

    /// What was undone in one listing's box must not be that of another listing.
    void undoEndsWithTheListing()
    {
        EditorWindow w("<Item ID='1' Type='Album' Venue='x'/><Item ID='2' Type='Album' Venue='y'/>");
        w.Select(u"1"_s);
        Type(w.Field(u"txtVenue"_s), u"y"_s);
        Type(w.Field(u"txtComment"_s), u"c"_s);
        w.Select(u"2"_s);
        Type(w.Field(u"txtVenue"_s), u"^z"_s);
        Type(w.Field(u"txtComment"_s), u"^z"_s);
        QVERIFY(w.Item(u"2"_s).contains(uR"(Venue="y"><SetList/><Notes/><Comment/>)"_s));
    }

    void savingKeepsTheCursor()
    {
        EditorWindow w("<Item ID='1' Type='Concert' Venue='Hall'/>");
        w.document.SetPath(w.folder.Path(u"Shows.xml"_s));
        w.Select(u"1"_s);
        const auto save = [&w] {
            w.document.Save();
            w.fra.trv_NodeClick(w.trv.currentIndex());
        };
        auto &venue = w.Find<QLineEdit>("txtVenue");
        venue.setFocus();
        venue.setCursorPosition(2);
        save();
        QTest::keyClicks(&venue, u"x"_s);
        QCOMPARE(venue.text(), u"Haxll"_s);
        Type(w.Field(u"txtComment"_s), u"one\r"_s);
        save();
        Type(w.Field(u"txtComment"_s), u"two"_s);
        Type(w.Field(u"txtSetList"_s), u"a, b"_s);
        save();
        Type(w.Field(u"txtSetList"_s), u"c"_s);
        QVERIFY(w.Item(u"1"_s).contains(u"<Comment>one\\ntwo</Comment>"_s));
        QVERIFY(w.Item(u"1"_s).contains(u"<SetList>a\\nbc</SetList>"_s));
    }

    void typeChange_data()
    {
        Table<QString, QString, QString>("type", "node", "caption")
            .Row("album", u"Album"_s, u"Albums > 1994 - Hall [Unchecked]"_s, u"T&itle"_s)
            .Row("interview", u"Interview"_s, u"Interviews > 1994 - Hall [Unchecked]"_s, u"Ven&ue"_s)
            .Row("own", u"R&B"_s, u"R&B > 1994-?\?-?\? - Hall [Unchecked]"_s, u"Ven&ue Show"_s);
    }

    void typeChange()
    {
        QFETCH(QString, type);
        EditorWindow w("<Item ID='1' Type='Concert' Year='1994' Venue='Hall'/><Type>R&amp;B</Type>");
        w.Select(u"1"_s);
        auto &box = w.Find<QComboBox>("cboType");
        box.setFocus();
        // Letters choose in the closed list, and tell nobody by activated().
        QTest::keyClicks(&box, type.left(1));
        QCOMPARE(box.currentText(), type);
        QTEST(w.Node(u"1"_s), "node");
        QVERIFY(w.Item(u"1"_s).contains(type.toHtmlEscaped()));
        const bool show = w.Find<QLineEdit>("txtShow").isVisible();
        QCOMPARE(w.Find<QLabel>("lblShow").isVisible(), show);
        QTEST(w.Find<QLabel>("lblVenue").text() + (show ? u" Show"_s : u""_s), "caption");
        QVERIFY(w.document.IsModified());
        QVERIFY(!w.tree.Model().FindGroup(u"y1994"_s));
        QCOMPARE(w.trv.currentIndex().data(BrowseTreeModel::KeyRole), u"s1"_s);
        QVERIFY(w.trv.visualRect(w.trv.currentIndex()).isValid());
    }

    void typeListFollowsTheShownTypes()
    {
        EditorWindow w(kShows);
        w.Select(u"4"_s);
        auto &box = w.Find<QComboBox>("cboType");
        w.types.Toggle(w.types.Find(u"Radio"_s));
        QCOMPARE(box.findText(u"Radio"_s), -1);
        QCOMPARE(box.placeholderText(), u"Radio"_s);
        w.types.Toggle(w.types.Find(u"Radio"_s));
        QCOMPARE(box.currentText(), u"Radio"_s);
        QVERIFY(!w.document.IsModified());
    }

    void wrongDate()
    {
        EditorWindow w("<Item ID='1' Type='Concert' Year='1994' Venue='Hall' Length='1.0' Format='FLAC'/>");
        w.Select(u"1"_s);
        auto &box = w.Find<QCheckBox>("chkWrongDate");
        QTest::keyClick(&box, Qt::Key_Space);
        QVERIFY(w.Item(u"1"_s).contains(uR"(WrongDate="1")"_s));
        QCOMPARE(w.Node(u"1"_s).section(u" > "_s, 1), u"1994-?\?-?\? - Hall (wrong date) [WrongDate]"_s);
        QVERIFY(w.document.IsModified());
        QTest::keyClick(&box, Qt::Key_Space);
        QVERIFY(w.Item(u"1"_s).contains(uR"(WrongDate="")"_s));
        QCOMPARE(w.Node(u"1"_s).section(u" > "_s, 1), u"1994-?\?-?\? - Hall (1.0) [FormatFLAC]"_s);
    }

    void format_data()
    {
        using Way = std::function<void(EditorWindow &, QComboBox &)>;
        QTest::addColumn<QString>("before");
        QTest::addColumn<Way>("way");
        QTest::addColumn<QString>("after");
        const auto row = [](const char *name, const QString &before, const QString &after, const Way &way) {
            QTest::newRow(name) << before << way << after;
        };
        const auto key = [](Qt::Key pressed, int times = 1) {
            return [=](EditorWindow &, QComboBox &box) {
                box.setFocus();
                for (int i = 0; i < times; ++i)
                    QTest::keyClick(&box, pressed);
            };
        };
        const auto icon = [](EditorWindow &w, QComboBox &) {
            QTest::mouseClick(w.trv.viewport(), Qt::LeftButton, {}, w.PicturePoint());
        };
        const auto choose = [](int format) {
            return [=](EditorWindow &, QComboBox &box) { ChooseByMouse(box, format); };
        };
        const QString none = u""_s;
        const QString flac = uR"( Format="FLAC" DateAdded="2000-01-01")"_s;
        const QString mp3 = uR"( Format="MP3" DateAdded="2000-01-01")"_s;
        const QString cleared = uR"( Format="" DateAdded="")"_s;
        row("mouse", none, uR"( DateAdded="2024-02-29" Format="MP3")"_s, choose(3));
        row("mouse, date kept", flac, mp3, choose(3));
        row("mouse, none", flac, cleared, choose(0));
        row("mouse, the same again", flac, flac, choose(1));
        row("mouse, the same again, no date yet", uR"( Format="FLAC")"_s, uR"( Format="FLAC" DateAdded="2024-02-29")"_s,
            choose(1));
        row("arrow", none, uR"( DateAdded="2024-02-29" Format="FLAC")"_s, key(Qt::Key_Down));
        row("letter", none, uR"( DateAdded="2024-02-29" Format="MP3")"_s, key(Qt::Key_M));
        row("letter twice", none, uR"( DateAdded="2024-02-29" Format="FLV")"_s, key(Qt::Key_F, 2));
        row("letter around", flac, flac, key(Qt::Key_F, 2));
        row("letter of none", flac, flac, key(Qt::Key_X));
        row("Delete", flac, cleared, key(Qt::Key_Delete));
        row("Backspace", flac, cleared, key(Qt::Key_Backspace));
        row("picture", none, uR"( DateAdded="2024-02-29" Format="FLAC")"_s, icon);
        row("picture, beyond the last", uR"( Format="R&amp;B" DateAdded="2000-01-01")"_s, cleared, icon);
        row("picture, wrong date first", uR"( WrongDate="1" Format="FLAC")"_s, uR"( WrongDate="" Format="FLAC")"_s,
            icon);
        row("clear date", flac, uR"( Format="FLAC" DateAdded="")"_s,
            [](EditorWindow &w, QComboBox &) { QTest::mouseClick(&w.Field(u"cmdClearDate"_s), Qt::LeftButton); });
    }

    /// Each of these is the first thing that happens after the listing was selected.
    void format()
    {
        QFETCH(QString, before);
        QFETCH(std::function<void(EditorWindow &, QComboBox &)>, way);
        QFETCH(QString, after);
        const QString item = uR"(<Item ID="1" Type="Album"%1><SetList/><Notes/><Comment/></Item>)"_s;
        EditorWindow w(item.arg(before).toUtf8() + "<Item ID='2' Type='Album' Format='MP3'/>");
        w.Select(u"2"_s);
        w.Select(u"1"_s);
        way(w, w.Find<QComboBox>("icbFormat"));
        QCOMPARE(w.Item(u"1"_s), item.arg(after));
        const pugi::xml_attribute format = w.document.Listing(u"1"_s).attribute("Format");
        const bool held = *format.value() != '\0';
        QCOMPARE(
            w.tree.Model().FindListing(u"1"_s)->picture,
            held ? u"Format"_s + QString::fromUtf8(format.value()) : u"Unchecked"_s);
        const QString dated = QString::fromUtf8(w.document.Listing(u"1"_s).attribute("DateAdded").value());
        QCOMPARE(w.Find<QLabel>("lblDateAdded").text(), dated);
        QCOMPARE(w.Find<QPushButton>("cmdClearDate").isEnabled(), !dated.isEmpty());
        QCOMPARE(
            w.document.IsModified(),
            before != after || QString::fromLatin1(QTest::currentDataTag()) == u"letter around"_s);
    }

    void totalsFollowTheFormat()
    {
        EditorWindow w("<Item ID='1' Type='Album'/><Item ID='2' Type='Video'/>");
        w.Select(u"1"_s);
        w.fra.SelectFormat(1);
        QCOMPARE(w.tree.Model().FindGroup(u"Albums"_s)->text, u"Albums       ( 1 / 0 / 1 )"_s);
    }

    void wheelNeedsTheFocus()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        w.trv.setFocus();
        for (const char *name : {"cboType", "cboYear", "cboMonth", "cboDay", "icbFormat"})
            TurnWheel(w.Field(QString::fromLatin1(name)));
        QVERIFY(!w.document.IsModified());
        w.Field(u"cboMonth"_s).setFocus();
        TurnWheel(w.Field(u"cboMonth"_s));
        QVERIFY(w.Item(u"1"_s).contains(uR"(Month="8")"_s));
    }

    void tabGoesInTheOrderOfTheFields()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        QStringList order;
        for (w.Field(u"cboType"_s).setFocus(); order.size() < 17; QTest::keyClick(w.window.focusWidget(), Qt::Key_Tab))
            order += w.window.focusWidget()->objectName();
        QCOMPARE(
            order.join(u' '),
            u"cboType cboYear cboMonth cboDay txtVenue txtShow txtLength txtSource txtGrade txtSeeder txtStoredIn "
            "icbFormat chkWrongDate cmdClearDate txtSetList txtSetNotes txtComment"_s);
        QVERIFY(!w.document.IsModified());
    }

    void everyFieldHasItsLabel()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        QStringList fields;
        for (const QLabel *label : w.fra.findChildren<QLabel *>()) {
            if (label->buddy() && label->buddy()->parent() == label->parent())
                fields += label->text().remove(u'&') + label->buddy()->objectName();
        }
        QCOMPARE(
            fields.join(u' '),
            u"Type:cboType Year:cboYear Month:cboMonth Day:cboDay VenuetxtVenue Concert:txtShow Length:txtLength "
            "Source:txtSource Grade:txtGrade Seeder:txtSeeder Stored in:txtStoredIn Format:icbFormat "
            "Date Added:lblDateAdded Track listtxtSetList Set/Show NotestxtSetNotes Recording Comments:txtComment"_s);
        QCOMPARE(w.Field(u"cmdClearDate"_s).toolTip(), u"Clear date added."_s);
        QVERIFY(!w.Field(u"cmdClearDate"_s).accessibleName().isEmpty());
    }

    void layout()
    {
        EditorWindow w(kShows);
        w.Select(u"3"_s);
        int above = w.Field(u"cmdClearDate"_s).geometry().bottom();
        const int height = w.Field(u"txtSetList"_s).height();
        for (const auto &[caption, field] :
             {std::pair("lblSetList", "txtSetList"), std::pair("lblSetNotes", "txtSetNotes"),
              std::pair("lblComments", "txtComment")}) {
            const QRect label = w.Field(QString::fromLatin1(caption)).geometry();
            const QRect box = w.Field(QString::fromLatin1(field)).geometry();
            QVERIFY(label.top() > above && box.top() > label.bottom());
            QCOMPARE(box.left(), 8);
            QVERIFY(std::abs(box.height() - height) <= 1);
            QVERIFY2(height >= 60, "too low to be used in the smallest window");
            above = box.bottom();
        }
        QVERIFY(above <= w.fra.height() && above > w.fra.height() - 14);
    }

    void groupsAndResetsHideThePanel()
    {
        EditorWindow w(kShows);
        w.Select(u"1"_s);
        QVERIFY(w.Field(u"txtVenue"_s).isVisible());
        QTest::mouseClick(w.trv.viewport(), Qt::LeftButton, {}, w.trv.viewport()->rect().bottomLeft());
        QVERIFY(w.trv.selectionModel()->isSelected(w.trv.currentIndex()));
        QTest::keyClick(&w.trv, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(w.trv.selectionModel()->isSelected(w.trv.currentIndex()));
        QCOMPARE(w.CurrentKey(), u"s1"_s);
        w.trv.collapse(w.trv.currentIndex().parent());
        QCOMPARE(w.CurrentKey(), u"y1994"_s);
        QVERIFY(!w.Field(u"txtVenue"_s).isVisible() && !w.Field(u"lblVenue"_s).isVisible() && w.fra.isVisible());
        QVERIFY(!w.copyListing.isEnabled());
        w.Select(u"1"_s);
        QVERIFY(w.Field(u"txtVenue"_s).isVisible());
        w.document.Clear();
        QVERIFY(!w.Field(u"txtVenue"_s).isVisible());
        QVERIFY(!w.fra.CurrentItem());
    }
};

QTEST_MAIN(TestDetailPanel)
#include "test_detailpanel.moc"
