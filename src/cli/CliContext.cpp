#include "CliContext.h"

#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

CliContext::CliContext(QTextStream& out, QTextStream& err, QTextStream& in) : m_out(out), m_err(err), m_in(in)
{
}

CliContext::~CliContext() = default;

void CliContext::open()
{
    if (m_env)
        return;
    const AppPaths paths =
        AppPaths::resolve(QString::fromStdString(configDir), QString::fromStdString(dataDir));
    QString kind = QString::fromStdString(secretsKind);
    if (kind.isEmpty())
        kind = qEnvironmentVariable("TONDREL_SECRETS");
    auto env = std::make_unique<AppEnvironment>(paths, kind);
    QString error;
    if (!env->open(false, &error)) {
        if (!env->settingsCorrupt())
            throw CliError(2, error);
        if (!resetSettings)
            throw CliError(1, error +
                                  QStringLiteral("; run again with --reset-settings to start from defaults"));
        m_err << "tondrel-cli: starting from default settings; the old file is kept at "
              << env->corruptCopyPath() << "\n";
        m_err.flush();
        if (!env->open(true, &error))
            throw CliError(1, error);
    }
    m_env = std::move(env);
}

const AppPaths& CliContext::paths()
{
    open();
    return m_env->paths();
}

SettingsStore& CliContext::settings()
{
    open();
    return m_env->settings();
}

SecretStore& CliContext::secrets()
{
    open();
    return m_env->secrets();
}

AppEnvironment& CliContext::environment()
{
    open();
    return *m_env;
}

TNPreferencesManager& CliContext::manager()
{
    open();
    return m_env->manager();
}

std::shared_ptr<TNPreferences> CliContext::findLocation(const QString& nameOrUid)
{
    auto& mgr = manager();
    if (auto byUid = mgr.locationPreferencesForUID(nameOrUid))
        return byUid;
    std::shared_ptr<TNPreferences> found;
    int matches = 0;
    for (const auto& prefs : mgr.locations()) {
        if (prefs->locationName == nameOrUid) {
            found = prefs;
            ++matches;
        }
    }
    if (matches > 1)
        throw CliError(
            1, QStringLiteral("%1 locations are named '%2'; use the UID").arg(matches).arg(nameOrUid));
    if (!found)
        throw CliError(1, QStringLiteral("no location '%1'").arg(nameOrUid));
    return found;
}

std::shared_ptr<TNPreferences> CliContext::targetLocation()
{
    if (!location.empty())
        return findLocation(QString::fromStdString(location));
    auto current = manager().currentPreferences();
    if (!current || current->isDummy())
        throw CliError(1,
                       QStringLiteral("no location is configured; add one with 'tondrel-cli location add'"));
    return current;
}

QString CliContext::readSecretLine()
{
    QString line = m_in.readLine();
    if (line.isNull())
        throw CliError(1, QStringLiteral("no password on standard input"));
    if (line.endsWith(u'\r'))
        line.chop(1);
    return line;
}

void CliContext::printJson(const QVariant& value)
{
    const QJsonDocument doc = value.typeId() == QMetaType::QVariantList
                                  ? QJsonDocument(QJsonArray::fromVariantList(value.toList()))
                                  : QJsonDocument(QJsonObject::fromVariantMap(value.toMap()));
    m_out << doc.toJson(QJsonDocument::Indented);
    m_out.flush();
}

QString CliContext::valueText(const QVariant& v)
{
    if (v.typeId() == QMetaType::QVariantList || v.typeId() == QMetaType::QStringList)
        return QString::fromUtf8(
            QJsonDocument(QJsonArray::fromVariantList(v.toList())).toJson(QJsonDocument::Compact));
    if (v.typeId() == QMetaType::QVariantMap)
        return QString::fromUtf8(
            QJsonDocument(QJsonObject::fromVariantMap(v.toMap())).toJson(QJsonDocument::Compact));
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    return v.toString();
}
