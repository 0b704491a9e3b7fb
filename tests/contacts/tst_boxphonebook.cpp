#include "contacts/BoxPhonebookForm.h"
#include "contacts/BoxPhonebookReader.h"
#include "contacts/BoxPhonebookXML.h"
#include "contacts/FBPhonebookExchange.h"

#include "StaticAddressBook.h"

#include <QFile>
#include <QtTest>

Q_DECLARE_METATYPE(BoxContactEntry)
Q_DECLARE_METATYPE(BoxPhonebookForm::Auth)

using namespace Qt::StringLiterals;
using On = BoxContactEntry::QuickDialOn;

namespace {
const Prefixis berlin(QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s});
const QVariantMap nameFormat{{u"Firstname"_s, 0}, {u"Surname"_s, 1}};

QByteArray testData(const QString& name)
{
    QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/contacts/") + name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// The body of a router phonebook download: everything after the HTTP header.
QString realExport()
{
    const QByteArray raw = testData(u"phonebook_download_latin1.http"_s);
    return QString::fromLatin1(raw.mid(raw.indexOf("\n\n") + 2));
}

// "name: type=number, ..." per contact, so rows read like the router's handset list.
QStringList summary(const QString& xml)
{
    QVector<BoxPhonebook> books;
    QString error;
    if (!BoxPhonebookReader::parse(xml, &books, &error))
        return {u"not well-formed: "_s + error};
    QStringList out;
    for (const auto& book : std::as_const(books))
        for (const auto& contact : book.contacts) {
            QStringList numbers;
            for (const auto& n : contact.numbers)
                numbers << n.type + u'=' + n.number;
            out << contact.name + u": "_s + numbers.join(u", "_s);
        }
    return out;
}

BoxContactEntry contact(const QString& name, const QString& home, const QString& mobile = {},
                        const QString& work = {}, On on = On::None, const QString& quickDial = {},
                        const QString& vanity = {})
{
    BoxContactEntry e;
    e.name = name;
    e.home = home;
    e.mobile = mobile;
    e.work = work;
    e.quickDialOn = on;
    e.quickDial = quickDial;
    e.vanity = vanity;
    return e;
}

ABPerson member(const QString& text, const QString& group = u"Family"_s)
{
    ABPerson p = person(text);
    p.groups = {group};
    return p;
}
} // namespace

class TestBoxPhonebook : public QObject
{
    Q_OBJECT
private slots:
    void contactName_data();
    void contactName();
    void singleContact_data();
    void singleContact();
    void groupExport_data();
    void groupExport();
    void insertIntoEveryBook();
    void readRealExport();
    void readEncodings_data();
    void readEncodings();
    void rejectUnusableDownloads_data();
    void rejectUnusableDownloads();
    void formBodies_data();
    void formBodies();
    void addingOneContact();
};

void TestBoxPhonebook::contactName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Latin-1 letters stay") << u"Zoë Ørsted"_s << u"Zoë Ørsted"_s;
    QTest::newRow("outside Latin-1 becomes a full stop") << u"Łukasz Wiśniewski"_s << u".ukasz Wi.niewski"_s;
    QTest::newRow("angle brackets are left to escaping") << u"<Chef>"_s << u"<Chef>"_s;
}

void TestBoxPhonebook::contactName()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(adressbooksearch::boxContactName(name), expected);
}

void TestBoxPhonebook::singleContact_data()
{
    QTest::addColumn<BoxContactEntry>("entry");
    QTest::addColumn<QString>("expected");

    BoxContactEntry quick = contact(u"Bo"_s, u"030"_s, u"0170"_s, u"040"_s, On::Mobile, u"7"_s, u"BO"_s);
    quick.important = true;
    QTest::newRow("quick-dial on mobile, important")
        << quick
        << u"<contact><category>1</category><person><realName>Bo</realName></person><telephony nid=\"2\">"
           "<number type=\"home\" id=\"0\" prio=\"0\">030</number>"
           "<number type=\"mobile\" id=\"1\" prio=\"1\" quickdial=\"7\" vanity=\"BO\">0170</number>"
           "<number type=\"work\" id=\"2\" prio=\"0\">040</number></telephony></contact>"_s;

    const BoxContactEntry quickOnMissing = contact(u"Cy"_s, {}, u"0170"_s, {}, On::Work, u"3"_s);
    QTest::newRow("quick-dial on a number not given, mobile alone is id 0")
        << quickOnMissing
        << u"<contact><category>0</category><person><realName>Cy</realName></person><telephony nid=\"2\">"
           "<number type=\"mobile\" id=\"0\" prio=\"0\">0170</number></telephony></contact>"_s;

    const BoxContactEntry hostile =
        contact(u"Tom & Jerry <3>"_s, u"030<1>"_s, {}, {}, On::Home, u"\"1\""_s, u"A&B"_s);
    QTest::newRow("markup in typed texts is escaped")
        << hostile
        << u"<contact><category>0</category><person><realName>Tom &amp; Jerry &lt;3&gt;</realName></person>"
           "<telephony nid=\"2\"><number type=\"home\" id=\"0\" prio=\"1\" quickdial=\"&quot;1&quot;\" "
           "vanity=\"A&amp;B\">030&lt;1&gt;</number></telephony></contact>"_s;
}

void TestBoxPhonebook::singleContact()
{
    QFETCH(BoxContactEntry, entry);
    QFETCH(QString, expected);
    const QString element = adressbooksearch::contactElementForBox(entry);
    QCOMPARE(element, expected);
    const QString book = u"<phonebooks><phonebook>"_s + element + u"</phonebook></phonebooks>"_s;
    QCOMPARE(summary(book).size(), 1);
}

void TestBoxPhonebook::groupExport_data()
{
    QTest::addColumn<QVector<ABPerson>>("people");
    QTest::addColumn<QVariantMap>("format");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("two others fill home and mobile in order")
        << QVector<ABPerson>{member(u"1:Ann Lee:other=030111,fax=030222"_s)} << nameFormat
        << QStringList{u"Ann Lee: home=030111, mobile=030222"_s};
    QTest::newRow("others only fill empty places, the rest is dropped")
        << QVector<ABPerson>{member(u"1:Ann Lee:other=0301,mobile=0170,other=0302,other=0303,other=0304"_s)}
        << nameFormat << QStringList{u"Ann Lee: home=0301, mobile=0170, work=0302"_s};
    QTest::newRow("main counts as home, iPhone as mobile, a later home replaces")
        << QVector<ABPerson>{member(u"1:Ann Lee:main=0301,home=0302,iPhone=0170,work=+49 40 555"_s)}
        << nameFormat << QStringList{u"Ann Lee: home=0302, mobile=0170, work=040555"_s};
    QTest::newRow("members without numbers and other groups are left out")
        << QVector<ABPerson>{member(u"1:No Phone:"_s), member(u"2:Bo Fox:home=0301"_s, u"Work"_s),
                             member(u"3:Cy Doe:work=0302"_s)}
        << nameFormat << QStringList{u"Cy Doe: work=0302"_s};
    QTest::newRow("name rule and escaping")
        << QVector<ABPerson>{member(u"1:Müller&Söhne? <GmbH>:home=0301"_s)} << nameFormat
        << QStringList{u"Müller+Söhne. <GmbH>: home=0301"_s};
    QTest::newRow("empty group") << QVector<ABPerson>{} << nameFormat << QStringList();

    QVariantMap single = nameFormat;
    single.insert(u"Label_Single"_s, 2);
    QTest::newRow("one contact per number with label")
        << QVector<ABPerson>{member(u"1:Ann Lee:home=0301,mobile=0170,other=0302"_s)} << single
        << QStringList{u"Ann Lee Home: home=0301"_s, u"Ann Lee Mobile: mobile=0170"_s,
                       u"Ann Lee Other: home=0302"_s};
    QVariantMap shortSingle = nameFormat;
    shortSingle.insert(u"Label_Short_Single"_s, 2);
    QTest::newRow("one contact per number with short label")
        << QVector<ABPerson>{member(u"1:Ann Lee:work=0301,x=0302"_s)} << shortSingle
        << QStringList{u"Ann Lee W.: work=0301"_s, u"Ann Lee x: home=0302"_s};
}

void TestBoxPhonebook::groupExport()
{
    QFETCH(QVector<ABPerson>, people);
    QFETCH(QVariantMap, format);
    QFETCH(QStringList, expected);
    StaticAddressBook book(people);
    QCOMPARE(summary(adressbooksearch::peoplesForGroupWithFormat(u"Family"_s, format, &book, berlin)),
             expected);
}

void TestBoxPhonebook::insertIntoEveryBook()
{
    const QString book =
        BoxPhonebookReader::bookFromDownload(QString::fromUtf8(testData(u"phonebook_two_books.xml"_s)));
    const QString element = adressbooksearch::contactElementForBox(contact(u"New One"_s, u"0301"_s));
    const QStringList contacts = summary(adressbooksearch::insertContactIntoPhonebook(book, element));
    QCOMPARE(contacts.count(u"New One: home=0301"_s), 2);
    QCOMPARE(contacts.size(), 4);
}

void TestBoxPhonebook::readRealExport()
{
    const QString book = BoxPhonebookReader::bookFromDownload(realExport());
    QVERIFY(!book.contains(u"<?xml"_s));
    QVector<BoxPhonebook> books;
    QString error;
    QVERIFY2(BoxPhonebookReader::parse(book, &books, &error), qPrintable(error));
    QCOMPARE(books.size(), 1);
    QCOMPARE(books[0].name, u"Telefonbuch"_s);
    const auto& contacts = books[0].contacts;
    QCOMPARE(contacts.size(), 3);
    QCOMPARE(contacts[0].name, u"Praxis Dr. Lindqvist"_s);
    QCOMPARE(contacts[0].numbers[0].number, u"08955501234"_s);
    QCOMPARE(contacts[0].numbers[0].quickDial, u"7"_s);
    QCOMPARE(contacts[0].numbers[0].vanity, u"4"_s);
    QCOMPARE(contacts[1].name, u"Jörg Sandmeier"_s); // Latin-1 body
    QCOMPARE(contacts[2].category, u"1"_s);
    QCOMPARE(contacts[2].numbers[0].number, QString()); // the self-closing empty home number
    QCOMPARE(contacts[2].numbers[1].prio, u"1"_s);
}

void TestBoxPhonebook::readEncodings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");
    const QByteArray body =
        "<phonebooks><phonebook><contact><person><realName>M\xfcller &amp; S\xf6hne</realName>"
        "</person></contact></phonebook></phonebooks>";
    QTest::newRow("router's Latin-1")
        << "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n" + body << u"Müller & Söhne"_s;
    QTest::newRow("UTF-8 of newer firmware")
        << "<?xml version=\"1.0\" encoding=\"utf-8\"?>" + QString::fromLatin1(body).toUtf8()
        << u"Müller & Söhne"_s;
    QTest::newRow("no declaration") << body << u"Müller & Söhne"_s;
}

void TestBoxPhonebook::readEncodings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    const QString book = BoxPhonebookReader::bookFromDownload(QString::fromLatin1(bytes));
    QVector<BoxPhonebook> books;
    QString error;
    QVERIFY2(BoxPhonebookReader::parse(book, &books, &error), qPrintable(error));
    QCOMPARE(books.value(0).contacts.value(0).name, name);
}

void TestBoxPhonebook::rejectUnusableDownloads_data()
{
    QTest::addColumn<QString>("answer");
    QTest::newRow("transport failure") << u"-2"_s;
    QTest::newRow("nothing came") << QString();
    QTest::newRow("login page instead of the book")
        << u"<html><head><title>FRITZ!Box</title></head><body>Anmeldung</body></html>"_s;
    QTest::newRow("cut off in the middle")
        << u"<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><phonebooks><phonebook "
           u"name=\"Telefonbuch\"><contact>"
           "<person><realName>A"_s;
    QTest::newRow("no book inside") << u"<phonebooks></phonebooks>"_s;
    QTest::newRow("garbage after the book") << u"<phonebooks><phonebook/></phonebooks><oops"_s;
    // Used to overflow the stack while reading the name's text.
    QTest::newRow("name nested 100,000 elements deep")
        << u"<phonebooks><phonebook><contact><person><realName>"_s + u"<b>"_s.repeated(100000) + u"A"_s +
               u"</b>"_s.repeated(100000) + u"</realName></person></contact></phonebook></phonebooks>"_s;
}

void TestBoxPhonebook::rejectUnusableDownloads()
{
    QFETCH(QString, answer);
    QList<QByteArray> sent;
    FBPhonebookExchange exchange(
        [] {
            return BoxPhonebookForm::Auth{u"abc"_s, {}};
        },
        [&](const QByteArray& body) {
            sent << body;
            return sent.size() == 1 ? answer : u"ok"_s;
        });
    QVERIFY(!exchange.exportContactToBox(contact(u"New One"_s, u"0301"_s)));
    QCOMPARE(sent.size(), 1); // the download only: the router's book is never replaced
    QVERIFY(sent[0].contains("name=\"PhonebookExport\""));
    QVERIFY(!exchange.errorMessage().isEmpty());
}

void TestBoxPhonebook::formBodies_data()
{
    QTest::addColumn<BoxPhonebookForm::Auth>("auth");
    QTest::addColumn<QByteArray>("authPart");
    QTest::newRow("session") << BoxPhonebookForm::Auth{u"9f1c"_s, u"pw"_s}
                             << QByteArray("Content-Disposition: form-data; name=\"sid\"\n\n9f1c\n");
    QTest::newRow("no session: password URL-encoded")
        << BoxPhonebookForm::Auth{u"-1"_s, u"p&ss wörd"_s}
        << QByteArray(
               "Content-Disposition: form-data; name=\"login:command/password\"\n\np%26ss%20w%C3%B6rd\n");
}

void TestBoxPhonebook::formBodies()
{
    QFETCH(BoxPhonebookForm::Auth, auth);
    QFETCH(QByteArray, authPart);
    const QByteArray b = BoxPhonebookForm::kBoundary;
    QCOMPARE(BoxPhonebookForm::exportBody(auth),
             "--" + b + "\n" + authPart + "--" + b +
                 "\nContent-Disposition: form-data; name=\"PhonebookId\"\n\n0\n--" + b +
                 "\nContent-Disposition: form-data; name=\"PhonebookExportName\"\n\nTelefonbuch\n--" + b +
                 "\nContent-Disposition: form-data; name=\"PhonebookExport\"\n\n1\n\n--" + b + "--\n");
    QCOMPARE(
        BoxPhonebookForm::importBody(auth, u"<phonebooks>Ä</phonebooks>"_s),
        "--" + b + "\n" + authPart + "--" + b +
            "\nContent-Disposition: form-data; name=\"PhonebookId\"\n\n0\n--" + b +
            "\nContent-Disposition: form-data; name=\"PhonebookImportFile\"; filename=\"Phonebook.xml\"\n"
            "Content-Type: text/xml\n\n<?xml version=\"1.0\" "
            "encoding=\"UTF-8\"?><phonebooks>\xc3\x84</phonebooks>"
            "\n\n--" +
            b + "--\n");
}

void TestBoxPhonebook::addingOneContact()
{
    QList<QByteArray> sent;
    FBPhonebookExchange exchange(
        [] {
            return BoxPhonebookForm::Auth{u"abc"_s, {}};
        },
        [&](const QByteArray& body) {
            sent << body;
            return sent.size() == 1 ? realExport() : u"<html>ok</html>"_s;
        });
    QVERIFY(exchange.exportContactToBox(contact(u"Zoë & Co"_s, {}, u"0170 1"_s)));
    QCOMPARE(sent.size(), 2);
    const QByteArray upload = sent[1];
    const qsizetype start = upload.indexOf("<?xml");
    const qsizetype end = upload.lastIndexOf("\n\n--");
    const QString xml = QString::fromUtf8(upload.mid(start, end - start));
    QVERIFY(xml.startsWith(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>"_s));
    QCOMPARE(xml.count(u"<?xml"_s), 1);
    const QStringList contacts = summary(xml.mid(xml.indexOf(u"?>"_s) + 2));
    QCOMPARE(contacts.size(), 4);
    QCOMPARE(contacts.last(), u"Zoë & Co: mobile=0170 1"_s);
}

QTEST_GUILESS_MAIN(TestBoxPhonebook)
#include "tst_boxphonebook.moc"
