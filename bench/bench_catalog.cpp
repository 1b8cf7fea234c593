// Open, save, refresh and filter, each beside the bare library doing the same work on the same file.
// usage: bench_catalog CATALOG [Google Benchmark's options]

#include "benchprogram.h"
#include "catalogcopies.h"
#include "filecopy.h"
#include "journal.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

namespace {

std::string catalogPath;

QString CatalogPath()
{
    return QString::fromStdString(catalogPath);
}

void BareParse(benchmark::State &state)
{
    for ([[maybe_unused]] auto run : state) {
        pugi::xml_document document;
        if (!document.load_file(catalogPath.c_str()))
            state.SkipWithError("does not load");
        benchmark::DoNotOptimize(document.first_child());
    }
}

void Load(benchmark::State &state)
{
    for ([[maybe_unused]] auto run : state) {
        CatalogDocument document;
        if (document.Load(CatalogPath()) != CatalogDocument::LoadResult::Loaded)
            state.SkipWithError("does not load");
    }
}

/// From the file to the filled tree model.
void Open(benchmark::State &state)
{
    for ([[maybe_unused]] auto run : state) {
        OpenProgram program;
        if (!program.Open(CatalogPath()))
            state.SkipWithError("does not open");
    }
}

void Refresh(benchmark::State &state)
{
    OpenProgram program;
    program.Open(CatalogPath());
    for ([[maybe_unused]] auto run : state)
        program.tree.LoadShows();
    state.counters["listings"] = static_cast<double>(program.tree.ShownCount());
}

void Filter(benchmark::State &state)
{
    OpenProgram program;
    program.Open(CatalogPath());
    program.options.filter = ViewFilter::NeedLossless;
    for ([[maybe_unused]] auto run : state)
        program.tree.LoadShows();
    state.counters["listings"] = static_cast<double>(program.tree.ShownCount());
}

void BareWrite(benchmark::State &state)
{
    const BenchFolder folder;
    pugi::xml_document document;
    document.load_file(catalogPath.c_str());
    const QByteArray target = QFile::encodeName(folder.Path(QStringLiteral("bare.xml")));
    for ([[maybe_unused]] auto run : state)
        document.save_file(target.constData(), "\t", pugi::format_default | pugi::format_no_declaration);
}

void Save(benchmark::State &state)
{
    OpenProgram program;
    program.Open(CatalogPath());
    program.document.SetPath(program.folder.Path(QStringLiteral("saved.xml")));
    for ([[maybe_unused]] auto run : state)
        program.document.Save();
}

/// As the program saves: after it has seen that no other program changed the file.
void SaveWithCheck(benchmark::State &state)
{
    OpenProgram program;
    program.Open(CatalogPath());
    program.document.SetPath(program.folder.Path(QStringLiteral("saved.xml")));
    program.document.Save();
    for ([[maybe_unused]] auto run : state) {
        if (FileDigest(program.document.Path()) != program.document.ContentDigest())
            state.SkipWithError("was changed");
        program.document.Save();
    }
}

/// The same when there are edits, which are in a journal.
void SaveWithJournal(benchmark::State &state)
{
    OpenProgram program;
    program.Open(CatalogPath());
    program.document.SetPath(program.folder.Path(QStringLiteral("saved.xml")));
    program.document.Save();
    Journal journal(program.document);
    journal.Begin(program.document.Path());
    for ([[maybe_unused]] auto run : state) {
        state.PauseTiming();
        program.document.SetField(program.document.Catalog().child("Item"), "Venue", QStringLiteral("a"));
        journal.Flush();
        state.ResumeTiming();
        if (FileDigest(program.document.Path()) != program.document.ContentDigest())
            state.SkipWithError("was changed");
        program.document.Save();
    }
}

/// What comes before the first save of a run.
void BackUp(benchmark::State &state)
{
    const BenchFolder folder;
    for ([[maybe_unused]] auto run : state)
        BackUpCatalog(CatalogPath());
}

} // namespace

BENCHMARK(BareParse)->Unit(benchmark::kMillisecond);
BENCHMARK(Load)->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(Refresh)->Unit(benchmark::kMillisecond);
BENCHMARK(Filter)->Unit(benchmark::kMillisecond);
BENCHMARK(BareWrite)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Save)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SaveWithCheck)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SaveWithJournal)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BackUp)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc < 2 || !QFileInfo::exists(QFile::decodeName(argv[1]))) {
        qCritical("usage: bench_catalog CATALOG");
        return 2;
    }
    catalogPath = argv[1];
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
