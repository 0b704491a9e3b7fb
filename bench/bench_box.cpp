// Costs on the way to the router: the two login hashes and building a long query.
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxPhoneHelper.h"
#include "box/FBLoginHash.h"

#include <benchmark/benchmark.h>

static void BM_Md5Response(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(
            FBLoginHash::responseForChallenge(QStringLiteral("1234567z"), QStringLiteral("äbc")));
}
BENCHMARK(BM_Md5Response);

// A current router's challenge: 10000 and 2000 rounds.
static void BM_Pbkdf2Response(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(FBLoginHash::responseForChallenge(
            QStringLiteral("2$10000$5A1711$2000$5A1722"), QStringLiteral("1example!")));
}
BENCHMARK(BM_Pbkdf2Response)->Unit(benchmark::kMillisecond);

static void BM_LineQueryChunks(benchmark::State& state)
{
    const QStringList names = FBBoxPhoneHelper::lineVariables();
    for (auto _ : state)
        benchmark::DoNotOptimize(FBBoxConnectionHelper::queryChunks(names, false));
}
BENCHMARK(BM_LineQueryChunks);

BENCHMARK_MAIN();
