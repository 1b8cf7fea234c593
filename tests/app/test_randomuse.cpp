#include "usedwindow.h"

#include "application.h"
#include "labels.h"
#include "xmlwriter.h"

namespace {

constexpr QStringView kKeys =
    u"Up Down Left Right PgDown Home Tab Backtab Return Space Esc Del Backspace F2 F5 1 9 , Shift+B "
    u"Ctrl+A Ctrl+X Ctrl+V "
    u"Ctrl+Z Ctrl+PgDown Ctrl+PgUp";

QString RowsOf(const BrowseTree &tree)
{
    QString rows;
    for (const auto &group : tree.Model().Groups()) {
        rows += group->text + u'\n';
        for (const auto &node : group->InOrder())
            rows += u' ' + node->Id() + u' ' + ListingLabel(node->element) + u' ' + node->picture + u'\n';
    }
    return rows;
}

/// The real window in the hands of somebody.
class Use : public UsedWindow
{
public:
    /// In unlucky hands, memory runs out once in every step.
    Use(unsigned seed, bool isUnlucky) : m_anybody(seed), m_isUnlucky(isUnlucky)
    {
        folder.Write(u"formats.ini"_s, "[Formats]\r\nCD=Lossless\r\nMP3=Lossy\r\n");
        folder.Write(u"Odd.xml"_s, "<Catalog><Item/><Item ID='x' Type='Tape &amp; Co' Year='-3'/></Catalog>");
        QByteArray catalog = "<Catalog><Type>Radio</Type><Item ID='3' Type='Album' Venue='twice'/>";
        for (int i = 1; i <= 30; ++i)
            catalog += "<Item ID='" + QByteArray::number(i) + "' Type='" + m_anybody.AnyOf(kTypes) + "' Year='" +
                       m_anybody.AnyOf(kYears) + "' Venue='v" + QByteArray::number(i) + "' Format='" +
                       m_anybody.AnyOf(kFormats) + "'><SetList>a,b</SetList></Item>";
        folder.Write(u"Live.xml"_s, catalog + "</Catalog>");
        Make(m_anybody);
        Load();
        QObject::connect(&m_dialogs, &QTimer::timeout, [this] { UseDialog(); });
        m_dialogs.start(0);
    }

    QString Step();
    /// What is wrong; empty when nothing is.
    QString Fault() const;
    QString FaultOfRefresh();

private:
    static constexpr std::array kTypes{"Concert", "Album", "Video", "Radio", "s5"};
    static constexpr std::array kYears{"1994", "1995", ""};
    static constexpr std::array kFormats{"", "CD", "MP3"};

    std::pair<QString, std::function<void()>> Next();
    void UseDialog();
    void Press(QWidget &target);
    template<class Widget>
    Widget *AnyVisible(QWidget &parent);
    pugi::xml_node AnyListingNotShown();
    void Edit(pugi::xml_node listing);

    Anybody m_anybody;
    bool m_isUnlucky;
    QTimer m_dialogs; ///< uses what stands before the window
    int m_patience = 0;
};

void Use::Press(QWidget &target)
{
    static const QStringList keys = kKeys.toString().split(u' ');
    const QKeyCombination key = QKeySequence(m_anybody.AnyOf(keys))[0];
    QTest::keyClick(&target, key.key(), key.keyboardModifiers());
}

template<class Widget>
Widget *Use::AnyVisible(QWidget &parent)
{
    QList<Widget *> widgets = parent.findChildren<Widget *>();
    widgets.removeIf([](const QWidget *widget) { return !widget->isVisible() || !widget->isEnabled(); });
    return widgets.isEmpty() ? nullptr : m_anybody.AnyOf(widgets);
}

/// A key at a time, and after a while it is closed.
void Use::UseDialog()
{
    const QScopedValueRollback enough(memoryEndsAt, 0);
    QWidget *dialog =
        QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::activeModalWidget();
    if (!dialog) {
        m_patience = 8;
    } else if (--m_patience < 0) {
        dialog->close();
    } else {
        QWidget *field = AnyVisible<QWidget>(*dialog);
        Press(field && m_anybody.Any(2) == 0 ? *field : *dialog);
    }
}

QString Use::Step()
{
    failures.reports.clear();
    const auto [name, action] = Next();
    memoryEndsAt = m_isUnlucky ? 1 + m_anybody.Any(300) : 0;
    try {
        action();
        QCoreApplication::processEvents();
    } catch (const std::bad_alloc &) {
        // Nobody above would see it either: the program's event loop is the last to catch.
    }
    memoryEndsAt = 0;
    if (m_isUnlucky) {
        // What was to be shown when memory ran out is shown when it is asked for again.
        const QModelIndex node = Tree()->currentIndex();
        Tree()->setCurrentIndex({});
        Tree()->setCurrentIndex(node);
    }
    if (IsBehind())
        Item(u"mnuEditRefresh"_s)->trigger();
    return name;
}

std::pair<QString, std::function<void()>> Use::Next()
{
    QTreeView *tree = Tree();
    QWidget *const focus = window->focusWidget() ? window->focusWidget() : window.get();
    switch (m_anybody.Any(10)) {
    case 0: {
        QList<QAction *> items = window->menuBar()->findChildren<QAction *>();
        items.removeIf([](const QAction *item) {
            return item->menu() || !item->isEnabled() || !item->isVisible() || item->objectName() == "mnuFileExit"_L1;
        });
        QAction *item = m_anybody.AnyOf(items);
        return {item->objectName() + item->text(), [item] { item->trigger(); }};
    }
    case 1:
    case 2: {
        const QModelIndex group = tree->model()->index(m_anybody.Any(9), 0);
        const int rows = tree->model()->rowCount(group);
        const auto node = rows > 0 ? tree->model()->index(m_anybody.Any(size_t(rows)), 0, group) : group;
        return {u"select"_s, [tree, node] { tree->setCurrentIndex(node); }};
    }
    case 3: {
        const QPoint place(m_anybody.Any(200), m_anybody.Any(300));
        const auto button = m_anybody.Any(4) == 0 ? Qt::RightButton : Qt::LeftButton;
        return {u"click"_s, [=] { QTest::mouseClick(tree->viewport(), button, {}, place); }};
    }
    case 4:
    case 5:
        if (QWidget *field = AnyVisible<QWidget>(*window)) {
            field->setFocus();
            const QString text = m_anybody.AnyOf(std::array{u"b"_s, u"1994"_s, u"a, (b), c"_s});
            return {u"type into "_s + field->objectName(), [=] { QTest::keyClicks(field, text); }};
        }
        [[fallthrough]];
    case 6:
    case 7:
        if (const pugi::xml_node listing = AnyListingNotShown())
            return {u"edit"_s, [this, listing] { Edit(listing); }};
        [[fallthrough]];
    default:
        return {u"key to "_s + focus->objectName(), [this, focus] { Press(*focus); }};
    }
}

/// One that is not in the panel, which shows its own edits alone.
pugi::xml_node Use::AnyListingNotShown()
{
    const auto listings = workspace->document.Catalog().children("Item");
    const auto count = std::distance(listings.begin(), listings.end());
    const auto listing = count > 0 ? *std::next(listings.begin(), m_anybody.Any(size_t(count))) : pugi::xml_node();
    const auto *current = workspace->tree.Model().ListingAt(Tree()->currentIndex());
    return current && current->element == listing ? pugi::xml_node() : listing;
}

void Use::Edit(pugi::xml_node listing)
{
    CatalogDocument &document = workspace->document;
    switch (m_anybody.Any(8)) {
    case 0:
        return document.RemoveListing(listing);
    case 1:
        document.AppendCopy(listing);
        return;
    case 2:
        return document.SetFormat(listing, QString::fromUtf8(m_anybody.AnyOf(kFormats)), QDate(2024, 2, 29));
    case 3:
        return document.SetField(listing, "WrongDate", m_anybody.AnyOf(std::array{u"1"_s, u""_s}));
    case 4:
        return document.SetField(listing, "Type", QString::fromUtf8(m_anybody.AnyOf(kTypes)));
    case 5:
        return document.SetField(listing, "Year", QString::fromUtf8(m_anybody.AnyOf(kYears)));
    default:
        return document.SetField(listing, "Venue", m_anybody.AnyOf(std::array{u""_s, u"B"_s, u"été"_s, u"zz"_s}));
    }
}

QString Use::Fault() const
{
    for (const FailureReport &report : failures.reports) {
        // A search for blanks is no expression.
        if (!m_isUnlucky && report.number != static_cast<int>(Failure::BadQuery))
            return report.procName + u": "_s + report.description;
    }
    return UsedWindow::Fault();
}

/// What each filter shows is right, and a refresh shows what a program started anew shows of the same document.
QString Use::FaultOfRefresh()
{
    if (!Item(u"mnuEditRefresh"_s)->isEnabled())
        return {};
    for (const QString &item : u"Filter1 Filter2 Filter3 Filter4 Filter0"_s.split(u' ')) {
        Item(u"mnuView"_s + item)->trigger();
        if (const QString fault = FaultOfLoad(); !fault.isEmpty())
            return item + u": "_s + fault;
    }
    const QString refreshed = RowsOf(workspace->tree);
    Workspace fresh(m_anybody);
    fresh.settings.LoadINI(InFolder(ProgramFolder(), ExecutableName() + u".ini"_s));
    fresh.formats.LoadFormats();
    SaveXml(workspace->document.Document(), {}, folder.Path(u"Fresh.tmp"_s));
    fresh.document.Load(folder.Path(u"Fresh.tmp"_s));
    fresh.document.SetPath(workspace->document.Path());
    fresh.options = workspace->options;
    fresh.tree.LoadTypeMenu();
    fresh.tree.LoadShows();
    const QString loaded = RowsOf(fresh.tree);
    return loaded == refreshed || m_isUnlucky ? QString() : u"refreshed:\n"_s + refreshed + u"loaded:\n"_s + loaded;
}

} // namespace

class TestRandomUse : public QObject
{
    Q_OBJECT

private slots:
    // DISCBOOK_LIVES and DISCBOOK_STEPS make it longer by hand.
    void leavesTreePanelAndDocumentInStep()
    {
        const auto number = [](const char *name, int usual) {
            return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : usual;
        };
        const int steps = number("DISCBOOK_STEPS", 250);
        for (int seed = 1; seed <= number("DISCBOOK_LIVES", 6); ++seed) {
            Use use(static_cast<unsigned>(seed), seed % 2 == 0);
            QString last;
            for (int step = 1; step <= steps; ++step) {
                last = (last + u", "_s + use.Step()).right(300);
                QString fault = use.Fault();
                if (fault.isEmpty() && step % 25 == 0)
                    fault = use.FaultOfRefresh();
                QVERIFY2(fault.isEmpty(), qPrintable(u"seed %1: %2\nafter %3"_s.arg(seed).arg(fault, last)));
            }
        }
    }
};

TEST_OF_SUITE(TestRandomUse)
#include "test_randomuse.moc"
