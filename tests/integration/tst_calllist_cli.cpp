// tondrel-cli's calls, memo and smartlist commands on a real data folder, the database filled
// through the core first.
#include "TestSupport.h"

#include "base/NotificationCenter.h"
#include "base/SettingsStore.h"
#include "calllist/TNCallinglist.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonDocument json(const CliResult& r)
{
    return QJsonDocument::fromJson(r.out);
}

QDateTime at(int y, int mo, int d, int h = 10, int mi = 0)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi));
}

} // namespace

class TestCalllistCli : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void listAndSearch();
    void countersStatsYears();
    void deleteCalls();
    void memos();
    void smartLists();
    void usageErrors_data();
    void usageErrors();
    void removingTheLocationDeletesItsCalls();

private:
    qint64 call(int state, const QDateTime& when, const QString& number, const QString& line = u"5550001"_s,
                const QString& duration = u"0:05"_s)
    {
        return m_calls->insertCall(
            {m_profile, state, when.toSecsSinceEpoch(), number, u"Küche"_s, line, duration});
    }

    TempEnv m_env;
    int m_profile = 0;
    // The test's own view of the database, beside the program's.
    SettingsStore m_settings{QString()};
    NotificationCenter m_center;
    std::unique_ptr<TNCallinglist> m_calls;
    qint64 m_obrienCall = 0;
};

void TestCalllistCli::initTestCase()
{
    // Day headers and dates in the fixed "C" patterns, whatever the machine's locale.
    qputenv("LC_ALL", "C");
    QLocale::setDefault(QLocale::c());
    const CliResult add =
        runCli(m_env, {u"location"_s, u"add"_s, u"--name"_s, u"Home"_s, u"--host"_s, u"127.0.0.1"_s});
    QCOMPARE(add.exitCode, 0);
    const CliResult list = runCli(m_env, {u"--json"_s, u"location"_s, u"list"_s});
    m_profile = json(list).array().first().toObject().value(u"profile"_s).toInt();
    QVERIFY(m_profile > 0);

    m_calls = std::make_unique<TNCallinglist>(m_env.dataDir() + u"/Tondrel.db"_s, m_settings, m_center);
    QVERIFY(m_calls->isValid());
    call(1, at(2025, 12, 30), u"030111"_s, u"5550001"_s, u"1:30"_s);
    m_obrienCall = call(2, at(2026, 1, 5, 8), u"030222"_s);
    call(3, at(2026, 1, 5, 9), u"0170333"_s, u"5550002"_s, u"0:10"_s);
    call(1, at(2026, 2, 1), u"030111"_s);
    m_calls->insertCall(
        {m_profile + 1, 1, at(2026, 2, 1).toSecsSinceEpoch(), u"030222"_s, {}, {}, u"0:01"_s});
    m_calls->updateLastDateForFaxForProfile(m_profile);
    m_calls->insertCallerWithName(u"Anna Müller"_s, u"030111"_s, u"uid-1"_s, u"home"_s);
    m_calls->insertCallerWithName(u"Pat O'Brien"_s, u"030222"_s, {}, {});
}

void TestCalllistCli::listAndSearch()
{
    CliResult r = runCli(m_env, {u"--json"_s, u"calls"_s, u"list"_s});
    QCOMPARE(r.exitCode, 0);
    const QJsonArray rows = json(r).array();
    QCOMPARE(rows.size(), 4);
    const QJsonObject newest = rows.first().toObject();
    QCOMPARE(newest.value(u"name"_s).toString(), u"Anna Müller"_s);
    QCOMPARE(newest.value(u"abid"_s).toString(), u"uid-1"_s);
    QCOMPARE(newest.value(u"calldate"_s).toInteger(), at(2026, 2, 1).toSecsSinceEpoch());

    r = runCli(m_env, {u"--json"_s, u"calls"_s, u"list"_s, u"--search"_s, u"O'Brien"_s});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(json(r).array().size(), 1);
    QCOMPARE(json(r).array().first().toObject().value(u"rowid"_s).toInteger(), m_obrienCall);

    r = runCli(m_env, {u"--json"_s, u"calls"_s, u"list"_s, u"--state"_s, u"in"_s, u"--sort"_s, u"date"_s,
                       u"--asc"_s, u"--limit"_s, u"1"_s});
    QCOMPARE(json(r).array().size(), 1);
    QCOMPARE(json(r).array().first().toObject().value(u"duration"_s).toString(), u"1:30"_s);

    // The text form groups by day.
    r = runCli(m_env, {u"calls"_s, u"list"_s});
    QCOMPARE(r.exitCode, 0);
    QVERIFY2(r.out.contains("== 05.01.2026 (2)"), r.out.constData());
}

void TestCalllistCli::countersStatsYears()
{
    CliResult r = runCli(m_env, {u"--json"_s, u"calls"_s, u"counters"_s});
    QCOMPARE(r.exitCode, 0);
    const QJsonArray counters = json(r).array();
    QCOMPARE(counters.size(), 9); // with the location's default smart list
    auto count = [&](int i) { return counters.at(i).toObject().value(u"count"_s).toInt(); };
    QCOMPARE(counters.at(1).toObject().value(u"name"_s).toString(), u"outgoing"_s);
    QCOMPARE((QList<int>{count(0), count(1), count(2), count(3)}), (QList<int>{2, 1, 1, 4}));
    QCOMPARE(counters.at(8).toObject().value(u"name"_s).toString(), u"Today"_s);

    r = runCli(m_env, {u"--json"_s, u"calls"_s, u"stats"_s, u"--year"_s, u"2026"_s});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(json(r).object().value(u"calls"_s).toInt(), 3);
    QCOMPARE(json(r).object().value(u"minutes"_s).toInt(), 20);
    r = runCli(m_env, {u"calls"_s, u"stats"_s, u"--state"_s, u"in"_s});
    QCOMPARE(r.out, QByteArray("calls: 2\ntime: 1:35\n"));

    r = runCli(m_env, {u"calls"_s, u"years"_s});
    QCOMPARE(r.out, QByteArray("2026\n2025\n"));
}

void TestCalllistCli::deleteCalls()
{
    const qint64 extra = call(3, at(2024, 5, 5), u"099"_s);
    CliResult r = runCli(m_env, {u"calls"_s, u"delete"_s, QString::number(extra), u"999999"_s});
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.startsWith("tondrel-cli: no call with row id 999999"));
    QCOMPARE(m_calls->getCallerlistForProfile(m_profile, 0, {}, {}, {}, {}, 0).size(),
             5); // nothing half-done
    r = runCli(m_env, {u"calls"_s, u"delete"_s, QString::number(extra)});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(m_calls->getCallerlistForProfile(m_profile, 0, {}, {}, {}, {}, 0).size(), 4);
}

void TestCalllistCli::memos()
{
    CliResult r =
        runCli(m_env, {u"memo"_s, u"add"_s, u"--number"_s, u"030222"_s, u"--date"_s, u"2026-01-05 08:00"_s,
                       u"--subject"_s, u"Rückruf"_s, u"--body"_s, u"wegen O'Brien's Angebot"_s});
    QCOMPARE(r.exitCode, 0);
    const QString id = QString::fromUtf8(r.out).trimmed();
    r = runCli(m_env, {u"memo"_s, u"add"_s, u"--number"_s, u"0999"_s, u"--date"_s, u"2026-01-01 10:00"_s,
                       u"--subject"_s, u"Unbekannt"_s});
    QCOMPARE(r.exitCode, 0);

    r = runCli(m_env, {u"--json"_s, u"memo"_s, u"list"_s});
    QJsonArray memos = json(r).array();
    QCOMPARE(memos.size(), 2);
    QCOMPARE(memos.at(0).toObject().value(u"subject"_s).toString(), u"Unbekannt"_s); // oldest call first
    QCOMPARE(memos.at(0).toObject().value(u"name"_s).toString(), QString());
    QCOMPARE(memos.at(1).toObject().value(u"name"_s).toString(), u"Pat O'Brien"_s);

    r = runCli(m_env, {u"--json"_s, u"memo"_s, u"search"_s, u"O'Brien's"_s});
    QCOMPARE(json(r).array().size(), 1);

    QCOMPARE(runCli(m_env, {u"memo"_s, u"update"_s, id, u"--subject"_s, u"Erledigt"_s}).exitCode, 0);
    r = runCli(m_env, {u"--json"_s, u"memo"_s, u"search"_s, u"Erledigt"_s, u"--column"_s, u"subject"_s});
    QCOMPARE(json(r).array().first().toObject().value(u"body"_s).toString(), u"wegen O'Brien's Angebot"_s);

    QCOMPARE(runCli(m_env, {u"memo"_s, u"delete"_s, id}).exitCode, 0);
    QCOMPARE(runCli(m_env, {u"memo"_s, u"delete"_s, id}).exitCode, 1);
    QCOMPARE(json(runCli(m_env, {u"--json"_s, u"memo"_s, u"list"_s})).array().size(), 1);
}

void TestCalllistCli::smartLists()
{
    CliResult r =
        runCli(m_env, {u"smartlist"_s, u"add"_s, u"--name"_s, u"Pat or outgoing"_s, u"--any"_s,
                       u"--condition"_s, u"name:is:Pat O'Brien"_s, u"--condition"_s, u"type:out"_s});
    QCOMPARE(r.exitCode, 0);
    const QString id = QString::fromUtf8(r.out).trimmed();

    r = runCli(m_env, {u"--json"_s, u"smartlist"_s, u"show"_s, id});
    QCOMPARE(r.exitCode, 0);
    const QJsonObject shown = json(r).object();
    QCOMPARE(shown.value(u"match"_s).toString(), u"any"_s);
    QCOMPARE(shown.value(u"count"_s).toInt(), 2);

    r = runCli(m_env, {u"--json"_s, u"calls"_s, u"list"_s, u"--state"_s, u"smart:"_s + id});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(json(r).array().size(), 2);

    r = runCli(m_env, {u"--json"_s, u"smartlist"_s, u"list"_s});
    const QJsonArray lists = json(r).array();
    QCOMPARE(lists.size(), 2);
    QCOMPARE(lists.first().toObject().value(u"name"_s).toString(), u"Pat or outgoing"_s); // newest first

    QCOMPARE(runCli(m_env, {u"smartlist"_s, u"delete"_s, id}).exitCode, 0);
    QCOMPARE(json(runCli(m_env, {u"--json"_s, u"smartlist"_s, u"list"_s})).array().size(), 1);
    QCOMPARE(runCli(m_env, {u"calls"_s, u"list"_s, u"--state"_s, u"smart:"_s + id}).exitCode, 1);
}

void TestCalllistCli::usageErrors_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("unknown state") << QStringList{u"calls"_s, u"list"_s, u"--state"_s, u"lost"_s} << 2;
    QTest::newRow("unknown sort column")
        << QStringList{u"calls"_s, u"list"_s, u"--sort"_s, u"calldate; DROP TABLE caller"_s} << 2;
    QTest::newRow("unknown search column")
        << QStringList{u"calls"_s, u"list"_s, u"--search"_s, u"x"_s, u"--column"_s, u"body"_s} << 2;
    QTest::newRow("condition without value")
        << QStringList{u"smartlist"_s, u"add"_s, u"--name"_s, u"x"_s, u"--condition"_s, u"name:is"_s} << 2;
    QTest::newRow("unknown condition")
        << QStringList{u"smartlist"_s, u"add"_s, u"--name"_s, u"x"_s, u"--condition"_s, u"date:someday"_s}
        << 2;
    QTest::newRow("bad memo date") << QStringList{u"memo"_s, u"add"_s,    u"--number"_s,
                                                  u"1"_s,    u"--date"_s, u"yesterday"_s}
                                   << 2;
    QTest::newRow("memo of nobody") << QStringList{u"memo"_s, u"update"_s, u"424242"_s, u"--subject"_s,
                                                   u"x"_s}
                                    << 1;
}

void TestCalllistCli::usageErrors()
{
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    const CliResult r = runCli(m_env, args);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY(r.err.startsWith("tondrel-cli: "));
    QCOMPARE(r.err.count('\n'), 1);
}

void TestCalllistCli::removingTheLocationDeletesItsCalls()
{
    TempEnv env;
    QCOMPARE(runCli(env, {u"location"_s, u"add"_s, u"--name"_s, u"Away"_s}).exitCode, 0);
    QCOMPARE(runCli(env, {u"location"_s, u"add"_s, u"--name"_s, u"Stays"_s}).exitCode, 0);
    const QJsonArray locations = json(runCli(env, {u"--json"_s, u"location"_s, u"list"_s})).array();
    QCOMPARE(locations.size(), 2);
    const int away = locations.at(0).toObject().value(u"profile"_s).toInt();
    const int stays = locations.at(1).toObject().value(u"profile"_s).toInt();

    SettingsStore settings{QString()};
    NotificationCenter center;
    TNCallinglist calls(env.dataDir() + u"/Tondrel.db"_s, settings, center);
    for (int profile : {away, stays})
        calls.insertCall({profile, 1, at(2026, 1, 1).toSecsSinceEpoch(), u"0301"_s, {}, {}, u"0:01"_s});
    calls.setMemoForProfile(away, u"0301"_s, at(2026, 1, 1).toSecsSinceEpoch(), u"kept"_s, {});

    QCOMPARE(runCli(env, {u"location"_s, u"remove"_s, u"Away"_s}).exitCode, 0);
    QVERIFY(calls.getCallerlistForProfile(away, 0, {}, {}, {}, {}, 0).isEmpty());
    QVERIFY(calls.smartLists().smartListsForProfile(away).isEmpty());
    QCOMPARE(calls.memos().getMemosForProfile(away).size(), 1);
    QCOMPARE(calls.getCallerlistForProfile(stays, 0, {}, {}, {}, {}, 0).size(), 1);
}

QTEST_GUILESS_MAIN(TestCalllistCli)
#include "tst_calllist_cli.moc"
