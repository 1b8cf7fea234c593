// Does one thing with files, for scripts/faults: faults SCENARIO FOLDER. Ends with 0 when it was done, with 3 when it
// was said that it was not.

#include "atomicfile.h"
#include "catalogcopies.h"
#include "catalogdocument.h"
#include "clsINI.h"
#include "failures.h"
#include "filecopy.h"
#include "flatfile.h"
#include "journal.h"
#include "modConvertTo12.h"
#include "paths.h"
#include "prompts.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <map>

using namespace Qt::StringLiterals;

namespace {

bool g_said = false;

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
        if (icon == Icon::Critical)
            Say(title + u": "_s + text);
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Yes;
    }
    QString Input(const QString &, const QString &, const QString &) override { return {}; }
    QString OpenFile(const FileRequest &) override { return {}; }
    QString SaveFile(const FileRequest &) override { return {}; }
    void OpenWithDefaultProgram(const QString &) override {}
};

void Save(const QString &path)
{
    CatalogDocument document;
    if (document.Load(path) != CatalogDocument::LoadResult::Loaded)
        return Say(u"not loaded"_s);
    document.SetPath(path);
    for (const pugi::xml_node item : document.Catalog().children("Item"))
        document.SetField(item, "Venue", u"new"_s);
    try {
        BackUpCatalog(path, document.ContentDigest());
    } catch (const ProgramError &error) {
        Say(error.description());
    }
    if (FileDigest(path) != document.ContentDigest())
        return Say(u"changed"_s);
    document.Save();
}

/// A catalog whose edits are kept.
struct Edited
{
    explicit Edited(const QString &path)
    {
        QObject::connect(&journal, &Journal::failed, Say);
        if (document.Load(path) != CatalogDocument::LoadResult::Loaded)
            throw ProgramError(Failure::Read, u"not loaded"_s);
        document.SetPath(path);
        journal.Begin(path);
    }

    CatalogDocument document;
    Journal journal{document};
};

// An edit, a death without a save, and what the next run does with what that left.
void Recover(const QString &path)
{
    if (FindJournals(path).empty()) {
        Edited edited(path);
        edited.document.SetField(edited.document.Listing(u"1"_s), "Venue", u"new"_s);
        edited.journal.Flush();
    }
    Edited edited(path);
    for (FoundJournal &found : FindJournals(path)) {
        const bool fits = found.contents.digest == edited.document.ContentDigest();
        if (fits)
            edited.document.Restore(found.contents.edits);
        if (!fits || edited.journal.GoOnWith(std::move(found.contents.edits)))
            found.file->Remove();
    }
    edited.document.Save();
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
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const std::map<QString, void (*)(const QString &)> scenarios = {{u"save"_s, Save},       {u"recover"_s, Recover},
                                                                    {u"convert"_s, Convert}, {u"ini"_s, WriteSetting},
                                                                    {u"page"_s, WritePage},  {u"list"_s, WriteText}};
    const auto scenario = scenarios.find(arguments.value(1));
    if (scenario == scenarios.end() || arguments.size() != 3)
        return 2;
    SetProgramFolder(arguments[2]);
    InstallFailureReporter([](const FailureReport &report) { Say(report.description); });
    QFileInfo::exists(u"/faults begin here"_s);
    Guarded("faults", "main", [&] { scenario->second(InFolder(arguments[2], u"target.xml"_s)); });
    return g_said ? 3 : 0;
}
