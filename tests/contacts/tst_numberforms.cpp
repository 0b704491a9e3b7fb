#include "base/NumberForms.h"
#include "base/StringAdditions.h"
#include "contacts/CallerIdentification.h"

#include <QtTest>

using namespace Qt::StringLiterals;

#include <functional>
#include <map>
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
    void forms_data();
    void forms();
    void unifiedFirstUseFromManyThreads();
};

void TestNumberForms::forms_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QStringList>("prefixis");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    const auto clean = [](const char* name, const QStringList& p, const QString& in, const QString& out) {
        QTest::addRow("clean: %s", name) << u"clean"_s << p << in << out;
    };
    clean("international own country", berlin, u"+49 (30) 123-45"_s, u"03012345"_s);
    clean("0049 with slash and dot", berlin, u"0049/171.555"_s, u"0171555"_s);
    clean("foreign country keeps 00", berlin, u"+1 212 555"_s, u"001212555"_s);
    clean("keypad command kept", berlin, u"*31#030 12"_s, u"*31#03012"_s);
    clean("empty stays empty", berlin, u""_s, u""_s);
    clean("plus alone", berlin, u"+"_s, u"00"_s);
    clean("0049 alone", berlin, u"0049"_s, u"0"_s);
    clean("country digits without 00 stay", berlin, u"4930123"_s, u"4930123"_s);
    clean("plus later stays", berlin, u"030+1"_s, u"030+1"_s);
    clean("letters survive", berlin, u"0800-FLOWERS"_s, u"0800FLOWERS"_s);
    clean("fold is always 0, not the trunk prefix", {u"00"_s, u"43"_s, u"9"_s, u"1"_s}, u"+43 1 234"_s,
          u"01234"_s);
    clean("short list reads as empty", {u"00"_s}, u"+49 30"_s, u"04930"_s);
    clean("empty list drops the plus", {}, u"+49 30 1"_s, u"49301"_s);

    const auto standard = [](const char* name, const QStringList& p, const QString& in, const QString& out) {
        QTest::addRow("standardize: %s", name) << u"standardize"_s << p << in << out;
    };
    standard("plus then country fold", berlin, u"+49 30 1234"_s, u"0301234"_s);
    standard("separated 00 stays international", berlin, u"00 49 30 1234"_s, u"0049301234"_s);
    standard("local number starting with 49 folds", berlin, u"4930123"_s, u"030123"_s);
    standard("letters dropped", berlin, u"030-FLOW"_s, u"030"_s);
    standard("empty list", {}, u"+49 30"_s, u"4930"_s);

    const auto text = [](const char* function, const char* name, const QString& in, const QString& out) {
        QTest::addRow("%s: %s", function, name)
            << QString::fromLatin1(function) << QStringList() << in << out;
    };
    text("unified", "vanity number", u"Call 1-800-FLOWERS"_s, u"18003569377"_s);
    text("unified", "label before number", u"Mobil: +49 171"_s, u"+49171"_s);
    text("unified", "INT prefix kept in lower case", u"INT 0049"_s, u"int0049"_s);
    text("unified", "letters before first digit dropped", u"abc123def"_s, u"123333"_s);
    text("unified", "star and hash", u"*31#0301"_s, u"*31#0301"_s);
    text("unified", "umlaut ignored", u"ä1ö"_s, u"1"_s);
    text("unified", "pqrs and wxyz", u"0SZ"_s, u"079"_s);
    text("command", "diversion command", u"*31#030123"_s, u"030123"_s);
    text("command", "no command", u"0301"_s, u"0301"_s);
    text("command", "last hash wins", u"*1#2#03"_s, u"03"_s);
    text("line", "single word has no line", u"Meier"_s, u""_s);
    text("line", "word with line break", u"Meier\n"_s, u"Meier"_s);
    text("line", "two lines give the first", u"Meier\nMüller"_s, u"Meier"_s);
    text("trim", "spaces and tabs", u" \tHans Meier \t"_s, u"Hans Meier"_s);
    text("trim", "line breaks stay", u"\nHans\n"_s, u"\nHans\n"_s);
    text("trim", "no-break space", QStringLiteral("\u00a0Hans\u2002"), u"Hans"_s);
    text("entities", "xml names", u"M&amp;M &lt;GmbH&gt; &quot;x&quot; &apos;y&apos;"_s,
         u"M&M <GmbH> \"x\" 'y'"_s);
    text("entities", "decimal and hex", u"M&#252;ller &#xDF;"_s, u"Müller ß"_s);
    text("entities", "unknown kept", u"a &nope; b"_s, u"a &nope; b"_s);
    text("entities", "bare ampersand", u"A & B"_s, u"A & B"_s);
    text("entities", "surrogate refused", u"&#xD800;"_s, u"&#xD800;"_s);
    text("entities", "astral code point", u"&#x1F600;"_s, QString::fromUcs4(U"\U0001F600"));
    text("parenthesis", "wrapped number", u"(0301)"_s, u"0301"_s);
    text("parenthesis", "name after number", u"0301 (Meier)"_s, u"0301"_s);
    text("parenthesis", "wrapped with separators", u"(030 / 1)"_s, u"0301"_s);
    text("parenthesis", "plain number untouched", u"+49 30"_s, u"+49 30"_s);
}

void TestNumberForms::forms()
{
    QFETCH(QString, function);
    QFETCH(QStringList, prefixis);
    QFETCH(QString, input);
    QFETCH(QString, expected);
    const std::map<QString, std::function<QString()>> apply = {
        {u"clean"_s, [&] { return methods::cleanNumber(input, Prefixis(prefixis)); }},
        {u"standardize"_s,
         [&] { return adressbooksearch::standardizePhoneNumber(input, Prefixis(prefixis)); }},
        {u"unified"_s, [&] { return SearchingAdditions::unifiedPhoneNumber(input); }},
        {u"command"_s, [&] { return methods::replaceCommandStringinNumber(input); }},
        {u"line"_s, [&] { return methods::matchExpressionInString(input); }},
        {u"trim"_s, [&] { return methods::trimString(input); }},
        {u"entities"_s, [&] { return SearchingAdditions::stringByUnescapingEntities(input); }},
        {u"parenthesis"_s, [&] { return methods::numberWithoutParenthesisPart(input); }},
    };
    QCOMPARE(apply.at(function)(), expected);
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

QTEST_GUILESS_MAIN(TestNumberForms)
#include "tst_numberforms.moc"
