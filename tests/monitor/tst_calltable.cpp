// The call table alone: monitor lines in, records and extension states out, no socket.
#include "base/Clock.h"
#include "base/SecretStore.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "monitor/CallTable.h"
#include "monitor/CallerNameResolver.h"
#include "monitor/TNScriptManager.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The address book knows one number.
class OneContactResolver final : public CallerNameResolver
{
public:
    QStringList searchNameForPhonenumber(const QString& number) override
    {
        return number == u"0307777777" ? QStringList{u"ab-7"_s, u"Vera"_s, u"home"_s} : QStringList{};
    }
    void reverseSearchInBackground(const QString&, const QString&, ReverseResult) override {}
};

struct Table
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(u"settings.json"_s)};
    MemorySecretStore secrets;
    std::shared_ptr<TNPreferences> prefs = std::make_shared<TNPreferences>(store, secrets);
    OneContactResolver names;
    ManualClock clock{QDateTime(QDate(2026, 11, 21), QTime(10, 0))};
    CallTable table{{[p = prefs] { return p; }, store, clock, names}};
    QStringList announced; // event words of the lines worth a notification
    QList<int> scripts;
    QStringList lookups; // numbers worth a reverse lookup

    Table()
    {
        prefs->lines = {QVariantMap{{u"Line"_s, u"0305550000"_s}, {u"HideMonitor"_s, true}},
                        QVariantMap{{u"Line"_s, u"5551234"_s}, {u"HideMonitor"_s, false}}};
        prefs->extensions = {QVariantMap{{u"Intern"_s, u"611"_s}, {u"Title"_s, u"Kitchen"_s}},
                             QVariantMap{{u"Intern"_s, u"2"_s}, {u"Title"_s, u"Fax"_s}}};
    }
    bool feed(const QStringList& lines)
    {
        for (const QString& l : lines) {
            const auto parsed = MonitorLine::parse(u"21.11.26 10:00:00;"_s.toLatin1() + l.toLatin1());
            if (!parsed)
                return false;
            const CallTable::Change c = table.apply(*parsed);
            if (c.announce)
                announced << c.record.cmd;
            if (c.scriptState)
                scripts << *c.scriptState;
            if (c.lookUpName)
                lookups << c.record.number;
            clock.advance(5);
        }
        return true;
    }
    QStringList summaries() const
    {
        QStringList s;
        for (const auto& r : table.calls())
            s << u"%1/%2/%3/%4/%5/%6/%7/%8/%9"_s.arg(r.cmd)
                     .arg(r.calltype)
                     .arg(r.connected ? u"c"_s : u"-"_s)
                     .arg(r.duration, r.number, r.line, r.msn, r.extension, r.extensionTitle);
        return s;
    }
    QString states() const
    {
        QStringList parts;
        for (auto it = table.extensions().begin(); it != table.extensions().end(); ++it)
            parts << u"%1=%2"_s.arg(it.key()).arg(it.value());
        return parts.join(u',');
    }
};

const QString isdnBusy = u"50=3,51=3,52=3,53=3,54=3,55=3,56=3,57=3,58=3,59=3"_s;
const QString isdnFree = u"50=1,51=1,52=1,53=1,54=1,55=1,56=1,57=1,58=1,59=1"_s;

} // namespace

class TestCallTable : public QObject
{
    Q_OBJECT
private slots:
    void sequences_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<bool>("openExternCalls");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QString>("extensions");
        QTest::addColumn<QStringList>("announced");
        QTest::addColumn<QList<int>>("scripts");

        using S = TNScriptManager::CallState;
        QTest::newRow("incoming answered")
            << QStringList{u"RING;0;0301234567#;5551234;SIP0;"_s, u"CONNECT;0;11;0301234567;"_s,
                           u"DISCONNECT;0;65;"_s}
            << false << QStringList{u"DISCONNECT/1/c/65/0301234567/5551234/SIP0/11/Kitchen"_s} << u"611=1"_s
            << QStringList{u"RING"_s, u"DISCONNECT"_s} << QList<int>{S::Ringing, S::IncomingEnded};
        QTest::newRow("incoming missed")
            << QStringList{u"RING;0;0301234567;5551234;SIP0;"_s, u"DISCONNECT;0;0;"_s} << false
            << QStringList{u"DISCONNECT/2/-/0/0301234567/5551234/SIP0//"_s} << u""_s
            << QStringList{u"RING"_s, u"DISCONNECT"_s} << QList<int>{S::Ringing, S::IncomingEnded};
        QTest::newRow("withheld caller answered on the ISDN bus")
            << QStringList{u"RING;2;;5551234;ISDN;"_s, u"CONNECT;2;4;;"_s, u"DISCONNECT;2;12;"_s} << false
            << QStringList{u"DISCONNECT/1/c/12//5551234/ISDN/4/"_s} << isdnFree
            << QStringList{u"RING"_s, u"DISCONNECT"_s} << QList<int>{S::Ringing, S::IncomingEnded};
        QTest::newRow("ISDN bus busy while another connection still uses it")
            << QStringList{u"RING;2;0301;5551234;ISDN;"_s, u"CONNECT;2;4;;"_s,
                           u"CALL;3;4;5551234;0309;ISDN;"_s, u"DISCONNECT;2;12;"_s}
            << false << QStringList{u"DISCONNECT/1/c/12/0301/5551234/ISDN/4/"_s} << isdnBusy
            << QStringList{u"RING"_s, u"DISCONNECT"_s} << QList<int>{S::Ringing, S::IncomingEnded};
        QTest::newRow("outgoing from a telephone, shown when wanted")
            << QStringList{u"CALL;1;1;5551234;0309876#;SIP0;"_s, u"CONNECT;1;1;0309876;"_s,
                           u"DISCONNECT;1;30;"_s}
            << true << QStringList{u"DISCONNECT/3/c/30/0309876/5551234/SIP0/1/Fax"_s} << u"1=1"_s
            << QStringList{u"DISCONNECT"_s} << QList<int>{S::OutgoingEnded};
        QTest::newRow("outgoing from a telephone, not wanted")
            << QStringList{u"CALL;1;2;5551234;0309876;SIP0;"_s, u"CONNECT;1;2;0309876;"_s,
                           u"DISCONNECT;1;30;"_s}
            << false << QStringList{} << u"2=1"_s << QStringList{} << QList<int>{};
        QTest::newRow("hidden line") << QStringList{u"RING;0;0301234567;5550000;SIP1;"_s,
                                                    u"CONNECT;0;11;0301234567;"_s, u"DISCONNECT;0;5;"_s}
                                     << false << QStringList{} << u"611=1"_s << QStringList{} << QList<int>{};
        QTest::newRow("two calls at once")
            << QStringList{u"RING;0;0301111111;5551234;SIP0;"_s, u"RING;1;0302222222;5551234;SIP0;"_s,
                           u"CONNECT;1;10;0302222222;"_s, u"DISCONNECT;0;0;"_s, u"DISCONNECT;1;20;"_s}
            << false
            << QStringList{u"DISCONNECT/2/-/0/0301111111/5551234/SIP0//"_s,
                           u"DISCONNECT/1/c/20/0302222222/5551234/SIP0/10/"_s}
            << u"610=1"_s << QStringList{u"RING"_s, u"RING"_s, u"DISCONNECT"_s, u"DISCONNECT"_s}
            << QList<int>{S::Ringing, S::Ringing, S::IncomingEnded, S::IncomingEnded};
        QTest::newRow("a reused connection id starts a new record")
            << QStringList{u"RING;0;0301111111;5551234;SIP0;"_s, u"DISCONNECT;0;0;"_s,
                           u"RING;0;0302222222;5551234;SIP0;"_s, u"CONNECT;0;1;0302222222;"_s}
            << false
            << QStringList{u"DISCONNECT/2/-/0/0301111111/5551234/SIP0//"_s,
                           u"CONNECT/1/c//0302222222/5551234/SIP0/1/Fax"_s}
            << u"1=2"_s << QStringList{u"RING"_s, u"DISCONNECT"_s, u"RING"_s}
            << QList<int>{S::Ringing, S::IncomingEnded, S::Ringing};
        QTest::newRow("connect of an unknown call still sets the extension")
            << QStringList{u"CONNECT;5;12;0301234567;"_s} << false << QStringList{} << u"612=2"_s
            << QStringList{} << QList<int>{};
    }
    void sequences()
    {
        QFETCH(QStringList, lines);
        QFETCH(bool, openExternCalls);
        QFETCH(QStringList, records);
        QFETCH(QString, extensions);
        QFETCH(QStringList, announced);
        QFETCH(QList<int>, scripts);
        Table t;
        t.store.setValue(keys::MonitorOpenExternCalls, openExternCalls);
        QVERIFY(t.feed(lines));
        QCOMPARE(t.summaries(), records);
        QCOMPARE(t.states(), extensions);
        QCOMPARE(t.announced, announced);
        QCOMPARE(t.scripts, scripts);
        for (const auto& r : t.table.calls()) {
            QVERIFY(!r.UID.isEmpty());
            if (r.cmd == u"DISCONNECT") {
                QCOMPARE(r.connID, u"-1"_s);
                QVERIFY(r.dateEnd > r.dateStart);
            }
        }
    }

    // A line naming no open call still tells what it was, without a record behind it.
    void unknownConnectionKeepsTheLinesFields()
    {
        Table t;
        const auto line = MonitorLine::parse("21.11.26 10:00:09;DISCONNECT;7;33;");
        QVERIFY(line);
        const CallTable::Change c = t.table.apply(*line);
        QVERIFY(!c.hasRecord);
        QCOMPARE(c.index, CallTable::NotFound);
        QCOMPARE(c.record.cmd + c.record.connID + u'/' + c.record.duration + u'/' + c.record.calltime,
                 u"DISCONNECT7/33/21.11.26 10:00:09"_s);
        QVERIFY(!c.announce && !c.scriptState);
    }

    void namesFromTheAddressBookOrALookup()
    {
        Table t;
        t.store.setValue(keys::MonitorOpenExternCalls, true);
        QVERIFY(t.feed({u"RING;0;0307777777;5551234;SIP0;"_s, u"RING;1;0301111111;5551234;SIP0;"_s,
                        u"RING;2;;5551234;SIP0;"_s, u"CALL;3;1;5551234;0302222222;SIP0;"_s}));
        QCOMPARE(t.table.calls().at(0).contact, (QStringList{u"ab-7"_s, u"Vera"_s, u"home"_s}));
        // Known callers and withheld numbers need no lookup.
        QCOMPARE(t.lookups, (QStringList{u"0301111111"_s, u"0302222222"_s}));

        // A late name goes to the call it was asked for, even after its connection id was reused.
        const QString first = t.table.calls().at(1).UID;
        QVERIFY(t.feed({u"DISCONNECT;1;0;"_s, u"RING;1;0303333333;5551234;SIP0;"_s}));
        QVERIFY(t.table.setContactForUID({QString(), u"Pizzeria"_s, QString()}, first));
        QCOMPARE(t.table.calls().at(1).contactName(), u"Pizzeria"_s);
        QVERIFY(t.table.calls().at(4).contactName().isEmpty());
        QVERIFY(!t.table.setContactForUID({QString(), u"x"_s, QString()}, u"gone"_s));
    }

    void dialledCallsAndInternalCalls()
    {
        Table t;
        const CallRecord* dialled = t.table.addDialledCall(u"0309876"_s, u"1"_s, {u"ab"_s, u"Bob"_s});
        QVERIFY(dialled);
        QCOMPARE(t.summaries(), QStringList{u"DIAL/3/-//0309876///1/Fax"_s});
        QCOMPARE(t.states(), u"1=2"_s);
        QVERIFY(
            t.feed({u"CALL;3;1;5551234;0309876;SIP0;"_s, u"CONNECT;3;1;0309876;"_s, u"DISCONNECT;3;8;"_s}));
        QCOMPARE(t.summaries(), QStringList{u"DISCONNECT/3/c/8/0309876/5551234/SIP0/1/Fax"_s});
        QCOMPARE(t.table.calls().at(0).contactName(), u"Bob"_s);
        QVERIFY(t.table.calls().at(0).calltime.isEmpty()); // the program dialled it: no router time
        QCOMPARE(t.announced, (QStringList{u"CALL"_s, u"DISCONNECT"_s}));
        using S = TNScriptManager::CallState;
        QCOMPARE(t.scripts, (QList<int>{S::OutgoingStarted, S::OutgoingEnded}));

        // Internal calls never show on the monitor: only both extensions ring.
        QVERIFY(!t.table.addDialledCall(u"**612"_s, QString(), {}));
        QCOMPARE(t.table.calls().size(), 1);
        QCOMPARE(t.table.extensions().value(u"612"_s), int(CallTable::Ringing));
        QCOMPARE(t.table.extensions().value(u"50"_s), int(CallTable::Ringing));

        t.table.addDialledCall(u"0301"_s, u"611"_s, {});
        const QString uid = t.table.calls().constLast().UID;
        QVERIFY(t.table.cancelCallForUID(uid));
        QCOMPARE(t.table.calls().constLast().cmd, u"DISCONNECT"_s);
        QCOMPARE(t.table.extensions().value(u"611"_s), int(CallTable::Free));

        QVERIFY(t.table.setMemoIDForUID(7, uid));
        QCOMPARE(t.table.calls().constLast().MemoID.value_or(-1), 7);
        QVERIFY(t.table.setMemoIDForUID(-1, uid));
        QVERIFY(!t.table.calls().constLast().MemoID);
    }
};

QTEST_GUILESS_MAIN(TestCallTable)
#include "tst_calltable.moc"
