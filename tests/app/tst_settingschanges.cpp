// Which notifications follow a save of the settings (the window's end-to-end cases are in
// tests/gui/tst_settingswindow.cpp; these are the keys it has no field row for).
#include "app/SettingsChanges.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestSettingsChanges : public QObject
{
    Q_OBJECT
private slots:
    void notifications_data()
    {
        QTest::addColumn<QStringList>("location");
        QTest::addColumn<bool>("passwords");
        QTest::addColumn<QStringList>("globals");
        QTest::addColumn<QStringList>("expected");
        const QString activate = Notifications::ACTIVATESETTINGS;
        const QStringList list{activate, Notifications::RELOADCALLINGLIST, Notifications::UPDATESIDETABLE};
        QTest::newRow("FTP password") << QStringList() << true << QStringList()
                                      << QStringList{activate, Notifications::RELOADABFAXLIST};
        QTest::newRow("FTP port") << QStringList{keys::FTPPort} << false << QStringList()
                                  << QStringList{activate, Notifications::RELOADABFAXLIST};
        QTest::newRow("prefixes") << QStringList{keys::Prefixis} << false << QStringList() << list;
        QTest::newRow("address book") << QStringList() << false << QStringList{keys::AddressBook} << list;
        QTest::newRow("age limit") << QStringList() << false << QStringList{keys::ListDeleteInterval} << list;
        QTest::newRow("badge only") << QStringList() << false << QStringList{keys::BadgeNewCalls}
                                    << QStringList{activate};
        QTest::newRow("name, lines and host")
            << QStringList{keys::Name, keys::Lines, keys::Host} << false << QStringList()
            << QStringList{activate, Notifications::REFRESHLOCATIONSMENU, Notifications::RELOADCALLINGLIST,
                           Notifications::UPDATESIDETABLE, Notifications::RELOADABFAXLIST};
    }
    void notifications()
    {
        QFETCH(QStringList, location);
        QFETCH(bool, passwords);
        QFETCH(QStringList, globals);
        QFETCH(QStringList, expected);
        SettingsChanges changes;
        changes.addLocation(location, passwords);
        // A second, unchanged location adds nothing.
        changes.addLocation({}, false);
        changes.addGlobals(globals);
        NotificationCenter center;
        QObject context;
        QStringList posted;
        center.addObserver(&context, QString(), [&posted](const Notification& n) { posted << n.name; });
        changes.post(center, &context);
        QCOMPARE(posted, expected);
    }
};

QTEST_GUILESS_MAIN(TestSettingsChanges)
#include "tst_settingschanges.moc"
