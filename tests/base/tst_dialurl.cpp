#include "base/DialURL.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestDialURL : public QObject
{
    Q_OBJECT
private slots:
    void telURL_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("ours");
        QTest::addColumn<QString>("number");
        QTest::newRow("global number with visual separators")
            << u"tel:+49-30-1234567"_s << true << u"+49-30-1234567"_s;
        QTest::newRow("parameters dropped")
            << u"tel:0301234567;ext=12;phone-context=x"_s << true << u"0301234567"_s;
        QTest::newRow("percent escapes and slashes")
            << u"tel://+49%2030%201234"_s << true << u"+49 30 1234"_s;
        QTest::newRow("upper-case scheme") << u"TEL:110"_s << true << u"110"_s;
        QTest::newRow("callto is not tel") << u"callto:0301234567"_s << false << QString();
        QTest::newRow("no scheme") << u"0301234567"_s << false << QString();
    }
    void telURL()
    {
        QFETCH(QString, url);
        QFETCH(bool, ours);
        const auto number = methods::numberFromTelURL(url);
        QCOMPARE(number.has_value(), ours);
        if (ours)
            QTEST(*number, "number");
    }

    void dialableNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("dialled");
        QTest::newRow("separators go") << u"030 / 123 45-67"_s << u"00"_s << u"0301234567"_s;
        QTest::newRow("plus becomes the international prefix")
            << u"+44 20 7946 0000"_s << u"00"_s << u"00442079460000"_s;
        QTest::newRow("plus without a configured prefix") << u"+1 555 0100"_s << QString() << u"0015550100"_s;
        QTest::newRow("another international prefix")
            << u"+41 44 000 00 00"_s << u"011"_s << u"01141440000000"_s;
        QTest::newRow("letters on the keypad") << u"0800-FLOWERS"_s << u"00"_s << u"08003569377"_s;
        QTest::newRow("internal call and codes stay") << u"**610"_s << u"00"_s << u"**610"_s;
        QTest::newRow("plus inside is dropped") << u"030+1234"_s << u"00"_s << u"0301234"_s;
    }
    void dialableNumber()
    {
        QFETCH(QString, text);
        QFETCH(QString, prefix);
        QTEST(methods::dialableNumber(text, prefix), "dialled");
    }
};

QTEST_GUILESS_MAIN(TestDialURL)
#include "tst_dialurl.moc"
