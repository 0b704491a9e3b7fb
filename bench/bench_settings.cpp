// Loading and saving the settings with many locations: the tray loads them at every start and
// after every settings change.
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void populate(const QString& path, int count)
{
    SettingsStore store(path);
    store.load();
    MemorySecretStore secrets;
    TNPreferencesManager manager(store, secrets);
    manager.start();
    for (int i = 0; i < count; ++i)
        manager.addNewLocation();
}

void BM_LoadLocations(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("settings.json"));
    populate(path, int(state.range(0)));
    MemorySecretStore secrets;
    for (auto _ : state) {
        SettingsStore store(path);
        store.load();
        TNPreferencesManager manager(store, secrets);
        manager.start();
        benchmark::DoNotOptimize(manager.currentPreferences());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_LoadLocations)->Arg(1)->Arg(10)->Arg(100);

void BM_SaveLocation(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("settings.json"));
    populate(path, int(state.range(0)));
    SettingsStore store(path);
    store.load();
    MemorySecretStore secrets;
    TNPreferencesManager manager(store, secrets);
    manager.start();
    auto prefs = manager.currentPreferences();
    for (auto _ : state)
        benchmark::DoNotOptimize(prefs->save());
}
BENCHMARK(BM_SaveLocation)->Arg(1)->Arg(100);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
