#include "assistant/AssistantRouterData.h"

#include "box/TNSessionRights.h"

#include <QRegularExpression>

namespace AssistantRules {

namespace {
constexpr int kUserFields = 7;
constexpr int kMaxUserSlots = 32;

enum Pos {
    LKZ = 0,
    LKZPrefix,
    OKZ,
    OKZPrefix,
    DialPort,
    UseClickToDial,
    DdnsDomain,
    DdnsActivated,
    HttpsPort,
    RemoteEnabled,
    RemoteUsername,
    UserNewId,
    MyFritzRegistered,
    MyFritzEnabled,
    MyFritzName,
    MyFritzEmail,
    CompatibilityMode,
    Count
};

// The router answers "er" for a variable it does not have.
QString at(const QStringList& answer, int pos)
{
    const QString v = answer.value(pos).trimmed();
    return v == u"er" || v == u"err" || v == u"no-emu" ? QString() : v;
}

// "boxuser7" is the id the next account would get, so slots 0..6 can hold accounts.
int slotsFromNewId(const QString& newId)
{
    static const QRegularExpression digits(QStringLiteral("(\\d+)$"));
    const auto m = digits.match(newId);
    const int n = m.hasMatch() ? m.captured(1).toInt() : 10;
    return qBound(1, n, kMaxUserSlots);
}
} // namespace

const QStringList& assistantVariables()
{
    static const QStringList vars{
        QStringLiteral("telcfg:settings/Location/LKZ"),
        QStringLiteral("telcfg:settings/Location/LKZPrefix"),
        QStringLiteral("telcfg:settings/Location/OKZ"),
        QStringLiteral("telcfg:settings/Location/OKZPrefix"),
        QStringLiteral("telcfg:settings/DialPort"),
        QStringLiteral("telcfg:settings/UseClickToDial"),
        QStringLiteral("ddns:settings/account0/domain"),
        QStringLiteral("ddns:settings/account0/activated"),
        QStringLiteral("remoteman:settings/https_port"),
        QStringLiteral("remoteman:settings/enabled"),
        QStringLiteral("remoteman:settings/username"),
        QStringLiteral("boxusers:settings/user/newid"),
        QStringLiteral("jasonii:settings/is_box_registered"),
        QStringLiteral("jasonii:settings/enabled"),
        QStringLiteral("jasonii:settings/dyndnsname"),
        QStringLiteral("jasonii:settings/user_email"),
        QStringLiteral("boxusers:settings/compatibility_mode"),
    };
    return vars;
}

QStringList userVariables(int index)
{
    const auto v = [index](const char* field) {
        return QStringLiteral("boxusers:settings/user%1/%2").arg(index).arg(QLatin1String(field));
    };
    return {v("name"),         v("nas_rights"), v("box_admin_rights"), v("dial_rights"), v("nas_rights"),
            v("phone_rights"), v("UID")};
}

ReadOutcome assistantDataFromAnswer(const QStringList& answer, int sessionResult, std::uint32_t userRights,
                                    AssistantRouterData* data)
{
    if (sessionResult != TNSessionResultLoggedIn)
        return ReadOutcome::NotLoggedIn;
    // The user may not read or change the router's settings.
    if (userRights & RightBoxAdminNone)
        return ReadOutcome::MissingRights;
    if (answer.size() < Count)
        return ReadOutcome::InvalidAnswer;

    data->prefixis = {at(answer, LKZPrefix), at(answer, LKZ), at(answer, OKZPrefix), at(answer, OKZ)};
    data->dialPort = at(answer, DialPort);

    // A port outside 1-65535 (or no number) is read as none.
    QString httpsPort = at(answer, HttpsPort);
    bool portOk = false;
    const uint port = httpsPort.toUInt(&portOk);
    if (!portOk || port == 0 || port > 65535)
        httpsPort.clear();
    const bool myFritz = at(answer, MyFritzRegistered) == u"1" && at(answer, MyFritzEnabled) == u"1" &&
                         !at(answer, MyFritzName).isEmpty() && !at(answer, MyFritzEmail).isEmpty();
    data->myFritzHost = myFritz;
    if (myFritz) {
        data->remoteHost = at(answer, MyFritzName);
        data->remoteSSLPort = httpsPort.isEmpty() ? QStringLiteral("443") : httpsPort;
    } else {
        data->remoteHost = at(answer, DdnsDomain);
        data->remoteSSLPort = httpsPort;
        if (!at(answer, RemoteUsername).isEmpty())
            data->remoteUser = at(answer, RemoteUsername);
    }
    data->needsRemoteHost = data->remoteHost.isEmpty();
    data->readUsers = at(answer, CompatibilityMode) != u"1";
    data->userSlots = data->readUsers ? slotsFromNewId(at(answer, UserNewId)) : 0;
    return ReadOutcome::Ok;
}

QVector<AssistantRouterUser> usersFromAnswer(const QStringList& answer, int count)
{
    QVector<AssistantRouterUser> users;
    for (int i = 0; i < count && (i + 1) * kUserFields <= answer.size(); ++i) {
        const int b = i * kUserFields;
        AssistantRouterUser u{at(answer, b),     at(answer, b + 1), at(answer, b + 2),
                              at(answer, b + 3), at(answer, b + 5), at(answer, b + 6)};
        if (u.name.isEmpty() || u.name == u"boxuser98")
            continue;
        users.append(u);
    }
    return users;
}

} // namespace AssistantRules
