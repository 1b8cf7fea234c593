#include "modHelp.h"

#include "failures.h"
#include "paths.h"
#include "prompts.h"

#ifdef Q_OS_WIN
#include "htmlhelp.h"
#elif defined(DISCBOOK_HELP_WINDOW)
#include "frmHelp.h"

#include <QApplication>
#endif

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_WIN

void Show(const QString &path, int context, clsINI &, UserPrompts &)
{
    ShowHtmlHelp(path, context);
}

#elif defined(DISCBOOK_HELP_WINDOW)

frmHelp *OpenWindow(const QString &path)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        auto *form = qobject_cast<frmHelp *>(window);
        if (form && form->isVisible() && form->HelpFile() == path)
            return form;
    }
    return nullptr;
}

/// The window stands for itself beside the main window, but does not keep the program alive.
frmHelp *MakeWindow(const QString &path, clsINI &settings, UserPrompts &prompts)
{
    auto form = std::make_unique<frmHelp>(path, settings, prompts);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->setAttribute(Qt::WA_QuitOnClose, false);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, form.get(), &QWidget::close);
    return form.release();
}

void Show(const QString &path, int context, clsINI &settings, UserPrompts &prompts)
{
    frmHelp *form = OpenWindow(path);
    if (!form)
        form = MakeWindow(path, settings, prompts);
    form->ShowTopic(context);
    form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
    form->show();
    form->raise();
    form->activateWindow();
}

#else

void Show(const QString &path, int, clsINI &, UserPrompts &prompts)
{
    prompts.OpenWithDefaultProgram(path);
}

#endif

} // namespace

QString HelpFilePath()
{
    return InFolder(SharedFolder(), ExecutableName() + u".chm"_s);
}

void ShowHelp(int context, clsINI &settings, UserPrompts &prompts, const QString &path)
{
    Guarded("modHelp", "ShowHelp", [&] { Show(path.isEmpty() ? HelpFilePath() : path, context, settings, prompts); });
}
