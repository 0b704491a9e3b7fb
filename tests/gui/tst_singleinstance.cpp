#include "SingleInstance.h"

#include <QDataStream>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;

class TestSingleInstance : public QObject
{
    Q_OBJECT
private slots:
    void secondStartForwardsItsArguments();
};

void TestSingleInstance::secondStartForwardsItsArguments()
{
    const QString name = u"tondrel-test-"_s + QUuid::createUuid().toString(QUuid::Id128);
    SingleInstance first(name);
    QVERIFY(first.claim());
    QSignalSpy received(&first, &SingleInstance::argumentsReceived);

    SingleInstance second(name);
    QVERIFY(!second.claim());
    // forward() blocks for the answer, so the first instance answers from another thread's loop
    // in real life; here the two share one, so send without waiting for the answer.
    QLocalSocket socket;
    socket.connectToServer(name);
    QVERIFY(socket.waitForConnected(2000));
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out << QStringList{u"tel:+49301234567"_s};
    // Split in two writes: the receiver must wait for the whole list.
    socket.write(data.left(5));
    socket.flush();
    QTest::qWait(50);
    socket.write(data.mid(5));
    QTRY_COMPARE(received.size(), 1);
    QCOMPARE(received.first().first().toStringList(), QStringList{u"tel:+49301234567"_s});
}

QTEST_MAIN(TestSingleInstance)
#include "tst_singleinstance.moc"
