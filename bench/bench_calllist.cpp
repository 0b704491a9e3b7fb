// The call database at the size of a long-used installation: 1,000,000 calls over 5 profiles with
// 20,000 cached callers. The file is generated once per process (batched inserts, reported by
// BM_GenerateDatabase) and shared by the query benchmarks.
#include "base/NotificationCenter.h"
#include "base/SettingsStore.h"
#include "calllist/TNCallinglist.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace {

constexpr int kProfiles = 5;
constexpr int kCalls = 1'000'000;
constexpr int kCallers = 20'000;
constexpr int kNumbers = 40'000; // half of the numbers called have a cached name

struct Generated
{
    QTemporaryDir dir;
    SettingsStore settings{dir.filePath(QStringLiteral("settings.json"))};
    NotificationCenter center;
    std::unique_ptr<TNCallinglist> calls;
    double seconds = 0;
};

QString numberFor(int i)
{
    return QStringLiteral("0%1").arg(300000000 + i * 7919 % 99999999);
}

std::unique_ptr<Generated> generate()
{
    auto g = std::make_unique<Generated>();
    g->calls = std::make_unique<TNCallinglist>(g->dir.filePath(QStringLiteral("Tondrel.db")), g->settings,
                                               g->center);
    std::mt19937 rng(4711);
    static const QString surnames[] = {QStringLiteral("Müller"),  QStringLiteral("Schmidt"),
                                       QStringLiteral("O'Brien"), QStringLiteral("Meyer"),
                                       QStringLiteral("Schulz"),  QStringLiteral("Weber"),
                                       QStringLiteral("Fischer"), QStringLiteral("Becker")};
    static const QString extensions[] = {QStringLiteral("Küche"), QStringLiteral("Büro"),
                                         QStringLiteral("Wohnzimmer"), QStringLiteral("Anrufbeantworter")};
    static const QString lines[] = {QStringLiteral("5550001"), QStringLiteral("5550002"),
                                    QStringLiteral("5550003")};
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const qint64 span = qint64(10) * 365 * 86400; // ten years of calls

    QElapsedTimer timer;
    timer.start();
    {
        CallBatch batch = g->calls->beginBatch();
        for (int i = 0; i < kCallers; ++i)
            batch.insertCaller(QStringLiteral("%1 %2").arg(surnames[i % 8]).arg(i), numberFor(i),
                               i % 3 ? QString() : QStringLiteral("uid-%1").arg(i), QStringLiteral("mobile"));
        std::uniform_int_distribution<int> number(0, kNumbers - 1), state(1, 3), minutes(0, 59), hours(0, 20);
        for (int i = 0; i < kCalls; ++i) {
            const int profile = 1 + i % kProfiles;
            // Whole minutes, spread evenly over the span, newest last.
            const qint64 when = (now - span + span * i / kCalls) / 60 * 60;
            const int h = hours(rng) == 0 ? 1 : 0;
            batch.insertCall({profile, state(rng), when, numberFor(number(rng)), extensions[i % 4],
                              lines[i % 3],
                              QStringLiteral("%1:%2").arg(h).arg(minutes(rng), 2, 10, QLatin1Char('0'))});
        }
        batch.commit();
    }
    g->seconds = timer.nsecsElapsed() / 1e9;
    for (int p = 1; p <= kProfiles; ++p)
        g->calls->createDefaultSmartList(p);
    return g;
}

Generated& database()
{
    static std::unique_ptr<Generated> g = generate();
    return *g;
}

void BM_GenerateDatabase(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(database().calls.get());
    state.counters["insert_seconds"] = database().seconds;
    state.counters["calls_per_second"] = kCalls / database().seconds;
}
BENCHMARK(BM_GenerateDatabase)->Iterations(1)->Unit(benchmark::kSecond);

void BM_FirstPage(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    for (auto _ : state) {
        const auto rows =
            calls.getCallerlistForProfile(1, 0, {}, {}, QStringLiteral("date"), QStringLiteral("DESC"), 500);
        if (rows.size() != 500)
            state.SkipWithError("first page is not 500 rows");
    }
}
BENCHMARK(BM_FirstPage)->Unit(benchmark::kMillisecond);

void BM_FirstPageWithDayHeaders(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    for (auto _ : state)
        benchmark::DoNotOptimize(calls.callListEntriesForProfile(1, 0, {}, {}, QStringLiteral("date"),
                                                                 QStringLiteral("DESC"), 500));
}
BENCHMARK(BM_FirstPageWithDayHeaders)->Unit(benchmark::kMillisecond);

void BM_SearchAllColumns(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    qsizetype found = 0;
    for (auto _ : state) {
        found = calls.getCallerlistForProfile(1, 0, QStringLiteral("O'Brien 1"), {}, {}, {}, 0).size();
        benchmark::DoNotOptimize(found);
    }
    state.counters["rows"] = double(found);
}
BENCHMARK(BM_SearchAllColumns)->Unit(benchmark::kMillisecond);

// Digits may also match the shown date, which is then formatted for every call.
void BM_SearchAllColumnsDigits(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    qsizetype found = 0;
    for (auto _ : state) {
        found = calls.getCallerlistForProfile(1, 0, QStringLiteral("4711"), {}, {}, {}, 0).size();
        benchmark::DoNotOptimize(found);
    }
    state.counters["rows"] = double(found);
}
BENCHMARK(BM_SearchAllColumnsDigits)->Unit(benchmark::kMillisecond);

void BM_CountersOfOneProfile(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    for (auto _ : state) {
        calls.unsetlastSavedDateForNewCalls();
        calls.refreshCallsCounterForProfile(1);
        benchmark::DoNotOptimize(calls.callsCounter());
    }
}
BENCHMARK(BM_CountersOfOneProfile)->Unit(benchmark::kMillisecond);

void BM_StatisticsOfOneYearByMonth(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    const int year = QDate::currentDate().year() - 1;
    for (auto _ : state) {
        qint64 total = 0;
        for (int month = 1; month <= 12; ++month)
            total += calls.getCallCounterStatisticForProfile(1, month, year, 0);
        benchmark::DoNotOptimize(total);
    }
}
BENCHMARK(BM_StatisticsOfOneYearByMonth)->Unit(benchmark::kMillisecond);

// The statistics view also shows the talk time: counts and times, 24 queries.
void BM_StatisticsOfOneYearByMonthWithTime(benchmark::State& state)
{
    TNCallinglist& calls = *database().calls;
    const int year = QDate::currentDate().year() - 1;
    for (auto _ : state) {
        qint64 total = 0;
        for (int month = 1; month <= 12; ++month) {
            total += calls.getCallCounterStatisticForProfile(1, month, year, 0);
            total += calls.getTimeCounterStatisticForProfile(1, month, year, 0).totalMinutes;
        }
        benchmark::DoNotOptimize(total);
    }
}
BENCHMARK(BM_StatisticsOfOneYearByMonthWithTime)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
