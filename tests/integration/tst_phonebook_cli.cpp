// The router's phone book through tondrel-cli and the simulator: reading the Latin-1 book,
// adding one contact, exporting an address-book group, and never replacing a book we could not
// read.
#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QString writeFile(const TempEnv& env, const QString& name, const QByteArray& content)
{
    const QString path = env.root.filePath(name);
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(content);
    return path;
}

bool addLocation(const TempEnv& env, int webPort, const QByteArray& password = "secret")
{
    return runCli(env,
                  {u"location"_s, u"add"_s, u"--name"_s, u"sim"_s, u"--host"_s, u"127.0.0.1"_s,
                   u"--web-port"_s, QString::number(webPort), u"--prefixes"_s, u"00,49,0,30"_s,
                   u"--password-stdin"_s},
                  password + "\n")
               .exitCode == 0;
}

QJsonObject simBook(SimulatorProcess& sim)
{
    return QJsonDocument::fromJson(sim.control("GET", u"/_sim/phonebook"_s)).object();
}

QStringList names(const QJsonArray& contacts)
{
    QStringList out;
    for (const QJsonValue& c : contacts)
        out << c.toObject().value(u"name"_s).toString();
    return out;
}

const QByteArray kCards =
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Lee;Ann;;;\r\nFN:Ann Lee\r\nCATEGORIES:Family\r\n"
    "TEL;TYPE=HOME:030 111\r\nTEL;TYPE=CELL:0170 222\r\nEND:VCARD\r\n"
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:S\xc3\xb6hne?;M\xc3\xbcller &;;;\r\nFN:x\r\n"
    "CATEGORIES:Family,Work\r\nTEL;TYPE=WORK:+49 40 333\r\nTEL:0301 1\r\nEND:VCARD\r\n"
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Other;Olga;;;\r\nFN:Olga Other\r\nCATEGORIES:Work\r\n"
    "TEL;TYPE=HOME:0302\r\nEND:VCARD\r\n";
} // namespace

class TestPhonebookCli : public QObject
{
    Q_OBJECT
private slots:
    void showReadsTheRoutersBook();
    void addedContactComesBackOnce_data();
    void addedContactComesBackOnce();
    void unreadableBookIsNeverReplaced_data();
    void unreadableBookIsNeverReplaced();
    void exportGroupReplacesTheBook();
};

void TestPhonebookCli::showReadsTheRoutersBook()
{
    TempEnv env;
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    QVERIFY(addLocation(env, sim.port(u"web"_s)));
    const CliResult r = runCli(env, {u"--json"_s, u"phonebook"_s, u"show"_s});
    QVERIFY2(r.exitCode == 0, r.err.constData());
    const QJsonArray contacts = QJsonDocument::fromJson(r.out).array();
    QCOMPARE(names(contacts), (QStringList{u"A. Muster"_s, u"Bäckerei Krüger"_s}));
    const QJsonObject first = contacts[0].toObject().value(u"numbers"_s).toArray()[0].toObject();
    QCOMPARE(first.value(u"number"_s).toString(), u"07216080"_s);
    QCOMPARE(first.value(u"quickdial"_s).toString(), u"2"_s);
}

void TestPhonebookCli::addedContactComesBackOnce_data()
{
    QTest::addColumn<QByteArray>("firmware");
    QTest::newRow("current firmware") << QByteArray("lua");
    QTest::newRow("older firmware") << QByteArray("form");
}

void TestPhonebookCli::addedContactComesBackOnce()
{
    QFETCH(QByteArray, firmware);
    TempEnv env;
    SimulatorProcess sim(
        {u"--scenario"_s, writeFile(env, u"s.json"_s, "{\"firmware\":\"" + firmware + "\"}")});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    QVERIFY(addLocation(env, sim.port(u"web"_s)));
    const CliResult r =
        runCli(env, {u"phonebook"_s, u"add"_s, u"--name"_s, u"Müller & Söhne <GmbH>"_s, u"--home"_s,
                     u"030111"_s, u"--work"_s, u"030222"_s, u"--quickdial"_s, u"5"_s, u"--vanity"_s, u"MS"_s,
                     u"--quickdial-on"_s, u"work"_s, u"--important"_s});
    QVERIFY2(r.exitCode == 0, r.err.constData());

    const QJsonObject stored = simBook(sim);
    QCOMPARE(stored.value(u"uploads"_s).toInt(), 1);
    const QString book = stored.value(u"book"_s).toString();
    QCOMPARE(book.count(u"Müller &amp; Söhne &lt;GmbH&gt;"_s), 1);
    QVERIFY(book.contains(u"<category>1</category><person><realName>Müller"_s));
    QVERIFY(book.contains(
        u"<number type=\"home\" id=\"0\" prio=\"0\">030111</number>"
        "<number type=\"work\" id=\"1\" prio=\"1\" quickdial=\"5\" vanity=\"MS\">030222</number>"_s));

    const CliResult shown = runCli(env, {u"--json"_s, u"phonebook"_s, u"show"_s});
    QVERIFY2(shown.exitCode == 0, shown.err.constData());
    const QStringList listed = names(QJsonDocument::fromJson(shown.out).array());
    QCOMPARE(listed.count(u"Müller & Söhne <GmbH>"_s), 1);
    QCOMPARE(listed.size(), 3);
}

void TestPhonebookCli::unreadableBookIsNeverReplaced_data()
{
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<QByteArray>("password");
    QTest::newRow("router's book cut off")
        << QByteArray("{\"phonebook\":\"<phonebooks><phonebook name=\\\"Telefonbuch\\\"><contact>\"}")
        << QByteArray("secret");
    QTest::newRow("wrong password") << QByteArray("{}") << QByteArray("wrong");
}

void TestPhonebookCli::unreadableBookIsNeverReplaced()
{
    QFETCH(QByteArray, scenario);
    QFETCH(QByteArray, password);
    TempEnv env;
    SimulatorProcess sim({u"--scenario"_s, writeFile(env, u"s.json"_s, scenario)});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    QVERIFY(addLocation(env, sim.port(u"web"_s), password));
    const QString before = simBook(sim).value(u"book"_s).toString();
    const CliResult r =
        runCli(env, {u"phonebook"_s, u"add"_s, u"--name"_s, u"New"_s, u"--home"_s, u"0301"_s});
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.startsWith("tondrel-cli: "));
    QCOMPARE(simBook(sim).value(u"uploads"_s).toInt(), 0);
    QCOMPARE(simBook(sim).value(u"book"_s).toString(), before);
}

void TestPhonebookCli::exportGroupReplacesTheBook()
{
    TempEnv env;
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    QVERIFY(addLocation(env, sim.port(u"web"_s)));
    const QString cards = writeFile(env, u"cards.vcf"_s, kCards);

    const CliResult unknown =
        runCli(env, {u"phonebook"_s, u"export-group"_s, u"Nobody"_s, u"--address-book"_s, cards});
    QCOMPARE(unknown.exitCode, 1);
    QCOMPARE(simBook(sim).value(u"uploads"_s).toInt(), 0);

    const CliResult r =
        runCli(env, {u"phonebook"_s, u"export-group"_s, u"Family"_s, u"--address-book"_s, cards});
    QVERIFY2(r.exitCode == 0, r.err.constData());
    QCOMPARE(simBook(sim).value(u"uploads"_s).toInt(), 1);
    QVERIFY(simBook(sim).value(u"book"_s).toString().contains(u"name=\"Quillet Phonebook\""_s));

    const CliResult shown = runCli(env, {u"--json"_s, u"phonebook"_s, u"show"_s});
    QVERIFY2(shown.exitCode == 0, shown.err.constData());
    const QJsonArray contacts = QJsonDocument::fromJson(shown.out).array();
    QCOMPARE(names(contacts), (QStringList{u"Ann Lee"_s, u"Müller + Söhne."_s}));
    // The unlabelled number fills the empty home place; the work number keeps its own.
    QStringList numbers;
    for (const QJsonValue& n : contacts[1].toObject().value(u"numbers"_s).toArray())
        numbers << n.toObject().value(u"type"_s).toString() + u'=' +
                       n.toObject().value(u"number"_s).toString();
    QCOMPARE(numbers, (QStringList{u"home=03011"_s, u"work=040333"_s}));
}

QTEST_GUILESS_MAIN(TestPhonebookCli)
#include "tst_phonebook_cli.moc"
