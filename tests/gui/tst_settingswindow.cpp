// The settings window on a real settings file, password file and call database: edits land under
// the right location and key and nowhere else, passwords stay out of the settings file, refused
// input writes nothing, locations come and go as the manager does it.
#include "GuiFixture.h"

#include "TrayApplication.h"
#include "TrayMenu.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "calllist/TNCallinglist.h"
#include "settings/GlobalPages.h"
#include "settings/LocationPages.h"
#include "settings/SettingsForm.h"
#include "settings/SettingsWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString kHome = u"AAAA-HOME"_s;
const QString kOffice = u"BBBB-OFFICE"_s;

QVariantMap officeLocation()
{
    QVariantMap l = GuiEnv::location(u"Office"_s, 2, 0);
    l.insert(u"Lines"_s, QVariantList{QVariantMap{{u"Line"_s, u"030111"_s}, {u"Title"_s, u"Main"_s}},
                                      QVariantMap{{u"Line"_s, u"030222"_s},
                                                  {u"Title"_s, u"Fax"_s},
                                                  {u"HideMonitor"_s, true},
                                                  {u"HideList"_s, false}}});
    l.insert(u"dialport"_s, 1);
    l.insert(u"RemoteCertificateKey"_s, u"sha256//abcdef"_s);
    return l;
}

// Two locations, Home current; a few global keys set, others missing.
bool openTwoLocations(GuiEnv& env)
{
    return env.open({{kHome, GuiEnv::location(u"Home"_s, 1, 0)}, {kOffice, officeLocation()}}, kHome,
                    {{u"ListAferCall"_s, false},
                     {u"monitorAlwaysOnTop"_s, true},
                     {u"dateFormatString"_s, u"dd.MM.yyyy HH:mm"_s}});
}

QString settingsPath(const GuiEnv& env)
{
    return QDir(env.dirs.configDir()).filePath(u"settings.json"_s);
}

QByteArray fileBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QJsonObject readSettings(const GuiEnv& env)
{
    return QJsonDocument::fromJson(fileBytes(settingsPath(env))).object();
}

QJsonObject storedLocation(const GuiEnv& env, const QString& uid)
{
    return readSettings(env).value(u"Locations"_s).toObject().value(uid).toObject();
}

std::optional<QString> storedSecret(GuiEnv& env, const QString& key, const QString& uid)
{
    return env.env->secrets().read(SecretStore::keychainServiceForKey(key, uid),
                                   SecretStore::keychainAccountForKey(key));
}

// Names of the notifications posted while it lives.
struct Posted
{
    QObject context;
    QStringList names;
    explicit Posted(NotificationCenter& center)
    {
        center.addObserver(&context, QString(), [this](const Notification& n) { names << n.name; });
    }
};

// The widget of a named field.
QWidget* fieldOf(SettingsWindow& w, const QString& name)
{
    const QHash<QString, QWidget*> fields = {
        {u"name"_s, w.routerPage()->nameField()},
        {u"host"_s, w.routerPage()->hostField()},
        {u"webPort"_s, w.routerPage()->webPortField()},
        {u"tr064Port"_s, w.routerPage()->tr064PortField()},
        {u"monitorPort"_s, w.routerPage()->monitorPortField()},
        {u"countryCode"_s, w.telephonyPage()->prefixField(1)},
        {u"dialPort"_s, w.telephonyPage()->dialPortBox()},
        {u"callMonitor"_s, w.monitorPage()->callMonitorBox()},
        {u"remoteAccess"_s, w.remotePage()->remoteAccessBox()},
        {u"remoteHost"_s, w.remotePage()->hostField()},
        {u"forgetCertificate"_s, w.remotePage()->forgetCertificateButton()},
        {u"ftpPort"_s, w.ftpPage()->portField()},
        {u"ftpSsl"_s, w.ftpPage()->sslBox()},
        {u"afterCall"_s, w.callListPage()->afterCallBox()},
        {u"dateFormat"_s, w.callListPage()->dateFormatField()},
        {u"addressBook"_s, w.generalPage()->addressBookField()},
        {u"dock"_s, w.generalPage()->dockStateBox()},
        {u"callListOnStart"_s, w.generalPage()->callListOnStartBox()},
    };
    return fields.value(name);
}

// Puts a value into the named field of the window, as a user would.
void edit(SettingsWindow& window, const QString& name, const QVariant& value)
{
    const Qt::CheckState check = value.toBool() ? Qt::Checked : Qt::Unchecked;
    if (name == u"showFax"_s) {
        window.telephonyPage()
            ->extensionTable()
            ->item(2, TelephonySettingsPage::ExtShow)
            ->setCheckState(check);
        return;
    }
    if (name == u"hideMainInList"_s) {
        window.telephonyPage()
            ->lineTable()
            ->item(0, TelephonySettingsPage::LineHideList)
            ->setCheckState(check);
        return;
    }
    QWidget* field = fieldOf(window, name);
    QVERIFY2(field, qPrintable(name));
    if (auto* line = qobject_cast<QLineEdit*>(field)) {
        line->setText(value.toString());
    } else if (auto* box = qobject_cast<QCheckBox*>(field)) {
        box->setChecked(value.toBool());
    } else if (auto* combo = qobject_cast<QComboBox*>(field)) {
        const int byData = combo->findData(value);
        combo->setCurrentIndex(byData >= 0 ? byData : value.toInt());
    } else if (auto* spin = qobject_cast<QSpinBox*>(field)) {
        spin->setValue(value.toInt());
    } else if (auto* button = qobject_cast<QPushButton*>(field)) {
        button->click();
    }
}

// The message line under a field, "" when none is shown.
QString messageNear(QWidget* field)
{
    for (QWidget* w = field->parentWidget(); w; w = w->parentWidget()) {
        for (QLabel* label : w->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
            if (!label->isHidden() && label->styleSheet().contains(u"c0392b"_s))
                return label->text();
        if (qobject_cast<QTabWidget*>(w))
            break;
    }
    return {};
}
} // namespace

class TestSettingsWindow : public QObject
{
    Q_OBJECT
private slots:
    void checks_data();
    void checks();
    void editReachesItsKeyOnly_data();
    void editReachesItsKeyOnly();
    void passwordsGoToThePasswordStore_data();
    void passwordsGoToThePasswordStore();
    void refusedInputWritesNothing_data();
    void refusedInputWritesNothing();
    void notificationsOnSave_data();
    void notificationsOnSave();
    void cancelWritesNothing();
    void editsOfSeveralLocations();
    void addingAndRemovingLocations();
    void blockedLoginsShowInStatusLine();
    void trayOpensOneSettingsWindow();
};

void TestSettingsWindow::checks_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fine");
    QTest::newRow("port with blanks around") << u"port"_s << u" 8080 "_s << true;
    QTest::newRow("port 0") << u"port"_s << u"0"_s << false;
    QTest::newRow("port 65536") << u"port"_s << u"65536"_s << false;
    QTest::newRow("port empty") << u"port"_s << QString() << false;
    QTest::newRow("port with letters") << u"port"_s << u"80a"_s << false;
    QTest::newRow("host name") << u"host"_s << u"fritz.box"_s << true;
    QTest::newRow("host empty") << u"host"_s << u"  "_s << false;
    QTest::newRow("host as URL") << u"host"_s << u"http://fritz.box/"_s << false;
    QTest::newRow("host with blank") << u"host"_s << u"my box"_s << false;
    QTest::newRow("prefix digits") << u"digits"_s << u"0049"_s << true;
    QTest::newRow("prefix empty") << u"digits"_s << QString() << true;
    QTest::newRow("prefix with plus") << u"digits"_s << u"+49"_s << false;
}

void TestSettingsWindow::checks()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);
    QFETCH(bool, fine);
    const QString problem = kind == u"port"   ? SettingsForm::portProblem(text)
                            : kind == u"host" ? SettingsForm::hostProblem(text)
                                              : SettingsForm::digitsProblem(text);
    QCOMPARE(problem.isEmpty(), fine);
}

void TestSettingsWindow::editReachesItsKeyOnly_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("stored"); // as the settings file has it; invalid: global key

    const QVariant global;
    QTest::newRow("host") << u"host"_s << QVariant(u" box.example "_s) << u"Host"_s
                          << QVariant(u"box.example"_s);
    QTest::newRow("call monitor port")
        << u"monitorPort"_s << QVariant(u"1013"_s) << u"CallMonitorPort"_s << QVariant(1013);
    QTest::newRow("country code") << u"countryCode"_s << QVariant(u"43"_s) << u"Prefixis"_s
                                  << QVariant(QVariantList{u"00"_s, u"43"_s, u"0"_s, u"30"_s});
    QTest::newRow("dial from the handset")
        << u"dialPort"_s << QVariant(610) << u"dialport"_s << QVariant(610);
    QTest::newRow("show the fax extension")
        << u"showFax"_s << QVariant(true) << u"Extensions"_s
        << QVariant(QVariantList{
               QVariantMap{{u"Intern"_s, u"1"_s},
                           {u"Title"_s, u"Kitchen"_s},
                           {u"Typ"_s, u"FON"_s},
                           {u"Show"_s, true}},
               QVariantMap{{u"Intern"_s, u"610"_s},
                           {u"Title"_s, u"Handset"_s},
                           {u"Typ"_s, u"DECT"_s},
                           {u"Show"_s, true}},
               QVariantMap{
                   {u"Intern"_s, u"2"_s}, {u"Title"_s, u"Fax"_s}, {u"Typ"_s, u"FON"_s}, {u"Show"_s, true}}});
    QTest::newRow("hide a line in the call list")
        << u"hideMainInList"_s << QVariant(true) << u"Lines"_s
        << QVariant(QVariantList{
               QVariantMap{{u"Line"_s, u"030111"_s}, {u"Title"_s, u"Main"_s}, {u"HideList"_s, true}},
               QVariantMap{{u"Line"_s, u"030222"_s},
                           {u"Title"_s, u"Fax"_s},
                           {u"HideMonitor"_s, true},
                           {u"HideList"_s, false}}});
    QTest::newRow("remote host") << u"remoteHost"_s << QVariant(u"me.myfritz.net"_s) << u"RemoteHost"_s
                                 << QVariant(u"me.myfritz.net"_s);
    QTest::newRow("forget the certificate")
        << u"forgetCertificate"_s << QVariant() << u"RemoteCertificateKey"_s << QVariant(QString());
    QTest::newRow("FTP over TLS") << u"ftpSsl"_s << QVariant(true) << u"FTPSSL"_s << QVariant(true);

    QTest::newRow("date format") << u"dateFormat"_s << QVariant(u"yyyy-MM-dd HH:mm"_s)
                                 << u"dateFormatString"_s << global;
    QTest::newRow("address book") << u"addressBook"_s << QVariant(GuiEnv::addressBook()) << u"AddressBook"_s
                                  << global;
    QTest::newRow("tray only") << u"dock"_s << QVariant(0) << u"MENU_DOCK_STATE"_s << global;
    QTest::newRow("call list at start")
        << u"callListOnStart"_s << QVariant(true) << u"showCallinglistOnStart"_s << global;
}

void TestSettingsWindow::editReachesItsKeyOnly()
{
    QFETCH(QString, field);
    QFETCH(QVariant, input);
    QFETCH(QString, key);
    QFETCH(QVariant, stored);
    const bool perLocation = stored.isValid();

    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    const QJsonObject before = readSettings(env);
    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.show();
    // The location edited is not the current one.
    window.selectLocation(kOffice);
    edit(window, field, input);
    QVERIFY(window.save());
    QVERIFY(!window.isVisible());

    const QJsonObject after = readSettings(env);
    QJsonObject expected = before;
    if (perLocation) {
        QJsonObject locations = before.value(u"Locations"_s).toObject();
        QJsonObject office = locations.value(kOffice).toObject();
        office.insert(key, QJsonValue::fromVariant(stored));
        QVERIFY(after.value(u"Locations"_s).toObject().value(kOffice).toObject().contains(u"SaveDate"_s));
        office.insert(u"SaveDate"_s,
                      after.value(u"Locations"_s).toObject().value(kOffice).toObject().value(u"SaveDate"_s));
        locations.insert(kOffice, office);
        expected.insert(u"Locations"_s, locations);
        // The program's own settings object follows the file.
        const auto live = env.env->manager().locationPreferencesForUID(kOffice);
        QCOMPARE(QJsonValue::fromVariant(live->toLocationDictionary().value(key)),
                 QJsonValue::fromVariant(stored));
    } else {
        const QVariant value =
            input.typeId() == QMetaType::Bool && key == u"showCallinglistOnStart"_s ? QVariant(1) : input;
        expected.insert(key, QJsonValue::fromVariant(value));
    }
    for (auto it = expected.constBegin(); it != expected.constEnd(); ++it)
        QVERIFY2(after.value(it.key()) == it.value(),
                 qPrintable(it.key() + u" = "_s + QString::fromUtf8(QJsonDocument(after).toJson())));
    QCOMPARE(after.keys(), expected.keys());
    QCOMPARE(after.value(u"CurrentLocation"_s).toString(), kHome);
}

void TestSettingsWindow::passwordsGoToThePasswordStore_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("key");
    QTest::newRow("router password") << int(SettingsWindow::RouterTab) << u"Pass"_s;
    QTest::newRow("remote password") << int(SettingsWindow::RemoteTab) << u"RemotePass"_s;
    QTest::newRow("FTP password") << int(SettingsWindow::FtpTab) << u"FTPPass"_s;
}

void TestSettingsWindow::passwordsGoToThePasswordStore()
{
    QFETCH(int, tab);
    QFETCH(QString, key);
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    env.setPassword(kHome, u"old-home-pass"_s);
    const QByteArray before = fileBytes(settingsPath(env));

    const auto passwordField = [tab](SettingsWindow& w) {
        return tab == SettingsWindow::RouterTab   ? w.routerPage()->passwordField()
               : tab == SettingsWindow::RemoteTab ? w.remotePage()->passwordField()
                                                  : w.ftpPage()->passwordField();
    };
    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.show();
    passwordField(window)->setText(u"fresh-s3cret"_s);
    QVERIFY(window.save());

    // Only the password changed: the settings file is not touched at all.
    QCOMPARE(fileBytes(settingsPath(env)), before);
    QCOMPARE(storedSecret(env, key, kHome), std::optional<QString>(u"fresh-s3cret"_s));
    QCOMPARE(storedSecret(env, key, kOffice), std::nullopt);
    if (key != u"Pass"_s)
        QCOMPARE(storedSecret(env, u"Pass"_s, kHome), std::optional<QString>(u"old-home-pass"_s));

    // A new window shows it; emptying it removes the item.
    SettingsWindow again(env.env->notifications(), env.env->manager());
    QCOMPARE(passwordField(again)->text(), u"fresh-s3cret"_s);
    passwordField(again)->clear();
    QVERIFY(again.save());
    QCOMPARE(storedSecret(env, key, kHome), std::nullopt);
    QVERIFY(!fileBytes(settingsPath(env)).contains("s3cret"));
}

void TestSettingsWindow::refusedInputWritesNothing_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<int>("tab");

    QTest::newRow("host with a path")
        << u"host"_s << QVariant(u"fritz.box/admin"_s) << int(SettingsWindow::RouterTab);
    QTest::newRow("TR-064 port too high")
        << u"tr064Port"_s << QVariant(u"70000"_s) << int(SettingsWindow::RouterTab);
    QTest::newRow("country code with plus")
        << u"countryCode"_s << QVariant(u"+49"_s) << int(SettingsWindow::TelephonyTab);
    QTest::newRow("remote access without host")
        << u"remoteAccess"_s << QVariant(true) << int(SettingsWindow::RemoteTab);
    QTest::newRow("FTP port negative") << u"ftpPort"_s << QVariant(u"-21"_s) << int(SettingsWindow::FtpTab);
    QTest::newRow("empty date format")
        << u"dateFormat"_s << QVariant(u" "_s) << int(SettingsWindow::CallListTab);
    QTest::newRow("address book missing")
        << u"addressBook"_s << QVariant(u"/nonexistent/contacts.vcf"_s) << int(SettingsWindow::GeneralTab);
}

void TestSettingsWindow::refusedInputWritesNothing()
{
    QFETCH(QString, field);
    QFETCH(QVariant, input);
    QFETCH(int, tab);
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    const QByteArray before = fileBytes(settingsPath(env));
    Posted posted(env.env->notifications());

    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.show();
    window.tabs()->setCurrentIndex(SettingsWindow::RouterTab == tab ? SettingsWindow::GeneralTab
                                                                    : SettingsWindow::RouterTab);
    // A valid edit elsewhere is not written either.
    window.routerPage()->userField()->setText(u"someone"_s);
    edit(window, field, input);
    QVERIFY(!window.save());

    QVERIFY(window.isVisible());
    QCOMPARE(window.tabs()->currentIndex(), tab);
    QVERIFY(!window.statusLine()->isHidden());
    QCOMPARE(fileBytes(settingsPath(env)), before);
    QVERIFY(!posted.names.contains(Notifications::ACTIVATESETTINGS));
    // The message stands next to the refused field.
    QWidget* marked = fieldOf(window, field == u"remoteAccess"_s ? u"remoteHost"_s : field);
    QVERIFY(!messageNear(marked).isEmpty());

    // Corrected, it saves; the message goes.
    if (field == u"remoteAccess"_s)
        edit(window, field, false);
    else if (field == u"addressBook"_s)
        edit(window, field, GuiEnv::addressBook());
    else if (field == u"dateFormat"_s)
        edit(window, field, u"dd.MM.yy"_s);
    else if (field.endsWith(u"Port"_s))
        edit(window, field, u"1234"_s);
    else if (field == u"host"_s)
        edit(window, field, u"192.168.178.1"_s);
    else
        edit(window, field, u"7"_s);
    QVERIFY(window.save());
    QVERIFY(messageNear(marked).isEmpty());
    QCOMPARE(storedLocation(env, kHome).value(u"userName"_s).toString(), u"someone"_s);
}

void TestSettingsWindow::notificationsOnSave_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QStringList>("expected");
    const QString activate = Notifications::ACTIVATESETTINGS;
    QTest::newRow("nothing changed") << QString() << QStringList{activate};
    QTest::newRow("host") << u"host"_s << QStringList{activate, Notifications::RELOADABFAXLIST};
    QTest::newRow("name") << u"name"_s << QStringList{activate, Notifications::REFRESHLOCATIONSMENU};
    QTest::newRow("hidden line") << u"hideMainInList"_s
                                 << QStringList{activate, Notifications::RELOADCALLINGLIST,
                                                Notifications::UPDATESIDETABLE};
    QTest::newRow("date format") << u"dateFormat"_s
                                 << QStringList{activate, Notifications::RELOADCALLINGLIST,
                                                Notifications::UPDATESIDETABLE};
    QTest::newRow("other current location")
        << u"current"_s
        << QStringList{activate, Notifications::REFRESHLOCATIONSMENU, Notifications::RELOADCALLINGLIST,
                       Notifications::UPDATESIDETABLE, Notifications::RELOADABFAXLIST};
}

void TestSettingsWindow::notificationsOnSave()
{
    QFETCH(QString, change);
    QFETCH(QStringList, expected);
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.selectLocation(kOffice);
    if (change == u"current"_s)
        window.makeCurrentButton()->click();
    else if (change == u"hideMainInList"_s)
        edit(window, change, true);
    else if (change == u"dateFormat"_s)
        edit(window, change, u"yyyy-MM-dd"_s);
    else if (!change.isEmpty())
        edit(window, change, u"changed.example"_s);

    Posted posted(env.env->notifications());
    window.saveButton()->click();
    QCOMPARE(posted.names, expected);
    if (change == u"current"_s) {
        QCOMPARE(env.env->manager().currentUID(), kOffice);
        QCOMPARE(readSettings(env).value(u"CurrentLocation"_s).toString(), kOffice);
    }
}

void TestSettingsWindow::cancelWritesNothing()
{
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    env.setPassword(kOffice, u"office-pass"_s);
    const QByteArray before = fileBytes(settingsPath(env));
    Posted posted(env.env->notifications());
    {
        SettingsWindow window(env.env->notifications(), env.env->manager());
        window.show();
        edit(window, u"host"_s, u"elsewhere"_s);
        edit(window, u"dock"_s, 1);
        window.selectLocation(kOffice);
        window.routerPage()->passwordField()->setText(u"not-saved"_s);
        edit(window, u"showFax"_s, true);
        window.makeCurrentButton()->click();
        edit(window, u"name"_s, u"Renamed"_s);
        QCOMPARE(window.locationList()->currentItem()->text(), u"Renamed"_s);
        window.cancelButton()->click();
        QVERIFY(!window.isVisible());
    }
    QCOMPARE(fileBytes(settingsPath(env)), before);
    QCOMPARE(storedSecret(env, u"Pass"_s, kOffice), std::optional<QString>(u"office-pass"_s));
    QVERIFY(posted.names.isEmpty());
    QCOMPARE(env.env->manager().currentUID(), kHome);
    QCOMPARE(env.env->manager().locationPreferencesForUID(kOffice)->locationName, u"Office"_s);
}

void TestSettingsWindow::editsOfSeveralLocations()
{
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.show();
    edit(window, u"host"_s, u"home.example"_s);
    window.selectLocation(kOffice);
    QCOMPARE(window.routerPage()->hostField()->text(), u"127.0.0.1"_s);
    edit(window, u"webPort"_s, u"99999"_s);
    // A refused field keeps the window on its location.
    window.selectLocation(kHome);
    QCOMPARE(window.shownUID(), kOffice);
    QCOMPARE(window.locationList()->currentItem()->data(Qt::UserRole).toString(), kOffice);
    QVERIFY(!messageNear(window.routerPage()->webPortField()).isEmpty());
    edit(window, u"webPort"_s, u"8081"_s);
    // Renaming in the list is renaming the location.
    window.locationList()->currentItem()->setText(u"Branch"_s);
    QCOMPARE(window.routerPage()->nameField()->text(), u"Branch"_s);
    window.selectLocation(kHome);
    QCOMPARE(window.shownUID(), kHome);
    QVERIFY(window.statusLine()->isHidden()); // the request to correct is taken back
    QCOMPARE(window.routerPage()->hostField()->text(), u"home.example"_s);
    QVERIFY(window.save());

    QCOMPARE(storedLocation(env, kHome).value(u"Host"_s).toString(), u"home.example"_s);
    QCOMPARE(storedLocation(env, kHome).value(u"WebPort"_s).toInt(80), 80);
    QCOMPARE(storedLocation(env, kOffice).value(u"WebPort"_s).toInt(), 8081);
    QCOMPARE(storedLocation(env, kOffice).value(u"Name"_s).toString(), u"Branch"_s);
    QCOMPARE(storedLocation(env, kOffice).value(u"Host"_s).toString(), u"127.0.0.1"_s);
    // The current location's settings object is the one the program uses: it has the new host.
    QCOMPARE(env.env->manager().currentPreferences()->hostName, u"home.example"_s);
}

void TestSettingsWindow::addingAndRemovingLocations()
{
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    TNCallinglist* calls = env.env->callinglist();
    QVERIFY(calls);
    calls->createDefaultSmartList(1);
    env.setPassword(kHome, u"home-pass"_s);

    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.show();
    QCOMPARE(window.locationList()->count(), 2);
    Posted posted(env.env->notifications());
    window.addButton()->click();
    QCOMPARE(window.locationList()->count(), 3);
    const QString added = window.shownUID();
    QVERIFY(added != kHome && added != kOffice);
    const QJsonObject stored = storedLocation(env, added);
    QCOMPARE(stored.value(u"Profile"_s).toInt(), 3);
    QCOMPARE(stored.value(u"Host"_s).toString(), u"fritz.box"_s);
    QCOMPARE(window.routerPage()->nameField()->text(), stored.value(u"Name"_s).toString());
    QCOMPARE(calls->smartLists().getAllSmartListIDsForProfile(3).size(), 1);
    QCOMPARE(posted.names, QStringList{Notifications::REFRESHLOCATIONSMENU});
    QCOMPARE(readSettings(env).value(u"CurrentLocation"_s).toString(), kHome);

    // Removing asks first; "no" keeps it.
    QStringList asked;
    bool answer = false;
    window.setRemovalConfirmation([&](const QString& name) {
        asked << name;
        return answer;
    });
    window.selectLocation(kHome);
    window.removeButton()->click();
    QCOMPARE(asked, QStringList{u"Home"_s});
    QCOMPARE(window.locationList()->count(), 3);
    QVERIFY(readSettings(env).value(u"Locations"_s).toObject().contains(kHome));

    // The current one goes: another one is current, its password and calls go with it.
    answer = true;
    posted.names.clear();
    window.removeButton()->click();
    QCOMPARE(window.locationList()->count(), 2);
    const QJsonObject after = readSettings(env);
    QVERIFY(!after.value(u"Locations"_s).toObject().contains(kHome));
    QCOMPARE(after.value(u"CurrentLocation"_s).toString(), kOffice);
    QCOMPARE(env.env->manager().currentUID(), kOffice);
    QCOMPARE(window.chosenCurrentUID(), kOffice);
    QCOMPARE(window.shownUID(), kOffice);
    QCOMPARE(storedSecret(env, u"Pass"_s, kHome), std::nullopt);
    QCOMPARE(posted.names,
             (QStringList{Notifications::REFRESHLOCATIONSMENU, Notifications::ACTIVATESETTINGS}));
    QTRY_COMPARE(calls->smartLists().getAllSmartListIDsForProfile(1).size(), qsizetype(0));
    QCOMPARE(calls->smartLists().getAllSmartListIDsForProfile(3).size(), 1);

    // Removing them all leaves nothing current and nothing to edit.
    window.selectLocation(added);
    window.removeButton()->click();
    window.removeButton()->click();
    QCOMPARE(window.locationList()->count(), 0);
    QVERIFY(!window.removeButton()->isEnabled());
    QVERIFY(!window.routerPage()->isEnabled());
    QVERIFY(!env.env->manager().isConfigured());
    QCOMPARE(readSettings(env).value(u"CurrentLocation"_s).toString(), QString());
    // The shared settings can still be saved.
    edit(window, u"afterCall"_s, true);
    QVERIFY(window.save());
    QCOMPARE(readSettings(env).value(u"ListAferCall"_s).toBool(), true);
}

void TestSettingsWindow::blockedLoginsShowInStatusLine()
{
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    SettingsWindow window(env.env->notifications(), env.env->manager());
    window.show();
    QVERIFY(window.statusLine()->isHidden());
    env.env->notifications().post(Notifications::ADDSTATUSBAR, nullptr, {{u"BlockTime"_s, u"32"_s}});
    QVERIFY(!window.statusLine()->isHidden());
    QVERIFY2(window.statusLine()->text().contains(u"32"_s), qPrintable(window.statusLine()->text()));
}

void TestSettingsWindow::trayOpensOneSettingsWindow()
{
    GuiEnv env;
    QVERIFY(openTwoLocations(env));
    RecordingPresenter presenter;
    TrayApplication::Options options;
    options.presenter = &presenter;
    options.headless = true;
    TrayApplication tray(*env.env, options);
    tray.start({});
    QVERIFY(!tray.settingsWindow());
    tray.menu().settingsItem()->trigger();
    QPointer<SettingsWindow> first = tray.settingsWindow();
    QVERIFY(first && first->isVisible());
    QCOMPARE(first->shownUID(), kHome);
    tray.menu().settingsItem()->trigger();
    QCOMPARE(tray.settingsWindow(), first.data());

    // Saved settings reach the running program: the call monitor switch in the menu follows.
    QVERIFY(!tray.menu().callMonitorItem()->isChecked());
    edit(*first, u"callMonitor"_s, true);
    QVERIFY(first->save());
    QTRY_VERIFY(tray.menu().callMonitorItem()->isChecked());
    QTRY_VERIFY(!first);
}

QTEST_MAIN(TestSettingsWindow)
#include "tst_settingswindow.moc"
