#include "application.h"
#include "labels.h"
#include "modXMLSubs.h"
#include "panelfields.h"
#include "program.h"
#include "recordingtypes.h"
#include "xmlwriter.h"

#include <cstdlib>
#include <new>
#include <random>

namespace {

/// While it is not 0, memory for the program's own code (not for Qt's) runs out at that request. Hashes of Qt end the
/// program when they get none, so they always do.
int memoryEndsAt = 0;

extern "C" char __executable_start, etext; // NOLINT(bugprone-reserved-identifier)

void *Allocate(size_t size, const void *caller)
{
    constexpr size_t kHash = sizeof(QHashPrivate::Data<QHashPrivate::Node<int, int>>);
    const bool isOwn = caller >= &__executable_start && caller < &etext && size != kHash;
    void *memory = isOwn && memoryEndsAt > 0 && --memoryEndsAt == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

} // namespace

void *operator new(size_t size)
{
    return Allocate(size, __builtin_return_address(0));
}
void *operator new[](size_t size)
{
    return Allocate(size, nullptr);
}
void *operator new(size_t size, const std::nothrow_t &) noexcept
{
    return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory, size_t) noexcept
{
    std::free(memory);
}

namespace {

/// Somebody who answers and types anything, with a seed.
class Anybody : public UserPrompts
{
public:
    explicit Anybody(unsigned seed) : m_random(seed) {}

    int Any(size_t count) { return static_cast<int>(m_random() % count); }
    template<class List>
    auto AnyOf(const List &list)
    {
        return *std::next(std::begin(list), Any(static_cast<size_t>(std::size(list))));
    }

    Answer Message(const QString &, const QString &, Icon, Buttons buttons) override
    {
        const QScopedValueRollback enough(memoryEndsAt, 0);
        if (buttons == Buttons::Ok)
            return Answer::Ok;
        return AnyOf(std::array{Answer::Yes, Answer::No, buttons == Buttons::YesNo ? Answer::No : Answer::Cancel});
    }
    QString Input(const QString &, const QString &, const QString &) override
    {
        const QScopedValueRollback enough(memoryEndsAt, 0);
        return AnyOf(std::array{u""_s, u"Radio"_s, u"R&B"_s, u"http://a.b"_s});
    }
    QString OpenFile(const FileRequest &) override
    {
        const QScopedValueRollback enough(memoryEndsAt, 0);
        return AnyOf(std::array{u""_s, Path(u"Live"_s), Path(u"Odd"_s)});
    }
    QString SaveFile(const FileRequest &request) override
    {
        const QScopedValueRollback enough(memoryEndsAt, 0);
        return AnyOf(std::array{u""_s, Path(request.title == "New Catalog"_L1 ? u"New"_s : u"Report"_s)});
    }
    void OpenWithDefaultProgram(const QString &) override {}

private:
    static QString Path(const QString &name) { return InFolder(ProgramFolder(), name + u".xml"_s); }

    std::mt19937 m_random;
};

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
class Use
{
public:
    /// In unlucky hands, memory runs out once in every step.
    Use(unsigned seed, bool isUnlucky) : m_anybody(seed), m_isUnlucky(isUnlucky)
    {
        m_folder.Write(u"formats.ini"_s, "[Formats]\r\nCD=Lossless\r\nMP3=Lossy\r\n");
        m_folder.Write(u"Odd.xml"_s, "<Catalog><Item/><Item ID='x' Type='Tape &amp; Co' Year='-3'/></Catalog>");
        QByteArray catalog = "<Catalog><Type>Radio</Type><Item ID='3' Type='Album' Venue='twice'/>";
        for (int i = 1; i <= 30; ++i)
            catalog += "<Item ID='" + QByteArray::number(i) + "' Type='" + m_anybody.AnyOf(kTypes) + "' Year='" +
                       m_anybody.AnyOf(kYears) + "' Venue='v" + QByteArray::number(i) + "' Format='" +
                       m_anybody.AnyOf(kFormats) + "'><SetList>a,b</SetList></Item>";
        m_folder.Write(u"Live.xml"_s, catalog + "</Catalog>");
        m_workspace = std::make_unique<Workspace>(m_anybody);
        m_window = std::make_unique<frmMain>(
            *m_workspace, m_anybody, frmMain::StartUp{.arguments = {u"Live.xml"_s}, .sizeLimits = false});
        m_window->Form_Load();
        m_window->show();
        m_window->activateWindow();
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
    bool IsShown(pugi::xml_node listing) const;
    QString FaultOfLoad() const;
    QString FaultOfPanel(pugi::xml_node listing) const;

    TestProgramFolder m_folder;
    FailureRecorder m_failures;
    Anybody m_anybody;
    bool m_isUnlucky;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<frmMain> m_window;
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
        auto *tree = m_window->findChild<QTreeView *>(u"trv"_s);
        const QModelIndex node = tree->currentIndex();
        tree->setCurrentIndex({});
        tree->setCurrentIndex(node);
    }
    return name;
}

std::pair<QString, std::function<void()>> Use::Next()
{
    auto *tree = m_window->findChild<QTreeView *>(u"trv"_s);
    QWidget *const focus = m_window->focusWidget() ? m_window->focusWidget() : m_window.get();
    switch (m_anybody.Any(10)) {
    case 0: {
        QList<QAction *> items = m_window->menuBar()->findChildren<QAction *>();
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
        if (QWidget *field = AnyVisible<QWidget>(*m_window)) {
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
    const auto listings = m_workspace->document.Catalog().children("Item");
    const auto count = std::distance(listings.begin(), listings.end());
    const auto listing = count > 0 ? *std::next(listings.begin(), m_anybody.Any(size_t(count))) : pugi::xml_node();
    const auto *current =
        m_workspace->tree.Model().ListingAt(m_window->findChild<QTreeView *>(u"trv"_s)->currentIndex());
    return current && current->element == listing ? pugi::xml_node() : listing;
}

void Use::Edit(pugi::xml_node listing)
{
    CatalogDocument &document = m_workspace->document;
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

bool Use::IsShown(pugi::xml_node listing) const
{
    const QString type = ReadAttribute(listing, "Type");
    const QString format = ReadAttribute(listing, "Format");
    const std::array shown{true, format == "CD"_L1, format == "MP3"_L1, format != "CD"_L1, format.isEmpty()};
    const ShownTypes &types = m_workspace->types;
    return types.IsShown(types.Find(type.isEmpty() ? u"Concert"_s : type)) &&
           shown[size_t(m_workspace->options.filter)] &&
           (m_workspace->options.showWrongDate || ReadAttribute(listing, "WrongDate") != "1"_L1);
}

/// What is wrong with a tree just loaded: each listing that is to be shown is there, once for each ID, and in its
/// group.
QString Use::FaultOfLoad() const
{
    QSet<QString> ids;
    for (const pugi::xml_node listing : m_workspace->document.Catalog().children("Item")) {
        const QString id = ReadAttribute(listing, "ID");
        const QString type = ReadAttribute(listing, "Type");
        if (!IsShown(listing) || ids.contains(id))
            continue;
        ids.insert(id);
        const auto *node = m_workspace->tree.FindNode(listing);
        const QString group = type.isEmpty() || type == "Concert"_L1 ? u'y' + NumberText(ReadNumber(listing, "Year"))
                              : type == "Outtakes"_L1 || FindBuiltInType(type.toStdString()) < 0 ? type
                                                                                                 : type + u's';
        if (!node || node->group->key != group)
            return u"%1 is not in %2"_s.arg(id, group);
    }
    return ids.size() == m_workspace->tree.ShownCount() ? QString() : u"others are shown"_s;
}

QString Use::FaultOfPanel(pugi::xml_node listing) const
{
    for (const PanelField &field : kPanelFields) {
        const QWidget *control = m_window->findChild<QWidget *>(QLatin1StringView(field.control));
        const QString value = ReadAttribute(listing, field.name);
        const auto *line = qobject_cast<const QLineEdit *>(control);
        const bool isRight = !line || line->text() == value;
        if (!isRight ||
            (field.kind == PanelField::Kind::Format &&
             m_workspace->formats.FindFormat(value) + 1 != qobject_cast<const QComboBox *>(control)->currentIndex()))
            return u"panel's "_s + QLatin1StringView(field.control);
    }
    return {};
}

/// What each filter shows is right, and a refresh shows what a program started anew shows of the same document.
QString Use::FaultOfRefresh()
{
    if (!m_window->findChild<QAction *>(u"mnuEditRefresh"_s)->isEnabled())
        return {};
    for (const char *item :
         {"mnuViewFilter1", "mnuViewFilter2", "mnuViewFilter3", "mnuViewFilter4", "mnuViewFilter0", "mnuEditRefresh"}) {
        m_window->findChild<QAction *>(QLatin1StringView(item))->trigger();
        if (const QString fault = FaultOfLoad(); !fault.isEmpty())
            return QLatin1StringView(item) + fault;
    }
    const QString refreshed = RowsOf(m_workspace->tree);
    Workspace fresh(m_anybody);
    fresh.settings.LoadINI(InFolder(ProgramFolder(), ExecutableName() + u".ini"_s));
    fresh.formats.LoadFormats();
    SaveXml(m_workspace->document.Document(), {}, m_folder.Path(u"Fresh.tmp"_s));
    fresh.document.Load(m_folder.Path(u"Fresh.tmp"_s));
    fresh.document.SetPath(m_workspace->document.Path());
    fresh.options = m_workspace->options;
    fresh.tree.LoadTypeMenu();
    fresh.tree.LoadShows();
    const QString loaded = RowsOf(fresh.tree);
    return loaded == refreshed || m_isUnlucky ? Fault() : u"refreshed:\n"_s + refreshed + u"loaded:\n"_s + loaded;
}

QString Use::Fault() const
{
    for (const FailureReport &report : m_failures.reports) {
        // A search for blanks is no expression.
        if (!m_isUnlucky && report.number != static_cast<int>(Failure::BadQuery))
            return report.procName + u": "_s + report.description;
    }
    if (QApplication::overrideCursor())
        return u"the busy pointer stays"_s;
    const BrowseTreeModel &model = m_workspace->tree.Model();
    qsizetype count = 0;
    for (const auto &group : model.Groups()) {
        std::string earlier;
        for (const auto &node : group->InOrder()) {
            ++count;
            const QString picture = m_workspace->formats.GetShowImageKey(
                ReadAttribute(node->element, "Format"), IsWrongDate(node->element));
            if (node->element.parent() != m_workspace->document.Catalog() || node->picture != picture)
                return u"a node with "_s + node->picture;
            std::string key = SortKey(ListingLabelUtf8(node->element));
            if (key < earlier)
                return u"order at "_s + ListingLabel(node->element);
            earlier = std::move(key);
        }
    }
    const QString shown = u"(Showing %1 Items)"_s.arg(count);
    if (count != model.NumberOfListings() || m_window->windowTitle().contains(u"(Showing"_s) != (count > 0) ||
        (count > 0 && !m_window->windowTitle().endsWith(shown)))
        return u"caption "_s + m_window->windowTitle();
    const auto *listing = model.ListingAt(m_window->findChild<QTreeView *>(u"trv"_s)->currentIndex());
    if (m_window->findChild<QWidget *>(u"cboType"_s)->isVisible() != bool(listing))
        return u"panel, when the current node is "_s +
               model.NodeKey(m_window->findChild<QTreeView *>(u"trv"_s)->currentIndex());
    return listing ? FaultOfPanel(listing->element) : QString();
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
