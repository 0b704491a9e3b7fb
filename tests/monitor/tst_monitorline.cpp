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
            << QByteArray("03.11.16 13:17:08;RING;0;015155501234;55507170;SIP1;") << true << Event::Ring
            << QStringList{u"03.11.16 13:17:08"_s, u"RING"_s,     u"0"_s,
                           u"015155501234"_s,      u"55507170"_s, u"SIP1"_s};
        QTest::newRow("ring without trailing semicolon")
            << QByteArray("09.09.06 16:03:55;RING;2;01725550411;5550123;POTS") << true << Event::Ring
            << QStringList{u"09.09.06 16:03:55"_s, u"RING"_s,    u"2"_s,
                           u"01725550411"_s,       u"5550123"_s, u"POTS"_s};
        QTest::newRow("withheld caller keeps its empty field")
            << QByteArray("28.08.10 10:22:07;RING;0;;123x;ISDN;") << true << Event::Ring
            << QStringList{u"28.08.10 10:22:07"_s, u"RING"_s, u"0"_s, u""_s, u"123x"_s, u"ISDN"_s};
        QTest::newRow("ring of old firmware without trunk")
            << QByteArray("15.07.06 00:39:22;RING;0;0301234;5551234;") << true << Event::Ring
            << QStringList{u"15.07.06 00:39:22"_s, u"RING"_s, u"0"_s, u"0301234"_s, u"5551234"_s};
        QTest::newRow("connect of a withheld caller")
            << QByteArray("28.08.10 10:24:37;CONNECT;0;4;;") << true << Event::Connect
            << QStringList{u"28.08.10 10:24:37"_s, u"CONNECT"_s, u"0"_s, u"4"_s, u""_s};
        QTest::newRow("call") << QByteArray("21.11.16 22:51:49;CALL;0;1;55507170;017655509876;SIP1;") << true
                              << Event::Call
                              << QStringList{u"21.11.16 22:51:49"_s, u"CALL"_s,         u"0"_s,   u"1"_s,
                                             u"55507170"_s,          u"017655509876"_s, u"SIP1"_s};
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
        QTest::newRow("duration beyond nine digits")
            << QByteArray("03.11.16 13:20:37;DISCONNECT;0;99999999999;") << false << Event::Disconnect
            << QStringList{};
        QTest::newRow("connection id that is no number")
            << QByteArray("03.11.16 13:20:37;CONNECT;-1;4;0301;") << false << Event::Connect << QStringList{};
        for (const char control : {'\0', '\r', '\x1b', '\x7f'})
            QTest::addRow("control byte 0x%02x", control)
                << QByteArray("03.11.16 13:17:08;RING;0;0301").append(control).append("234;5;SIP0;") << false
                << Event::Ring << QStringList{};
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

    // An over-long line is dropped whole however its bytes are split into reads; a line of
    // the limit itself is kept.
    void overlongLinesIndependentOfReads_data()
    {
        QTest::addColumn<int>("chunk"); // 0: one read
        for (int chunk : {0, 1, 7, 4095, 4096, 4097, 5000})
            QTest::addRow("%d bytes per read", chunk) << chunk;
    }
    void overlongLinesIndependentOfReads()
    {
        QFETCH(int, chunk);
        const QByteArray longest = "a;RING;" + QByteArray(MonitorLineBuffer::MaxLineLength - 7, '1');
        const QByteArray stream =
            "a;CALL;\n" + longest + "1\r\n" + QByteArray(3 * 4096, 'x') + "\n" + longest + "\r\nb;CALL;\n";
        MonitorLineBuffer buffer;
        QList<QByteArray> got;
        for (qsizetype i = 0; i < stream.size(); i += chunk ? chunk : stream.size())
            got += buffer.append(stream.mid(i, chunk ? chunk : stream.size()));
        QCOMPARE(got, (QList<QByteArray>{"a;CALL;", longest, "b;CALL;"}));
        QCOMPARE(buffer.pending(), 0);
    }

    // Every line in the forms routers send parses, whatever its line ends.
    void routerLinesParse_data()
    {
        QTest::addColumn<QString>("file");
        for (const char* f : {"with_and_without_final_semicolon.txt", "isdn_masked_and_withheld.txt",
                              "sip_trunk_lines.txt", "crlf_line_ends.txt"})
            QTest::newRow(f) << QString::fromLatin1(f);
    }
    void routerLinesParse()
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
