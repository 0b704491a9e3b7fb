#pragma once

#include "TestSupport.h"
#include "TrayApplication.h"

#include "app/AppEnvironment.h"
#include "base/SecretStore.h"
#include "base/TNPreferencesManager.h"
#include "monitor/NotificationPresenter.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QTest>

#include <memory>

// Call notifications as the desktop would get them.
class RecordingPresenter final : public NotificationPresenter
{
public:
    bool isAvailable() const override { return true; }
    QVariant deliver(const CallNotification& note, const QVariant&) override
    {
        notes.append(note);
        return note.uid;
    }
    void withdraw(const QVariant&) override {}
    QList<CallNotification> notes;
};

// A settings file with locations (the first current) and the environment the tray opens on it.
struct GuiEnv
{
    TempEnv dirs;
    std::unique_ptr<AppEnvironment> env;

    static QVariantMap location(const QString& name, int profile, int monitorPort)
    {
        return {{QStringLiteral("Name"), name},
                {QStringLiteral("Host"), QStringLiteral("127.0.0.1")},
                {QStringLiteral("Profile"), profile},
                {QStringLiteral("CallMonitor"), monitorPort > 0},
                {QStringLiteral("CallMonitorPort"), monitorPort > 0 ? monitorPort : 1012},
                {QStringLiteral("showUserNC"), true},
                {QStringLiteral("ConfirmDial"), false},
                {QStringLiteral("reverseSearch"), false},
                {QStringLiteral("Prefixis"), QStringList{QStringLiteral("00"), QStringLiteral("49"),
                                                         QStringLiteral("0"), QStringLiteral("30")}},
                {QStringLiteral("Extensions"),
                 QVariantList{QVariantMap{{QStringLiteral("Intern"), QStringLiteral("1")},
                                          {QStringLiteral("Title"), QStringLiteral("Kitchen")},
                                          {QStringLiteral("Typ"), QStringLiteral("FON")},
                                          {QStringLiteral("Show"), true}},
                              QVariantMap{{QStringLiteral("Intern"), QStringLiteral("610")},
                                          {QStringLiteral("Title"), QStringLiteral("Handset")},
                                          {QStringLiteral("Typ"), QStringLiteral("DECT")},
                                          {QStringLiteral("Show"), true}},
                              QVariantMap{{QStringLiteral("Intern"), QStringLiteral("2")},
                                          {QStringLiteral("Title"), QStringLiteral("Fax")},
                                          {QStringLiteral("Typ"), QStringLiteral("FON")},
                                          {QStringLiteral("Show"), false}}}}};
    }

    // locations: uid -> location dictionary; globals: further top-level keys.
    bool open(const QVariantMap& locations, const QString& current, const QVariantMap& globals = {})
    {
        QVariantMap root = globals;
        root.insert(QStringLiteral("Locations"), locations);
        root.insert(QStringLiteral("CurrentLocation"), current);
        QDir().mkpath(dirs.configDir());
        QFile file(QDir(dirs.configDir()).filePath(QStringLiteral("settings.json")));
        if (!file.open(QIODevice::WriteOnly))
            return false;
        file.write(QJsonDocument(QJsonObject::fromVariantMap(root)).toJson());
        file.close();
        AppPaths paths;
        paths.configDir = dirs.configDir();
        paths.dataDir = dirs.dataDir();
        env = std::make_unique<AppEnvironment>(paths, QStringLiteral("file"));
        QString error;
        return env->open(false, &error);
    }

    // A location on the simulated router: its web, TR-064 and call monitor ports.
    static QVariantMap routerLocation(const QString& name, int profile, SimulatorProcess& sim)
    {
        QVariantMap l = location(name, profile, sim.port(QStringLiteral("monitor")));
        l.insert(QStringLiteral("WebPort"), sim.port(QStringLiteral("web")));
        l.insert(QStringLiteral("TR064Port"), sim.port(QStringLiteral("tr064")));
        return l;
    }

    // Stores the router password of a location and reloads the current one.
    void setPassword(const QString& uid, const QString& password)
    {
        env->secrets().write(SecretStore::keychainServiceForKey(QStringLiteral("Pass"), uid),
                             SecretStore::keychainAccountForKey(QStringLiteral("Pass")), password);
        env->manager().activateCurrentLocation();
    }

    // The simulator has accepted the call monitor's connection (events before that are lost).
    static bool waitForMonitorClient(SimulatorProcess& sim)
    {
        return QTest::qWaitFor(
            [&sim] {
                return sim.control("GET", QStringLiteral("/_sim/monitor/clients")) == "{\"clients\":1}";
            },
            10000);
    }

    static QString addressBook()
    {
        return QStringLiteral(TONDREL_TEST_DATA_DIR "/contacts/apple_export.vcf");
    }
};

// The tray, headless, on its own settings: on a plain location, or on the simulated router.
struct GuiTray
{
    GuiEnv env;
    RecordingPresenter presenter;
    std::unique_ptr<TrayApplication> tray;

    void start(TrayApplication::Options options = {}, const QStringList& arguments = {})
    {
        options.presenter = &presenter;
        options.headless = true;
        tray = std::make_unique<TrayApplication>(*env.env, options);
        tray->start(arguments);
    }

    // Location "L1" on the router with its password; the router's own commands, without the
    // status check at start unless asked.
    bool startOnRouter(SimulatorProcess& sim, const QVariantMap& settings = {},
                       const QVariantMap& globals = {}, const QString& password = QStringLiteral("secret"),
                       bool checkStatus = false)
    {
        QVariantMap home = GuiEnv::routerLocation(QStringLiteral("Home"), 1, sim);
        home.insert(settings);
        if (!sim.isRunning() || !env.open({{QStringLiteral("L1"), home}}, QStringLiteral("L1"), globals))
            return false;
        env.setPassword(QStringLiteral("L1"), password);
        TrayApplication::Options options = TrayApplication::routerOptions(*env.env);
        if (!checkStatus)
            options.checkRouterStatus = {};
        start(options);
        return true;
    }
};
