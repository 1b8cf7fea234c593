// Does one thing with files, for scripts/faults: faults SCENARIO FOLDER. Ends with 0 when it was done, with 3 when it
// was said that it was not.

#include "atomicfile.h"
#include "catalogdocument.h"
#include "clsINI.h"
#include "failures.h"
#include "flatfile.h"
#include "modConvertTo12.h"
#include "paths.h"
#include "prompts.h"
#include "recovery.h"
#include "safeoverwrite.h"

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <map>

using namespace Qt::StringLiterals;

namespace {

bool g_said = false;
QString g_first; ///< the file with what the catalog holds at first, itself unless another program changes it

void Say(const QString &what)
{
    g_said = true;
    std::fprintf(stderr, "said: %s\n", qPrintable(what));
}

/// Says Yes to everything.
class Prompts : public UserPrompts
{
public:
    Answer Message(const QString &text, const QString &title, Icon icon, Buttons buttons) override
    {
        if (icon == Icon::Critical || title == "Backup"_L1 || text.contains(u"could not be kept"_s))
            Say(title + u": "_s + text);
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Yes;
    }
    QString Input(const QString &, const QString &, const QString &) override { return {}; }
    QString OpenFile(const FileRequest &) override { return {}; }
    QString SaveFile(const FileRequest &) override { return {}; }
    void OpenWithDefaultProgram(const QString &) override {}
};

/// A catalog as the program has it open, with the content of that file.
struct Opened
{
    Opened(const QString &path, const QString &content)
    {
        if (document.Load(content) != CatalogDocument::LoadResult::Loaded)
            throw ProgramError(Failure::Read, u"not loaded"_s);
        document.SetPath(path);
        recovery.Offer();
    }
    // What is told when an edit is done.
    ~Opened() { QCoreApplication::processEvents(); }

    void Edit()
    {
        document.SetField(document.Catalog().child("Item"), "Venue", u"new"_s);
        recovery.Flush();
    }

    void Save()
    {
        if (overwrite.BeforeSave())
            overwrite.Written(document.Path(), document.Save());
    }

    Prompts prompts;
    CatalogDocument document;
    SafeOverwrite overwrite{document, prompts};
    Recovery recovery{document, prompts};
};

void Save(const QString &path)
{
    Opened opened(path, g_first);
    opened.Edit();
    opened.Save();
}

// An edit, a death without a save, and what the next run does with what that left.
void Recover(const QString &path)
{
    const QDir journals(InFolder(ProgramFolder(), u"Recovery"_s));
    if (journals.entryList({u"*.journal"_s}, QDir::Files).isEmpty())
        Opened(path, g_first).Edit();
    Opened(path, path).Save();
}

void Convert(const QString &path)
{
    Prompts prompts;
    if (!FinishInterruptedConversion(path))
        ConvertFileTo12(path, UserFilePath(path), prompts);
}

void WriteSetting(const QString &path)
{
    Prompts prompts;
    clsINI settings(prompts);
    settings.LoadINI(path);
    settings.WriteValue(u"S"_s, u"value"_s, u"new"_s);
}

// As the web page is written: in pieces.
void WritePage(const QString &path)
{
    AtomicFile file(path);
    for (int i = 0; i < 3; ++i)
        file.Write("new page\r\n", 10);
    file.Commit();
}

// Lists and error logs.
void WriteText(const QString &path)
{
    WriteFlatFile(path, u"new list\r\n"_s);
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const std::map<QString, void (*)(const QString &)> scenarios = {{u"save"_s, Save},       {u"recover"_s, Recover},
                                                                    {u"convert"_s, Convert}, {u"ini"_s, WriteSetting},
                                                                    {u"page"_s, WritePage},  {u"list"_s, WriteText}};
    const auto scenario = scenarios.find(arguments.value(1));
    if (scenario == scenarios.end() || arguments.size() != 3)
        return 2;
    SetProgramFolder(arguments[2]);
    const QString target = InFolder(arguments[2], u"target.xml"_s);
    const QString first = InFolder(arguments[2], u"first.xml"_s);
    g_first = QFileInfo::exists(first) ? first : target;
    InstallFailureReporter([](const FailureReport &report) { Say(report.description); });
    QFileInfo::exists(u"/faults begin here"_s);
    Guarded("faults", "main", [&] { scenario->second(target); });
    return g_said ? 3 : 0;
}
