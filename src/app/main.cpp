#include "QtPrompts.h"
#include "application.h"
#include "commandline.h"
#include "failures.h"
#include "frmMain.h"
#include "modGlobal.h"
#include "newformats.h"
#include "paths.h"
#include "workspace.h"

#include <QPointer>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    // QApplication would take switches of its own out of the arguments; the program has none.
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
    frmMain window(workspace, prompts, {.arguments = CommandLineArguments(argc, argv)});
    prompts.SetMainWindow(&window);
    mainWindow = &window;
    window.Form_Load();
    window.show();
    return QApplication::exec();
}
