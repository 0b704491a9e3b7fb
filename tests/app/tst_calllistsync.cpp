// Journal imports through the one sync service: results, progress, one import at a time.
#include "../calllist/CalllistFixture.h"

#include "app/CallListSync.h"
#include "base/SettingsKeys.h"

#include <QFile>
#include <QTest>
#include <QThread>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {
// What the sync reported, collected on this thread (it reports from its worker).
struct Reports
{
    explicit Reports(CallListSync& sync)
    {
        QObject::connect(&sync, &CallListSync::progress, &context, [this](qint64 done, qint64 total) {
            progress.append({done, total});
        });
        QObject::connect(&sync, &CallListSync::finished, &context,
                         [this](const CallListSyncResult& r) { finished.append(r); });
        QObject::connect(&sync, &CallListSync::badgeChanged, &context,
                         [this](const QString& b) { badges << b; });
    }
    QObject context;
    QList<std::pair<qint64, qint64>> progress;
    QList<CallListSyncResult> finished;
    QStringList badges;
};

const QString kHeader = u"sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"_s;

// rows calls, newest first, a minute apart, every third missed.
QString journal(int rows, const QDateTime& newest)
{
    QString text = kHeader;
    for (int i = 0; i < rows; ++i)
        text += u"%1;%2;;030%3;;5550001;0:01\n"_s.arg(i % 3 == 0 ? 2 : 1)
                    .arg(newest.addSecs(-60 * i).toString(u"dd.MM.yy HH:mm"_s))
                    .arg(100000 + i);
    return text;
}

std::shared_ptr<TNPreferences> berlin(CalllistFixture& f)
{
    auto prefs = f.calls->prefsForProfile(f.addLocation());
    prefs->prefixis = {u"00"_s, u"49"_s, u"0"_s, u"30"_s};
    prefs->save();
    return prefs;
}
} // namespace

class TestCallListSync : public QObject
{
    Q_OBJECT
private slots:
    void fileImport_data();
    void fileImport();
    void importsRunOneAtATime();
};

void TestCallListSync::fileImport_data()
{
    QTest::addColumn<QByteArray>("content"); // empty: no such file
    QTest::addColumn<int>("imported");
    QTest::addColumn<int>("missed");
    QTest::addColumn<bool>("failed");
    QTest::newRow("3000 calls") << journal(3000, at(2026, 3, 14)).toUtf8() << 3000 << 1000 << false;
    QTest::newRow("a web page") << QByteArray("<!DOCTYPE html>\n<html></html>\n") << -1 << 0 << true;
    QTest::newRow("missing file") << QByteArray() << -1 << 0 << true;
}

void TestCallListSync::fileImport()
{
    QFETCH(QByteArray, content);
    QFETCH(int, imported);
    QFETCH(int, missed);
    QFETCH(bool, failed);
    CalllistFixture f;
    f.store.setValue(keys::BadgeNewCalls, true);
    const auto prefs = berlin(f);
    const QString path = f.dir.filePath(u"journal.csv"_s);
    if (!content.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    CallListSync sync(
        *f.calls, *f.manager, f.store, [] { return nullptr; }, &f.clock);
    Reports reports(sync);
    sync.importFile(path, prefs);
    QTRY_COMPARE(reports.finished.size(), 1);
    const CallListSyncResult r = reports.finished.first();
    QCOMPARE(r.download, false);
    QCOMPARE(r.imported, imported);
    QCOMPARE(r.missed, missed);
    QCOMPARE(r.error.isEmpty(), !failed);
    QCOMPARE(f.calls->getCallCounterStatisticForProfile(prefs->activeProfileInt, 0, 0, 0),
             qint64(qMax(imported, 0)));
    // A file brings old calls: no badge.
    QCOMPARE(reports.badges, QStringList());
    if (failed)
        return;
    // Progress climbs to the end of the file.
    QVERIFY(reports.progress.size() > 2);
    qint64 last = -1;
    for (const auto& [done, total] : reports.progress) {
        QVERIFY(done >= last);
        last = done;
    }
    QCOMPARE(reports.progress.last().first, reports.progress.last().second);
}

void TestCallListSync::importsRunOneAtATime()
{
    CalllistFixture f;
    f.store.setValue(keys::BadgeNewAbsentiaCalls, true);
    const auto home = berlin(f);
    const auto office = berlin(f);
    // One call seen before: what the router brings is new.
    f.call(home->activeProfileInt, 1, at(2026, 3, 1));
    f.calls->setLastDateForNewCallsForProfile(home->activeProfileInt);

    std::atomic<int> inside{0};
    std::atomic<int> most{0};
    std::atomic<int> downloads{0};
    CallListSync sync(
        *f.calls, *f.manager, f.store, [] { return nullptr; }, &f.clock);
    sync.setDownload([&](const std::shared_ptr<TNPreferences>&, const QString&, RouterFailure*) {
        most = std::max(most.load(), ++inside);
        ++downloads;
        QThread::msleep(150);
        --inside;
        return journal(6, at(2026, 3, 14));
    });
    Reports reports(sync);

    sync.importFromRouter(home);
    QTRY_COMPARE(inside.load(), 1);
    sync.importFromRouter(home); // waits: the running download may have missed a call
    sync.importFromRouter(home); // dropped: the waiting one covers it
    sync.importFromRouter(office);
    QVERIFY(sync.isBusy());
    // The command line's import on this thread waits its turn as well.
    const CallListSyncResult direct = sync.runFileImport(f.dir.filePath(u"none.csv"_s), office);
    QCOMPARE(direct.imported, -1);
    QTRY_COMPARE(reports.finished.size(), 3);
    QVERIFY(!sync.isBusy());
    QCOMPARE(downloads.load(), 3);
    QCOMPARE(most.load(), 1);

    QList<int> imported;
    for (const CallListSyncResult& r : reports.finished)
        imported << r.imported;
    QCOMPARE(imported, (QList<int>{6, 0, 6}));
    // The first download's two missed calls make the badge; the repeat brings nothing new.
    QCOMPARE(reports.badges, QStringList{u"2"_s});
    QCOMPARE(sync.badge(), u"2"_s);
}

QTEST_GUILESS_MAIN(TestCallListSync)
#include "tst_calllistsync.moc"
