#include "GuiFixture.h"

#include "DialWindow.h"
#include "SingleInstance.h"
#include "TrayApplication.h"
#include "TrayCallMonitor.h"

#include "app/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"
#include "monitor/StreamListener.h"

#include <QComboBox>
#include <QCompleter>
#include <QDataStream>
#include <QLabel>
#include <QLineEdit>
#include <QLocalSocket>
#include <QPushButton>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {
struct DialRig
{
    GuiEnv env;
    RecordingPresenter presenter;
    std::unique_ptr<TrayApplication> tray;

    bool start(TrayApplication::Options options = {}, const QVariantMap& location = GuiEnv::location(u"Home"_s, 1, 0))
    {
        if (!env.open({{u"L1"_s, location}}, u"L1"_s, {{u"AddressBook"_s, GuiEnv::addressBook()}}))
            return false;
        options.presenter = &presenter;
        options.headless = true;
        tray = std::make_unique<TrayApplication>(*env.env, options);
        tray->start({});
        return true;
    }
};
} // namespace

class TestDialWindow : public QObject
{
    Q_OBJECT
private slots:
    void numberField_data();
    void numberField();
    void completionFromBookAndCallerCache();
    void extensionsOfTheLocation();
    void secondStartHandsOverTelURL();
};

void TestDialWindow::numberField_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("unified");
    QTest::addColumn<QString>("name");
    QTest::newRow("typed with separators")
        << u"030 / 123 45 67"_s << u"030 / 123 45 67"_s << u"0301234567"_s << u"Jürgen Müller - Bäckerei Müller GmbH (Other)"_s;
    QTest::newRow("pasted tel URL with parameters")
        << u"tel:+49-171-555-0111;phone-context=example.com"_s << u"+49-171-555-0111"_s << u"+491715550111"_s
        << u"Jürgen Müller - Bäckerei Müller GmbH (iPhone)"_s;
    QTest::newRow("pasted callto URL") << u"callto://0800%20555%200199"_s << u"0800 555 0199"_s << u"08005550199"_s
                                       << u"Stadtwerke Beispielstadt (Main)"_s;
    QTest::newRow("dial URL without slashes") << u"dial:0409998877"_s << u"0409998877"_s << u"0409998877"_s
                                              << u"unknown"_s;
    QTest::newRow("letters on the keypad") << u"0800-FLOWERS"_s << u"0800-FLOWERS"_s << u"08003569377"_s
                                           << u"unknown"_s;
}

void TestDialWindow::numberField()
{
    QFETCH(QString, input);
    DialRig rig;
    QVERIFY(rig.start());
    DialWindow& window = rig.tray->dialWindow();
    window.openWithNumber(QString(), {});
    window.numberField()->setText(input);
    QTEST(window.numberField()->text(), "field");
    QTEST(window.unifiedLabel()->text(), "unified");
    QTEST(window.nameLabel()->text(), "name");
}

void TestDialWindow::completionFromBookAndCallerCache()
{
    DialRig rig;
    QVERIFY(rig.start());
    rig.env.env->callinglist()->insertCallerWithName(u"Hanna Berg"_s, u"0409998877"_s, QString(), QString());
    DialWindow& window = rig.tray->dialWindow();
    window.openWithNumber(QString(), {});
    QCompleter* completer = window.completer();

    auto matches = [completer](const QString& prefix) {
        completer->setCompletionPrefix(prefix);
        QStringList out;
        for (bool more = completer->setCurrentRow(0); more; more = completer->setCurrentRow(completer->currentRow() + 1))
            out << completer->currentCompletion();
        return out;
    };
    QCOMPARE(matches(u"stadtwerke"_s), QStringList{u"Stadtwerke Beispielstadt (Main) – 0800 555 0199"_s});
    QCOMPARE(matches(u"hanna"_s), QStringList{u"Hanna Berg – 0409998877"_s});
    // By number too, and one entry per number.
    QCOMPARE(matches(u"0301234567"_s), QStringList{u"Jürgen Müller - Bäckerei Müller GmbH (Other) – 0301234567"_s});
}

void TestDialWindow::extensionsOfTheLocation()
{
    DialRig rig;
    QVariantMap home = GuiEnv::location(u"Home"_s, 1, 0);
    home.insert(u"dialport"_s, 610);
    QVERIFY(rig.start({}, home));
    QComboBox* box = rig.tray->dialWindow().extensionBox();
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemData(i).toString();
    // The hidden fax port is not offered; the location's dial port is chosen.
    QCOMPARE(items, (QStringList{u"1"_s, u"610"_s}));
    QCOMPARE(box->currentData().toString(), u"610"_s);
    // Without a way to reach the router there is nothing to press.
    rig.tray->dialWindow().numberField()->setText(u"0301234567"_s);
    QVERIFY(!rig.tray->dialWindow().dialButton()->isEnabled());
}

void TestDialWindow::secondStartHandsOverTelURL()
{
    DialRig rig;
    QVERIFY(rig.start());
    const QString name = u"tondrel-test-"_s + QUuid::createUuid().toString(QUuid::Id128);
    SingleInstance first(name);
    QVERIFY(first.claim());
    QObject::connect(&first, &SingleInstance::argumentsReceived, rig.tray.get(), &TrayApplication::handleArguments);

    QLocalSocket socket;
    socket.connectToServer(name);
    QVERIFY(socket.waitForConnected(2000));
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out << QStringList{u"tel:+49%20171%205550111"_s};
    socket.write(data);
    socket.flush();
    QTRY_VERIFY(rig.tray->dialWindow().isVisible());
    QCOMPARE(rig.tray->dialWindow().numberField()->text(), u"+49 171 5550111"_s);
    QCOMPARE(rig.tray->dialWindow().nameLabel()->text(), u"Jürgen Müller - Bäckerei Müller GmbH (iPhone)"_s);
}

QTEST_MAIN(TestDialWindow)
#include "tst_dialwindow.moc"
