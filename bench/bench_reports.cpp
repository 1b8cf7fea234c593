// Search, web page and lists, each beside the bare work that it cannot do without.
// usage: bench_reports CATALOG [Google Benchmark's options]

#include "benchprogram.h"
#include "findlistings.h"
#include "htmlpage.h"
#include "listkinds.h"
#include "searchcriteria.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<OpenProgram> program;

/// A place in one year: few listings have both.
SearchCriteria Rare()
{
    SearchCriteria criteria;
    criteria.venue = u"Opera House, Oslo"_s;
    criteria.year = 1977;
    criteria.joiner = u"and"_s;
    return criteria;
}

SearchCriteria AllFields()
{
    SearchCriteria criteria = Rare();
    criteria.type = criteria.concert = u"concert"_s;
    criteria.month = 7;
    criteria.day = 7;
    criteria.length = u"1"_s;
    criteria.source = criteria.grade = criteria.format = criteria.seeder = criteria.storedIn = u"a"_s;
    criteria.trackList = criteria.notes = criteria.comments = u"silver"_s;
    return criteria;
}

void BareEvaluation(benchmark::State &state, const SearchCriteria &criteria)
{
    const QByteArray query = BuildSearchQuery(criteria).toUtf8();
    for ([[maybe_unused]] auto run : state)
        benchmark::DoNotOptimize(program->document.Document().select_nodes(query.constData()).size());
}

void Search(benchmark::State &state, const SearchCriteria &criteria)
{
    size_t found = 0;
    for ([[maybe_unused]] auto run : state)
        found = FindListings(program->document, BuildSearchQuery(criteria)).size();
    state.counters["found"] = static_cast<double>(found);
}

ReportSource Source()
{
    return {program->tree.Model(), program->document, program->formats};
}

void Page(benchmark::State &state)
{
    const QString path = program->folder.Path(u"page.html"_s);
    for ([[maybe_unused]] auto run : state)
        WriteHtmlPage(path, u"Page"_s, {.format = true, .setList = true, .comments = true, .notes = true}, Source());
    state.counters["MB"] = static_cast<double>(QFileInfo(path).size()) / 1e6;
}

/// The same bytes with plain buffered writing, flushed to the system only.
void BarePage(benchmark::State &state)
{
    WriteHtmlPage(
        program->folder.Path(u"page.html"_s), u"Page"_s,
        {.format = true, .setList = true, .comments = true, .notes = true}, Source());
    const QByteArray bytes = ReadWholeFile(program->folder.Path(u"page.html"_s));
    for ([[maybe_unused]] auto run : state) {
        QFile file(program->folder.Path(u"bare.html"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            state.SkipWithError("cannot be written");
    }
}

void List(benchmark::State &state)
{
    qsizetype lines = 0;
    for ([[maybe_unused]] auto run : state)
        lines = GatherLabels(ListKind::NeedLossless, Source()).labels.size();
    state.counters["lines"] = static_cast<double>(lines);
}

} // namespace

BENCHMARK_CAPTURE(BareEvaluation, rare, Rare())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, rare, Rare())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BareEvaluation, all_fields, AllFields())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Search, all_fields, AllFields())->Unit(benchmark::kMillisecond);
BENCHMARK(BarePage)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Page)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(List)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    program = std::make_unique<OpenProgram>();
    if (argc < 2 || !program->Open(QFile::decodeName(argv[1]))) {
        qCritical("usage: bench_reports CATALOG");
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    program.reset();
    return 0;
}
