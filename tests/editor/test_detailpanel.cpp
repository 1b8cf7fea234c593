#include "editorwindow.h"

#include "notebox.h"

namespace {

constexpr auto kShows = R"(
<Item ID='1' Type='Concert' Year='1994' Month='07' Venue='Hall' Format='FLAC' DateAdded='2001-2-3 10:00'/>
<Item ID='2' Year='1999x' Day='x' Length='2:10:00' WrongDate='2'><Notes>a\nb\\c</Notes><SetList>one, two (a, b)</SetList></Item>
<Item ID='3' Type='Album' Venue='Best' Format='MP3'/>
<Item ID='4' Type='Radio' Year='1990' Venue='Studio' DateAdded='last week'/>
<Type>Radio</Type>)";

constexpr auto kConcert = "<Item ID='1' Type='Concert' Year='1994' Month='7' Day='' Venue='Hall' Show='' Length='' "
                          "Source='' Grade='' Seeder='' Stored=''><SetList/><Notes/><Comment/></Item>";
constexpr auto kAlbum = "<Item ID='1' Type='Album'/>";

/// How a user changes the format.
using Way = std::function<void(EditorWindow &)>;

/// What the panel shows, control by control.
QString Shown(const EditorWindow &w)
{
    QStringList texts;
    for (const char *name : {"cboType", "cboYear", "cboMonth", "cboDay", "txtVenue", "txtLength", "icbFormat"}) {
        const QWidget &field = w.Field(name);
        texts += field.property(field.inherits("QComboBox") ? "currentText" : "text").toString();
    }
    texts += w.Find<QCheckBox>("chkWrongDate").isChecked() ? u"wrong"_s : u""_s;
    texts += w.Find<QLabel>("lblDateAdded").text() + (w.Field("cmdClearDate").isEnabled() ? u"*"_s : u""_s);
    texts += w.Find<QLabel>("lblVenue").text();
    for (const char *name : {"lblShow", "txtShow"})
        texts.back() += w.Field(name).isVisible() ? u' ' + QString::fromLatin1(name) : QString();
    for (const char *name : {"txtSetList", "txtSetNotes", "txtComment"})
        texts += w.Find<NoteBox>(name).Text().replace("\r\n"_L1, "/"_L1);
    return texts.join(u'|');
}

} // namespace

class TestDetailPanel : public QObject
{
    Q_OBJECT

private slots:
    void browsingShowsTheListingsAndChangesNothing()
    {
        const QStringList shown{
            u"Concert|1994|7|0|Hall||FLAC||2001-02-03*|Ven&ue lblShow txtShow|||"_s,
            u"Concert|1999|0|0||2:10:00||wrong||Ven&ue lblShow txtShow|one/two (a, b)|a/b\\c|"_s,
            u"Album|0|0|0|Best||MP3|||T&itle|||"_s, u"Radio|1990|0|0|Studio||||last week*|Ven&ue lblShow txtShow|||"_s};
        EditorWindow w(kShows);
        for (const int id : {1, 2, 3, 4, 3, 2, 1}) {
            w.Select(u"s%1"_s.arg(id));
            QCOMPARE(Shown(w), shown[id - 1]);
            QCOMPARE(w.fra.title(), u"Recording Information for ID %1"_s.arg(id));
        }
        QCOMPARE(w.Find<QLabel>("lblDateAdded").textFormat(), Qt::PlainText);
        w.window.setFont(QFont(u"Sans"_s, 14));
        w.fra.setPalette(Qt::black);
        QCoreApplication::processEvents();
        w.types.Toggle(w.types.Find(u"Bootleg"_s));
        QVERIFY(!w.document.IsModified());
        QCOMPARE(
            w.Item("2"), "<Item ID='2' Year='1999x' Day='x' Length='2:10:00' WrongDate='2' Type='Concert'>"
                         "<Notes>a\\nb\\\\c</Notes><SetList>one, two (a, b)</SetList><Comment/></Item>");
    }

    void edits_data()
    {
        Table<QString, QByteArray, QByteArray>("keys", "before", "after")
            .Row("cboYear", "195", "Year='1994'", "Year='1959'")
            .Row("cboYear cleared", "1\b", "Year='1994'", "Year=''")
            .Row("cboYear refused", "3a", "Year", "Year")
            .Row("txtVenue", "<&\"é", "Venue='Hall'", "Venue='&lt;&amp;&quot;é'")
            .Row("txtVenue taken back", "ab^z", "Venue", "Venue")
            .Row("txtLength", "x1.2,.5\b", "Length=''", "Length='1.2'")
            .Row("txtGrade", "aß-", "Grade=''", "Grade='Aß-'")
            .Row("txtSetList", "a, b", "<SetList/>", "<SetList>a, b</SetList>")
            .Row("txtSetNotes", "a\\", "<Notes/>", "<Notes>a\\\\</Notes>")
            .Row("txtComment", "a", "<Comment/>", "<Comment>a</Comment>");
    }

    /// Each field writes its own part of the listing, and nothing else.
    void edits()
    {
        QFETCH(QString, keys);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const QByteArrayList tag = QByteArray(QTest::currentDataTag()).split(' ');
        EditorWindow w(kConcert, "s1");
        Type(w.Field(tag[0]), keys);
        QCOMPARE(w.Item("1"), QByteArray(kConcert).replace(before, after));
        QCOMPARE(w.document.IsModified(), tag.back() != "refused");
        QCOMPARE(w.CurrentKey(), u"s1"_s);
    }

    void notes_data()
    {
        Table<QString, QString, QByteArray>("pasted", "keys", "stored")
            .Row("line breaks", "a\r\nb\nc", "\rd", "a\\nb\\nc\\nd")
            .Row("tabs", "a\tb", "\tc", "a\\tb\\tc")
            .Row("no-break space", "a\u00a0b", "\u00a0", "a\u00a0b\u00a0")
            .Row("backslashes, markup", "C:\\new <x & y", "", "C:\\\\new &lt;x &amp; y")
            .Row("outer breaks", "\n\na", "\r\r", "a")
            .Row("forbidden characters", "a\x0b\x0c\x01", "b", "ab")
            .Row("beyond 16 bits", "𝄞", "", "𝄞");
    }

    void notes()
    {
        QFETCH(QString, pasted);
        QFETCH(QString, keys);
        QFETCH(QByteArray, stored);
        EditorWindow w(kAlbum, "s1");
        QGuiApplication::clipboard()->setText(pasted);
        Type(w.Field("txtComment"), u"^v"_s + keys);
        QVERIFY(w.Item("1").endsWith("<Comment>" + stored + "</Comment></Item>"));
        QVERIFY(w.document.IsModified());
    }

    void noteSteps_data()
    {
        // What the text is, and what it is after each Ctrl+Z.
        Table<QString, QString>("keys", "states")
            .Row("typing", "ab~éc", "abéc||")
            .Row("pastes", "a^v^vb", "aPPb|aPP|aP|a||")
            .Row("cut, typing", "abc^a^xd", "d||abc||")
            .Row("deletions of both kinds", "abc^v\b^a\bd", "d||abc|abcP|abc||")
            .Row("typed over a selection", "abc^axy", "xy|abc||");
    }

    void noteSteps()
    {
        QFETCH(QString, keys);
        NoteBox box(nullptr);
        QGuiApplication::clipboard()->setText(u"P"_s);
        Press(box, keys);
        QStringList states{box.Text()};
        for (; box.document()->isUndoAvailable(); states += box.Text())
            Press(box, u"^z"_s);
        QTEST(states.join(u'|') + u'|', "states");
    }

    void textsOfABox()
    {
        NoteBox box(nullptr);
        QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(box.Text(), u"\r\n"_s);
        box.SetText(u"שלום\r\nabc"_s);
        QCOMPARE(box.document()->defaultTextOption().alignment(), Qt::AlignRight);
        QCOMPARE(box.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
        box.selectAll();
        QGuiApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
        box.paste();
        QCOMPARE(box.Text(), u"שלום\r\nabc"_s);
    }

    void focusOfAHiddenField_data()
    {
        // The path: nodes gone through, and a key or a click in the tree or another field in between.
        Table<QString, QString, QString>("field", "path", "focus")
            .Row("album", "txtShow", "s3", "trv")
            .Row("album and back", "txtShow", "s3 s1", "txtShow")
            .Row("group", "txtVenue", "y1994", "trv")
            .Row("across a group", "txtComment", "y1994 s3", "txtComment")
            .Row("field of another kind", "txtShow", "y1994 s3", "trv")
            .Row("date cleared", "cmdClearDate", "s3", "trv")
            .Row("a key in the tree", "txtVenue", "y1994 key s3", "trv")
            .Row("a click in the tree", "txtVenue", "y1994 click s3", "trv")
            .Row("another field", "txtShow", "s3 txtSeeder trv s1", "trv");
    }

    void focusOfAHiddenField()
    {
        QFETCH(QString, field);
        QFETCH(QString, path);
        EditorWindow w(kShows, "s1");
        w.Field(field).setFocus();
        for (const QString &step : path.split(u' ')) {
            if (step == "key"_L1)
                QTest::keyClick(&w.trv, Qt::Key_Right);
            else if (step == "click"_L1)
                w.ClickBelowTheTree();
            else if (step.startsWith(u't'))
                w.Field(step).setFocus();
            else
                w.Select(step);
        }
        QWidget *focused = w.window.focusWidget();
        QTEST(focused->objectName(), "focus");
        if (const auto *box = qobject_cast<QLineEdit *>(focused))
            QVERIFY(!box->hasSelectedText());
        if (focused == &w.trv)
            QTest::keyClicks(focused, u"z "_s);
        QVERIFY(!w.document.IsModified());
    }

    /// Of two listings with one ID, the first of a hidden type.
    void nodeIsItsOwnListing()
    {
        EditorWindow w("<Item ID='1' Type='Album' Venue='hidden'/><Item ID='1' Type='Video' Venue='shown'/>");
        w.types.Toggle(w.types.Find(u"Album"_s));
        w.tree.LoadShows();
        w.Select("s1");
        Type(w.Field("txtSource"), u"x"_s);
        QCOMPARE(QByteArray(w.fra.CurrentItem().attribute("Source").value()), "x");
        w.prompts.ExpectMessage(u"Delete Confirmation"_s, UserPrompts::Answer::Yes);
        w.commands.mnuEditDeleteListing_Click();
        QCOMPARE(w.document.NumberOfListings(), 1);
        QCOMPARE(w.Item("1"), "<Item ID='1' Type='Album' Venue='hidden'/>");
        QVERIFY(!w.tree.Model().FindListing(u"1"_s));
    }

    void editedRowStaysInSight()
    {
        QByteArray listings;
        for (int id = 1; id <= 200; ++id)
            listings += "<Item ID='" + QByteArray::number(id) + "' Type='Video' Venue='m'/>";
        EditorWindow w(listings, "s1");
        Type(w.Field("txtVenue"), u"z"_s);
        QCOMPARE(w.trv.currentIndex().row(), 199);
        QVERIFY(w.trv.viewport()->rect().contains(w.Point("s1")));
    }

    /// What was undone in one listing's box must not be that of another listing.
    void undoEndsWithTheListing()
    {
        EditorWindow w("<Item ID='1' Type='Album' Venue='x'/><Item ID='2' Type='Album' Venue='y'/>", "s1");
        Type(w.Field("txtVenue"), u"y"_s);
        Type(w.Field("txtComment"), u"c"_s);
        w.Select("s2");
        Type(w.Field("txtVenue"), u"^z"_s);
        Type(w.Field("txtComment"), u"^z"_s);
        QVERIFY(w.Item("2").contains("Venue='y'><SetList/><Notes/><Comment/>"));
    }

    void savingKeepsTheCursor()
    {
        EditorWindow w(kConcert, "s1");
        auto &venue = w.Find<QLineEdit>("txtVenue");
        venue.setFocus();
        venue.setCursorPosition(2);
        w.document.Save();
        QTest::keyClicks(&venue, u"x"_s);
        Type(w.Field("txtComment"), u"one\r"_s);
        w.document.Save();
        Type(w.Field("txtComment"), u"two"_s);
        Type(w.Field("txtSetList"), u"a, b"_s);
        w.document.Save();
        Type(w.Field("txtSetList"), u"c"_s);
        QVERIFY(w.Item("1").contains("Venue='Haxll'"));
        QVERIFY(w.Item("1").contains("<Comment>one\\ntwo</Comment>"));
        QVERIFY(w.Item("1").contains("<SetList>a\\nbc</SetList>"));
    }

    void typeChange()
    {
        for (const auto &[type, node, caption] :
             {std::tuple(u"Album"_s, u"Albums > 1994 - Hall [Unchecked]"_s, u"T&itle"_s),
              {u"Interview"_s, u"Interviews > 1994 - Hall [Unchecked]"_s, u"Ven&ue"_s},
              {u"R&B"_s, u"R&B > 1994-?\?-?\? - Hall [Unchecked]"_s, u"Ven&ue lblShow txtShow"_s}}) {
            EditorWindow w("<Item ID='1' Type='Concert' Year='1994' Venue='Hall'/><Type>R&amp;B</Type>", "s1");
            // Letters choose in the closed list, and tell nobody by activated().
            Type(w.Field("cboType"), type.left(1));
            QCOMPARE(w.Node(u"1"_s), node);
            QVERIFY(w.Item("1").contains("Type='" + type.toHtmlEscaped().toLatin1() + '\''));
            QCOMPARE(Shown(w).section(u'|', 0, 0), type);
            QCOMPARE(Shown(w).section(u'|', 9, 9), caption);
            QVERIFY(w.document.IsModified());
            QVERIFY(!w.tree.Model().FindGroup(u"y1994"_s));
            QCOMPARE(w.CurrentKey(), u"s1"_s);
            QVERIFY(w.trv.visualRect(w.trv.currentIndex()).isValid());
        }
    }

    void typeListFollowsTheShownTypes()
    {
        EditorWindow w(kShows, "s4");
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
        EditorWindow w("<Item ID='1' Type='Concert' Year='1994' Venue='Hall' Length='1.0' Format='FLAC'/>", "s1");
        QTest::keyClick(&w.Field("chkWrongDate"), Qt::Key_Space);
        QVERIFY(w.Item("1").contains("WrongDate='1'"));
        QCOMPARE(w.Node(u"1"_s), u"1994 ( 1 / 0 / 1 ) > 1994-?\?-?\? - Hall (wrong date) [WrongDate]"_s);
        QVERIFY(w.document.IsModified());
        QTest::keyClick(&w.Field("chkWrongDate"), Qt::Key_Space);
        QVERIFY(w.Item("1").contains("WrongDate=''"));
        w.fra.SelectFormat(3);
        QCOMPARE(w.Node(u"1"_s), u"1994 ( 0 / 1 / 1 ) > 1994-?\?-?\? - Hall (1.0) [FormatMP3]"_s);
    }

    void format_data()
    {
        const auto press = [](const char *keys) -> Way {
            return [=](EditorWindow &w) {
                QTest::keySequence(&w.Field("icbFormat"), QKeySequence(QLatin1StringView(keys)));
            };
        };
        const auto choose = [](int format) -> Way {
            return [=](EditorWindow &w) {
                auto &box = w.Find<QComboBox>("icbFormat");
                box.showPopup();
                box.view()->setCurrentIndex(box.model()->index(format, 0));
                QTest::keyClick(box.view(), Qt::Key_Return);
            };
        };
        const Way picture = [](EditorWindow &w) { w.Click("s1"); };
        const Way clear = [](EditorWindow &w) { QTest::mouseClick(&w.Field("cmdClearDate"), Qt::LeftButton); };
        const Way clearTwice = [](EditorWindow &w) {
            w.Field("cmdClearDate").setFocus();
            QTest::keyClick(w.window.focusWidget(), Qt::Key_Space);
            QTest::keyClick(w.window.focusWidget(), Qt::Key_Space);
        };
        const QByteArray none;
        const QByteArray flac = " Format='FLAC' DateAdded='2000-01-01'";
        const QByteArray cleared = " Format='' DateAdded=''";
        Table<QByteArray, Way, QByteArray>("before", "way", "after")
            .Row("choice", none, choose(3), " DateAdded='2024-02-29' Format='MP3'")
            .Row("choice, date kept", flac, choose(3), " Format='MP3' DateAdded='2000-01-01'")
            .Row("choice, none", flac, choose(0), cleared)
            .Row("choice, the same", flac, choose(1), flac)
            .Row("choice, the same, no date", " Format='FLAC'", choose(1), " Format='FLAC' DateAdded='2024-02-29'")
            .Row("arrow", none, press("Down"), " DateAdded='2024-02-29' Format='FLAC'")
            .Row("letter", none, press("M"), " DateAdded='2024-02-29' Format='MP3'")
            .Row("letter around", flac, press("F, F"), flac)
            .Row("letter of none", flac, press("X"), flac)
            .Row("Delete", flac, press("Del"), cleared)
            .Row("picture", none, picture, " DateAdded='2024-02-29' Format='FLAC'")
            .Row("picture, beyond the last", " Format='R&amp;B' DateAdded='2000-01-01'", picture, cleared)
            .Row("picture, wrong date", " WrongDate='1' Format='FLAC'", picture, " WrongDate='' Format='FLAC'")
            .Row("clear date", flac, clear, " Format='FLAC' DateAdded=''")
            .Row("clear date, once more", flac, clearTwice, " Format='FLAC' DateAdded=''");
    }

    /// Each of these is the first thing that happens after the listing was selected.
    void format()
    {
        QFETCH(QByteArray, before);
        QFETCH(Way, way);
        QFETCH(QByteArray, after);
        const QByteArray start = "<Item ID='1' Type='Album'", end = "><SetList/><Notes/><Comment/></Item>";
        EditorWindow w(start + before + end + "<Item ID='2' Type='Album' Format='MP3'/>", "s2");
        w.Select("s1");
        way(w);
        QCOMPARE(w.Item("1"), start + after + end);
        const QRegularExpression storedDate(u"DateAdded='(.+?)'"_s);
        const QString dated = storedDate.match(QString::fromUtf8(after)).captured(1);
        QCOMPARE(Shown(w).section(u'|', 8, 8), dated.isEmpty() ? QString() : dated + u'*');
        QCOMPARE(w.document.IsModified(), before != after || QByteArray(QTest::currentDataTag()) == "letter around");
    }

    void wheelNeedsTheFocus()
    {
        EditorWindow w(kShows, "s1");
        w.trv.setFocus();
        for (const char *name : {"cboType", "cboYear", "cboMonth", "cboDay", "icbFormat"})
            TurnWheel(w.Field(name));
        QVERIFY(!w.document.IsModified());
        w.Field("cboMonth").setFocus();
        TurnWheel(w.Field("cboMonth"));
        QVERIFY(w.Item("1").contains("Month='8'"));
    }

    void tabGoesInTheOrderOfTheFieldsAndEachHasItsLabel()
    {
        EditorWindow w(kShows, "s1");
        QMap<const QWidget *, QString> labels;
        for (const QLabel *label : w.fra.findChildren<QLabel *>()) {
            if (!label->buddy() || label->buddy()->parent() != label->parent())
                continue;
            labels[label->buddy()] = label->text().remove(u'&');
            const QRect text = label->geometry();
            const QRect box = label->buddy()->geometry();
            const bool above = box.left() == text.left() && box.left() == 8 && box.top() > text.bottom();
            const bool before = box.left() > text.right() && std::abs(box.center().y() - text.center().y()) <= 2;
            QVERIFY2(above || before, qPrintable(label->text()));
        }
        QStringList order{labels[&w.Field("lblDateAdded")]};
        for (w.Field("cboType").setFocus(); order.size() < 18; QTest::keyClick(w.window.focusWidget(), Qt::Key_Tab))
            order += labels[w.window.focusWidget()] + w.window.focusWidget()->objectName();
        QCOMPARE(
            order.join(u' '),
            u"Date Added: Type:cboType Year:cboYear Month:cboMonth Day:cboDay VenuetxtVenue Concert:txtShow "
            "Length:txtLength Source:txtSource Grade:txtGrade Seeder:txtSeeder Stored in:txtStoredIn Format:icbFormat "
            "chkWrongDate cmdClearDate Track listtxtSetList Set/Show NotestxtSetNotes Recording Comments:txtComment"_s);
        QVERIFY(!w.document.IsModified());
        QCOMPARE(w.Field("cmdClearDate").toolTip(), u"Clear date added."_s);
    }

    void textsShareTheHeight()
    {
        EditorWindow w(kShows, "s1");
        const QSize whole = w.fra.sizeHint();
        w.Select("y1994");
        QCOMPARE(w.fra.sizeHint(), whole);
        w.Select("s3");
        int above = w.Field("cmdClearDate").geometry().bottom();
        for (const char *name : {"txtSetList", "txtSetNotes", "txtComment"}) {
            const QRect box = w.Field(name).geometry();
            QVERIFY(box.top() > above + 10 && std::abs(box.height() - w.Field("txtSetList").height()) <= 1);
            QVERIFY2(box.height() >= 45, "too low to be used in the smallest window");
            above = box.bottom();
        }
        QVERIFY(above <= w.fra.height() && above > w.fra.height() - 14);
    }

    void groupsAndResetsHideThePanel()
    {
        EditorWindow w(kShows, "s1");
        w.ClickBelowTheTree();
        QVERIFY(w.trv.selectionModel()->isSelected(w.trv.currentIndex()));
        QTest::keyClick(&w.trv, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(w.trv.selectionModel()->isSelected(w.trv.currentIndex()));
        QCOMPARE(w.CurrentKey(), u"s1"_s);
        w.trv.collapse(w.trv.currentIndex().parent());
        QCOMPARE(w.CurrentKey(), u"y1994"_s);
        QVERIFY(!w.Field("txtVenue").isVisible() && !w.Field("lblVenue").isVisible() && w.fra.isVisible());
        QVERIFY(!w.copyListing.isEnabled());
        w.Select("s1");
        QVERIFY(w.Field("txtVenue").isVisible());
        w.document.Clear();
        QVERIFY(!w.Field("txtVenue").isVisible());
        QVERIFY(!w.fra.CurrentItem());
    }
};

QTEST_MAIN(TestDetailPanel)
#include "test_detailpanel.moc"
