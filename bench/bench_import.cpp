// The journal import: a 100,000-row journal file into an empty profile (target under 2 s), and a
// second download of a 500-row journal that finds every call stored (target under 50 ms of work
// beyond the transfer). An address book of 1,000 people is asked for unknown numbers.
#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/JournalImporter.h"
#include "calllist/TNCallinglist.h"
#include "contacts/AddressBook.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace {

class Book final : public AddressBook
{
public:
    Book()
    {
        auto snap = std::make_shared<AddressBookSnapshot>();
        for (int i = 0; i < 1000; ++i)
            snap->people.append({QStringLiteral("uid-%1").arg(i),
                                 QStringLiteral("Vorname%1").arg(i),
                                 QStringLiteral("Müller"),
                                 QString(),
                                 {{QStringLiteral("home"), QStringLiteral("030 %1").arg(700000 + i)}},
                                 {}});
        m_snap = snap;
    }
    bool isAvailable() const override { return true; }
    std::shared_ptr<const AddressBookSnapshot> snapshot() const override { return m_snap; }
    bool addPerson(ABPerson&, QString*) override { return false; }

private:
    std::shared_ptr<const AddressBookSnapshot> m_snap;
};

// Newest first, one call every seven minutes, 20,000 numbers of which some are in the book.
QString journalText(int rows)
{
    static const char* const extensions[] = {"Küche", "Büro", "DECT extern", ""};
    std::mt19937 rng(4711);
    std::uniform_int_distribution<int> number(0, 19999), type(1, 4);
    QString text = QStringLiteral("sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n");
    const QDateTime newest(QDate(2026, 3, 14), QTime(18, 0));
    for (int i = 0; i < rows; ++i) {
        const int n = number(rng);
        const QString digits =
            n < 1000 ? QStringLiteral("030%1").arg(700000 + n) : QStringLiteral("0170%1").arg(n * 7919);
        text += QStringLiteral("%1;%2;%3;%4;%5;Internet: 5550001;0:%6\n")
                    .arg(type(rng))
                    .arg(newest.addSecs(-qint64(i) * 420).toString(QStringLiteral("dd.MM.yy HH:mm")),
                         n % 5 == 0 ? QStringLiteral("Name %1").arg(n) : QString(), digits,
                         QString::fromUtf8(extensions[i % 4]))
                    .arg(i % 60, 2, 10, QChar(u'0'));
    }
    return text;
}

struct Profile
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(QStringLiteral("settings.json"))};
    NotificationCenter center;
    MemorySecretStore secrets;
    std::unique_ptr<TNCallinglist> calls;
    std::unique_ptr<TNPreferencesManager> manager;
    int profile = 0;

    Profile()
    {
        store.load();
        calls = std::make_unique<TNCallinglist>(dir.filePath(QStringLiteral("Tondrel.db")), store, center);
        manager = std::make_unique<TNPreferencesManager>(store, secrets, calls.get());
        manager->start();
        calls->setPreferencesManager(manager.get());
        auto prefs = manager->locationPreferencesForUID(manager->addNewLocation());
        prefs->prefixis = {QStringLiteral("00"), QStringLiteral("49"), QStringLiteral("0"),
                           QStringLiteral("30")};
        prefs->save();
        profile = prefs->activeProfileInt;
    }
};

void BM_ImportFile100k(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("journal.csv"));
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(journalText(100'000).toUtf8());
    }
    const Book book;
    int imported = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto p = std::make_unique<Profile>();
        state.ResumeTiming();
        JournalImporter importer(*p->calls, p->store, &book);
        imported = importer.getCSVListFromHost(path, p->profile).result;
        state.PauseTiming();
        p.reset();
        state.ResumeTiming();
    }
    state.counters["imported"] = imported;
    state.counters["rows/s"] =
        benchmark::Counter(double(imported) * double(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ImportFile100k)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void BM_SecondDownload500(benchmark::State& state)
{
    const QString text = journalText(500);
    const Book book;
    int imported = -1, duplicates = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto p = std::make_unique<Profile>();
        JournalImporter first(*p->calls, p->store, &book);
        first.setDownloader([&text](const QString&) { return text; });
        first.getCSVListFromHost(QString(), p->profile);
        state.ResumeTiming();
        JournalImporter again(*p->calls, p->store, &book);
        again.setDownloader([&text](const QString&) { return text; });
        const JournalImportResult r = again.getCSVListFromHost(QString(), p->profile);
        imported = r.result;
        duplicates = r.duplicates;
        state.PauseTiming();
        p.reset();
        state.ResumeTiming();
    }
    state.counters["imported"] = imported;
    state.counters["duplicates"] = duplicates;
}
BENCHMARK(BM_SecondDownload500)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

} // namespace

BENCHMARK_MAIN();
