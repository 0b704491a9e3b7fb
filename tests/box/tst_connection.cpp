// The HTTP transport against a scripted server on a real socket: time-outs only until the
// answer begins, the early stop on a marker, the markers "-2" and "", and HTTP 401 on the
// request's own location; and which session a location gets.
#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "box/FBConnection.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {
struct Step
{
    int delayMs;
    QByteArray bytes;
};
} // namespace
Q_DECLARE_METATYPE(Step)
namespace {

// Accepts one connection, reads the request, writes the steps, holds the line, closes.
class ScriptedServer
{
public:
    ScriptedServer(QList<Step> steps, int holdMs)
    {
        m_fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in addr{};
        addr.sin_family = AF_INET;
        addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(m_fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
        ::listen(m_fd, 1);
        socklen_t len = sizeof addr;
        ::getsockname(m_fd, reinterpret_cast<sockaddr*>(&addr), &len);
        m_port = ntohs(addr.sin_port);
        m_thread = std::thread([this, steps, holdMs] {
            const int c = ::accept(m_fd, nullptr, nullptr);
            if (c < 0)
                return;
            QByteArray request;
            char buf[4096];
            while (!request.contains("\r\n\r\n")) {
                const ssize_t n = ::recv(c, buf, sizeof buf, 0);
                if (n <= 0)
                    break;
                request.append(buf, n);
            }
            for (const Step& s : steps) {
                std::this_thread::sleep_for(std::chrono::milliseconds(s.delayMs));
                ::send(c, s.bytes.constData(), size_t(s.bytes.size()), MSG_NOSIGNAL);
            }
            // Held until the time is over or the test is done with the server.
            std::unique_lock lock(m_mutex);
            m_done.wait_for(lock, std::chrono::milliseconds(holdMs), [this] { return m_stopping; });
            ::close(c);
        });
    }
    ~ScriptedServer()
    {
        {
            std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        m_done.notify_all();
        ::shutdown(m_fd, SHUT_RDWR);
        m_thread.join();
        ::close(m_fd);
    }
    QString url() const { return QStringLiteral("http://127.0.0.1:%1/query.lua").arg(m_port); }

private:
    int m_fd = -1;
    int m_port = 0;
    std::mutex m_mutex;
    std::condition_variable m_done;
    bool m_stopping = false;
    std::thread m_thread;
};

const QByteArray kOpen = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nConnection: close\r\n\r\n";
} // namespace

class TestConnection : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_dir;
    std::unique_ptr<SettingsStore> m_store;
    MemorySecretStore m_secrets;

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<SettingsStore>(m_dir.filePath(QStringLiteral("settings.json")));
    }

    void answers_data()
    {
        QTest::addColumn<QList<Step>>("steps");
        QTest::addColumn<int>("holdMs");
        QTest::addColumn<QString>("cancelOn");
        QTest::addColumn<QString>("expected");
        // maxMs is far below holdMs: it tells a transfer that ended by itself from one that
        // waited for the server to hang up, with room for a busy machine.
        QTest::addColumn<int>("maxMs");
        QTest::newRow("plain answer") << QList<Step>{{0, "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello"}}
                                      << 0 << QString() << QStringLiteral("hello") << 900;
        QTest::newRow("empty answer is the empty text")
            << QList<Step>{{0, "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"}} << 0 << QString() << QString()
            << 5000;
        QTest::newRow("nothing before the time-out is a failure")
            << QList<Step>{} << 10000 << QString() << QStringLiteral("-2") << 6000;
        QTest::newRow("an answer that has begun is waited for")
            << QList<Step>{{0, kOpen + "first;"}, {1600, "second"}} << 0 << QString()
            << QStringLiteral("first;second") << 6000;
        QTest::newRow("marker ends the transfer early")
            << QList<Step>{{0, kOpen + "1;2;END;"}} << 10000 << QStringLiteral("END")
            << QStringLiteral("1;2;END;") << 6000;
        QTest::newRow("marker arriving in a later piece")
            << QList<Step>{{0, kOpen + "1;E"}, {200, "ND;rest"}} << 10000 << QStringLiteral("END")
            << QStringLiteral("1;END;rest") << 6000;
        QTest::newRow("two semicolons never stop early")
            << QList<Step>{{0, kOpen + "a;;b"}, {300, ";;c"}} << 0 << QStringLiteral(";;")
            << QStringLiteral("a;;b;;c") << 5000;
    }
    void answers()
    {
        QFETCH(QList<Step>, steps);
        QFETCH(int, holdMs);
        QFETCH(QString, cancelOn);
        QFETCH(QString, expected);
        QFETCH(int, maxMs);
        ScriptedServer server(steps, holdMs);
        FBConnection connection;
        connection.timeoutSeconds = 1;
        connection.cancelOnString = cancelOn;
        FBRequest request;
        request.url = server.url();
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(connection.startWithRequest(request, true, FBEncoding::Ascii), expected);
        QVERIFY2(clock.elapsed() < maxMs, qPrintable(QString::number(clock.elapsed())));
    }

    void refusedConnectionIsAFailure()
    {
        int port = 0;
        {
            ScriptedServer probe({}, 0);
            port = probe.url().section(u':', 2).section(u'/', 0, 0).toInt();
            FBConnection c;
            FBRequest r;
            r.url = probe.url();
            c.timeoutSeconds = 1;
            c.startWithRequest(r, true, FBEncoding::Ascii); // takes the one connection
        }
        FBConnection connection;
        FBRequest request;
        request.url = QStringLiteral("http://127.0.0.1:%1/").arg(port);
        QCOMPARE(connection.startWithRequest(request, true, FBEncoding::Ascii), QStringLiteral("-2"));
        QVERIFY(connection.errorOccured);
        QVERIFY(!connection.timedOut);
    }

    // Two locations, the first current: a 401 from the second router is the second's wrong
    // password, reported once until its next login, and leaves the current one alone.
    void unauthorizedMarksTheRequestsOwnLocationOnce()
    {
        TNPreferencesManager manager(*m_store, m_secrets);
        manager.start();
        const QString current = manager.addNewLocation();
        const QString other = manager.addNewLocation();
        manager.activateCurrentLocationForID(current);
        NotificationCenter center;
        RouterSessions sessions(center, Clock::system(), &manager);
        const auto otherPrefs = manager.locationPreferencesForUID(other);
        const auto otherSession = sessions.forLocation(*otherPrefs);
        QStringList failures;
        for (int i = 0; i < 2; ++i) {
            ScriptedServer server({{0, "HTTP/1.1 401 Unauthorized\r\nContent-Length: 4\r\n\r\ndeny"}}, 0);
            FBConnection connection(*otherPrefs, *otherSession);
            FBRequest request;
            request.url = server.url();
            QCOMPARE(connection.startWithRequest(request, true, FBEncoding::Ascii), QStringLiteral("deny"));
            QCOMPARE(connection.httpStatus, 401L);
            if (connection.failure)
                failures << connection.failure.message;
            QCOMPARE(connection.failure.kind == RouterFailure::Kind::WrongPassword, i == 0);
        }
        QCOMPARE(failures, QStringList{QStringLiteral("The password for the router is wrong.")});
        QVERIFY(otherSession->loginError);
        QVERIFY(!sessions.forLocation(*manager.locationPreferencesForUID(current))->loginError);
    }

    // A session outlives reloading its location, but not a change of host or credentials: the
    // refused login or the SID of the old router must not carry over.
    void sessionsFollowTheLocationsCredentials()
    {
        NotificationCenter center;
        RouterSessions sessions(center, Clock::system());
        TNPreferences prefs(*m_store, m_secrets);
        prefs.uid = QStringLiteral("A");
        prefs.hostName = QStringLiteral("fritz.box");
        prefs.passWord = QStringLiteral("old");
        const auto first = sessions.forLocation(prefs);
        first->loginError = true;
        TNPreferences reloaded(*m_store, m_secrets);
        reloaded.uid = prefs.uid;
        reloaded.hostName = prefs.hostName;
        reloaded.passWord = prefs.passWord;
        QCOMPARE(sessions.forLocation(reloaded), first);
        reloaded.passWord = QStringLiteral("new");
        const auto second = sessions.forLocation(reloaded);
        QVERIFY(second != first);
        QVERIFY(!second->loginError);
        prefs.uid = QStringLiteral("B");
        QVERIFY(sessions.forLocation(prefs) != second);
    }
};

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
