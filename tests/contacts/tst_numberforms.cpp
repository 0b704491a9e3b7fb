#include "contacts/CallerIdentification.h"
#include "base/NumberForms.h"
#include "base/StringAdditions.h"

#include "MemoryCallerCache.h"

#include <QtTest>

using namespace Qt::StringLiterals;

#include <thread>
#include <vector>

namespace {
const QStringList berlin = {QStringLiteral("00"), QStringLiteral("49"), QStringLiteral("0"),
                            QStringLiteral("30")};
}

class TestNumberForms : public QObject
{
    Q_OBJECT
private slots:
    void cleanNumber_data();
    void cleanNumber();
    void standardize_data();
    void standardize();
    void unified_data();
    void unified();
    void unifiedFirstUseFromManyThreads();
    void commandAndLines_data();
    void commandAndLines();
    void trimString_data();
    void trimString();
    void entities_data();
    void entities();
    void containsString_data();
    void containsString();
    void replaceCharactersInSet();
    void parenthesisPart_data();
    void parenthesisPart();
    void searchNameUsesCacheBeforeBook();
};

void TestNumberForms::cleanNumber_data()
{
    QTest::addColumn<QStringList>("prefixis");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("expected");
    QTest::newRow("international own country") << berlin << u"+49 (30) 123-45"_s << u"03012345"_s;
    QTest::newRow("0049 with slash and dot") << berlin << u"0049/171.555"_s << u"0171555"_s;
    QTest::newRow("foreign country keeps 00") << berlin << u"+1 212 555"_s << u"001212555"_s;
    QTest::newRow("keypad command kept") << berlin << u"*31#030 12"_s << u"*31#03012"_s;
    QTest::newRow("empty stays empty") << berlin << u""_s << u""_s;
    QTest::newRow("plus alone") << berlin << u"+"_s << u"00"_s;
    QTest::newRow("0049 alone") << berlin << u"0049"_s << u"0"_s;
    QTest::newRow("country digits without 00 stay") << berlin << u"4930123"_s << u"4930123"_s;
    QTest::newRow("plus later stays") << berlin << u"030+1"_s << u"030+1"_s;
    QTest::newRow("letters survive") << berlin << u"0800-FLOWERS"_s << u"0800FLOWERS"_s;
    QTest::newRow("fold is always 0, not the trunk prefix")
        << QStringList{u"00"_s, u"43"_s, u"9"_s, u"1"_s} << u"+43 1 234"_s << u"01234"_s;
    // With only P0 the fold prefix is u"00"_s itself.
    QTest::newRow("short list reads as empty") << QStringList{u"00"_s} << u"+49 30"_s << u"04930"_s;
    QTest::newRow("empty list drops the plus") << QStringList{} << u"+49 30 1"_s << u"49301"_s;
}

void TestNumberForms::cleanNumber()
{
    QFETCH(QStringList, prefixis);
    QFETCH(QString, number);
    QFETCH(QString, expected);
    QCOMPARE(methods::cleanNumber(number, Prefixis(prefixis)), expected);
}

void TestNumberForms::standardize_data()
{
    QTest::addColumn<QStringList>("prefixis");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plus then country fold") << berlin << u"+49 30 1234"_s << u"0301234"_s;
    QTest::newRow("separated 00 stays international") << berlin << u"00 49 30 1234"_s << u"0049301234"_s;
    QTest::newRow("local number starting with 49 folds") << berlin << u"4930123"_s << u"030123"_s;
    QTest::newRow("letters dropped") << berlin << u"030-FLOW"_s << u"030"_s;
    QTest::newRow("foreign") << berlin << u"+1 (212) 555"_s << u"001212555"_s;
    QTest::newRow("empty list") << QStringList{} << u"+49 30"_s << u"4930"_s;
}

void TestNumberForms::standardize()
{
    QFETCH(QStringList, prefixis);
    QFETCH(QString, number);
    QFETCH(QString, expected);
    QCOMPARE(adressbooksearch::standardizePhoneNumber(number, Prefixis(prefixis)), expected);
}

void TestNumberForms::unified_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("vanity number") << u"Call 1-800-FLOWERS"_s << u"18003569377"_s;
    QTest::newRow("label before number") << u"Mobil: +49 171"_s << u"+49171"_s;
    QTest::newRow("int prefix kept") << u"int 0049 30"_s << u"int004930"_s;
    QTest::newRow("INT upper case") << u"INT 0049"_s << u"int0049"_s;
    QTest::newRow("letters before first digit dropped") << u"abc123def"_s << u"123333"_s;
    QTest::newRow("star and hash") << u"*31#0301"_s << u"*31#0301"_s;
    QTest::newRow("umlaut ignored") << u"ä1ö"_s << u"1"_s;
    QTest::newRow("pqrs and wxyz") << u"0SZ"_s << u"079"_s;
}

void TestNumberForms::unified()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(SearchingAdditions::unifiedPhoneNumber(text), expected);
}

void TestNumberForms::unifiedFirstUseFromManyThreads()
{
    std::vector<QString> results(8);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < results.size(); ++i)
        threads.emplace_back([&results, i] {
            results[i] = SearchingAdditions::unifiedPhoneNumber(QStringLiteral("1-800-FLOWERS"));
        });
    for (auto& t : threads)
        t.join();
    for (const QString& r : results)
        QCOMPARE(r, QStringLiteral("18003569377"));
}

void TestNumberForms::commandAndLines_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("command stripped") << u"command"_s << u"#31#0301"_s << u"0301"_s;
    QTest::newRow("diversion command") << u"command"_s << u"*31#030123"_s << u"030123"_s;
    QTest::newRow("no command") << u"command"_s << u"0301"_s << u"0301"_s;
    QTest::newRow("last hash wins") << u"command"_s << u"*1#2#03"_s << u"03"_s;
    QTest::newRow("single word has no line") << u"line"_s << u"Meier"_s << u""_s;
    QTest::newRow("word with line break") << u"line"_s << u"Meier\n"_s << u"Meier"_s;
    QTest::newRow("two lines give the first") << u"line"_s << u"Meier\nMüller"_s << u"Meier"_s;
}

void TestNumberForms::commandAndLines()
{
    QFETCH(QString, function);
    QFETCH(QString, input);
    QFETCH(QString, expected);
    const QString got = function == u"command" ? methods::replaceCommandStringinNumber(input)
                                               : methods::matchExpressionInString(input);
    QCOMPARE(got, expected);
}

void TestNumberForms::trimString_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("spaces and tabs") << u" \tHans Meier \t"_s << u"Hans Meier"_s;
    QTest::newRow("line breaks stay") << u"\nHans\n"_s << u"\nHans\n"_s;
    QTest::newRow("no-break space") << QStringLiteral("\u00a0Hans\u2002") << u"Hans"_s;
    QTest::newRow("blank only") << u"   "_s << u""_s;
}

void TestNumberForms::trimString()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QCOMPARE(methods::trimString(input), expected);
}

void TestNumberForms::entities_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("xml names") << u"M&amp;M &lt;GmbH&gt; &quot;x&quot; &apos;y&apos;"_s
                               << u"M&M <GmbH> \"x\" 'y'"_s;
    QTest::newRow("decimal and hex") << u"M&#252;ller &#xDF;"_s << u"Müller ß"_s;
    QTest::newRow("unknown kept") << u"a &nope; b"_s << u"a &nope; b"_s;
    QTest::newRow("bare ampersand") << u"A & B"_s << u"A & B"_s;
    QTest::newRow("surrogate refused") << u"&#xD800;"_s << u"&#xD800;"_s;
    QTest::newRow("astral code point") << u"&#x1F600;"_s << QString::fromUcs4(U"\U0001F600");
}

void TestNumberForms::entities()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QCOMPARE(SearchingAdditions::stringByUnescapingEntities(input), expected);
}

void TestNumberForms::containsString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("needle");
    QTest::addColumn<bool>("ignoringCase");
    QTest::addColumn<bool>("expected");
    QTest::newRow("exact") << u"Hans Meier"_s << u"Meier"_s << false << true;
    QTest::newRow("case differs") << u"Hans Meier"_s << u"meier"_s << false << false;
    QTest::newRow("case ignored") << u"Hans Meier"_s << u"meier"_s << true << true;
    QTest::newRow("umlaut case ignored") << u"ÄRZTEHAUS"_s << u"ärzte"_s << true << true;
    QTest::newRow("empty needle never found") << u"Hans"_s << u""_s << false << false;
}

void TestNumberForms::containsString()
{
    QFETCH(QString, text);
    QFETCH(QString, needle);
    QFETCH(bool, ignoringCase);
    QFETCH(bool, expected);
    QCOMPARE(SearchingAdditions::containsString(text, needle, ignoringCase), expected);
}

void TestNumberForms::replaceCharactersInSet()
{
    QCOMPARE(SearchingAdditions::stringByReplacingCharactersInSet(QStringLiteral("(030) 12-34"), u"()- ",
                                                                  QString()),
             QStringLiteral("0301234"));
    QCOMPARE(SearchingAdditions::stringByReplacingCharactersInSet(QStringLiteral("a-b--c"), u"-",
                                                                  QStringLiteral("+")),
             QStringLiteral("a+b++c"));
}

void TestNumberForms::parenthesisPart_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("expected");
    QTest::newRow("wrapped number") << u"(0301)"_s << u"0301"_s;
    QTest::newRow("name after number") << u"0301 (Meier)"_s << u"0301"_s;
    QTest::newRow("wrapped with separators") << u"(030 / 1)"_s << u"0301"_s;
    QTest::newRow("plain number untouched") << u"+49 30"_s << u"+49 30"_s;
}

void TestNumberForms::parenthesisPart()
{
    QFETCH(QString, number);
    QFETCH(QString, expected);
    QCOMPARE(methods::numberWithoutParenthesisPart(number), expected);
}

void TestNumberForms::searchNameUsesCacheBeforeBook()
{
    MemoryCallerCache cache;
    cache.insertCallerWithName(QStringLiteral("Cached Name"), QStringLiteral("0301"), QStringLiteral("id-1"),
                               QStringLiteral("home"));
    methods::CallerSource source = methods::CallerSource::None;
    const QStringList hit = methods::searchNameForPhonenumber(QStringLiteral("0301 (Meier)"), &cache, nullptr,
                                                              Prefixis(berlin), {}, &source);
    QCOMPARE(hit, (QStringList{u"id-1"_s, u"Cached Name"_s, u"home"_s}));
    QCOMPARE(source, methods::CallerSource::Cache);

    const QStringList miss = methods::searchNameForPhonenumber(QStringLiteral("0302"), &cache, nullptr,
                                                               Prefixis(berlin), {}, &source);
    QCOMPARE(miss, (QStringList{u""_s, u""_s, u""_s}));
    QCOMPARE(source, methods::CallerSource::None);
    QCOMPARE(cache.rows.size(), 1); // nothing cached for an unknown number
    QCOMPARE(methods::searchNameForPhonenumber(QString(), &cache, nullptr, Prefixis(berlin), {}),
             (QStringList{u""_s, u""_s, u""_s}));
}

QTEST_GUILESS_MAIN(TestNumberForms)
#include "tst_numberforms.moc"
