// Editing in the real window with its view, one group expanded: all listings are in it, which is the worst case, or in
// that many groups. Each figure is from the event to the painted window.
// usage: bench_window CATALOG [Google Benchmark's options] [GROUPS]

#include "benchprogram.h"
#include "frmMain.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStringListModel>
#include <QTreeView>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

QString catalogPath;
int numberOfGroups = 1;

/// Answers Yes to everything.
class YesPrompts : public NoPrompts
{
public:
    Answer Message(const QString &, const QString &, Icon, Buttons) override { return Answer::Yes; }
};

/// A copy of the catalog in which every listing is a concert of 1994 or of the years before.
QString InGroups(const QString &path, const QString &target)
{
    pugi::xml_document document;
    document.load_file(QFile::encodeName(path).constData());
    int count = 0;
    for (pugi::xml_node listing : document.child("Catalog").children("Item")) {
        listing.attribute("Type") = "Concert";
        listing.attribute("Year") = 1994 - count++ % numberOfGroups;
    }
    document.save_file(QFile::encodeName(target).constData());
    return target;
}

class Window
{
public:
    Window() : m_form(m_workspace, m_prompts, {.arguments = {InGroups(catalogPath, m_folder.Path(u"Groups.xml"_s))}})
    {
        m_form.Form_Load();
        m_form.show();
        m_tree = m_form.findChild<QTreeView *>(u"trv"_s);
        m_tree->setExpanded(Expanded(), true);
        m_form.activateWindow();
        SelectMiddle();
    }

    /// The one window, made when it is first asked for and closed by Close().
    static Window &Instance()
    {
        if (!Held())
            Held() = std::make_unique<Window>();
        return *Held();
    }
    static void Close() { Held().reset(); }

    /// The group that is looked at.
    QModelIndex Expanded() const
    {
        return m_tree->model()->match(m_tree->model()->index(0, 0), BrowseTreeModel::KeyRole, u"y1994"_s).value(0);
    }

    void SelectMiddle()
    {
        const QModelIndex group = Expanded();
        m_tree->setCurrentIndex(m_tree->model()->index(m_tree->model()->rowCount(group) / 2, 0, group));
        m_tree->scrollTo(m_tree->currentIndex());
        Paint();
    }

    void Press(QWidget *target, int key, Qt::KeyboardModifiers modifiers, const QString &text = {})
    {
        target->setFocus();
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(target, &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
        QApplication::sendEvent(target, &release);
        Paint();
    }

    template<class Control>
    Control *Find(const QString &name) const
    {
        return m_form.findChild<Control *>(name);
    }
    QTreeView *Tree() const { return m_tree; }

    static void Paint() { QApplication::processEvents(); }

private:
    static std::unique_ptr<Window> &Held()
    {
        static std::unique_ptr<Window> window;
        return window;
    }

    BenchFolder m_folder;
    YesPrompts m_prompts;
    Workspace m_workspace{m_prompts};
    frmMain m_form;
    QTreeView *m_tree = nullptr;
};

void Keystroke(benchmark::State &state)
{
    Window &window = Window::Instance();
    window.SelectMiddle();
    auto *venue = window.Find<QLineEdit>(u"txtVenue"_s);
    venue->setCursorPosition(0);
    bool typed = false;
    for ([[maybe_unused]] auto run : state) {
        // A letter and its removal in turn, so that the label moves to and fro.
        window.Press(venue, typed ? Qt::Key_Backspace : Qt::Key_M, Qt::NoModifier, typed ? u"\b"_s : u"m"_s);
        typed = !typed;
    }
}

void Step(benchmark::State &state)
{
    Window &window = Window::Instance();
    window.SelectMiddle();
    bool down = true;
    for ([[maybe_unused]] auto run : state) {
        window.Press(window.Tree(), down ? Qt::Key_PageDown : Qt::Key_PageUp, Qt::ControlModifier);
        down = !down;
    }
}

/// A field is left after an edit, which is flushed to the disk then.
void LeaveField(benchmark::State &state)
{
    Window &window = Window::Instance();
    window.SelectMiddle();
    auto *source = window.Find<QLineEdit>(u"txtSource"_s);
    for ([[maybe_unused]] auto run : state) {
        state.PauseTiming();
        window.Press(source, Qt::Key_M, Qt::NoModifier, u"m"_s);
        state.ResumeTiming();
        window.Tree()->setFocus();
        Window::Paint();
    }
}

void Expand(benchmark::State &state)
{
    Window &window = Window::Instance();
    for ([[maybe_unused]] auto run : state) {
        state.PauseTiming();
        window.Tree()->collapse(window.Expanded());
        Window::Paint();
        state.ResumeTiming();
        window.Tree()->expand(window.Expanded());
        Window::Paint();
    }
}

void Refresh(benchmark::State &state)
{
    Window &window = Window::Instance();
    auto *refresh = window.Find<QAction>(u"mnuEditRefresh"_s);
    for ([[maybe_unused]] auto run : state) {
        refresh->trigger();
        Window::Paint();
    }
    window.Tree()->expand(window.Expanded());
}

void AddAndDelete(benchmark::State &state, const QString &command)
{
    Window &window = Window::Instance();
    auto *add = window.Find<QAction>(command);
    auto *remove = window.Find<QAction>(u"mnuEditDeleteListing"_s);
    for ([[maybe_unused]] auto run : state) {
        state.PauseTiming();
        window.SelectMiddle();
        state.ResumeTiming();
        add->trigger();
        Window::Paint();
        state.PauseTiming();
        remove->trigger();
        Window::Paint();
        state.ResumeTiming();
    }
}

void Add(benchmark::State &state)
{
    AddAndDelete(state, u"mnuFileNewSource"_s);
}

void Copy(benchmark::State &state)
{
    AddAndDelete(state, u"mnuEditCopyListing"_s);
}

void Delete(benchmark::State &state)
{
    Window &window = Window::Instance();
    auto *copy = window.Find<QAction>(u"mnuEditCopyListing"_s);
    auto *remove = window.Find<QAction>(u"mnuEditDeleteListing"_s);
    for ([[maybe_unused]] auto run : state) {
        state.PauseTiming();
        window.SelectMiddle();
        copy->trigger();
        Window::Paint();
        state.ResumeTiming();
        remove->trigger();
        Window::Paint();
    }
}

/// To another year and back.
void Move(benchmark::State &state)
{
    Window &window = Window::Instance();
    window.SelectMiddle();
    auto *year = window.Find<QComboBox>(u"cboYear"_s);
    bool away = false;
    for ([[maybe_unused]] auto run : state) {
        away = !away;
        year->setEditText(away ? u"1993"_s : u"1994"_s);
        Window::Paint();
    }
    year->setEditText(u"1994"_s);
}

/// A bare view with as many rows, doing what an add and a delete come down to.
void BareInsertAndRemove(benchmark::State &state)
{
    QStringListModel model;
    const QModelIndex group = Window::Instance().Expanded();
    model.setStringList(QStringList(group.model()->rowCount(group), u"a listing"_s));
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setModel(&model);
    view.resize(500, 600);
    view.show();
    const int middle = model.rowCount() / 2;
    view.setCurrentIndex(model.index(middle));
    Window::Paint();
    for ([[maybe_unused]] auto run : state) {
        model.insertRow(middle);
        Window::Paint();
        state.PauseTiming();
        model.removeRow(middle);
        Window::Paint();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(Keystroke)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Step)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LeaveField)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);
BENCHMARK(Expand)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);
BENCHMARK(Refresh)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(Add)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);
BENCHMARK(Copy)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);
BENCHMARK(Delete)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);
BENCHMARK(Move)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);
BENCHMARK(BareInsertAndRemove)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(50);

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc < 2 || !QFileInfo::exists(QFile::decodeName(argv[1]))) {
        qCritical("usage: bench_window CATALOG");
        return 2;
    }
    catalogPath = QFile::decodeName(argv[1]);
    if (argc > 2)
        numberOfGroups = std::max(1, std::atoi(argv[2]));
    benchmark::RunSpecifiedBenchmarks();
    Window::Close();
    return 0;
}
