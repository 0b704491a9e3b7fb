#include "box/FBBoxConnectionHelper.h"

#include <QTest>

using namespace FBBoxConnectionHelper;

class TestQueryHelper : public QObject
{
    Q_OBJECT
private slots:
    void olderFirmwareNamesEachVariableTwice()
    {
        const auto chunks =
            queryChunks({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}, false);
        QCOMPARE(chunks.size(), 1);
        QCOMPARE(chunks[0].query,
                 QStringLiteral("&var:n[0]=a&var:n0=a&var:n[1]=b&var:n1=b&var:n[2]=c&var:n2=c&var:cnt=3"));
        QCOMPARE(queryChunks({QStringLiteral("x:y/z")}, true)[0].query,
                 QStringLiteral("&x:y/z=x:y/z&var:cnt=1"));
    }

    void longListsGoOutInChunksWithTheirOwnNames()
    {
        QStringList names;
        for (int i = 0; i < 400; ++i)
            names << QStringLiteral("telcfg:settings/Foncontrol/User%1/Name").arg(i);
        const auto chunks = queryChunks(names, false);
        QVERIFY(chunks.size() > 1);
        qsizetype total = 0;
        for (const auto& c : chunks) {
            QVERIFY(c.query.size() < 12001);
            QVERIFY(c.query.endsWith(QStringLiteral("&var:cnt=%1").arg(c.names.size())));
            QVERIFY(c.query.startsWith(QStringLiteral("&var:n[0]=") + c.names.first()));
            total += c.names.size();
        }
        QCOMPARE(total, names.size());
    }

    void answerSplitting_data()
    {
        QTest::addColumn<bool>("lua");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("three lines and the trailing line feed")
            << false << QStringLiteral("1\n0\nSSID\n")
            << QStringList{QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("SSID"), QString()};
        QTest::newRow("four lines for three names are tolerated")
            << false << QStringLiteral("1\n0\nx\n\n")
            << QStringList{QStringLiteral("1"), QStringLiteral("0"), QStringLiteral("x"), QString(),
                           QString()};
        QTest::newRow("six lines for three names are not")
            << false << QStringLiteral("1\n2\n3\n4\n5\n6") << QStringList();
        QTest::newRow("two lines for three names are not")
            << false << QStringLiteral("1\n2") << QStringList();
        QTest::newRow("transport failure") << false << QStringLiteral("-2") << QStringList();
        QTest::newRow("JSON in the order of the names")
            << true << QStringLiteral(R"({"c":"3","a":"1","b":"er"})")
            << QStringList{QStringLiteral("1"), QStringLiteral("er"), QStringLiteral("3")};
        QTest::newRow("JSON lacking one key is invalid")
            << true << QStringLiteral(R"({"a":"1","c":"3"})") << QStringList();
        QTest::newRow("login page instead of JSON")
            << true << QStringLiteral("<html><input type=\"password\"></html>") << QStringList();
    }
    void answerSplitting()
    {
        QFETCH(bool, lua);
        QFETCH(QString, answer);
        QFETCH(QStringList, expected);
        QCOMPARE(componentsArrayForResultString(
                     answer, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}, lua),
                 expected);
    }

    void unusableValues_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("usable");
        QTest::newRow("unknown variable") << QStringLiteral("er") << false;
        QTest::newRow("unknown variable, long form") << QStringLiteral("err") << false;
        QTest::newRow("not emulated") << QStringLiteral("no-emu") << false;
        QTest::newRow("empty value is a value") << QString() << true;
        QTest::newRow("a name that starts like a mark") << QStringLiteral("erika") << true;
    }
    void unusableValues()
    {
        QFETCH(QString, value);
        QFETCH(bool, usable);
        QCOMPARE(validQueryResult(value), usable);
    }

    void formValuesAreEscaped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("form delimiters")
            << QStringLiteral("a?b=c&d+e") << QStringLiteral("a%3Fb%3Dc%26d%2Be");
        QTest::newRow("Latin-1 letters in one byte")
            << QStringLiteral("Passwört") << QStringLiteral("Passw%F6rt");
        QTest::newRow("blank and percent") << QStringLiteral("50 %") << QStringLiteral("50%20%25");
    }
    void formValuesAreEscaped()
    {
        QFETCH(QString, text);
        QFETCH(QString, encoded);
        QCOMPARE(urlencode(text), encoded);
    }
};

QTEST_GUILESS_MAIN(TestQueryHelper)
#include "tst_queryhelper.moc"
