// Reading answering machine index files and turning recordings into WAV.
#include "../tests/voicemail/MetaFileBuilder.h"
#include "../tests/voicemail/SpeexTone.h"

#include "base/NotificationCenter.h"
#include "voicemail/TNFTPDatasource.h"
#include "voicemail/VBGetVoicemail.h"

#include <benchmark/benchmark.h>

static void BM_ReadMetaData(benchmark::State& state)
{
    QList<MetaRecord> records;
    for (int i = 0; i < state.range(0); ++i) {
        MetaRecord r;
        r.number = QStringLiteral("030%1").arg(i);
        r.recFile = QStringLiteral("rec.0.%1").arg(i % 1000, 3, 10, QLatin1Char('0'));
        r.duration = quint32(i);
        records.append(r);
    }
    const QByteArray file = metaFile(records, true);
    NotificationCenter center;
    TNFTPDatasource ds(center, nullptr, nullptr);
    for (auto _ : state)
        benchmark::DoNotOptimize(ds.readMetaData(file, QStringLiteral("USB/FRITZ/voicebox/meta0")));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ReadMetaData)->Arg(10)->Arg(100);

static void BM_RecordingToWav(benchmark::State& state)
{
    const int seconds = int(state.range(0));
    const QByteArray recording = speexToneRecording(1000, seconds * 50, 0);
    for (auto _ : state) {
        QByteArray wav;
        QString error;
        benchmark::DoNotOptimize(VBGetVoicemail::convertToWav(recording, &wav, &error));
    }
    state.counters["audio_s_per_s"] =
        benchmark::Counter(double(seconds) * double(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_RecordingToWav)->Arg(60)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
