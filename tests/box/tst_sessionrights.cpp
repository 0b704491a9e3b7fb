#include "box/TNSessionRights.h"

#include <QFile>
#include <QTest>

namespace {
QString fixture(const char* name)
{
    QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/box/") + QLatin1String(name));
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}
} // namespace

class TestSessionRights : public QObject
{
    Q_OBJECT
private slots:
    void textFormListsAreasInLoggingOrder()
    {
        const std::uint32_t mask = TNSessionRightBase | TNSessionRightPhoneLocal | RightNASNone |
                                   RightBoxAdminRemote | TNSessionRightDialLocal | RightTR064;
        QCOMPARE(TNSessionRights::debugUserRight(mask),
                 QStringLiteral("RightBoxAdminRemote RightNASNone TNSessionRightDialLocal "
                                "TNSessionRightPhoneLocal RightTR064 "));
        QCOMPARE(TNSessionRights::debugUserRight(TNSessionRightBase), QString());
    }

    void userListValues_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<uint>("bits");
        QTest::newRow("no dial right")
            << QStringLiteral("dial_rights") << QStringLiteral("0") << uint(TNSessionRightDialNone);
        QTest::newRow("local dial right")
            << QStringLiteral("dial_rights") << QStringLiteral("3") << uint(TNSessionRightDialLocal);
        QTest::newRow("remote dial right includes local")
            << QStringLiteral("dial_rights") << QStringLiteral("5")
            << uint(TNSessionRightDialLocal | TNSessionRightDialRemote);
        QTest::newRow("storage local")
            << QStringLiteral("nas_rights") << QStringLiteral("3") << uint(RightNASLocal);
        QTest::newRow("administration remote") << QStringLiteral("box_admin_rights") << QStringLiteral("5")
                                               << uint(RightBoxAdminLocal | RightBoxAdminRemote);
        QTest::newRow("telephony none")
            << QStringLiteral("phone_rights") << QStringLiteral("0") << uint(TNSessionRightPhoneNone);
        QTest::newRow("other value sets nothing")
            << QStringLiteral("phone_rights") << QStringLiteral("2") << 0u;
        QTest::newRow("unknown area sets nothing")
            << QStringLiteral("app_rights") << QStringLiteral("5") << 0u;
    }
    void userListValues()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(uint, bits);
        QCOMPARE(uint(TNSessionRights::bitsForUserListValue(key, value)), bits);
    }

    void loginAnswerRights_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("remote");
        QTest::addColumn<uint>("mask");
        const QString full = fixture("login_response_rights.xml");
        QVERIFY(!full.isEmpty());
        const uint allLocal = TNSessionRightBase | RightBoxAdminLocal | TNSessionRightDialLocal |
                              TNSessionRightPhoneLocal | RightNASLocal;
        QTest::newRow("router answer, local access") << full << false << allLocal;
        QTest::newRow("router answer, remote access adds the remote bits")
            << full << true
            << (allLocal | RightBoxAdminRemote | TNSessionRightDialRemote | TNSessionRightPhoneRemote |
                RightNASRemote);
        QTest::newRow("areas not listed get their none bit")
            << QStringLiteral("<SessionInfo><SID>1</SID><Rights><Name>Dial</Name><Access>1</Access></"
                              "Rights></SessionInfo>")
            << false
            << uint(TNSessionRightBase | TNSessionRightDialLocal | RightBoxAdminNone |
                    TNSessionRightPhoneNone | RightNASNone);
        QTest::newRow("self-closing rights list nothing")
            << QStringLiteral("<SID>1</SID><Rights/>") << false << 0u;
        QTest::newRow("empty rights list nothing") << QStringLiteral("<Rights></Rights>") << false << 0u;
    }
    void loginAnswerRights()
    {
        QFETCH(QString, answer);
        QFETCH(bool, remote);
        QFETCH(uint, mask);
        QCOMPARE(uint(TNSessionRights::maskFromLoginRights(answer, remote)), mask);
    }
};

QTEST_GUILESS_MAIN(TestSessionRights)
#include "tst_sessionrights.moc"
