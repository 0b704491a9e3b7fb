#include "assistant/SsdpDiscovery.h"

#include <QNetworkDatagram>
#include <QSignalSpy>
#include <QTest>
#include <QUdpSocket>

namespace {
// A peer on loopback that answers every search with the given datagrams.
class Peer : public QObject
{
public:
    explicit Peer(QList<QByteArray> answers) : m_answers(std::move(answers))
    {
        m_socket.bind(QHostAddress::LocalHost, 0);
        connect(&m_socket, &QUdpSocket::readyRead, this, [this] {
            while (m_socket.hasPendingDatagrams()) {
                const QNetworkDatagram d = m_socket.receiveDatagram();
                received << d.data();
                for (const QByteArray& a : m_answers)
                    m_socket.writeDatagram(a, d.senderAddress(), quint16(d.senderPort()));
            }
        });
    }
    quint16 port() const { return m_socket.localPort(); }
    QList<QByteArray> received;

private:
    QUdpSocket m_socket;
    QList<QByteArray> m_answers;
};

const QByteArray kAvm =
    "HTTP/1.1 200 OK\r\nLOCATION: http://127.0.0.1:49000/tr64desc.xml\r\n"
    "SERVER: FRITZ!Box 6360 Cable (um) UPnP/1.0 AVM FRITZ!Box 6360 Cable (um) 85.06.52\r\n"
    "CACHE-CONTROL: max-age=1800\r\nEXT:\r\n\r\n";
const QByteArray kOther = "HTTP/1.1 200 OK\r\nSERVER: Linux/5.4 UPnP/1.0 MiniUPnPd/2.1\r\n\r\n";
} // namespace

class TestSsdpDiscovery : public QObject
{
    Q_OBJECT
private slots:
    void answers_data();
    void answers();
};

void TestSsdpDiscovery::answers_data()
{
    QTest::addColumn<QList<QByteArray>>("sent");
    QTest::addColumn<QString>("expectedServer"); // empty: nothing listed

    QTest::newRow("two answers from one host list it once")
        << QList<QByteArray>{kAvm, kAvm} << QStringLiteral("FRITZ!Box 6360 Cable (um) 85.06.52");
    QTest::newRow("a device that is not from AVM")
        << QList<QByteArray>{kOther} << QStringLiteral("** Unkown Device Name **");
    QTest::newRow("nobody answers") << QList<QByteArray>{} << QString();
}

void TestSsdpDiscovery::answers()
{
    QFETCH(QList<QByteArray>, sent);
    QFETCH(QString, expectedServer);

    Peer peer(sent);
    SsdpDiscovery discovery;
    discovery.setTarget(QHostAddress::LocalHost, peer.port());
    discovery.setCompletionInterval(800);
    QSignalSpy completed(&discovery, &SsdpDiscovery::searchCompleted);
    discovery.lookupDevices();
    QVERIFY(completed.wait(5000));

    QCOMPARE(peer.received, QList<QByteArray>{SsdpDiscovery::searchMessage()});
    QVERIFY(peer.received.first().startsWith("M-SEARCH * HTTP/1.1\r\nHost: 239.255.255.250:1900\r\n"));
    const QVariantList devices = discovery.devices();
    QCOMPARE(completed.first().first().toList(), devices);
    if (expectedServer.isEmpty()) {
        QVERIFY(devices.isEmpty());
        return;
    }
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices.first().toMap().value(QStringLiteral("Host")).toString(), QStringLiteral("127.0.0.1"));
    QCOMPARE(devices.first().toMap().value(QStringLiteral("Server")).toString(), expectedServer);
}

QTEST_GUILESS_MAIN(TestSsdpDiscovery)
#include "tst_ssdpdiscovery.moc"
