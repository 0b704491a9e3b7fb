#include "RouterState.h"

#include <QRandomGenerator>

namespace {
QString randomHex(int bytes)
{
    QByteArray b(bytes, '\0');
    for (auto& c : b)
        c = char(QRandomGenerator::global()->bounded(256));
    return QString::fromLatin1(b.toHex());
}

QHash<QString, QString> defaultVariables(const Scenario& s)
{
    QHash<QString, QString> v{
        {QStringLiteral("wlan:settings/ap_enabled"), QStringLiteral("1")},
        {QStringLiteral("wlan:settings/ap_enabled_scnd"), QStringLiteral("1")},
        {QStringLiteral("wlan:settings/ssid"), QStringLiteral("FRITZ!Box 7590 XY")},
        {QStringLiteral("wlan:settings/ssid_scnd"), QStringLiteral("FRITZ!Box 7590 XY 5GHz")},
        {QStringLiteral("dect:settings/enabled"), QStringLiteral("1")},
        {QStringLiteral("tr064:settings/enabled"), QStringLiteral("1")},
        {QStringLiteral("telcfg:settings/DialPort"), QStringLiteral("50")},
        {QStringLiteral("telcfg:settings/UseClickToDial"), QStringLiteral("1")},
        {QStringLiteral("logic:status/nspver"), s.value(QStringLiteral("firmwareVersion")).toString()},
        {QStringLiteral("boxusers:settings/compatibility_mode"), QStringLiteral("0")},
        {QStringLiteral("telcfg:settings/MSN/Port0/Name"), QStringLiteral("Telefon Küche")},
        {QStringLiteral("telcfg:settings/MSN/Port1/Name"), QStringLiteral("Fax")},
        {QStringLiteral("telcfg:settings/MSN/Port2/Name"), QString()},
        {QStringLiteral("telcfg:settings/Foncontrol/User1/Name"), QStringLiteral("Mobilteil 1")},
        {QStringLiteral("telcfg:settings/Foncontrol/User1/Intern"), QStringLiteral("610")},
        {QStringLiteral("telcfg:settings/MSN/MSN0"), QStringLiteral("5551234")},
        {QStringLiteral("telcfg:settings/MSN/MSN1"), QString()},
        {QStringLiteral("telcfg:settings/MSN/POTS"), QString()},
        {QStringLiteral("sip:settings/sip0/displayname"), QStringLiteral("5559876")},
        {QStringLiteral("telcfg:settings/FaxMSN0"), QStringLiteral("5551235")},
        // Dialling context and remote access: a router in Berlin without MyFRITZ!.
        {QStringLiteral("telcfg:settings/Location/LKZ"), QStringLiteral("49")},
        {QStringLiteral("telcfg:settings/Location/LKZPrefix"), QStringLiteral("00")},
        {QStringLiteral("telcfg:settings/Location/OKZ"), QStringLiteral("30")},
        {QStringLiteral("telcfg:settings/Location/OKZPrefix"), QStringLiteral("0")},
        {QStringLiteral("ddns:settings/account0/domain"), QString()},
        {QStringLiteral("ddns:settings/account0/activated"), QStringLiteral("0")},
        {QStringLiteral("remoteman:settings/https_port"), QString()},
        {QStringLiteral("remoteman:settings/enabled"), QStringLiteral("0")},
        {QStringLiteral("remoteman:settings/username"), QString()},
        {QStringLiteral("jasonii:settings/is_box_registered"), QStringLiteral("0")},
        {QStringLiteral("jasonii:settings/enabled"), QStringLiteral("0")},
        {QStringLiteral("jasonii:settings/dyndnsname"), QString()},
        {QStringLiteral("jasonii:settings/user_email"), QString()},
    };
    // The user list as the router's variables show it; rights 2 unless the scenario says less.
    const QJsonArray users = s.value(QStringLiteral("users")).toArray();
    for (int i = 0; i < users.size(); ++i) {
        const QJsonObject u = users.at(i).toObject();
        const QJsonObject rights = u.value(QStringLiteral("rights")).toObject();
        const auto right = [&rights](const char* area) {
            return QString::number(rights.isEmpty() ? 2 : rights.value(QLatin1String(area)).toInt(0));
        };
        const QString base = QStringLiteral("boxusers:settings/user%1/").arg(i);
        v.insert(base + QStringLiteral("name"), u.value(QStringLiteral("name")).toString());
        v.insert(base + QStringLiteral("box_admin_rights"), right("BoxAdmin"));
        v.insert(base + QStringLiteral("dial_rights"), right("Dial"));
        v.insert(base + QStringLiteral("phone_rights"), right("Phone"));
        v.insert(base + QStringLiteral("nas_rights"), right("NAS"));
        v.insert(base + QStringLiteral("UID"), QStringLiteral("boxuser%1").arg(i + 1));
    }
    v.insert(QStringLiteral("boxusers:settings/user/newid"),
             QStringLiteral("boxuser%1").arg(users.size() + 1));
    const QJsonObject extra = s.value(QStringLiteral("variables")).toObject();
    for (auto it = extra.begin(); it != extra.end(); ++it)
        v.insert(it.key(), it.value().toVariant().toString());
    return v;
}
} // namespace

RouterState::RouterState(Scenario& scenario) : m_scenario(scenario)
{
    m_vars = defaultVariables(scenario);
    rotateChallenge();
}

QString RouterState::firmware() const
{
    return m_scenario.value(QStringLiteral("firmware")).toString(QStringLiteral("lua"));
}

QString RouterState::variable(const QString& name) const
{
    QMutexLocker lock(&m_mutex);
    if (m_scenario.value(QStringLiteral("notEmulated")).toArray().contains(QJsonValue(name)))
        return QStringLiteral("no-emu");
    const auto it = m_vars.constFind(name);
    if (it != m_vars.constEnd())
        return *it;
    // The online monitor's figures move on by themselves.
    return SimTraffic::isTrafficVariable(name) ? m_traffic.value(name) : QStringLiteral("er");
}

void RouterState::setVariable(const QString& name, const QString& value)
{
    QMutexLocker lock(&m_mutex);
    m_vars.insert(name, value);
}

QJsonArray RouterState::users() const
{
    return m_scenario.value(QStringLiteral("users")).toArray();
}

QJsonObject RouterState::user(const QString& name) const
{
    for (const QJsonValue& u : users())
        if (u.toObject().value(QStringLiteral("name")).toString() == name)
            return u.toObject();
    return {};
}

QString RouterState::newSession(const QString& userName)
{
    QMutexLocker lock(&m_mutex);
    const QString sid = randomHex(8);
    m_sessions.insert(sid, {userName, QDateTime::currentDateTimeUtc().addSecs(600)});
    return sid;
}

bool RouterState::validSession(const QString& sid, QString* userName)
{
    QMutexLocker lock(&m_mutex);
    auto it = m_sessions.find(sid);
    if (it == m_sessions.end() || it->second < QDateTime::currentDateTimeUtc())
        return false;
    it->second = QDateTime::currentDateTimeUtc().addSecs(600);
    if (userName)
        *userName = it->first;
    return true;
}

QString RouterState::challenge(bool pbkdf2)
{
    QMutexLocker lock(&m_mutex);
    return pbkdf2 ? m_pbkdf2Challenge : m_md5Challenge;
}

void RouterState::rotateChallenge()
{
    QMutexLocker lock(&m_mutex);
    m_md5Challenge = randomHex(4);
    // "pbkdf2Iterations" sets the first stage's count (a hostile router's challenge).
    const int iterations = m_scenario.value(QStringLiteral("pbkdf2Iterations")).toInt(10000);
    m_pbkdf2Challenge = QStringLiteral("2$%1$%2$2000$%3").arg(iterations).arg(randomHex(16), randomHex(16));
}

int RouterState::blockSecondsLeft() const
{
    QMutexLocker lock(&m_mutex);
    if (!m_blockedUntil.isValid())
        return 0;
    const qint64 ms = QDateTime::currentDateTimeUtc().msecsTo(m_blockedUntil);
    return ms > 0 ? int((ms + 999) / 1000) : 0;
}

void RouterState::loginFailed()
{
    QMutexLocker lock(&m_mutex);
    ++m_failures;
    const int after = m_scenario.value(QStringLiteral("blockAfterFailures")).toInt(0);
    const int seconds = m_scenario.value(QStringLiteral("blockTime")).toInt(0);
    if (after > 0 && seconds > 0 && m_failures >= after)
        m_blockedUntil = QDateTime::currentDateTimeUtc().addSecs(seconds);
}

void RouterState::loginSucceeded()
{
    QMutexLocker lock(&m_mutex);
    m_failures = 0;
}

void RouterState::recordRequest(const QString& method, const QString& path)
{
    QMutexLocker lock(&m_mutex);
    m_requests.append(QJsonObject{{QStringLiteral("method"), method}, {QStringLiteral("path"), path}});
}

void RouterState::recordAction(const QJsonObject& action)
{
    QMutexLocker lock(&m_mutex);
    m_actions.append(action);
}

QJsonArray RouterState::requests() const
{
    QMutexLocker lock(&m_mutex);
    return m_requests;
}

QJsonArray RouterState::actions() const
{
    QMutexLocker lock(&m_mutex);
    return m_actions;
}

void RouterState::clearRecords()
{
    QMutexLocker lock(&m_mutex);
    m_requests = {};
    m_actions = {};
}
