#include "usedwindow.h"

#include "detailpanel.h"
#include "panelfields.h"

namespace {

constexpr auto kLive =
    "<Catalog><Type>Radio</Type><Type>X</Type><Item/><Item ID='1' Type='Concert' Year='1994' Format='CD' DateAdded='x'>"
    "<SetList>a,b</SetList></Item><Item ID='2' Type='Tapes' WrongDate='1'/><Item ID='3' "
    "Year='1994'/><WebSource/></Catalog>";

/// What it may hold instead.
const std::map<QString, QByteArray> kOthers = {
    {u"full"_s, "<Catalog><Item ID='2147483647'/></Catalog>"}, {u"theirs"_s, "<Catalog/>"}, {u"none"_s, "<x/>"}};

/// One use of the window, in which something fails.
class Session : public UsedWindow
{
public:
    Session()
    {
        folder.Write(ExecutableName() + u".chm"_s, "no help");
        folder.Write(u"formats.ini"_s, "[Formats]\r\nCD=Lossless\r\nMP3=Lossy\r\n");
        folder.Write(u"Live.xml"_s, kLive);
        folder.Write(u"Odd.xml"_s, kLive);
        folder.Write(u"Odd User.xml"_s, "<User/>");
        QObject::connect(&m_dialogs, &QTimer::timeout, &m_dialogs, [this] { UseDialog(); });
        m_dialogs.start(0);
    }

    /// Takes steps: items of menus, nodes that are selected, controls with a key, other contents of the catalog's file,
    /// or the start. Those before "|" prepare the others, in which the n-th of the questions and signals fails, or of
    /// the requests for memory. False when there are not as many.
    bool Take(const QString &steps, bool forMemory, int n)
    {
        Make(m_prompts);
        TakeSteps(u"start "_s + steps.section(u'|', 0, 0));
        if (steps.contains(u"|start"_s))
            Make(m_prompts);
        Listen();
        failures.reports.clear();
        m_callsLeft = forMemory ? &memoryEndsAt : &m_prompts.callsLeft;
        *m_callsLeft = n;
        TakeSteps(steps.section(u'|', 1));
        return std::exchange(*m_callsLeft, 0) == 0;
    }

private:
    /// Whoever hears of what the program does may fail.
    void Listen()
    {
        const auto call = [this] { m_prompts.Call(); };
        const CatalogDocument &document = workspace->document;
        QObject::connect(&document, &CatalogDocument::listingAdded, &m_dialogs, call);
        QObject::connect(&document, &CatalogDocument::listingEdited, &m_dialogs, call);
        QObject::connect(&document, &CatalogDocument::listingAboutToBeRemoved, &m_dialogs, call);
        QObject::connect(&workspace->types, &ShownTypes::changed, &m_dialogs, call);
        QObject::connect(window->findChild<DetailPanel *>(), &DetailPanel::listingSelected, &m_dialogs, call);
    }

    /// As the event loop does, which lets nothing through.
    void TakeSteps(const QString &steps)
    {
        m_steps = steps.split(u' ', Qt::SkipEmptyParts);
        while (!m_steps.isEmpty()) {
            const int left = std::exchange(*m_callsLeft, 0);
            const auto count = [this, left] {
                *m_callsLeft = left;
                TakeStep(*window);
            };
            QMetaObject::invokeMethod(&m_dialogs, count, Qt::QueuedConnection);
            QCoreApplication::processEvents();
        }
    }

    void UseDialog()
    {
        QWidget *popup = QApplication::activePopupWidget();
        QWidget *dialog = popup ? popup : QApplication::activeModalWidget();
        if (dialog && m_steps.isEmpty())
            dialog->close();
        else if (dialog)
            TakeStep(*dialog);
    }

    /// What it takes to find the step does not count.
    void TakeStep(QWidget &top)
    {
        const int left = std::exchange(*m_callsLeft, 0);
        const std::function<void()> step = m_steps.isEmpty() ? [] {} : Step(top, m_steps.takeFirst());
        *m_callsLeft = left;
        step();
    }

    /// Nothing where a failure has kept it from being there.
    std::function<void()> Step(QWidget &top, const QString &step)
    {
        if (step == u"start")
            return [this] { Load(); };
        if (step == u"cut")
            return [this] { // as a conversion that ended after it had begun to delete
                folder.Write(u"Conversion Backup/Live.xml"_s, "<x/>");
                folder.Write(u"Conversion Backup/Live User.xml"_s, "<x/>");
                QFile::rename(folder.Path(u"Live.xml"_s), folder.Path(u"Live.xml.converted"_s));
            };
        if (const auto other = kOthers.find(step); other != kOthers.end())
            return [this, other] { folder.Write(u"Live.xml"_s, other->second); };
        if (auto *item = top.findChild<QAction *>(step))
            return [item] { item->trigger(); };
        const auto &model = workspace->tree.Model();
        if (const auto *node = step.startsWith(u's') ? model.FindListing(step.sliced(1)) : nullptr)
            return [this, index = model.IndexOf(*node)] { Tree()->setCurrentIndex(index); };
        auto *control = top.findChild<QWidget *>(step.section(u'=', 0, 0));
        if (!control)
            return [] {};
        if (const auto *box = qobject_cast<QLineEdit *>(control))
            QObject::connect(box, &QLineEdit::textChanged, &m_dialogs, [this](const QString &text) {
                if (text.isEmpty())
                    m_prompts.Call();
            });
        control->setFocus();
        return [control, keys = QKeySequence(step.section(u'=', 1))] { QTest::keySequence(control, keys); };
    }

    int m_none = 0;
    int *m_callsLeft = &m_none; ///< that count now
    Anybody m_prompts{0};
    QTimer m_dialogs; ///< uses what stands before the window
    QStringList m_steps;
};

/// One that changes what a field holds.
char KeyFor(PanelField::Kind kind)
{
    return kind == PanelField::Kind::Type ? 'R' : kind == PanelField::Kind::Format ? 'M' : '1';
}

} // namespace

class TestFailing : public QObject
{
    Q_OBJECT

private slots:
    void leavesWindowAndDocumentInStep_data()
    {
        const Table<QString> table("procedures");
        table
            .Row(
                "|start", "Form_Load LoadFormats LoadShows AddShowToTree VerifyParentNode AddNode AddYearCount "
                          "LoadWebSources trv_NodeClick")
            .Row("mnuFileNewSource|start", "OfferRecovery FindJournals")
            .Row("mnuFileNewSource theirs|start", "KeepApart")
            .Row("cut|start", "FinishInterruptedConversion")
            .Row("none|start cmdOK=Space", "Form_Activate")
            .Row("|mnuFileNewSource", "mnuFileNewItem_Click")
            .Row("full mnuFileMRU0|mnuFileNewSource", "GetNextID")
            .Row("|mnuFileNewCatalog", "mnuFileNewCatalog_Click")
            .Row("|mnuFileOpenCatalog", "mnuFileOpenCatalog_Click ConvertFileTo12")
            .Row("|mnuFileMakeCatalogShortcut", "mnuFileMakeCatalogShortcut_Click")
            .Row("mnuFileNewSource|mnuFileSave", "mnuFileSave_Click CleanXML")
            .Row("mnuFileNewSource|mnuFileMRU0", "mnuFileMRU_Click")
            .Row("mnuFileNewSource|mnuFileExit", "Form_Unload SaveFormPosition")
            .Row("|mnuEditSearch txtVenue=q txtVenue=Return", "mnuEditSearch_Click")
            .Row("|mnuEditSearch txtVenue=q cmdReset=Space", "cmdReset_Click")
            .Row("s3|s1", "ParseSetList")
            .Row("s1|mnuEditCopyListing", "AddNewShowToList")
            .Row("s2|mnuEditCopyListing", "mnuEditCopyListing_Click")
            .Row("s1|mnuEditDeleteListing", "mnuEditDeleteListing_Click DeleteShow")
            .Row("|mnuEditGroupsItem0 mnuEditShowWrongDate", "mnuEditGroupsItem_Click mnuEditShowWrongDate_Click")
            .Row("|mnuEditShowYearTotals", "mnuEditShowYearTotals_Click")
            .Row("|mnuOptionsOpenMRUOnStartup", "mnuOptionsOpenMRUOnStartup_Click")
            .Row("|mnuOptionsSetupTypes lst=F2 lst=Del", "mnuOptionsSetupTypes_Click lst_DblClick cmdDelete_Click")
            .Row("|mnuWebSourcesSetup cmdAdd=Space", "mnuWebSourcesSetup_Click cmdAdd_Click")
            .Row("|mnuListType0 mnuFileExport", "mnuListType_Click LoadList cmdExport_Click")
            .Row("|mnuViewAsWebPage chkCol0=Space chkCol0=Return", "mnuViewAsWebPage_Click chkCol_Click")
            .Row("|mnuHelpContents", "ShowHelp")
            .Row("|mnuHelpAbout", "mnuHelpAbout_Click")
            .Row("s1|cmdClearDate=Space chkWrongDate=Space", "UpdateListName cmdClearDate_Click chkWrongDate_Click");
        const auto fields = [&table](const auto &list) {
            for (const PanelField &field : list)
                table.Row(("s1|"_ba + field.control + '=' + KeyFor(field.kind)).constData(), field.handler);
        };
        fields(kPanelFields);
        fields(kPanelTexts);
    }

    /// Each procedure fails in the middle of its work, and is reported once.
    void leavesWindowAndDocumentInStep()
    {
        QFETCH(QString, procedures);
        QStringList missing = procedures.split(u' ');
        const bool isBrief = !qEnvironmentVariableIsSet("DISCBOOK_STEPS");
        for (const bool forMemory : {false, true}) {
            bool failed = true;
            for (int n = 1; failed && !(isBrief && missing.isEmpty()); ++n) {
                Session session;
                failed = session.Take(QString::fromUtf8(QTest::currentDataTag()), forMemory, n);
                const QStringList names = session.failures.Names();
                for (const QString &name : names)
                    missing.removeAll(name.section(u'.', 1));
                const auto check = [&](const QString &fault) {
                    QVERIFY2(fault.isEmpty(), qPrintable(u"%1 after %2: %3"_s.arg(n).arg(names.join(u' '), fault)));
                };
                if (!session.IsBehind())
                    check(session.Fault());
                QVERIFY(names.size() <= 1);
                QCOMPARE(CallStack().CallStack(), QString());
                for (const QString &command : {u"mnuEditRefresh"_s, u"mnuFileSave"_s})
                    session.Item(command)->trigger();
                check(session.FaultOfLoad());
                if (QTest::currentTestFailed())
                    return;
            }
        }
        QCOMPARE(missing.join(u' '), QString());
    }
};

TEST_OF_SUITE(TestFailing)
#include "test_failing.moc"
