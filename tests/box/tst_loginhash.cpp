#include "box/FBLoginHash.h"

#include <QTest>

class TestLoginHash : public QObject
{
    Q_OBJECT
private slots:
    void response_data()
    {
        QTest::addColumn<QString>("challenge");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("expected");
        QTest::newRow("published MD5 vector, umlaut as one UTF-16LE unit")
            << QStringLiteral("1234567z") << QStringLiteral("äbc")
            << QStringLiteral("1234567z-9e224a41eeefa284df7bb0f26c2913e2");
        QTest::newRow("published PBKDF2 vector")
            << QStringLiteral("2$10000$5A1711$2000$5A1722") << QStringLiteral("1example!")
            << QStringLiteral("5A1722$1798a1672bca7c6463d6b245f82b53703b0f50813401b03e4045a5861e689adb");
        QTest::newRow("PBKDF2 salt in lower case reads the same")
            << QStringLiteral("2$10000$5a1711$2000$5A1722") << QStringLiteral("1example!")
            << QStringLiteral("5A1722$1798a1672bca7c6463d6b245f82b53703b0f50813401b03e4045a5861e689adb");
        QTest::newRow("odd-length salt is refused")
            << QStringLiteral("2$10000$5A171$2000$5A172") << QStringLiteral("1example!") << QString();
        QTest::newRow("PBKDF2 challenge with a missing part is refused")
            << QStringLiteral("2$10000$5A1711$2000") << QStringLiteral("x") << QString();
        QTest::newRow("PBKDF2 challenge with a text iteration count is refused")
            << QStringLiteral("2$many$5A1711$2000$5A1722") << QStringLiteral("x") << QString();
        // Would each cost minutes of CPU.
        QTest::newRow("PBKDF2 first stage over 1,000,000 iterations is refused")
            << QStringLiteral("2$1000001$5A1711$2000$5A1722") << QStringLiteral("x") << QString();
        QTest::newRow("PBKDF2 second stage of 2^31-1 iterations is refused")
            << QStringLiteral("2$10000$5A1711$2147483647$5A1722") << QStringLiteral("x") << QString();
        QTest::newRow("PBKDF2 iteration count beyond int is refused")
            << QStringLiteral("2$2147483648$5A1711$2000$5A1722") << QStringLiteral("x") << QString();
    }
    void response()
    {
        QFETCH(QString, challenge);
        QFETCH(QString, password);
        QFETCH(QString, expected);
        QCOMPARE(FBLoginHash::responseForChallenge(challenge, password), expected);
    }

    void charactersAboveLatin1HashAsFullStop_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("sameAs");
        QTest::newRow("euro sign") << QStringLiteral("a€b") << QStringLiteral("a.b");
        QTest::newRow("emoji (two UTF-16 units, each replaced)")
            << QStringLiteral("x\U0001F600") << QStringLiteral("x..");
        QTest::newRow("y with diaeresis is the last kept character")
            << QStringLiteral("ÿ") << QStringLiteral("ÿ");
    }
    void charactersAboveLatin1HashAsFullStop()
    {
        QFETCH(QString, password);
        QFETCH(QString, sameAs);
        QCOMPARE(FBLoginHash::md5ResponseFromString(QStringLiteral("c-") + password),
                 FBLoginHash::md5ResponseFromString(QStringLiteral("c-") + sameAs));
        if (password != sameAs)
            QVERIFY(FBLoginHash::md5ResponseFromString(password) !=
                    FBLoginHash::md5ResponseFromString(QStringLiteral("c-")));
    }
};

QTEST_GUILESS_MAIN(TestLoginHash)
#include "tst_loginhash.moc"
