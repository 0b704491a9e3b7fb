#include "contacts/AddressBookSearch.h"
#include "contacts/CallerIdentification.h"

#include "MemoryCallerCache.h"
#include "StaticAddressBook.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
const QStringList berlin = {QStringLiteral("00"), QStringLiteral("49"), QStringLiteral("0"),
                            QStringLiteral("30")};
const QVariantMap nameFormat = {{QStringLiteral("Firstname"), 0}, {QStringLiteral("Surname"), 1}};

QVector<ABPerson> people(const QStringList& specs)
{
    QVector<ABPerson> list;
    for (const QString& s : specs)
        list.append(person(s));
    return list;
}
} // namespace

class TestAddressBookSearch : public QObject
{
    Q_OBJECT
private slots:
    void singleLookup_data();
    void singleLookup();
    void batchLookup_data();
    void batchLookup();
    void formatting_data();
    void formatting();
    void bookAnswerIsCachedOnceAndWins();
    void contextChangeGivesFreshIndex();
};

void TestAddressBookSearch::singleLookup_data()
{
    QTest::addColumn<QStringList>("book");
    QTest::addColumn<QStringList>("prefixis");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QStringList>("expected");
    const QStringList none{u""_s, u""_s, u""_s};
    QTest::newRow("entry with separators") << QStringList{u"a:Hans Meier:home=030 / 12 34"_s} << berlin
                                           << u"0301234"_s << QStringList{u"a"_s, u"Hans Meier"_s, u"home"_s};
    QTest::newRow("international entry, national number")
        << QStringList{u"a:Hans Meier:work=+49 30 1234"_s} << berlin << u"0301234"_s
        << QStringList{u"a"_s, u"Hans Meier"_s, u"work"_s};
    QTest::newRow("entry with own area, local call")
        << QStringList{u"a:Hans Meier:home=0301234"_s} << berlin << u"1234"_s
        << QStringList{u"a"_s, u"Hans Meier"_s, u"home"_s};
    QTest::newRow("entry without area, national number")
        << QStringList{u"a:Hans Meier:home=1234"_s} << berlin << u"0301234"_s << none;
    QTest::newRow("other area is not folded")
        << QStringList{u"a:Hans Meier:home=089 1234"_s} << berlin << u"1234"_s << none;
    QTest::newRow("foreign number") << QStringList{u"a:Jan Novak:mobile=+420 777 123"_s} << berlin
                                    << u"00420777123"_s << QStringList{u"a"_s, u"Jan Novak"_s, u"mobile"_s};
    QTest::newRow("second entry of a contact")
        << QStringList{u"a:Eva Kern:home=0301,mobile=0171 2"_s} << berlin << u"01712"_s
        << QStringList{u"a"_s, u"Eva Kern"_s, u"mobile"_s};
    QTest::newRow("two contacts with one number: first in book order")
        << QStringList{u"a:Anna Erst:home=030 555"_s, u"b:Bernd Zweit:work=030555"_s} << berlin << u"030555"_s
        << QStringList{u"a"_s, u"Anna Erst"_s, u"home"_s};
    QTest::newRow("earlier entry matching by area fold beats later exact entry")
        << QStringList{u"a:Anna Erst:home=030 555"_s, u"b:Bernd Zweit:work=555"_s} << berlin << u"555"_s
        << QStringList{u"a"_s, u"Anna Erst"_s, u"home"_s};
    QTest::newRow("own area folded twice") << QStringList{u"a:Anna Erst:home=0303012"_s} << berlin << u"12"_s
                                           << QStringList{u"a"_s, u"Anna Erst"_s, u"home"_s};
    QTest::newRow("no dialling context") << QStringList{u"a:Anna Erst:home=030 1234"_s} << QStringList{}
                                         << u"0301234"_s << QStringList{u"a"_s, u"Anna Erst"_s, u"home"_s};
    QTest::newRow("no dialling context, local call")
        << QStringList{u"a:Anna Erst:home=030 1234"_s} << QStringList{} << u"1234"_s << none;
    QTest::newRow("no dialling context drops the plus")
        << QStringList{u"a:Anna Erst:home=+49 30 1234"_s} << QStringList{} << u"49301234"_s
        << QStringList{u"a"_s, u"Anna Erst"_s, u"home"_s};
    QTest::newRow("only a leading plus is the prefix")
        << QStringList{u"a:Anna Erst:home=(+1) 2+3"_s} << berlin << u"0012+3"_s
        << QStringList{u"a"_s, u"Anna Erst"_s, u"home"_s};
    QTest::newRow("empty book") << QStringList{} << berlin << u"0301234"_s << none;
}

void TestAddressBookSearch::singleLookup()
{
    QFETCH(QStringList, book);
    QFETCH(QStringList, prefixis);
    QFETCH(QString, number);
    QFETCH(QStringList, expected);
    StaticAddressBook ab(people(book));
    QCOMPARE(adressbooksearch::searchAdressbookForPhoneNew(number, Prefixis(prefixis), &ab, nameFormat),
             expected);
}

void TestAddressBookSearch::batchLookup_data()
{
    QTest::addColumn<QStringList>("book");
    QTest::addColumn<QStringList>("numbers");
    QTest::addColumn<QStringList>("expected"); // u"number|abid|name|label"_s per record
    QTest::newRow("international entry matches the short form")
        << QStringList{u"a:Hans Meier:work=+49 30 1234"_s} << QStringList{u"0301234"_s, u"301234"_s}
        << QStringList{u"0301234|a|Hans Meier|work"_s};
    QTest::newRow("entry with area code matches a local number")
        << QStringList{u"a:Hans Meier:home=030 5678"_s}
        << QStringList{u"0171"_s, u"171"_s, u"5678"_s, u"5678"_s} << QStringList{u"5678|a|Hans Meier|home"_s};
    QTest::newRow("records in book order, first contact wins")
        << QStringList{u"b:Bernd Zweit:mobile=0171 1"_s, u"a:Anna Erst:home=030 1"_s,
                       u"c:Carl Dritt:home=0301"_s}
        << QStringList{u"0301"_s, u"301"_s, u"01711"_s, u"1711"_s}
        << QStringList{u"01711|b|Bernd Zweit|mobile"_s, u"0301|a|Anna Erst|home"_s};
    QTest::newRow("matched number is not tried in its second form")
        << QStringList{u"a:Anna Erst:home=0301234"_s, u"b:Bernd Zweit:home=0301234"_s,
                       u"c:Carl Dritt:work=1234"_s}
        << QStringList{u"0301234"_s, u"301234"_s, u"1234"_s, u"1234"_s}
        << QStringList{u"0301234|a|Anna Erst|home"_s, u"1234|c|Carl Dritt|work"_s};
    QTest::newRow("odd list takes the even neighbour")
        << QStringList{u"a:Anna Erst:home=0301"_s} << QStringList{u""_s, u"0301"_s, u"301"_s}
        << QStringList{u"|a|Anna Erst|home"_s};
    QTest::newRow("unknown numbers give nothing")
        << QStringList{u"a:Anna Erst:home=0301"_s} << QStringList{u"0309"_s, u"309"_s} << QStringList{};
}

void TestAddressBookSearch::batchLookup()
{
    QFETCH(QStringList, book);
    QFETCH(QStringList, numbers);
    QFETCH(QStringList, expected);
    StaticAddressBook ab(people(book));
    QStringList got;
    for (const QStringList& record :
         adressbooksearch::searchAdressbookForPhoneArray(numbers, Prefixis(berlin), &ab, nameFormat))
        got.append(record.join(u'|'));
    QCOMPARE(got, expected);
}

void TestAddressBookSearch::formatting_data()
{
    QTest::addColumn<QVariantMap>("format");
    QTest::addColumn<QStringList>("parts"); // first, last, company
    QTest::addColumn<QString>("expected");
    const QVariantMap standard{{u"Firstname"_s, 0}, {u"Surname"_s, 1}, {u"Company"_s, 2}};
    const QVariantMap companyFirst{{u"Company"_s, 0}, {u"Firstname_Short"_s, 1}, {u"Surname"_s, 2}};
    QTest::newRow("names then company")
        << standard << QStringList{u"Hans"_s, u"Meier"_s, u"ACME"_s} << u"Hans Meier - ACME"_s;
    QTest::newRow("company alone") << standard << QStringList{u""_s, u""_s, u"ACME"_s} << u"ACME"_s;
    QTest::newRow("company first, short first name")
        << companyFirst << QStringList{u"Hans"_s, u"Meier"_s, u"ACME"_s} << u"ACME - H. Meier"_s;
    QTest::newRow("company in the middle")
        << QVariantMap{{u"Firstname"_s, 0}, {u"Company"_s, 1}, {u"Surname"_s, 2}}
        << QStringList{u"Hans"_s, u"Meier"_s, u"ACME"_s} << u"Hans - ACME - Meier"_s;
    QTest::newRow("format without company hides it")
        << QVariantMap{{u"Firstname"_s, 0}, {u"Surname"_s, 1}}
        << QStringList{u"Hans"_s, u"Meier"_s, u"ACME"_s} << u"Hans Meier"_s;
    QTest::newRow("short surname") << QVariantMap{{u"Firstname"_s, 0}, {u"Surname_Short"_s, 1}}
                                   << QStringList{u"Hans"_s, u"Meier"_s, u""_s} << u"Hans M."_s;
    QTest::newRow("one-letter first name not shortened")
        << companyFirst << QStringList{u"H"_s, u"Meier"_s, u""_s} << u"H Meier"_s;
    QTest::newRow("first name only, company last")
        << standard << QStringList{u"Hans"_s, u""_s, u"ACME"_s} << u"Hans - ACME"_s;
    QTest::newRow("empty format shows only a company")
        << QVariantMap{} << QStringList{u"Hans"_s, u"Meier"_s, u"ACME"_s} << u"ACME"_s;
    QTest::newRow("nothing at all") << standard << QStringList{u""_s, u""_s, u""_s} << u""_s;
    QTest::newRow("full key wins over short key")
        << QVariantMap{{u"Firstname"_s, 1}, {u"Firstname_Short"_s, 0}, {u"Surname"_s, 2}}
        << QStringList{u"Hans"_s, u"Meier"_s, u""_s} << u"Hans Meier"_s;
}

void TestAddressBookSearch::formatting()
{
    QFETCH(QVariantMap, format);
    QFETCH(QStringList, parts);
    QFETCH(QString, expected);
    QCOMPARE(adressbooksearch::formatedOutputForContactWithFirstname(parts.at(0), parts.at(1), parts.at(2),
                                                                     format),
             expected);
}

void TestAddressBookSearch::bookAnswerIsCachedOnceAndWins()
{
    StaticAddressBook ab(people({u"a:Hans Meier:mobile=+49 171 555"_s}));
    MemoryCallerCache cache;
    methods::CallerSource source = methods::CallerSource::None;
    const QStringList first = methods::searchNameForPhonenumber(QStringLiteral("0171555"), &cache, &ab,
                                                                Prefixis(berlin), nameFormat, &source);
    QCOMPARE(first, (QStringList{u"a"_s, u"Hans Meier"_s, u"mobile"_s}));
    QCOMPARE(source, methods::CallerSource::AddressBook);
    QCOMPARE(cache.rows.value(QStringLiteral("0171555")),
             (QStringList{u"a"_s, u"Hans Meier"_s, u"mobile"_s}));
    const QStringList second = methods::searchNameForPhonenumber(QStringLiteral("0171555"), &cache, &ab,
                                                                 Prefixis(berlin), nameFormat, &source);
    QCOMPARE(second, first);
    QCOMPARE(source, methods::CallerSource::Cache);

    // A name after the number is no part of it; unknown numbers are not cached.
    QCOMPARE(methods::searchNameForPhonenumber(QStringLiteral("0171555 (Meier)"), &cache, nullptr,
                                               Prefixis(berlin), nameFormat, &source),
             first);
    QCOMPARE(methods::searchNameForPhonenumber(QStringLiteral("0302"), &cache, &ab, Prefixis(berlin),
                                               nameFormat, &source),
             (QStringList{u""_s, u""_s, u""_s}));
    QCOMPARE(source, methods::CallerSource::None);
    QCOMPARE(cache.rows.size(), 1);
    QCOMPARE(methods::searchNameForPhonenumber(QString(), &cache, &ab, Prefixis(berlin), nameFormat),
             (QStringList{u""_s, u""_s, u""_s}));
}

void TestAddressBookSearch::contextChangeGivesFreshIndex()
{
    // The same book asked under two locations must not share normalised forms.
    StaticAddressBook ab(people({u"a:Hans Meier:home=+43 1 234"_s}));
    const Prefixis vienna(QStringList{u"00"_s, u"43"_s, u"0"_s, u"1"_s});
    QCOMPARE(adressbooksearch::searchAdressbookForPhoneNew(QStringLiteral("234"), vienna, &ab, nameFormat)
                 .value(0),
             QStringLiteral("a"));
    QCOMPARE(adressbooksearch::searchAdressbookForPhoneNew(QStringLiteral("234"), Prefixis(berlin), &ab,
                                                           nameFormat)
                 .value(0),
             QString());
    QCOMPARE(adressbooksearch::searchAdressbookForPhoneNew(QStringLiteral("00431234"), Prefixis(berlin), &ab,
                                                           nameFormat)
                 .value(0),
             QStringLiteral("a"));
}

QTEST_GUILESS_MAIN(TestAddressBookSearch)
#include "tst_addressbooksearch.moc"
