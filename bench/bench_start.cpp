// From the start of the process to the painted window, beside a bare window that does the same: a tree, and the catalog
// parsed when there is one. Each run is a process of its own: this program, started again.
// usage: bench_start CATALOG [Google Benchmark's options]

#include "application.h"
#include "benchprogram.h"
#include "frmMain.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QProcess>
#include <QStandardItemModel>
#include <QTimer>
#include <QTreeView>

#include <cstdlib>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

QString catalogPath;

/// Ends the process as soon as a window has been painted.
class UntilPainted : public QObject
{
public:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<QTreeView *>(object->parent()))
            QTimer::singleShot(0, [] { std::_Exit(0); });
        return false;
    }
};

int RunProgram(const QStringList &arguments)
{
    QCoreApplication::setApplicationName(u"discbook"_s);
    const BenchFolder folder;
    NoPrompts prompts;
    Workspace workspace(prompts);
    frmMain window(workspace, prompts, {.arguments = arguments});
    window.Form_Load();
    window.show();
    return QApplication::exec();
}

int RunBare(const QStringList &arguments)
{
    pugi::xml_document document;
    if (!arguments.isEmpty())
        document.load_file(QFile::encodeName(arguments.first()).constData());
    QStandardItemModel model(60, 1);
    auto *tree = new QTreeView;
    tree->setModel(&model);
    QMainWindow window;
    window.setCentralWidget(tree);
    window.resize(900, 514);
    window.show();
    return QApplication::exec();
}

void Start(benchmark::State &state, const QString &what, bool withCatalog)
{
    QStringList arguments{u"--child"_s, what};
    if (withCatalog)
        arguments.append(catalogPath);
    for ([[maybe_unused]] auto run : state) {
        if (QProcess::execute(QCoreApplication::applicationFilePath(), arguments) != 0)
            state.SkipWithError("does not start");
    }
}

} // namespace

BENCHMARK_CAPTURE(Start, bare_window, u"bare"_s, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Start, program, u"program"_s, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Start, bare_window_and_parse, u"bare"_s, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Start, program_with_catalog, u"program"_s, true)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    if (argc > 2 && argv[1] == "--child"sv) {
        const QStringList arguments = argc > 3 ? QStringList(QFile::decodeName(argv[3])) : QStringList();
        int onlyTheName = 1;
        Application application(onlyTheName, argv);
        UntilPainted untilPainted;
        application.installEventFilter(&untilPainted);
        return argv[2] == "bare"sv ? RunBare(arguments) : RunProgram(arguments);
    }
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc < 2 || !QFileInfo::exists(QFile::decodeName(argv[1]))) {
        qCritical("usage: bench_start CATALOG");
        return 2;
    }
    catalogPath = QFile::decodeName(argv[1]);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
