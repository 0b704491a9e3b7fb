#include "box/FBNetworkHelper.h"

#include <QTcpServer>
#include <QTemporaryFile>
#include <QTest>

class TestNetworkHelper : public QObject
{
    Q_OBJECT
private slots:
    void neighbourTable()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write("IP address       HW type     Flags       HW address            Mask     Device\n"
                   "192.168.178.1    0x1         0x2         3c:a6:2f:11:22:33     *        wlp2s0\n"
                   "192.168.178.20   0x1         0x0         00:00:00:00:00:00     *        wlp2s0\n"
                   "10.0.0.1         0x1         0x2         aa:bb:cc:dd:ee:ff     *        enp3s0\n");
        file.close();
        const auto table = FBNetworkHelper::addressTable(file.fileName());
        QCOMPARE(table.size(), 2); // the incomplete entry is no neighbour
        QCOMPARE(FBNetworkHelper::macForAddress(table, QStringLiteral("192.168.178.1")),
                 QStringLiteral("3c:a6:2f:11:22:33"));
        QCOMPARE(FBNetworkHelper::macForAddress(table, QStringLiteral("192.168.178.20")), QString());
        QVERIFY(FBNetworkHelper::addressTable(QStringLiteral("/nonexistent/arp")).isEmpty());
    }

    void addressesAndPorts()
    {
        QCOMPARE(FBNetworkHelper::getIPAddressForHostname(QStringLiteral("127.0.0.1")),
                 QStringLiteral("127.0.0.1"));
        QCOMPARE(FBNetworkHelper::getIPAddressForHostname(QStringLiteral("::1")), QString());
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost, 0));
        const int port = server.serverPort();
        QVERIFY(FBNetworkHelper::probePort(port, QStringLiteral("127.0.0.1")));
        server.close();
        QVERIFY(!FBNetworkHelper::probePort(port, QStringLiteral("127.0.0.1"), 500));
    }
};

QTEST_GUILESS_MAIN(TestNetworkHelper)
#include "tst_networkhelper.moc"
