#include "QtPrompts.h"
#include "application.h"
#include "failures.h"
#include "frmMain.h"
#include "modGlobal.h"
#include "newformats.h"
#include "paths.h"
#include "workspace.h"

#include <QFile>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

/// The command line as text, without the program's name. The program has no switches: QApplication would take its own
/// out of the arguments, so it is shown none of them.
QStringList Arguments(int argc, char **argv)
{
#ifdef Q_OS_WIN
    Q_UNUSED(argc)
    Q_UNUSED(argv)
    return QCoreApplication::arguments().sliced(1);
#else
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
#endif
}

} // namespace

int main(int argc, char **argv)
{
    int onlyTheName = 1;
    const Application application(onlyTheName, argv);
    QCoreApplication::setApplicationName(u"discbook"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(DISCBOOK_VERSION));

    QtPrompts prompts;
    QPointer<QWidget> mainWindow;
    InstallFailureReporter([&](const FailureReport &report) { ShowFailureReport(report, prompts, mainWindow); });
    Guarded("modGlobal", "Main", [&] {
        PrepareProgramFolder();
        BringNewFormats(SharedFolder(), ProgramFolder(), prompts);
    });

    Workspace workspace(prompts);
    frmMain window(workspace, prompts, {.arguments = Arguments(argc, argv)});
    prompts.SetMainWindow(&window);
    mainWindow = &window;
    window.Form_Load();
    window.show();
    return QApplication::exec();
}
