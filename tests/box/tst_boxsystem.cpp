#include "box/FBBoxSystemHelper.h"

#include <QJsonDocument>
#include <QTest>

using namespace FBBoxSystemHelper;

class TestBoxSystem : public QObject
{
    Q_OBJECT
private slots:
    void statusBits_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<int>("wlan");
        QTest::addColumn<int>("dect");
        const auto v = [](const char* a, const char* b, const char* c) {
            return QStringList{QString::fromUtf8(a), QString::fromUtf8(b), QString::fromUtf8(c),
                               QStringLiteral("ssid"), QString()};
        };
        QTest::newRow("first on, second off, DECT on") << v("1", "0", "1") << 80 << 16;
        QTest::newRow("both on, DECT off") << v("1", "1", "0") << 144 << 8;
        QTest::newRow("single radio router") << v("1", "", "") << 48 << 2;
        QTest::newRow("both off") << v("0", "0", "1") << 72 << 16;
        QTest::newRow("second radio not emulated") << v("0", "no-emu", "er") << 40 << 2;
        QTest::newRow("two values only") << QStringList{QStringLiteral("1"), QStringLiteral("1")} << 2 << 2;
    }
    void statusBits()
    {
        QFETCH(QStringList, values);
        QFETCH(int, wlan);
        QFETCH(int, dect);
        QCOMPARE(getWLANStatus(values), wlan);
        QCOMPARE(getDECTStatus(values), dect);
    }

    void expectedStatusBeforeTheRouterAnswers_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("expected");
        QTest::newRow("all on") << 72 << QStringLiteral("WLANon") << 144;
        QTest::newRow("all off") << 144 << QStringLiteral("WLANoff") << 72;
        QTest::newRow("2.4 GHz off only removes the on bit") << 144 << QStringLiteral("WLAN2off") << 128;
        QTest::newRow("5 GHz on adds the on bit to the off bits") << 72 << QStringLiteral("WLAN5on") << 200;
        QTest::newRow("unknown word keeps the status") << 80 << QStringLiteral("WLANx") << 80;
    }
    void expectedStatusBeforeTheRouterAnswers()
    {
        QFETCH(int, status);
        QFETCH(QString, command);
        QFETCH(int, expected);
        QCOMPARE(expectedWLANStatus(status, command), expected);
    }

    void language_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("language");
        QTest::newRow("menu path names English")
            << QStringLiteral("<link href=\"/html/en/menus/menu2.css\">") << QStringLiteral("en");
        QTest::newRow("no menu path") << QStringLiteral("<html>FRITZ!Box</html>") << QStringLiteral("de");
        QTest::newRow("unreachable") << QStringLiteral("-2") << QStringLiteral("de");
    }
    void language()
    {
        QFETCH(QString, page);
        QFETCH(QString, language);
        QCOMPARE(languageFromLoginScreen(page), language);
    }

    void definitions()
    {
        const QVariantMap old = parseConfigDef(
            QStringLiteral("<? setvariable var:ProduktName 'FRITZ!Box Fon WLAN 7170' ?>\n"
                           "<? setvariable var:FirmwareVersion '29.04.87' ?>\n<? if eq 1 1 ?>\n"));
        QCOMPARE(old.value(QStringLiteral("ProduktName")).toString(),
                 QStringLiteral("FRITZ!Box Fon WLAN 7170"));
        QCOMPARE(old.value(QStringLiteral("FirmwareVersion")).toString(), QStringLiteral("29.04.87"));
        QCOMPARE(old.size(), 2);
        const QVariantMap info = parseBoxInfo(
            QStringLiteral("<j:BoxInfo xmlns:j=\"http://jason.avm.de/updatecheck/\"><j:Name>FRITZ!Box "
                           "7590</j:Name><j:Version>154.07.57</j:Version><j:Lab/></j:BoxInfo>"));
        QCOMPARE(info.value(QStringLiteral("Name")).toString(), QStringLiteral("FRITZ!Box 7590"));
        QCOMPARE(info.value(QStringLiteral("Version")).toString(), QStringLiteral("154.07.57"));
        QVERIFY(parseConfigDef(QStringLiteral("<html>404</html>")).isEmpty());
    }

    void rightsFromTheUserList_data()
    {
        QTest::addColumn<QString>("user");
        QTest::addColumn<QVariantMap>("rights");
        const QVariantMap anna{{QStringLiteral("box_admin_rights"), QStringLiteral("0")},
                               {QStringLiteral("dial_rights"), QStringLiteral("5")},
                               {QStringLiteral("phone_rights"), QStringLiteral("3")},
                               {QStringLiteral("nas_rights"), QStringLiteral("0")}};
        QTest::newRow("named user") << QStringLiteral("anna") << anna;
        QTest::newRow("no name: the user marked as myself") << QString() << anna;
        QTest::newRow("unknown user") << QStringLiteral("bob") << QVariantMap();
    }
    void rightsFromTheUserList()
    {
        QFETCH(QString, user);
        QFETCH(QVariantMap, rights);
        const QVariant list = QJsonDocument::fromJson(R"({"users":[
            {"name":"admin","is_myself":"0","box_admin_rights":"5","dial_rights":"5","phone_rights":"5","nas_rights":"5"},
            {"name":"anna","is_myself":"1","box_admin_rights":"0","dial_rights":"5","phone_rights":"3","nas_rights":"0"}],
            "compatibility_mode":"0"})")
                                  .toVariant();
        QCOMPARE(rightsForUserInList(user, list), rights);
    }
};

QTEST_GUILESS_MAIN(TestBoxSystem)
#include "tst_boxsystem.moc"
