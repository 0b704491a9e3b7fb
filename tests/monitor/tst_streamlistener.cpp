#include "base/Clock.h"
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
#include <QTcpServer>
#include <QTcpSocket>
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
    QStringList searchNameForPhonenumber(const QString&) override
    {
        return {QString(), QString(), QString()};
    }
    void reverseSearchInBackground(const QString& connID, const QString& number, ReverseResult done) override
    {
        std::thread([connID, number, done] {
            done(connID, QStringLiteral("Pizzeria ") + number.right(2));
        }).detach();
    }
};

struct Harness
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(QStringLiteral("settings.json"))};
    MemorySecretStore secrets;
    std::shared_ptr<TNPreferences> prefs = std::make_shared<TNPreferences>(store, secrets);
    NotificationCenter center;
    RecordingPresenter presenter;
    QStringList openedURLs;
    int windowRequests = 0;
    std::unique_ptr<StreamListener> listener;

    explicit Harness(CallerNameResolver* names = nullptr)
    {
        prefs->useNotifications = true;
        prefs->lines = {QVariantMap{{QStringLiteral("Line"), QStringLiteral("0305550000")},
                                    {QStringLiteral("HideMonitor"), true}}};
        listener = std::make_unique<StreamListener>(StreamListenerServices{
            .preferences = [p = prefs] { return p; },
            .settings = store,
            .center = center,
            .clock = Clock::system(),
            .names = names,
            .presenter = &presenter,
            .memoDetails = {},
            .openCallmonitorWindow = [this] { ++windowRequests; },
            .openURL = [this](const QString& url) { openedURLs << url; },
            .setStatusItemState = {},
        });
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
    // However the bytes arrive, the same records and states result.
    void deliveryEquivalence_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("chunk");
        QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/monitor/with_and_without_final_semicolon.txt"));
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
        QTest::newRow("unknown event") << L(u"HOLD;0;1;"_s) << 1;
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
        h.center.addObserver(&context, Notifications::RELOADCURRENTCALLS,
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
        h.center.addObserver(&context, Notifications::RELOADCURRENTCALLS,
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
        const QVariantMap ring{{u"cmd"_s, u"RING"_s},
                               {u"number"_s, u"0301234567"_s},
                               {u"line"_s, u"5551234"_s},
                               {u"calltype"_s, 1},
                               {u"calltime"_s, u"21.11.26 10:00:00"_s}};
        auto with = [](QVariantMap m, const QVariantMap& more) {
            for (auto it = more.begin(); it != more.end(); ++it)
                m.insert(it.key(), it.value());
            return m;
        };
        QTest::newRow("ring from an unknown number")
            << ring << u"Incoming call"_s << u"Unknown caller"_s << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("ring from a withheld number")
            << with(ring, {{u"number"_s, u""_s}}) << u"Incoming call"_s << u"Number withheld"_s
            << u"\nLine: 5551234"_s;
        QTest::newRow("ring from a contact, label without tabs")
            << with(ring, {{u"contact"_s, QStringList{u"ab-1"_s, u"Anna Berg"_s, u"mo\tbile"_s}}})
            << u"Incoming call"_s << u"Anna Berg"_s << u"0301234567 (mobile)\nLine: 5551234"_s;
        QTest::newRow("ring without a line") << with(ring, {{u"line"_s, u""_s}}) << u"Incoming call"_s
                                             << u"Unknown caller"_s << u"0301234567"_s;
        QTest::newRow("answered call ended")
            << with(ring, {{u"cmd"_s, u"DISCONNECT"_s}, {u"connected"_s, true}, {u"duration"_s, u"3725"_s}})
            << u"Call ended"_s << u"Unknown caller"_s << u"0301234567\nDuration: 01:02:05"_s;
        QTest::newRow("missed call")
            << with(ring, {{u"cmd"_s, u"DISCONNECT"_s}, {u"calltype"_s, 2}, {u"duration"_s, u"0"_s}})
            << u"Missed call"_s << u"Unknown caller"_s << u"0301234567\n21.11.26 10:00:00"_s;
        QTest::newRow("outgoing call not answered")
            << with(ring, {{u"cmd"_s, u"DISCONNECT"_s}, {u"calltype"_s, 3}}) << u"No answer"_s
            << u"Unknown caller"_s << u"0301234567\n21.11.26 10:00:00"_s;
        QTest::newRow("call dialled by the program")
            << with(ring, {{u"cmd"_s, u"CALL"_s}, {u"calltype"_s, 3}}) << u"Please pick up the handset"_s
            << u"Unknown caller"_s << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("call begun at a telephone")
            << with(ring, {{u"cmd"_s, u"CALL"_s}, {u"calltype"_s, 3}, {u"externalStart"_s, true}})
            << u"Outgoing call"_s << u"Unknown caller"_s << u"0301234567\nLine: 5551234"_s;
        QTest::newRow("connected call has no title")
            << with(ring, {{u"cmd"_s, u"CONNECT"_s}, {u"connected"_s, true}}) << u""_s << u"Unknown caller"_s
            << u"0301234567\nLine: 5551234"_s;
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

    // The location's notification switch decides: desktop notifications, or the window instead.
    void notificationsOrTheWindow_data()
    {
        QTest::addColumn<bool>("notifications");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<int>("windows");
        QTest::newRow("notifications on") << true << QStringList{u"Incoming call"_s, u"Call ended"_s} << 0;
        QTest::newRow("notifications off") << false << QStringList{} << 3;
    }
    void notificationsOrTheWindow()
    {
        QFETCH(bool, notifications);
        Harness h;
        h.prefs->useNotifications = notifications;
        h.feed({L(u"RING;0;0301234567;5551234;SIP0;"_s), L(u"CONNECT;0;11;0301234567;"_s),
                L(u"DISCONNECT;0;65;"_s),
                L(u"RING;1;0301234567;5550000;SIP1;"_s)}); // the last on a hidden line: nothing at all
        QTEST(h.presenter.titles(), "titles");
        QTEST(h.windowRequests, "windows");
        QCOMPARE(h.listener->monitorCalls().size(), 1);
    }

    // The router closing the stream is a loss like an error; lines it sent before still count.
    void endOfStreamIsAnError()
    {
        QTcpServer router;
        QVERIFY(router.listen(QHostAddress::LocalHost));
        Harness h;
        QSignalSpy lost(h.listener.get(), &StreamListener::connectionLost);
        QSignalSpy connected(h.listener.get(), &StreamListener::connectedChanged);
        h.listener->connectToHost(u"127.0.0.1"_s, router.serverPort());
        QVERIFY(router.waitForNewConnection(5000));
        QTcpSocket* peer = router.nextPendingConnection();
        QTRY_VERIFY(h.listener->isConnected());
        peer->write(L(u"RING;0;0301234567;5551234;SIP0;\n"_s).toLatin1() + L(u"CONNECT;0;1"_s).toLatin1());
        peer->flush();
        QTRY_COMPARE(h.listener->monitorCalls().size(), qsizetype(1));
        peer->write("1;0301234567;\n" + L(u"DISCONNECT;0;3;"_s).toLatin1()); // the last line never ends
        peer->disconnectFromHost();
        QTRY_COMPARE(lost.count(), 1);
        QVERIFY(!h.listener->isConnected());
        QCOMPARE(h.listener->monitorCalls().at(0).cmd, u"CONNECT"_s);
        QCOMPARE(h.listener->monitorCalls().at(0).extension, u"11"_s);
        QCOMPARE(connected.count(), 2);
        QVERIFY(h.listener->extensions().isEmpty());
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
