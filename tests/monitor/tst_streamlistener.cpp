#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SecretStore.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "monitor/CallNotificationText.h"
#include "monitor/CallerNameResolver.h"
#include "monitor/NotificationPresenter.h"
#include "monitor/StreamListener.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

using namespace Qt::StringLiterals;

namespace {

// Keeps what would have gone to the desktop.
class RecordingPresenter final : public NotificationPresenter
{
public:
    bool isAvailable() const override { return true; }
    QVariant deliver(const CallNotification& note, const QVariant& previous) override
    {
        notes.append(note);
        previousHandles.append(previous);
        return QStringLiteral("note-%1").arg(notes.size());
    }
    void withdraw(const QVariant&) override {}
    QStringList titles() const
    {
        QStringList t;
        for (const auto& n : notes)
            t << n.title;
        return t;
    }
    void click(const QString& uid) { emit activated(uid); }
    QList<CallNotification> notes;
    QVariantList previousHandles;
};

// Answers every lookup from another thread, as the web lookup does.
class ThreadedResolver final : public CallerNameResolver
{
public:
    QStringList searchNameForPhonenumber(const QString&) override { return {QString(), QString(), QString()}; }
    void reverseSearchInBackground(const QString& connID, const QString& number, ReverseResult done) override
    {
        std::thread([connID, number, done] { done(connID, QStringLiteral("Pizzeria ") + number.right(2)); }).detach();
    }
};

struct Harness
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(QStringLiteral("settings.json"))};
    MemorySecretStore secrets;
    std::shared_ptr<TNPreferences> prefs = std::make_shared<TNPreferences>(store, secrets);
    RecordingPresenter presenter;
    QStringList openedURLs;
    std::unique_ptr<StreamListener> listener;

    explicit Harness(CallerNameResolver* names = nullptr)
    {
        prefs->lines = {QVariantMap{{QStringLiteral("Line"), QStringLiteral("0305550000")},
                                    {QStringLiteral("HideMonitor"), true}},
                        QVariantMap{{QStringLiteral("Line"), QStringLiteral("5551234")},
                                    {QStringLiteral("HideMonitor"), false}}};
        prefs->extensions = {QVariantMap{{QStringLiteral("Intern"), QStringLiteral("611")},
                                         {QStringLiteral("Title"), QStringLiteral("Kitchen")}},
                             QVariantMap{{QStringLiteral("Intern"), QStringLiteral("2")},
                                         {QStringLiteral("Title"), QStringLiteral("Fax")}}};
        StreamListenerServices s;
        s.preferences = [p = prefs] { return p; };
        s.settings = &store;
        s.presenter = &presenter;
        s.names = names;
        s.openURL = [this](const QString& url) { openedURLs << url; };
        listener = std::make_unique<StreamListener>(s);
    }
    void feed(const QStringList& lines)
    {
        for (const QString& l : lines)
            listener->processBytes(l.toLatin1() + "\n");
    }
};

QString summary(const CallRecord& r)
{
    return QStringLiteral("%1/%2/%3/%4/%5/%6/%7/%8/%9")
        .arg(r.cmd)
        .arg(r.calltype)
        .arg(r.connected ? u"c"_s : u"-"_s)
        .arg(r.duration, r.number, r.line, r.msn, r.extension, r.extensionTitle);
}

QStringList summaries(const StreamListener& l)
{
    QStringList s;
    for (const auto& r : l.monitorCalls())
        s << summary(r);
    return s;
}

QString extensionText(const StreamListener& l)
{
    QStringList parts;
    for (auto it = l.extensions().begin(); it != l.extensions().end(); ++it)
        parts << QStringLiteral("%1=%2").arg(it.key()).arg(it.value());
    return parts.join(u',');
}

const QString T = QStringLiteral("21.11.26 10:00:00");
QString L(const QString& rest)
{
    return T + u';' + rest;
}

} // namespace

class TestStreamListener : public QObject
{
    Q_OBJECT
private slots:
    void sequences_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<bool>("openExternCalls");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QString>("extensions");
        QTest::addColumn<QStringList>("notes");

        QTest::newRow("incoming answered")
            << QStringList{L(u"RING;0;0301234567#;5551234;SIP0;"_s), L(u"CONNECT;0;11;0301234567;"_s), L(u"DISCONNECT;0;65;"_s)}
            << false << QStringList{u"DISCONNECT/1/c/65/0301234567/5551234/SIP0/11/Kitchen"_s} << u"611=1"_s
            << QStringList{u"Incoming call"_s, u"Call ended"_s};
        QTest::newRow("incoming missed")
            << QStringList{L(u"RING;0;0301234567;5551234;SIP0;"_s), L(u"DISCONNECT;0;0;"_s)} << false
            << QStringList{u"DISCONNECT/2/-/0/0301234567/5551234/SIP0//"_s} << u""_s << QStringList{u"Incoming call"_s, u"Missed call"_s};
        QTest::newRow("withheld caller answered on the ISDN bus")
            << QStringList{L(u"RING;2;;5551234;ISDN;"_s), L(u"CONNECT;2;4;;"_s), L(u"DISCONNECT;2;12;"_s)} << false
            << QStringList{u"DISCONNECT/1/c/12//5551234/ISDN/4/"_s}
            << u"50=1,51=1,52=1,53=1,54=1,55=1,56=1,57=1,58=1,59=1"_s << QStringList{u"Incoming call"_s, u"Call ended"_s};
        QTest::newRow("outgoing from a telephone, shown when wanted")
            << QStringList{L(u"CALL;1;1;5551234;0309876#;SIP0;"_s), L(u"CONNECT;1;1;0309876;"_s), L(u"DISCONNECT;1;30;"_s)}
            << true << QStringList{u"DISCONNECT/3/c/30/0309876/5551234/SIP0/1/Fax"_s} << u"1=1"_s << QStringList{u"Call ended"_s};
        QTest::newRow("outgoing from a telephone, not wanted")
            << QStringList{L(u"CALL;1;2;5551234;0309876;SIP0;"_s), L(u"CONNECT;1;2;0309876;"_s), L(u"DISCONNECT;1;30;"_s)}
            << false << QStringList{} << u"2=1"_s << QStringList{};
        QTest::newRow("outgoing not answered")
            << QStringList{L(u"CALL;1;12;5551234;0309876;SIP0;"_s), L(u"DISCONNECT;1;0;"_s)} << true
            << QStringList{u"DISCONNECT/3/-/0/0309876/5551234/SIP0/12/"_s} << u"612=1"_s << QStringList{u"No answer"_s};
        QTest::newRow("hidden line")
            << QStringList{L(u"RING;0;0301234567;5550000;SIP1;"_s), L(u"CONNECT;0;11;0301234567;"_s), L(u"DISCONNECT;0;5;"_s)}
            << false << QStringList{} << u"611=1"_s << QStringList{};
        QTest::newRow("two calls at once")
            << QStringList{L(u"RING;0;0301111111;5551234;SIP0;"_s), L(u"RING;1;0302222222;5551234;SIP0;"_s),
                           L(u"CONNECT;1;10;0302222222;"_s), L(u"DISCONNECT;0;0;"_s), L(u"DISCONNECT;1;20;"_s)}
            << false
            << QStringList{u"DISCONNECT/2/-/0/0301111111/5551234/SIP0//"_s, u"DISCONNECT/1/c/20/0302222222/5551234/SIP0/10/"_s}
            << u"610=1"_s << QStringList{u"Incoming call"_s, u"Incoming call"_s, u"Missed call"_s, u"Call ended"_s};
        QTest::newRow("a reused connection id starts a new record")
            << QStringList{L(u"RING;0;0301111111;5551234;SIP0;"_s), L(u"DISCONNECT;0;0;"_s), L(u"RING;0;0302222222;5551234;SIP0;"_s),
                           L(u"CONNECT;0;1;0302222222;"_s)}
            << false
            << QStringList{u"DISCONNECT/2/-/0/0301111111/5551234/SIP0//"_s, u"CONNECT/1/c//0302222222/5551234/SIP0/1/Fax"_s}
            << u"1=2"_s << QStringList{u"Incoming call"_s, u"Missed call"_s, u"Incoming call"_s};
        QTest::newRow("connect of an unknown call still sets the extension")
            << QStringList{L(u"CONNECT;5;12;0301234567;"_s)} << false << QStringList{} << u"612=2"_s << QStringList{};
    }
    void sequences()
    {
        QFETCH(QStringList, lines);
        QFETCH(bool, openExternCalls);
        QFETCH(QStringList, records);
        QFETCH(QString, extensions);
        QFETCH(QStringList, notes);
        Harness h;
        h.store.setValue(keys::MonitorOpenExternCalls, openExternCalls);
        h.feed(lines);
        QCOMPARE(summaries(*h.listener), records);
        QCOMPARE(extensionText(*h.listener), extensions);
        QCOMPARE(h.presenter.titles(), notes);
        for (const auto& r : h.listener->monitorCalls()) {
            QVERIFY(!r.UID.isEmpty());
            if (r.cmd == u"DISCONNECT") {
                QCOMPARE(r.connID, QStringLiteral("-1"));
                QVERIFY(r.dateEnd.isValid());
            }
        }
    }

    // However the bytes arrive, the same records and states result.
    void deliveryEquivalence_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("chunk");
        QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/monitor/jfritz_FBoxListenerV3Test_lines.txt"));
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray capture = f.readAll();
        const QByteArray crlf = QByteArray(capture).replace("\n", "\r\n");
        for (int chunk : {0, 1, 3, 7, 64}) {
            QTest::addRow("LF capture, %d bytes per read", chunk) << capture << chunk;
            QTest::addRow("CR LF capture, %d bytes per read", chunk) << crlf << chunk;
        }
    }
    void deliveryEquivalence()
    {
        QFETCH(QByteArray, stream);
        QFETCH(int, chunk);
        Harness baseline;
        baseline.store.setValue(keys::MonitorOpenExternCalls, true);
        for (const QByteArray& line : stream.split('\n'))
            baseline.listener->processBytes(line + "\n");
        QVERIFY(baseline.listener->monitorCalls().size() >= 3);

        Harness h;
        h.store.setValue(keys::MonitorOpenExternCalls, true);
        if (chunk == 0) {
            h.listener->processBytes(stream); // all lines in one read
        } else {
            for (qsizetype i = 0; i < stream.size(); i += chunk)
                h.listener->processBytes(stream.mid(i, chunk));
        }
        h.listener->processBytes("\n");
        QCOMPARE(summaries(*h.listener), summaries(*baseline.listener));
        QCOMPARE(extensionText(*h.listener), extensionText(*baseline.listener));
        QCOMPARE(h.presenter.titles(), baseline.presenter.titles());
    }

    void badLinesChangeNothing_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("reloads");
        QTest::newRow("ring with too few fields") << L(u"RING;0;0301234567;"_s) << 0;
        QTest::newRow("call with too few fields") << L(u"CALL;0;1;5551234;"_s) << 0;
        QTest::newRow("disconnect without duration") << L(u"DISCONNECT;0;"_s) << 0;
        QTest::newRow("unknown event") << L(u"HOLD;0;1;"_s) << 1;
        QTest::newRow("not ASCII") << L(u"RING;0;03\xc3\xa4;5551234;SIP0;"_s) << 0;
    }
    void badLinesChangeNothing()
    {
        QFETCH(QString, line);
        QFETCH(int, reloads);
        Harness h;
        h.feed({L(u"RING;0;0301234567;5551234;SIP0;"_s)});
        const QStringList before = summaries(*h.listener);
        const QString states = extensionText(*h.listener);
        int posted = 0;
        QObject context;
        NotificationCenter::defaultCenter().addObserver(&context, Notifications::RELOADCURRENTCALLS,
                                                        [&](const Notification&) { ++posted; });
        QSignalSpy processed(h.listener.get(), &StreamListener::lineProcessed);
        h.listener->processBytes(line.toUtf8() + "\n");
        QCOMPARE(summaries(*h.listener), before);
        QCOMPARE(extensionText(*h.listener), states);
        QCOMPARE(posted, reloads);
        QCOMPARE(processed.count(), 0);
        QCOMPARE(h.presenter.notes.size(), 1);
    }

    void everyLineReloadsCurrentCalls()
    {
        Harness h;
        int reloads = 0;
        QObject context;
        NotificationCenter::defaultCenter().addObserver(&context, Notifications::RELOADCURRENTCALLS,
                                                        [&](const Notification&) { ++reloads; });
        h.feed({L(u"RING;0;0301234567;5550000;SIP1;"_s), L(u"DISCONNECT;0;0;"_s)}); // a hidden call
        QCOMPARE(reloads, 2);
        QVERIFY(h.listener->monitorCalls().isEmpty());
    }

    void notificationText_data()
    {
        QTest::addColumn<QVariantMap>("call");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("subtitle");
        QTest::addColumn<QString>("body");
        const QVariantMap ring{{u"cmd"_s, u"RING"_s}, {u"number"_s, u"0301234567"_s}, {u"line"_s, u"5551234"_s}, {u"calltype"_s, 1},
                               {u"calltime"_s, u"21.11.26 10:00:00"_s}};
        auto with = [](QVariantMap m, const QVariantMap& more) {
            for (auto it = more.begin(); it != more.end(); ++it)
                m.insert(it.key(), it.value());
            return m;
        };
        QTest::newRow("ring from an unknown number") << ring << u"Incoming call"_s << u"Unknown caller"_s
                                                     << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("ring from a withheld number") << with(ring, {{u"number"_s, u""_s}}) << u"Incoming call"_s
                                                     << u"Number withheld"_s << u"\nLine: 5551234"_s;
        QTest::newRow("ring from a contact, label without tabs")
            << with(ring, {{u"contact"_s, QStringList{u"ab-1"_s, u"Anna Berg"_s, u"mo\tbile"_s}}}) << u"Incoming call"_s
            << u"Anna Berg"_s << u"0301234567 (mobile)\nLine: 5551234"_s;
        QTest::newRow("ring from a reverse-lookup name")
            << with(ring, {{u"contact"_s, QStringList{u""_s, u"Pizzeria"_s, u""_s}}}) << u"Incoming call"_s << u"Pizzeria"_s
            << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("ring without a line") << with(ring, {{u"line"_s, u""_s}}) << u"Incoming call"_s << u"Unknown caller"_s
                                             << u"0301234567"_s;
        QTest::newRow("answered call ended")
            << with(ring, {{u"cmd"_s, u"DISCONNECT"_s}, {u"connected"_s, true}, {u"duration"_s, u"3725"_s}}) << u"Call ended"_s
            << u"Unknown caller"_s << u"0301234567\nDuration: 01:02:05"_s;
        QTest::newRow("missed call") << with(ring, {{u"cmd"_s, u"DISCONNECT"_s}, {u"calltype"_s, 2}, {u"duration"_s, u"0"_s}})
                                     << u"Missed call"_s << u"Unknown caller"_s << u"0301234567\n21.11.26 10:00:00"_s;
        QTest::newRow("outgoing call not answered")
            << with(ring, {{u"cmd"_s, u"DISCONNECT"_s}, {u"calltype"_s, 3}}) << u"No answer"_s << u"Unknown caller"_s
            << u"0301234567\n21.11.26 10:00:00"_s;
        QTest::newRow("call dialled by the program") << with(ring, {{u"cmd"_s, u"CALL"_s}, {u"calltype"_s, 3}})
                                                     << u"Please pick up the handset"_s << u"Unknown caller"_s
                                                     << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("call begun at a telephone")
            << with(ring, {{u"cmd"_s, u"CALL"_s}, {u"calltype"_s, 3}, {u"externalStart"_s, true}}) << u"Outgoing call"_s
            << u"Unknown caller"_s << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("connected call has no title") << with(ring, {{u"cmd"_s, u"CONNECT"_s}, {u"connected"_s, true}}) << u""_s
                                                     << u"Unknown caller"_s << u"0301234567\nLine: 5551234"_s;
    }
    void notificationText()
    {
        QFETCH(QVariantMap, call);
        QFETCH(QString, title);
        QFETCH(QString, subtitle);
        QFETCH(QString, body);
        const auto note = methods::notificationForCall(CallRecord::fromMap(call));
        QVERIFY(note);
        QCOMPARE(note->title, title);
        QCOMPARE(note->subtitle, subtitle);
        QCOMPARE(note->body, body);
    }

    void dialledCallsAndInternalCalls()
    {
        Harness h;
        h.prefs->useNotifications = true;
        QVERIFY(!methods::notificationForCall(CallRecord::fromMap({{u"cmd"_s, u"DIAL"_s}})));

        h.listener->addNewCallForExtensionForContact(QStringLiteral("0309876"), QStringLiteral("1"),
                                                     {QStringLiteral("ab"), QStringLiteral("Bob"), QString()});
        QCOMPARE(summaries(*h.listener), QStringList{u"DIAL/3/-//0309876///1/Fax"_s});
        QCOMPARE(extensionText(*h.listener), QStringLiteral("1=2"));
        h.feed({L(u"CALL;3;1;5551234;0309876;SIP0;"_s), L(u"CONNECT;3;1;0309876;"_s), L(u"DISCONNECT;3;8;"_s)});
        QCOMPARE(summaries(*h.listener), QStringList{u"DISCONNECT/3/c/8/0309876/5551234/SIP0/1/Fax"_s});
        QCOMPARE(h.listener->monitorCalls().at(0).contactName(), QStringLiteral("Bob"));
        QVERIFY(h.listener->monitorCalls().at(0).calltime.isEmpty()); // the program dialled it: no router time
        QCOMPARE(h.presenter.titles(), (QStringList{u"Please pick up the handset"_s, u"Call ended"_s}));

        h.listener->addNewCallForExtensionForContact(QStringLiteral("**612"), QString(), {});
        QCOMPARE(h.listener->monitorCalls().size(), 1);
        QCOMPARE(h.listener->extensions().value(QStringLiteral("612")), 3);
        QCOMPARE(h.listener->extensions().value(QStringLiteral("50")), 3);

        h.listener->addNewCallForExtensionForContact(QStringLiteral("0301"), QStringLiteral("611"), {});
        const QString uid = h.listener->monitorCalls().constLast().UID;
        h.listener->cancelCallForUID(uid);
        QCOMPARE(h.listener->monitorCalls().constLast().cmd, QStringLiteral("DISCONNECT"));
        QCOMPARE(h.listener->extensions().value(QStringLiteral("611")), 1);
    }

    void reverseLookupNameArrivesLater()
    {
        ThreadedResolver resolver;
        Harness h(&resolver);
        h.feed({L(u"RING;0;0301234567;5551234;SIP0;"_s)});
        QCOMPARE(h.presenter.notes.size(), 1);
        QTRY_COMPARE(h.listener->monitorCalls().at(0).contactName(), QStringLiteral("Pizzeria 67"));
        QCOMPARE(h.presenter.notes.size(), 2);
        QCOMPARE(h.presenter.notes.at(1).subtitle, QStringLiteral("Pizzeria 67"));
        // The second notification replaces the first one of the same call.
        QCOMPARE(h.presenter.previousHandles.at(1).toString(), QStringLiteral("note-1"));
        QCOMPARE(h.listener->monitorCalls().at(0).UILocalNote.toString(), QStringLiteral("note-2"));
    }

    void clickDialsTheNumberBack()
    {
        Harness h;
        h.feed({L(u"RING;0;0301234567;5551234;SIP0;"_s), L(u"RING;1;;5551234;SIP0;"_s)});
        h.presenter.click(h.listener->monitorCalls().at(0).UID);
        h.presenter.click(h.listener->monitorCalls().at(1).UID); // withheld: nothing to dial
        h.presenter.click(QStringLiteral("no such call"));
        QCOMPARE(h.openedURLs, QStringList{u"dial://0301234567"_s});
    }

    void contactAndMemoUpdates()
    {
        Harness h;
        h.feed({L(u"RING;4;0301234567;5551234;SIP0;"_s)});
        h.listener->setContactNameWithLabelAndABIDForConnID(QStringLiteral("Anna"), QStringLiteral("work"),
                                                            QStringLiteral("ab-9"), QStringLiteral("4"));
        QCOMPARE(h.listener->monitorCalls().at(0).contact, (QStringList{u"ab-9"_s, u"Anna"_s, u"work"_s}));
        h.listener->setMemoIDForConnID(7, QStringLiteral("4"));
        QCOMPARE(h.listener->monitorCalls().at(0).MemoID.value_or(-1), 7);
        h.listener->setMemoIDForConnID(-1, QStringLiteral("4"));
        QVERIFY(!h.listener->monitorCalls().at(0).MemoID);
        h.listener->resetMonitorCalls();
        QVERIFY(h.listener->monitorCalls().isEmpty());
    }

    void recordKeyValueFormRoundTrips()
    {
        CallRecord r;
        r.cmd = QStringLiteral("CONNECT");
        r.number = QStringLiteral("0301");
        r.contact = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
        r.calltype = 3;
        r.MemoID = 12;
        r.dateStart = QDateTime(QDate(2026, 11, 21), QTime(10, 0));
        r.UID = CallRecord::uniqueID();
        const QVariantMap m = r.toMap();
        QCOMPARE(m.value(u"contact"_s).toStringList(), r.contact);
        QVERIFY(!m.contains(u"dateEnd"_s));
        QCOMPARE(CallRecord::fromMap(m).toMap(), m);
    }
};

QTEST_GUILESS_MAIN(TestStreamListener)
#include "tst_streamlistener.moc"
