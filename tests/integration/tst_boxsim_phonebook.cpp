// The simulator's configuration page reads and replaces phone book 0 as a router does: forms
// with plain line feeds or CR LF, the password or a session, Latin-1 export, checked import.
#include "TestSupport.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QByteArray kBoundary = "---------------------------9849436581144108930470211272";

struct Answer
{
    int status = 0;
    QByteArray body;
};

// Written by hand so that the simulator is checked against the form, not against our builder.
QByteArray form(const QList<QPair<QByteArray, QByteArray>>& parts, const QByteArray& eol)
{
    QByteArray body;
    for (const auto& [header, content] : parts)
        body += "--" + kBoundary + eol + header + eol + eol + content + eol;
    return body + "--" + kBoundary + "--" + eol;
}

QByteArray field(const QByteArray& name)
{
    return "Content-Disposition: form-data; name=\"" + name + "\"";
}

Answer post(int port, const QByteArray& body)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, quint16(port));
    if (!socket.waitForConnected(5000))
        return {};
    socket.write("POST /cgi-bin/firmwarecfg HTTP/1.0\r\nHost: 127.0.0.1\r\nContent-Type: "
                 "multipart/form-data; boundary=" +
                 kBoundary + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    QByteArray response;
    while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(5000))
        response += socket.readAll();
    response += socket.readAll();
    const qsizetype split = response.indexOf("\r\n\r\n");
    return {response.mid(9, 3).toInt(), split < 0 ? QByteArray() : response.mid(split + 4)};
}

QByteArray exportForm(const QByteArray& password, const QByteArray& eol = "\n")
{
    return form({{field("login:command/password"), password},
                 {field("PhonebookId"), "0"},
                 {field("PhonebookExportName"), "Telefonbuch"},
                 {field("PhonebookExport"), "1"}},
                eol);
}

QByteArray importForm(const QByteArray& password, const QByteArray& xml)
{
    return form(
        {{field("login:command/password"), password},
         {field("PhonebookId"), "0"},
         {field("PhonebookImportFile") + "; filename=\"Phonebook.xml\"\nContent-Type: text/xml", xml}},
        "\n");
}

int uploads(SimulatorProcess& sim)
{
    return QJsonDocument::fromJson(sim.control("GET", u"/_sim/phonebook"_s))
        .object()
        .value(u"uploads"_s)
        .toInt(-1);
}
} // namespace

class TestBoxsimPhonebook : public QObject
{
    Q_OBJECT
private slots:
    void exportNeedsThePassword_data();
    void exportNeedsThePassword();
    void importIsKeptAndExportedInLatin1();
    void brokenImportKeepsTheBook_data();
    void brokenImportKeepsTheBook();
};

void TestBoxsimPhonebook::exportNeedsThePassword_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    QTest::newRow("line feeds, right password") << exportForm("secret") << 200;
    QTest::newRow("CR LF, right password") << exportForm("secret", "\r\n") << 200;
    QTest::newRow("wrong password") << exportForm("nope") << 403;
    QTest::newRow("unknown session") << form({{field("sid"), "0123456789abcdef"},
                                              {field("PhonebookId"), "0"},
                                              {field("PhonebookExport"), "1"}},
                                             "\n")
                                     << 403;
}

void TestBoxsimPhonebook::exportNeedsThePassword()
{
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    const Answer answer = post(sim.port(u"web"_s), body);
    QCOMPARE(answer.status, status);
    QCOMPARE(answer.body.startsWith("<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>"), status == 200);
    QCOMPARE(answer.body.contains("<phonebooks>"), status == 200);
}

void TestBoxsimPhonebook::importIsKeptAndExportedInLatin1()
{
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    const QByteArray book =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><phonebooks><phonebook><contact><person>"
        "<realName>Jörg Łoś</realName></person><telephony><number type=\"home\">030</number>"
        "</telephony></contact></phonebook></phonebooks>";
    QCOMPARE(post(sim.port(u"web"_s), importForm("secret", QString::fromUtf8(book).toUtf8())).status, 200);
    QCOMPARE(uploads(sim), 1);
    const Answer answer = post(sim.port(u"web"_s), exportForm("secret"));
    // ö is Latin-1; Ł and ś are not and come as character references.
    QVERIFY2(answer.body.contains("<realName>J\xf6rg &#321;o&#347;</realName>"), answer.body.constData());
    QCOMPARE(answer.body.count("<contact>"), 1);
}

void TestBoxsimPhonebook::brokenImportKeepsTheBook_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QByteArray>("password");
    QTest::newRow("cut off")
        << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?><phonebooks><phonebook><contact>")
        << QByteArray("secret");
    QTest::newRow("not a phone book") << QByteArray("<html></html>") << QByteArray("secret");
    QTest::newRow("wrong password") << QByteArray("<phonebooks><phonebook/></phonebooks>") << QByteArray("x");
}

void TestBoxsimPhonebook::brokenImportKeepsTheBook()
{
    QFETCH(QByteArray, xml);
    QFETCH(QByteArray, password);
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    const QByteArray before = post(sim.port(u"web"_s), exportForm("secret")).body;
    QVERIFY(before.contains("A. Muster"));
    post(sim.port(u"web"_s), importForm(password, xml));
    QCOMPARE(uploads(sim), 0);
    QCOMPARE(post(sim.port(u"web"_s), exportForm("secret")).body, before);
}

QTEST_GUILESS_MAIN(TestBoxsimPhonebook)
#include "tst_boxsim_phonebook.moc"
