#include "box/TNSessionRights.h"

#include <QRegularExpression>

#include <array>
#include <utility>

namespace {
struct Area
{
    const char* userListKey;
    const char* loginName;
    std::uint32_t none, local, remote;
};

constexpr std::array<Area, 4> kAreas = {{
    {"box_admin_rights", "BoxAdmin", RightBoxAdminNone, RightBoxAdminLocal, RightBoxAdminRemote},
    {"dial_rights", "Dial", TNSessionRightDialNone, TNSessionRightDialLocal, TNSessionRightDialRemote},
    {"phone_rights", "Phone", TNSessionRightPhoneNone, TNSessionRightPhoneLocal, TNSessionRightPhoneRemote},
    {"nas_rights", "NAS", RightNASNone, RightNASLocal, RightNASRemote},
}};
} // namespace

namespace TNSessionRights {

QString debugUserRight(std::uint32_t mask)
{
    static const std::array<std::pair<std::uint32_t, const char*>, 13> names = {{
        {RightBoxAdminNone, "RightBoxAdminNone"},
        {RightBoxAdminLocal, "RightBoxAdminLocal"},
        {RightBoxAdminRemote, "RightBoxAdminRemote"},
        {RightNASNone, "RightNASNone"},
        {RightNASLocal, "RightNASLocal"},
        {RightNASRemote, "RightNASRemote"},
        {TNSessionRightDialNone, "TNSessionRightDialNone"},
        {TNSessionRightDialLocal, "TNSessionRightDialLocal"},
        {TNSessionRightDialRemote, "TNSessionRightDialRemote"},
        {TNSessionRightPhoneNone, "TNSessionRightPhoneNone"},
        {TNSessionRightPhoneLocal, "TNSessionRightPhoneLocal"},
        {TNSessionRightPhoneRemote, "TNSessionRightPhoneRemote"},
        {RightTR064, "RightTR064"},
    }};
    QString text;
    for (const auto& [bit, name] : names)
        if (mask & bit)
            text += QString::fromLatin1(name) + u' ';
    return text;
}

std::uint32_t bitsForUserListValue(const QString& key, const QString& value)
{
    for (const Area& area : kAreas) {
        if (key != QLatin1String(area.userListKey))
            continue;
        if (value == u"0")
            return area.none;
        if (value == u"3")
            return area.local;
        if (value == u"5")
            return area.local | area.remote;
    }
    return 0;
}

std::uint32_t maskFromLoginRights(const QString& answer, bool remoteAccess)
{
    static const QRegularExpression block(QStringLiteral("<Rights>(.*)</Rights>"),
                                          QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression pair(QStringLiteral("<Name>([^<]*)</Name>\\s*<Access>([^<]*)</Access>"));
    const auto m = block.match(answer);
    if (!m.hasMatch())
        return 0;
    QMap<QString, int> access;
    for (auto it = pair.globalMatch(m.captured(1)); it.hasNext();) {
        const auto p = it.next();
        access.insert(p.captured(1).trimmed(), p.captured(2).trimmed().toInt());
    }
    if (access.isEmpty())
        return 0;
    std::uint32_t mask = TNSessionRightBase;
    for (const Area& area : kAreas) {
        const int a = access.value(QLatin1String(area.loginName), 0);
        if (a == 1 || a == 2)
            mask |= area.local | (remoteAccess ? area.remote : 0);
        else
            mask |= area.none;
    }
    return mask;
}

QString sessionResultName(int result)
{
    switch (result) {
    case TNSessionResultRejected:
        return QStringLiteral("TNSessionResultRejected");
    case TNSessionResultUnreachable:
        return QStringLiteral("TNSessionResultUnreachable");
    case TNSessionResultBlocked:
        return QStringLiteral("TNSessionResultBlocked");
    case TNSessionResultNoSession:
        return QStringLiteral("TNSessionResultNoSession");
    case TNSessionResultLoggedIn:
        return QStringLiteral("TNSessionResultLoggedIn");
    default:
        return QStringLiteral("TNSessionResultUnknown");
    }
}

} // namespace TNSessionRights
