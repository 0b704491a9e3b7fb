#include "monitor/MonitorLine.h"
#include "monitor/MonitorLineBuffer.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

using Event = MonitorLine::Event;
Q_DECLARE_METATYPE(MonitorLine::Event)

class TestMonitorLine : public QObject
{
    Q_OBJECT
private slots:
    void parse_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<MonitorLine::Event>("event");
        QTest::addColumn<QStringList>("fields");

        QTest::newRow("ring with trailing semicolon")
            << QByteArray("03.11.16 13:17:08;RING;0;015146609763;90969248;SIP1;") << true << Event::Ring
            << QStringList{u"03.11.16 13:17:08"_s, u"RING"_s,     u"0"_s,
                           u"015146609763"_s,      u"90969248"_s, u"SIP1"_s};
        QTest::newRow("ring without trailing semicolon")
            << QByteArray("09.09.06 16:03:55;RING;2;01781231234;4271960;POTS") << true << Event::Ring
            << QStringList{u"09.09.06 16:03:55"_s, u"RING"_s,    u"2"_s,
                           u"01781231234"_s,       u"4271960"_s, u"POTS"_s};
        QTest::newRow("withheld caller keeps its empty field")
            << QByteArray("28.08.10 10:22:07;RING;0;;123x;ISDN;") << true << Event::Ring
            << QStringList{u"28.08.10 10:22:07"_s, u"RING"_s, u"0"_s, u""_s, u"123x"_s, u"ISDN"_s};
        QTest::newRow("ring of old firmware without trunk")
            << QByteArray("15.07.06 00:39:22;RING;0;0301234;5551234;") << true << Event::Ring
            << QStringList{u"15.07.06 00:39:22"_s, u"RING"_s, u"0"_s, u"0301234"_s, u"5551234"_s};
        QTest::newRow("connect of a withheld caller")
            << QByteArray("28.08.10 10:24:37;CONNECT;0;4;;") << true << Event::Connect
            << QStringList{u"28.08.10 10:24:37"_s, u"CONNECT"_s, u"0"_s, u"4"_s, u""_s};
        QTest::newRow("call") << QByteArray("21.11.16 22:51:49;CALL;0;1;90969248;017624025482;SIP1;") << true
                              << Event::Call
                              << QStringList{u"21.11.16 22:51:49"_s, u"CALL"_s,         u"0"_s,   u"1"_s,
                                             u"90969248"_s,          u"017624025482"_s, u"SIP1"_s};
        QTest::newRow("disconnect") << QByteArray("03.11.16 13:20:37;DISCONNECT;0;201;") << true
                                    << Event::Disconnect
                                    << QStringList{u"03.11.16 13:20:37"_s, u"DISCONNECT"_s, u"0"_s, u"201"_s};
        QTest::newRow("unknown event parses as unknown")
            << QByteArray("03.11.16 13:20:37;HOLD;0;") << true << Event::Unknown
            << QStringList{u"03.11.16 13:20:37"_s, u"HOLD"_s, u"0"_s};
        QTest::newRow("ring with too few fields")
            << QByteArray("03.11.16 13:17:08;RING;0;0151;") << false << Event::Ring << QStringList{};
        QTest::newRow("call with too few fields")
            << QByteArray("03.11.16 13:17:08;CALL;0;1;9096;") << false << Event::Call << QStringList{};
        QTest::newRow("disconnect without duration")
            << QByteArray("03.11.16 13:20:37;DISCONNECT;0;") << false << Event::Disconnect << QStringList{};
        QTest::newRow("a lone time stamp")
            << QByteArray("03.11.16 13:20:37") << false << Event::Unknown << QStringList{};
        QTest::newRow("bytes that are not ASCII") << QByteArray("03.11.16 13:17:08;RING;0;\xc3\xa4;5;SIP0;")
                                                  << false << Event::Ring << QStringList{};
    }
    void parse()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, accepted);
        QFETCH(MonitorLine::Event, event);
        QFETCH(QStringList, fields);
        QString reason;
        const auto parsed = MonitorLine::parse(line, &reason);
        QCOMPARE(parsed.has_value(), accepted);
        if (!accepted) {
            QVERIFY(!reason.isEmpty());
            return;
        }
        QCOMPARE(parsed->event, event);
        QCOMPARE(parsed->fields, fields);
    }

    void buffer_data()
    {
        QTest::addColumn<QList<QByteArray>>("chunks");
        QTest::addColumn<QList<QByteArray>>("lines");
        QTest::addColumn<qsizetype>("pending");

        QTest::newRow("one line per read, LF") << QList<QByteArray>{"a;RING;\n", "b;CALL;\n"}
                                               << QList<QByteArray>{"a;RING;", "b;CALL;"} << qsizetype(0);
        QTest::newRow("CR LF ends") << QList<QByteArray>{"a;RING;\r\nb;CALL;\r\n"}
                                    << QList<QByteArray>{"a;RING;", "b;CALL;"} << qsizetype(0);
        QTest::newRow("line split inside a field")
            << QList<QByteArray>{"a;RI", "NG;0;\n"} << QList<QByteArray>{"a;RING;0;"} << qsizetype(0);
        QTest::newRow("CR and LF in different reads")
            << QList<QByteArray>{"a;RING;\r", "\n"} << QList<QByteArray>{"a;RING;"} << qsizetype(0);
        QTest::newRow("unfinished line waits")
            << QList<QByteArray>{"a;RING;\nb;CA"} << QList<QByteArray>{"a;RING;"} << qsizetype(4);
        QTest::newRow("empty lines are skipped")
            << QList<QByteArray>{"\n\r\na;RING;\n\n"} << QList<QByteArray>{"a;RING;"} << qsizetype(0);
    }
    void buffer()
    {
        QFETCH(QList<QByteArray>, chunks);
        QFETCH(QList<QByteArray>, lines);
        QFETCH(qsizetype, pending);
        MonitorLineBuffer buffer;
        QList<QByteArray> got;
        for (const QByteArray& c : chunks)
            got += buffer.append(c);
        QCOMPARE(got, lines);
        QCOMPARE(buffer.pending(), pending);
    }

    void endlessGarbageIsDropped()
    {
        MonitorLineBuffer buffer;
        QVERIFY(buffer.append(QByteArray(MonitorLineBuffer::MaxLineLength + 10, 'x')).isEmpty());
        QCOMPARE(buffer.pending(), 0);
        QCOMPARE(buffer.append("a;RING;\n"), QList<QByteArray>{"a;RING;"});
    }

    // Every line captured from real routers parses, whatever its line ends.
    void realCapturesParse_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* f :
             {"jfritz_FBoxListenerV3Test_lines.txt", "isdn_and_suppressed_number_lines.txt",
              "petermost_FritzBoxCallMonitor_lines.txt", "fbwebserver_simulator_crlf_lines.txt"})
            QTest::newRow(f) << QString::fromLatin1(f);
    }
    void realCapturesParse()
    {
        QFETCH(QString, file);
        QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/monitor/") + file);
        QVERIFY(f.open(QIODevice::ReadOnly));
        MonitorLineBuffer buffer;
        const QList<QByteArray> lines = buffer.append(f.readAll() + "\n");
        QVERIFY(lines.size() >= 3);
        for (const QByteArray& l : lines) {
            const auto parsed = MonitorLine::parse(l);
            QVERIFY2(parsed && parsed->event != Event::Unknown, l.constData());
            QVERIFY(!parsed->fields.constLast().contains(u'\r'));
        }
    }
};

QTEST_GUILESS_MAIN(TestMonitorLine)
#include "tst_monitorline.moc"
