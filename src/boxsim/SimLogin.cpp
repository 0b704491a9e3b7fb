#include "SimLogin.h"

#include "RouterState.h"
#include "SimCrypto.h"
#include "SimRequest.h"

#include <QJsonArray>
#include <QJsonObject>

#include <httplib.h>

namespace {
const QString kZeroSID = QStringLiteral("0000000000000000");
}

void SimLogin::install(httplib::Server& server)
{
    const auto handler = [this](const httplib::Request& req, httplib::Response& res) {
        m_state.recordRequest(QString::fromStdString(req.method), QString::fromStdString(req.path));
        if (m_state.firmware() != u"lua") {
            res.status = 404;
            res.set_content("<html><body>404 Not Found</body></html>", "text/html");
            return;
        }
        const SimParams params = SimParams::fromRequest(req);
        const bool pbkdf2 = params.value(QStringLiteral("version")) == u"2" &&
                            m_state.scenario().value(QStringLiteral("pbkdf2")).toBool(true);
        res.set_content(luaLogin(params, pbkdf2), "text/xml; charset=utf-8");
    };
    server.Get("/login_sid.lua", handler);
    server.Post("/login_sid.lua", handler);
}

QString SimLogin::rightsFor(const QString& userName) const
{
    const QJsonObject rights = m_state.user(userName).value(QStringLiteral("rights")).toObject();
    QString text;
    for (const char* area : {"Dial", "App", "HomeAuto", "BoxAdmin", "Phone", "NAS"}) {
        const int access = rights.isEmpty() ? 2 : rights.value(QLatin1String(area)).toInt(0);
        if (access > 0)
            text += QStringLiteral("\n\t\t<Name>%1</Name>\n\t\t<Access>%2</Access>")
                        .arg(QLatin1String(area))
                        .arg(access);
    }
    return text.isEmpty() ? text : text + QStringLiteral("\n\t");
}

std::string SimLogin::sessionInfo(const QString& sid, const QString& challenge, int blockTime,
                                  const QString& rights, bool withUsers) const
{
    QString xml =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<SessionInfo>\n\t<SID>%1</SID>\n"
                       "\t<Challenge>%2</Challenge>\n\t<BlockTime>%3</BlockTime>\n")
            .arg(sid, challenge)
            .arg(blockTime);
    xml += rights.isEmpty() ? QStringLiteral("\t<Rights/>\n")
                            : QStringLiteral("\t<Rights>%1</Rights>\n").arg(rights);
    if (withUsers) {
        xml += QStringLiteral("\t<Users>\n");
        const QJsonArray users = m_state.users();
        for (qsizetype i = 0; i < users.size(); ++i) {
            const QString name = users[i].toObject().value(QStringLiteral("name")).toString();
            if (!name.isEmpty())
                xml += QStringLiteral("\t\t<User%1>%2</User>\n")
                           .arg(i == users.size() - 1 ? QStringLiteral(" last=\"1\"") : QString(),
                                name.toHtmlEscaped());
        }
        xml += QStringLiteral("\t</Users>\n");
    }
    xml += QStringLiteral("</SessionInfo>\n");
    return xml.toStdString();
}

std::string SimLogin::luaLogin(const SimParams& params, bool pbkdf2)
{
    const QString challenge = m_state.challenge(pbkdf2);
    const QString sid = params.value(QStringLiteral("sid"));
    if (!sid.isEmpty() && !params.has(QStringLiteral("response"))) {
        QString user;
        if (m_state.validSession(sid, &user))
            return sessionInfo(sid, challenge, 0, rightsFor(user), true);
    }
    if (!params.has(QStringLiteral("response")))
        return sessionInfo(kZeroSID, challenge, m_state.blockSecondsLeft(), QString(), true);

    // A login attempt while the router blocks counts as failed without a check.
    if (m_state.blockSecondsLeft() > 0)
        return sessionInfo(kZeroSID, challenge, m_state.blockSecondsLeft(), QString(), true);

    const QString userName = params.value(QStringLiteral("username"));
    const QJsonObject user = m_state.user(userName);
    const QString password = user.value(QStringLiteral("password")).toString();
    const QString response = params.value(QStringLiteral("response"));
    const QString expected = challenge.startsWith(QStringLiteral("2$"))
                                 ? SimCrypto::expectedPbkdf2Response(challenge, password)
                                 : SimCrypto::expectedMd5Response(challenge, password);
    m_state.rotateChallenge();
    const QString next = m_state.challenge(pbkdf2);
    if (user.isEmpty() || response != expected) {
        m_state.loginFailed();
        m_state.recordAction(
            {{QStringLiteral("action"), QStringLiteral("loginFailed")}, {QStringLiteral("user"), userName}});
        return sessionInfo(kZeroSID, next, m_state.blockSecondsLeft(), QString(), true);
    }
    m_state.loginSucceeded();
    m_state.recordAction(
        {{QStringLiteral("action"), QStringLiteral("login")},
         {QStringLiteral("user"), userName},
         {QStringLiteral("scheme"), pbkdf2 ? QStringLiteral("pbkdf2") : QStringLiteral("md5")}});
    return sessionInfo(m_state.newSession(userName), next, 0, rightsFor(userName), true);
}

std::string SimLogin::formLoginAnswer(const SimParams& params)
{
    if (m_state.firmware() == u"nologin")
        return "<html><body>FRITZ!Box</body></html>\n";
    const QString challenge = m_state.challenge(false);
    const QString response = params.value(QStringLiteral("login:command/response"));
    QString sid = kZeroSID;
    if (!response.isEmpty()) {
        // Older firmware knows one password and no user names.
        const QString password = m_state.user(QString()).value(QStringLiteral("password")).toString();
        m_state.rotateChallenge();
        if (response == SimCrypto::expectedMd5Response(challenge, password)) {
            sid = m_state.newSession(QString());
            m_state.recordAction({{QStringLiteral("action"), QStringLiteral("login")},
                                  {QStringLiteral("scheme"), QStringLiteral("form")}});
        } else {
            m_state.recordAction({{QStringLiteral("action"), QStringLiteral("loginFailed")}});
        }
    }
    return QStringLiteral("<SessionInfo>\n<iswriteaccess>%1</iswriteaccess>\n<SID>%2</SID>\n"
                          "<Challenge>%3</Challenge>\n</SessionInfo>\n")
        .arg(sid == kZeroSID ? 0 : 1)
        .arg(sid, m_state.challenge(false))
        .toStdString();
}
