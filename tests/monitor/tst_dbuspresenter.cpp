#include "monitor/DBusNotificationPresenter.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// A notification server on the test's own bus: keeps what it was sent, answers with ids.
class FakeNotificationServer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Call
    {
        QString app;
        uint replaces;
        QString summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    QList<Call> calls;
    QList<uint> closed;
    uint nextId = 100;

public slots:
    uint Notify(const QString& app, uint replaces, const QString&, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int)
    {
        calls.append({app, replaces, summary, body, actions, hints});
        return replaces ? replaces : nextId++;
    }
    void CloseNotification(uint id) { closed.append(id); }
    QStringList GetCapabilities() { return {u"body"_s, u"actions"_s}; }
};

class TestDBusPresenter : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--print-address"_s, u"--nofork"_s});
        QVERIFY2(m_daemon.waitForStarted(5000), "dbus-daemon did not start");
        QVERIFY(m_daemon.waitForReadyRead(5000));
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        QDBusConnection service = QDBusConnection::connectToBus(m_address, u"service"_s);
        QVERIFY(service.registerObject(DBusNotificationPresenter::Path, &m_server,
                                       QDBusConnection::ExportAllSlots));
        QVERIFY(service.registerService(DBusNotificationPresenter::Service));
    }
    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(u"service"_s);
        QDBusConnection::disconnectFromBus(u"client"_s);
        m_daemon.terminate();
        m_daemon.waitForFinished(5000);
    }

    void noServerMeansUnavailable()
    {
        DBusNotificationPresenter presenter(QDBusConnection(u"not connected"_s));
        QVERIFY(!presenter.isAvailable());
    }

    void deliverReplaceAndClick()
    {
        m_server.calls.clear();
        DBusNotificationPresenter presenter(QDBusConnection::connectToBus(m_address, u"client"_s));
        QVERIFY(presenter.isAvailable());

        CallNotification ring{u"uid-1"_s, u"Incoming call"_s, u"Unknown caller"_s,
                              u"0301234567\nLine: 5551234"_s, u"0301234567"_s};
        const QVariant handle = presenter.deliver(ring, {});
        QTRY_COMPARE(m_server.calls.size(), 1);
        const auto first = m_server.calls.at(0);
        QCOMPARE(first.summary, u"Incoming call: Unknown caller"_s);
        QCOMPARE(first.body, ring.body);
        QCOMPARE(first.actions.value(0), u"default"_s);
        QCOMPARE(first.hints.value(u"suppress-sound"_s).toBool(), true);

        // The same call again (say, a name arrived): it replaces the earlier notification.
        QTest::qWait(50); // let the reply with the id arrive
        CallNotification named = ring;
        named.subtitle = u"Pizzeria"_s;
        presenter.deliver(named, handle);
        QTRY_COMPARE(m_server.calls.size(), 2);
        QCOMPARE(m_server.calls.at(1).replaces, 100u);
        QCOMPARE(m_server.calls.at(1).summary, u"Incoming call: Pizzeria"_s);

        // A click on the notification reports the call.
        QSignalSpy clicked(&presenter, &NotificationPresenter::activated);
        QDBusMessage signal = QDBusMessage::createSignal(
            DBusNotificationPresenter::Path, DBusNotificationPresenter::Service, u"ActionInvoked"_s);
        signal << 100u << u"default"_s;
        QVERIFY(QDBusConnection(u"service"_s).send(signal));
        QTRY_COMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toString(), u"uid-1"_s);

        presenter.withdraw(handle);
        QTRY_COMPARE(m_server.closed, QList<uint>{100u});
    }

    void withheldNumberHasNoAction()
    {
        m_server.calls.clear();
        DBusNotificationPresenter presenter(QDBusConnection::connectToBus(m_address, u"client"_s));
        presenter.deliver(
            {u"uid-2"_s, u"Missed call"_s, u"Number withheld"_s, u"\n21.11.26 10:00:00"_s, QString()}, {});
        QTRY_COMPARE(m_server.calls.size(), 1);
        QVERIFY(m_server.calls.at(0).actions.isEmpty());
    }

private:
    QProcess m_daemon;
    QString m_address;
    FakeNotificationServer m_server;
};

QTEST_GUILESS_MAIN(TestDBusPresenter)
#include "tst_dbuspresenter.moc"
