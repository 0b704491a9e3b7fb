#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/ContactsServices.h"
#include "contacts/VCardAddressBook.h"
#include "contacts/VCardParser.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
QByteArray readData(const QString& name)
{
    QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/contacts/") + name);
    if (!f.open(QIODevice::ReadOnly))
        qFatal("missing test data %s", qPrintable(name));
    return f.readAll();
}

// "first|last|org" and "label=value" per phone, so one table row says all of a card.
QString describe(const ABPerson& p)
{
    QStringList phones;
    for (const ABPhone& phone : p.phones)
        phones.append(phone.label + u'=' + phone.value);
    return QStringList{p.firstName, p.lastName, p.organization}.join(u'|') + u" ["_s + phones.join(u", "_s) +
           u"] {"_s + p.groups.join(u',') + u'}';
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(content);
}
} // namespace

class TestVCard : public QObject
{
    Q_OBJECT
private slots:
    void exports_data();
    void exports();
    void uidsAreStable();
    void malformedCardsSkipped();
    void hostileInput_data();
    void hostileInput();
    void typesToLabels_data();
    void typesToLabels();
    void writtenCardReadsBack();
    void folderBookSeesChangesAndAdditions();
    void singleFileBookAddsCard();
    void groupsAndMembers();
    void missingBookIsUnavailable();
    void servicesFollowTheSetting();
};

void TestVCard::exports_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("people");
    QTest::newRow("apple 3.0 with item labels and folding")
        << u"apple_export.vcf"_s
        << QStringList{
               u"Jürgen|Müller|Bäckerei Müller GmbH [mobile=+49 30 5550100, iPhone=+49 (171) 555-0111, "_s
               u"work=030 / 555 01 20, other=0301234567] {Lieferanten,Nachbarn}"_s,
               u"||Stadtwerke Beispielstadt [main=0800 555 0199] {Lieferanten}"_s};
    QTest::newRow("outlook 2.1 quoted-printable, latin-1, unindented photo")
        << u"outlook_2.1_quoted_printable.vcf"_s
        << QStringList{
               u"Jörg|Grün|Ingenieurbüro Grün & Partner für Haustechnik und Energieberatung "_s
               u"[work=+49 89 5550140, mobile=0171/5550141, other=089 5550142, home=089-5550143] {Geschäftlich}"_s,
               u"Sabine|Schön| [other=0043 1 5550150] {}"_s, u"Berta|Bild| [mobile=0160 5550180] {}"_s};
    QTest::newRow("nextcloud 4.0 tel uris")
        << u"nextcloud_4.0.vcf"_s
        << QStringList{
               u"Anna|Schmidt| [home=+49-30-555-0160, mobile=+49-151-5550161, work=+49-30-555-0162] "_s
               u"{Familie,Freunde}"_s,
               u"Peter Lustig|| [home=0301112223] {}"_s};
    QTest::newRow("3.0 with folded agent card")
        << u"vcard30_folded_agent.vcf"_s
        << QStringList{
               u"Hanna|Kramer| [work=(0221) 555-3010, home=(0221) 555-3011, home=(0221) 555-3012] {}"_s};
    QTest::newRow("2.1 with quoted-printable label")
        << u"vcard21_qp_label.vcf"_s
        << QStringList{u"Lukas|Brandt|Brandt Fischhandel KG [work=(040) 555-2020, home=(040) 555-2021] {}"_s};
    QTest::newRow("3.0 with agent uri")
        << u"vcard30_agent_uri.vcf"_s
        << QStringList{u"Lukas|Brandt|Brandt Fischhandel KG [work=(040) 555-2020, home=(040) 555-2021, "_s
                       u"home=(040) 555-2022] {}"_s};
}

void TestVCard::exports()
{
    QFETCH(QString, file);
    QFETCH(QStringList, people);
    const VCardParser::Result result = VCardParser::parse(readData(file), file);
    QStringList got;
    for (const ABPerson& p : result.people)
        got.append(describe(p));
    QCOMPARE(got, people);
    QVERIFY2(result.problems.isEmpty(), qPrintable(result.problems.join(u'\n')));
}

void TestVCard::uidsAreStable()
{
    const auto apple = VCardParser::parse(readData(QStringLiteral("apple_export.vcf")), QStringLiteral("a"));
    QCOMPARE(apple.people.at(0).uid, QStringLiteral("6F1D2B9A-0C31-4E55-9D7B-2F4A1C9E8B01"));
    // Cards without UID get one from their text: the same on every read, different per card.
    const QByteArray data = readData(QStringLiteral("outlook_2.1_quoted_printable.vcf"));
    const auto first = VCardParser::parse(data, QStringLiteral("o"));
    const auto second = VCardParser::parse(data, QStringLiteral("o"));
    QCOMPARE(first.people.at(0).uid, second.people.at(0).uid);
    QVERIFY(first.people.at(0).uid != first.people.at(1).uid);
    QVERIFY(!first.people.at(0).uid.isEmpty());
}

void TestVCard::malformedCardsSkipped()
{
    const auto result =
        VCardParser::parse(readData(QStringLiteral("broken_cards.vcf")), QStringLiteral("broken_cards.vcf"));
    QStringList names;
    for (const ABPerson& p : result.people)
        names.append(p.firstName + u' ' + p.lastName);
    QCOMPARE(names, (QStringList{u"Karte Erste"_s, u"Kaputt Nach"_s, u"Karte Letzte"_s}));
    QCOMPARE(result.problems.size(), 3);
    QVERIFY(result.problems.at(0).startsWith(u"broken_cards.vcf:6:"));
    QVERIFY(result.problems.at(2).contains(u"no END:VCARD"));

    // The rest of the book still answers.
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("book.vcf"));
    writeFile(path, readData(QStringLiteral("broken_cards.vcf")));
    VCardAddressBook book(path);
    const Prefixis p(QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s});
    QCOMPARE(adressbooksearch::searchAdressbookForPhoneNew(QStringLiteral("0305550174"), p, &book,
                                                           {{u"Firstname"_s, 0}})
                 .value(1),
             QStringLiteral("Karte"));
    QCOMPARE(book.lastProblems().size(), 3);
}

void TestVCard::hostileInput_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("people");
    QTest::addColumn<int>("problems");
    const QByteArray card = "BEGIN:VCARD\nN:A;B\nTEL:1\nEND:VCARD\n";
    QTest::newRow("empty file") << QByteArray() << 0 << 0;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF") + card << 1 << 0;
    QTest::newRow("lone begin") << QByteArray("BEGIN:VCARD") << 0 << 1;
    QTest::newRow("lone end") << QByteArray("END:VCARD\n") + card << 1 << 1;
    QTest::newRow("truncated escape at the end")
        << QByteArray("BEGIN:VCARD\nN;ENCODING=QUOTED-PRINTABLE:A=4") << 0 << 1;
    QTest::newRow("soft break as the last line")
        << QByteArray("BEGIN:VCARD\nN;ENCODING=QUOTED-PRINTABLE:A=\nEND:VCARD\n") << 0 << 1;
    QTest::newRow("bad hex kept") << QByteArray(
                                         "BEGIN:VCARD\nN;ENCODING=QUOTED-PRINTABLE:A=ZZ;B\nEND:VCARD\n")
                                  << 1 << 0;
    QTest::newRow("unbalanced quotes in parameters")
        << QByteArray("BEGIN:VCARD\nTEL;TYPE=\"home:1\nEND:VCARD\n") + card << 1 << 1;
    QTest::newRow("backslash at the end") << QByteArray("BEGIN:VCARD\nN:A\\\nEND:VCARD\n") << 1 << 0;
    QTest::newRow("fold before any line") << QByteArray(" folded\n") + card << 1 << 1;
    QTest::newRow("nul bytes") << QByteArray("BEGIN:VCARD\nN:A\0B;C\nEND:VCARD\n", 29) << 1 << 0;
    QTest::newRow("deep agent nesting") << QByteArray("BEGIN:VCARD\nAGENT:\n").repeated(500) << 0 << 1;
}

void TestVCard::hostileInput()
{
    QFETCH(QByteArray, data);
    QFETCH(int, people);
    QFETCH(int, problems);
    const auto result = VCardParser::parse(data, QStringLiteral("x.vcf"));
    QCOMPARE(result.people.size(), people);
    QCOMPARE(result.problems.size(), problems);
}

void TestVCard::typesToLabels_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<QString>("label");
    QTest::newRow("cell") << QStringList{u"CELL"_s, u"VOICE"_s} << u"mobile"_s;
    QTest::newRow("cell beats home") << QStringList{u"HOME"_s, u"CELL"_s} << u"mobile"_s;
    QTest::newRow("iphone beats cell") << QStringList{u"IPHONE"_s, u"CELL"_s} << u"iPhone"_s;
    QTest::newRow("home fax is other") << QStringList{u"HOME"_s, u"FAX"_s} << u"other"_s;
    QTest::newRow("no type") << QStringList{} << u"other"_s;
}

void TestVCard::typesToLabels()
{
    QFETCH(QStringList, types);
    QFETCH(QString, label);
    QCOMPARE(VCardParser::labelForTypes(types), label);
}

void TestVCard::writtenCardReadsBack()
{
    ABPerson person;
    person.uid = QStringLiteral("uid-1");
    person.firstName = QStringLiteral("Zoë");
    person.lastName = QStringLiteral("O'Brien; Jr.");
    person.organization =
        QStringLiteral("Kaffee, Kuchen & Co. KG mit einem Namen, der so lang ist, dass er gefaltet wird");
    person.phones = {{PhoneLabel::Mobile, QStringLiteral("+49 171 555")},
                     {PhoneLabel::IPhone, QStringLiteral("0172")},
                     {PhoneLabel::Main, QStringLiteral("030 1")},
                     {PhoneLabel::Other, QStringLiteral("030 2")}};
    person.groups = {QStringLiteral("Freunde, alte"), QStringLiteral("Arbeit")};
    const QByteArray card = VCardParser::serialize(person);
    for (const QByteArray& line : card.split('\n'))
        QVERIFY2(line.size() <= 76, line.constData()); // 75 octets plus the CR
    const auto back = VCardParser::parse(card, QStringLiteral("written"));
    QCOMPARE(back.people.size(), 1);
    QCOMPARE(describe(back.people.at(0)), describe(person));
    QCOMPARE(back.people.at(0).uid, person.uid);

    // A line break of any form comes back as LF, with the rest of the card intact (a raw CR
    // used to end the content line and lose what followed).
    for (const QString& lineBreak : {u"\r\n"_s, u"\r"_s, u"\n"_s}) {
        ABPerson twoLines = person;
        twoLines.lastName = u"Nachname"_s + lineBreak + u"zweite Zeile"_s;
        twoLines.organization = u"Praxis"_s + lineBreak + u"2. Stock"_s;
        const auto read = VCardParser::parse(VCardParser::serialize(twoLines), u"written"_s);
        QCOMPARE(read.people.size(), 1);
        twoLines.lastName = u"Nachname\nzweite Zeile"_s;
        twoLines.organization = u"Praxis\n2. Stock"_s;
        QCOMPARE(describe(read.people.at(0)), describe(twoLines));
    }
}

void TestVCard::folderBookSeesChangesAndAdditions()
{
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("a.vcf")),
              "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:a\r\nN:Alt;Anna\r\nTEL;TYPE=HOME:0301111\r\nEND:VCARD\r\n");
    writeFile(dir.filePath(QStringLiteral("notes.txt")), "BEGIN:VCARD\r\nN:Ignored\r\nEND:VCARD\r\n");
    VCardAddressBook book(dir.path(), 0);
    const Prefixis p(QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s});
    const QVariantMap format{{u"Firstname"_s, 0}, {u"Surname"_s, 1}};
    const auto lookup = [&](const QString& number) {
        return adressbooksearch::searchAdressbookForPhoneNew(number, p, &book, format);
    };
    QCOMPARE(lookup(u"0301111"_s), (QStringList{u"a"_s, u"Anna Alt"_s, u"home"_s}));
    QCOMPARE(book.snapshot()->people.size(), 1);

    // An editor rewrites the card in place.
    writeFile(
        dir.filePath(QStringLiteral("a.vcf")),
        "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:a\r\nN:Neu;Anna Maria\r\nTEL;TYPE=WORK:0301111\r\nEND:VCARD\r\n");
    {
        QFile touched(dir.filePath(QStringLiteral("a.vcf")));
        QVERIFY(touched.open(QIODevice::ReadWrite));
        QVERIFY(
            touched.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime));
    }
    QCOMPARE(lookup(u"0301111"_s), (QStringList{u"a"_s, u"Anna Maria Neu"_s, u"work"_s}));

    ABPerson added;
    added.firstName = QStringLiteral("Bernd");
    added.lastName = QStringLiteral("Brot");
    added.phones = {{PhoneLabel::Mobile, QStringLiteral("+49 171 2222")}};
    QString error;
    QVERIFY2(book.addPerson(added, &error), qPrintable(error));
    QVERIFY(!added.uid.isEmpty());
    QVERIFY(QFile::exists(dir.filePath(added.uid + QStringLiteral(".vcf"))));
    QCOMPARE(lookup(u"01712222"_s), (QStringList{added.uid, u"Bernd Brot"_s, u"mobile"_s}));
    // The same card again would overwrite a file: refused.
    QVERIFY(!book.addPerson(added, &error));
    QVERIFY(!error.isEmpty());

    // A second address book in a sub-folder (khard/vdirsyncer keep one folder per book).
    QVERIFY(QDir(dir.path()).mkdir(u"work"_s));
    writeFile(
        dir.filePath(u"work/c.vcf"_s),
        "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:c\r\nN:Chef;Clara\r\nTEL;TYPE=WORK:0303333\r\nEND:VCARD\r\n");
    QCOMPARE(lookup(u"0303333"_s), (QStringList{u"c"_s, u"Clara Chef"_s, u"work"_s}));

    QFile::remove(dir.filePath(QStringLiteral("a.vcf")));
    QCOMPARE(lookup(u"0301111"_s), (QStringList{u""_s, u""_s, u""_s}));
    QCOMPARE(book.snapshot()->people.size(), 2);
}

void TestVCard::singleFileBookAddsCard()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("contacts.vcf"));
    writeFile(path, readData(QStringLiteral("nextcloud_4.0.vcf")));
    VCardAddressBook book(path, 60000); // a long interval: the addition must show at once anyway
    QCOMPARE(book.snapshot()->people.size(), 2);
    ABPerson added;
    added.organization = QStringLiteral("Pizzeria Da Mario");
    added.phones = {{PhoneLabel::Work, QStringLiteral("030 999")}};
    QVERIFY(book.addPerson(added, nullptr));
    const auto people = book.snapshot()->people;
    QCOMPARE(people.size(), 3);
    QCOMPARE(people.at(2).organization, QStringLiteral("Pizzeria Da Mario"));
    QCOMPARE(people.at(0).firstName, QStringLiteral("Anna")); // the old cards are intact
}

void TestVCard::groupsAndMembers()
{
    QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("1.vcf")), readData(QStringLiteral("apple_export.vcf")));
    writeFile(dir.filePath(QStringLiteral("2.vcf")), readData(QStringLiteral("nextcloud_4.0.vcf")));
    VCardAddressBook book(dir.path());
    QCOMPARE(adressbooksearch::addressbookGroups(&book),
             (QStringList{u"Lieferanten"_s, u"Nachbarn"_s, u"Familie"_s, u"Freunde"_s}));
    QStringList members;
    for (const ABPerson& p : adressbooksearch::peoplesForGroup(QStringLiteral("Lieferanten"), &book))
        members.append(p.uid);
    QCOMPARE(members, (QStringList{u"6F1D2B9A-0C31-4E55-9D7B-2F4A1C9E8B01"_s,
                                   u"0A7C5E3D-9B12-4F6E-8A41-7D3C2B1E0F22"_s}));
    QVERIFY(adressbooksearch::peoplesForGroup(QStringLiteral("Nobody"), &book).isEmpty());
}

void TestVCard::missingBookIsUnavailable()
{
    VCardAddressBook book(QStringLiteral("/nonexistent/contacts.vcf"));
    QVERIFY(!book.isAvailable());
    const Prefixis p(QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s});
    QCOMPARE(adressbooksearch::searchAdressbookForPhoneNew(QStringLiteral("0301"), p, &book, {}),
             (QStringList{u""_s, u""_s, u""_s}));
    QVERIFY(adressbooksearch::searchAdressbookForPhoneArray({QStringLiteral("0301"), QStringLiteral("301")},
                                                            p, &book, {})
                .isEmpty());
}

void TestVCard::servicesFollowTheSetting()
{
    QTemporaryDir dir;
    writeFile(dir.filePath(u"one.vcf"_s), "BEGIN:VCARD\nUID:1\nN:Eins;Erna\nTEL:0301\nEND:VCARD\n");
    writeFile(dir.filePath(u"two.vcf"_s), "BEGIN:VCARD\nUID:2\nN:Zwei;Zora\nTEL:0301\nEND:VCARD\n");
    SettingsStore settings(dir.filePath(u"settings.json"_s));
    settings.setValue(keys::AddressBook, dir.filePath(u"one.vcf"_s));
    const Prefixis p(QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s});
    ManualClock clock(QDateTime::currentDateTime());
    NotificationCenter center;
    ContactsServices services(dir.filePath(u"data"_s), dir.filePath(u"scripts"_s), settings, nullptr, clock,
                              center);
    const auto lookup = [&] {
        return adressbooksearch::searchAdressbookForPhoneNew(u"0301"_s, p, services.addressBook(),
                                                             {{u"Firstname"_s, 0}})
            .value(1);
    };
    QCOMPARE(lookup(), u"Erna"_s);
    settings.setValue(keys::AddressBook, dir.filePath(u"two.vcf"_s));
    services.reloadAddressBookSetting();
    QCOMPARE(lookup(), u"Zora"_s);
    settings.remove(keys::AddressBook);
    services.reloadAddressBookSetting();
    QCOMPARE(services.addressBook(), nullptr);
}

QTEST_GUILESS_MAIN(TestVCard)
#include "tst_vcard.moc"
