#include "LocationCommand.h"

#include "CliContext.h"

#include "base/Defaults.h"
#include "base/LocationKeys.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString str(const std::string& s)
{
    return QString::fromStdString(s);
}

QVariantMap summary(const TNPreferences& prefs, bool current)
{
    return {
        {QStringLiteral("uid"), prefs.uid},           {QStringLiteral("profile"), prefs.activeProfileInt},
        {QStringLiteral("name"), prefs.locationName}, {QStringLiteral("host"), prefs.hostName},
        {QStringLiteral("user"), prefs.userName},     {QStringLiteral("current"), current},
    };
}

void checkPort(int port, const char* what)
{
    if (port < 0 || port > 65535)
        throw CliError(2,
                       QStringLiteral("%1 %2 is not a port number").arg(QString::fromLatin1(what)).arg(port));
}

} // namespace

void LocationCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* loc = app.add_subcommand("location", "The configured routers (locations) and their settings");
    loc->require_subcommand(1);

    auto* add = loc->add_subcommand("add", "Add a location, make it current and print its UID");
    add->add_option("--name", m_add.name, "Name shown for the location");
    add->add_option("--host", m_add.host, "Router host name or address (default fritz.box)");
    add->add_option("--user", m_add.user, "User name for the router's web interface");
    add->add_flag("--password-stdin", m_add.passwordStdin, "Read the router password from standard input");
    add->add_option("--web-port", m_add.webPort, "Web interface port (80)");
    add->add_option("--monitor-port", m_add.monitorPort, "Call monitor port (1012)");
    add->add_option("--tr064-port", m_add.tr064Port, "TR-064 port (49000)");
    add->add_option("--ftp-port", m_add.ftpPort, "FTP port (21)");
    add->add_option(
        "--prefixes", m_add.prefixes,
        "Dialling context: international prefix, country code, trunk prefix, area code (e.g. 00,49,0,30)");
    add->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            checkPort(m_add.webPort, "--web-port");
            checkPort(m_add.monitorPort, "--monitor-port");
            checkPort(m_add.tr064Port, "--tr064-port");
            checkPort(m_add.ftpPort, "--ftp-port");
            QStringList prefixes;
            if (!m_add.prefixes.empty()) {
                prefixes = str(m_add.prefixes).split(u',');
                if (prefixes.size() != 4)
                    throw CliError(2, QStringLiteral("--prefixes takes four comma-separated parts, got %1")
                                          .arg(prefixes.size()));
            }
            const QString password = m_add.passwordStdin ? ctx.readSecretLine() : QString();
            auto& mgr = ctx.manager();
            // The first location is the program's first start: write what the tray writes then.
            if (!mgr.isConfigured())
                methods::writeFirstStartDefaults(ctx.settings());
            const QString uid = mgr.addNewLocation();
            auto prefs = mgr.locationPreferencesForUID(uid);
            if (!m_add.name.empty())
                prefs->locationName = str(m_add.name);
            if (!m_add.host.empty())
                prefs->hostName = str(m_add.host);
            prefs->userName = str(m_add.user);
            if (m_add.webPort)
                prefs->webPort = m_add.webPort;
            if (m_add.monitorPort)
                prefs->callMonitorPort = m_add.monitorPort;
            if (m_add.tr064Port)
                prefs->tr064Port = m_add.tr064Port;
            if (m_add.ftpPort)
                prefs->ftpPort = m_add.ftpPort;
            if (!prefixes.isEmpty())
                prefs->prefixis = prefixes;
            prefs->passWord = password;
            if (!prefs->save()) {
                const QString why = prefs->keyChainError
                                        ? QStringLiteral("the password could not be stored: %1")
                                              .arg(ctx.secrets().lastError())
                                        : QStringLiteral("the settings could not be written");
                mgr.removeLocationForID(uid);
                throw CliError(1, why);
            }
            mgr.activateCurrentLocationForID(uid);
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("uid"), uid}});
            else
                ctx.out() << uid << "\n";
        };
    });

    auto* list = loc->add_subcommand("list", "List the locations (* marks the current one)");
    list->callback([&ctx] {
        ctx.action = [&ctx] {
            auto& mgr = ctx.manager();
            const QString current = mgr.isConfigured() ? mgr.currentUID() : QString();
            QVariantList rows;
            for (const auto& prefs : mgr.locations())
                rows.append(summary(*prefs, prefs->uid == current));
            if (ctx.json) {
                ctx.printJson(rows);
                return;
            }
            if (rows.isEmpty()) {
                ctx.out() << "No locations configured.\n";
                return;
            }
            for (const QVariant& row : rows) {
                const QVariantMap r = row.toMap();
                ctx.out() << (r.value(QStringLiteral("current")).toBool() ? "* " : "  ")
                          << r.value(QStringLiteral("uid")).toString() << "  "
                          << r.value(QStringLiteral("profile")).toInt() << "  "
                          << r.value(QStringLiteral("name")).toString() << "  "
                          << r.value(QStringLiteral("host")).toString() << "\n";
            }
        };
    });

    auto* show = loc->add_subcommand("show", "Show every key of a location (the current one unless named)");
    show->add_option("location", m_target, "Name or UID");
    show->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = m_target.empty() ? ctx.targetLocation() : ctx.findLocation(str(m_target));
            QVariantMap dict = prefs->toLocationDictionary();
            if (ctx.json) {
                dict.insert(QStringLiteral("uid"), prefs->uid);
                dict.insert(QStringLiteral("current"), ctx.manager().isUIDCurrentLocation(prefs->uid));
                dict.insert(QStringLiteral("passwordSet"), !prefs->passWord.isEmpty());
                dict.insert(QStringLiteral("remotePasswordSet"), !prefs->remotePassWord.isEmpty());
                dict.insert(QStringLiteral("ftpPasswordSet"), !prefs->FTPPassWord.isEmpty());
                ctx.printJson(dict);
                return;
            }
            ctx.out() << "UID = " << prefs->uid << "\n";
            for (auto it = dict.cbegin(); it != dict.cend(); ++it)
                ctx.out() << it.key() << " = " << CliContext::valueText(it.value()) << "\n";
            ctx.out() << "password = " << (prefs->passWord.isEmpty() ? "not set" : "set") << "\n";
            ctx.out() << "remote password = " << (prefs->remotePassWord.isEmpty() ? "not set" : "set")
                      << "\n";
            ctx.out() << "FTP password = " << (prefs->FTPPassWord.isEmpty() ? "not set" : "set") << "\n";
        };
    });

    auto* use = loc->add_subcommand("use", "Make a location current");
    use->add_option("location", m_target, "Name or UID")->required();
    use->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.findLocation(str(m_target));
            ctx.manager().activateCurrentLocationForID(prefs->uid);
            if (!ctx.json)
                ctx.out() << "Current location: " << prefs->locationName << " (" << prefs->uid << ")\n";
        };
    });

    auto* remove = loc->add_subcommand("remove", "Remove a location with its passwords and its calls");
    remove->add_option("location", m_target, "Name or UID")->required();
    remove->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.findLocation(str(m_target));
            auto& mgr = ctx.manager();
            mgr.removeLocationForID(prefs->uid);
            if (ctx.json) {
                ctx.printJson(QVariantMap{{QStringLiteral("removed"), prefs->uid},
                                          {QStringLiteral("current"), mgr.currentUID()}});
                return;
            }
            ctx.out() << "Removed " << prefs->locationName << " (" << prefs->uid << ")\n";
        };
    });

    auto* set = loc->add_subcommand("set", "Set one key of a location (arrays and dictionaries as JSON)");
    set->add_option("key", m_key, "Settings key, e.g. Host, CallMonitor, Prefixis")->required();
    set->add_option("value", m_value, "Value; booleans as true/false")->required();
    set->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            const QString key = str(m_key);
            const LocationKeyDef* def = findLocationKey(key);
            if (!def || key == keys::SaveDate || key == keys::DefaultCallArtNewLocation) {
                QStringList known;
                for (const auto& d : locationKeyTable())
                    if (d.key != keys::SaveDate && d.key != keys::DefaultCallArtNewLocation)
                        known << d.key;
                throw CliError(
                    2, QStringLiteral("unknown location key '%1' (known: %2)").arg(key, known.join(u", ")));
            }
            QString error;
            const QVariant value = parseSettingValue(def->type, str(m_value), &error);
            if (!value.isValid())
                throw CliError(2, QStringLiteral("%1: %2").arg(key, error));
            auto prefs = ctx.targetLocation();
            ctx.manager().saveLocationValue(value, key, prefs->uid);
            if (!ctx.json)
                ctx.out() << key << " = " << CliContext::valueText(value) << "\n";
        };
    });

    auto* password =
        loc->add_subcommand("password", "Store a password of the location, read from standard input");
    password->add_flag("--remote", m_remote, "The remote-access password");
    password->add_flag("--ftp", m_ftp, "The FTP password");
    password->add_flag("--password-stdin", m_passwordStdin, "Read the password from standard input")
        ->required();
    password->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            if (m_remote && m_ftp)
                throw CliError(2, QStringLiteral("--remote and --ftp exclude each other"));
            auto prefs = ctx.targetLocation();
            const QString secret = ctx.readSecretLine();
            const QString key = m_remote ? keys::RemotePass : m_ftp ? keys::FTPPass : keys::Pass;
            const QString service = SecretStore::keychainServiceForKey(key, prefs->uid);
            const QString account = SecretStore::keychainAccountForKey(key);
            const bool ok = secret.isEmpty() ? (ctx.secrets().remove(service, account), true)
                                             : ctx.secrets().write(service, account, secret);
            if (!ok)
                throw CliError(
                    1, QStringLiteral("the password could not be stored: %1").arg(ctx.secrets().lastError()));
            if (!ctx.json)
                ctx.out() << "Password stored.\n";
        };
    });
}
