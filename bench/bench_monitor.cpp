// The call monitor: how many event lines the listener digests per second, and how long a line
// takes from arriving on the socket to the user notification being handed to the presenter.
#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "monitor/NotificationPresenter.h"
#include "monitor/StreamListener.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

class TimingPresenter final : public NotificationPresenter
{
public:
    bool isAvailable() const override { return true; }
    QVariant deliver(const CallNotification& note, const QVariant&) override
    {
        deliveredAt = std::chrono::steady_clock::now();
        ++delivered;
        return note.uid;
    }
    void withdraw(const QVariant&) override {}
    std::chrono::steady_clock::time_point deliveredAt;
    int delivered = 0;
};

struct Setup
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(QStringLiteral("settings.json"))};
    MemorySecretStore secrets;
    std::shared_ptr<TNPreferences> prefs = std::make_shared<TNPreferences>(store, secrets);
    NotificationCenter center;
    TimingPresenter presenter;
    std::unique_ptr<StreamListener> listener;
    Setup()
    {
        prefs->useNotifications = true;
        listener = std::make_unique<StreamListener>(StreamListenerServices{
            .preferences = [p = prefs] { return p; },
            .settings = store,
            .center = center,
            .clock = Clock::system(),
            .presenter = &presenter,
            .memoDetails = {},
            .openCallmonitorWindow = {},
            .openURL = {},
            .setStatusItemState = {},
        });
    }
};

// A busy evening: calls ringing, answered and ended, as the router writes them.
QByteArray traffic(int calls)
{
    QByteArray out;
    for (int i = 0; i < calls; ++i) {
        const QByteArray id = QByteArray::number(i % 8);
        const QByteArray caller = "030" + QByteArray::number(1000000 + i);
        out += "21.11.26 19:00:00;RING;" + id + ";" + caller + ";5551234;SIP0;\n";
        out += "21.11.26 19:00:04;CONNECT;" + id + ";11;" + caller + ";\n";
        out += "21.11.26 19:02:10;DISCONNECT;" + id + ";126;\n";
    }
    return out;
}

// range(0): bytes per read (0: everything in one read).
void BM_LinesPerSecond(benchmark::State& state)
{
    Setup setup;
    const QByteArray stream = traffic(300);
    const int chunk = int(state.range(0));
    for (auto _ : state) {
        if (chunk == 0) {
            setup.listener->processBytes(stream);
        } else {
            for (qsizetype i = 0; i < stream.size(); i += chunk)
                setup.listener->processBytes(stream.mid(i, chunk));
        }
        state.PauseTiming();
        setup.listener->resetMonitorCalls();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * 900);
}
BENCHMARK(BM_LinesPerSecond)->Arg(0)->Arg(64)->Arg(1)->Unit(benchmark::kMillisecond);

// A RING written to a real loopback socket until the presenter has the notification.
void BM_LineToNotification(benchmark::State& state)
{
    Setup setup;
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    setup.listener->connectToHost(QStringLiteral("127.0.0.1"), server.serverPort());
    QEventLoop loop;
    QTcpSocket* router = nullptr;
    while (!router || !setup.listener->isConnected()) {
        loop.processEvents(QEventLoop::AllEvents, 10);
        if (!router && server.hasPendingConnections())
            router = server.nextPendingConnection();
    }
    int n = 0;
    for (auto _ : state) {
        const QByteArray line =
            "21.11.26 19:00:00;RING;" + QByteArray::number(n % 8) + ";0301234567;5551234;SIP0;\n";
        const int before = setup.presenter.delivered;
        const auto start = std::chrono::steady_clock::now();
        router->write(line);
        router->flush();
        while (setup.presenter.delivered == before)
            loop.processEvents(QEventLoop::WaitForMoreEvents);
        state.SetIterationTime(std::chrono::duration<double>(setup.presenter.deliveredAt - start).count());
        if (++n % 1000 == 0)
            setup.listener->resetMonitorCalls();
    }
}
BENCHMARK(BM_LineToNotification)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
