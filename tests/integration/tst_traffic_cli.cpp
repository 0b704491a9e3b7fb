// tondrel-cli traffic against the simulator: the real-time queues summed element-wise, figures
// that move on between samples, and records of zeros while no router answers.
#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
bool addLocation(const TempEnv& env, int webPort)
{
    return runCli(env,
                  {u"location"_s, u"add"_s, u"--name"_s, u"sim"_s, u"--host"_s, u"127.0.0.1"_s,
                   u"--web-port"_s, QString::number(webPort), u"--password-stdin"_s},
                  "secret\n")
               .exitCode == 0;
}

QList<QJsonObject> records(const QByteArray& out)
{
    QList<QJsonObject> list;
    for (const QByteArray& line : out.split('\n'))
        if (!line.trimmed().isEmpty())
            list << QJsonDocument::fromJson(line).object();
    return list;
}

QStringList texts(const QJsonValue& v)
{
    QStringList out;
    for (const QJsonValue& e : v.toArray())
        out << e.toString();
    return out;
}
} // namespace

class TestTrafficCli : public QObject
{
    Q_OBJECT
private slots:
    void realtimeQueuesSummedAndFiguresMoveOn();
    void zerosWhileNoRouterAnswers();
};

void TestTrafficCli::realtimeQueuesSummedAndFiguresMoveOn()
{
    TempEnv env;
    const QString scenario = env.root.filePath(u"s.json"_s);
    QFile f(scenario);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(R"({"traffic":{"queue2":"10,20,30","queue3":"1,2","max_us":"1000"}})");
    f.close();
    SimulatorProcess sim({u"--scenario"_s, scenario});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    QVERIFY(addLocation(env, sim.port(u"web"_s)));
    const CliResult r = runCli(env, {u"--json"_s, u"traffic"_s, u"--count"_s, u"2"_s});
    QVERIFY2(r.exitCode == 0, r.err.constData());
    const auto list = records(r.out);
    QCOMPARE(list.size(), 2);
    QCOMPARE(texts(list[0].value(u"us_realtime"_s)), (QStringList{u"11"_s, u"22"_s, u"30"_s}));
    QCOMPARE(list[0].value(u"max_us"_s).toString(), u"1000"_s);
    const QStringList first = texts(list[0].value(u"ds_internet"_s));
    const QStringList second = texts(list[1].value(u"ds_internet"_s));
    QCOMPARE(first.size(), 20);
    QVERIFY(first != second);
    // The history moves on by the seconds between the samples: what was newest is further back.
    bool shifted = false;
    for (int k = 1; k <= 8 && !shifted; ++k)
        shifted = second.mid(0, 20 - k) == first.mid(k);
    QVERIFY(shifted);
}

void TestTrafficCli::zerosWhileNoRouterAnswers()
{
    TempEnv env;
    int closed = 0;
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost, 0));
        closed = server.serverPort();
    }
    QVERIFY(addLocation(env, closed));
    const CliResult r = runCli(env, {u"--json"_s, u"traffic"_s, u"--count"_s, u"2"_s});
    QVERIFY2(r.exitCode == 0, r.err.constData());
    const auto list = records(r.out);
    QCOMPARE(list.size(), 2);
    for (const QJsonObject& record : list) {
        for (const char* key :
             {"ds_internet", "ds_tv", "us_realtime", "us_important", "us_default", "us_low"})
            QCOMPARE(texts(record.value(QLatin1String(key))), QStringList{u"0"_s});
        QCOMPARE(record.value(u"max_ds"_s).toString(), u"0"_s);
        QCOMPARE(record.value(u"max_us"_s).toString(), u"0"_s);
    }
}

QTEST_GUILESS_MAIN(TestTrafficCli)
#include "tst_traffic_cli.moc"
