#include "SimTr064.h"

#include "RouterState.h"
#include "SimCrypto.h"

#include <QJsonObject>
#include <QMap>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <httplib.h>

namespace {
const QString kRealm = QStringLiteral("F!Box SOAP-Auth");

std::string fault(const QString& code, const QString& description)
{
    return QStringLiteral(
               "<?xml version=\"1.0\"?>\n"
               "<s:Envelope xmlns:s=\"http://schemas.xmlsoap.org/soap/envelope/\" "
               "s:encodingStyle=\"http://schemas.xmlsoap.org/soap/encoding/\">\n<s:Body>\n<s:Fault>\n"
               "<faultcode>s:Client</faultcode>\n<faultstring>UPnPError</faultstring>\n<detail>\n"
               "<UPnPError xmlns=\"urn:schemas-upnp-org:control-1-0\">\n<errorCode>%1</errorCode>\n"
               "<errorDescription>%2</errorDescription>\n</UPnPError>\n</detail>\n</s:Fault>\n"
               "</s:Body>\n</s:Envelope>\n")
        .arg(code, description)
        .toStdString();
}

std::string okAnswer(const QString& service, const QString& action)
{
    return QStringLiteral("<?xml version=\"1.0\"?>\n"
                          "<s:Envelope xmlns:s=\"http://schemas.xmlsoap.org/soap/envelope/\" "
                          "s:encodingStyle=\"http://schemas.xmlsoap.org/soap/encoding/\">\n<s:Body>\n"
                          "<u:%2Response xmlns:u=\"urn:dslforum-org:service:%1\"></u:%2Response>\n"
                          "</s:Body>\n</s:Envelope>\n")
        .arg(service, action)
        .toStdString();
}

QMap<QString, QString> digestFields(const QString& header)
{
    QMap<QString, QString> fields;
    static const QRegularExpression re(QStringLiteral("(\\w+)=(?:\"([^\"]*)\"|([^,\\s]*))"));
    for (auto it = re.globalMatch(header.mid(7)); it.hasNext();) {
        const auto m = it.next();
        fields.insert(m.captured(1), m.captured(2).isEmpty() ? m.captured(3) : m.captured(2));
    }
    return fields;
}

QString argument(const QString& body, const QString& name)
{
    const QRegularExpression re(
        QStringLiteral("<%1[^>]*>([^<]*)</%1>").arg(QRegularExpression::escape(name)));
    return re.match(body).captured(1);
}
} // namespace

SimTr064::SimTr064(RouterState& state) : m_state(state)
{
    m_nonce = QString::number(QRandomGenerator::global()->generate64(), 16).toUpper();
}

void SimTr064::install(httplib::Server& server, const std::string& prefix)
{
    const std::string pattern = prefix + R"(/upnp/control/(\w+))";
    server.Post(pattern, [this](const httplib::Request& req, httplib::Response& res) {
        handle(req, res, QString::fromStdString(req.matches[1]));
    });
}

QString SimTr064::authenticate(const httplib::Request& req) const
{
    const QString header = QString::fromStdString(req.get_header_value("Authorization"));
    if (!header.startsWith(QStringLiteral("Digest ")))
        return {};
    const auto f = digestFields(header);
    const QString userName = f.value(QStringLiteral("username"));
    const QString boxUser = userName == u"dslf-config" ? QString() : userName;
    const QJsonObject user = m_state.user(boxUser);
    if (user.isEmpty() || f.value(QStringLiteral("nonce")) != m_nonce)
        return {};
    const QString ha1 = SimCrypto::md5Hex(
        (userName + u':' + kRealm + u':' + user.value(QStringLiteral("password")).toString()).toUtf8());
    const QString ha2 = SimCrypto::md5Hex(
        (QString::fromStdString(req.method) + u':' + f.value(QStringLiteral("uri"))).toUtf8());
    const QString qop = f.value(QStringLiteral("qop"));
    const QString expected =
        qop.isEmpty() ? SimCrypto::md5Hex((ha1 + u':' + m_nonce + u':' + ha2).toUtf8())
                      : SimCrypto::md5Hex((ha1 + u':' + m_nonce + u':' + f.value(QStringLiteral("nc")) +
                                           u':' + f.value(QStringLiteral("cnonce")) + u':' + qop + u':' + ha2)
                                              .toUtf8());
    return expected == f.value(QStringLiteral("response")) ? boxUser + u'\x01' : QString();
}

std::string SimTr064::digestChallenge() const
{
    return QStringLiteral("Digest realm=\"%1\", nonce=\"%2\", algorithm=MD5, qop=\"auth\"")
        .arg(kRealm, m_nonce)
        .toStdString();
}

void SimTr064::handle(const httplib::Request& req, httplib::Response& res, const QString& controlPath)
{
    m_state.recordRequest(QStringLiteral("POST"), QStringLiteral("/upnp/control/") + controlPath);
    QString user = authenticate(req);
    if (user.isNull()) {
        res.status = 401;
        res.set_header("WWW-Authenticate", digestChallenge());
        res.set_content("<HTML><HEAD><TITLE>401 Unauthorized (ERR_NONE)</TITLE></HEAD></HTML>", "text/html");
        return;
    }
    user.chop(1);
    const QString soapAction = QString::fromStdString(req.get_header_value("SOAPAction")).remove(u'"');
    const QString service =
        soapAction.section(u'#', 0, 0).section(QStringLiteral("urn:dslforum-org:service:"), 1);
    const QString action = soapAction.section(u'#', 1);
    const QString body = QString::fromStdString(req.body);
    res.status = 500;

    // Applications reach TR-064 only with the user's app right.
    const QJsonObject rights = m_state.user(user).value(QStringLiteral("rights")).toObject();
    if (!rights.isEmpty() && rights.value(QStringLiteral("App")).toInt(0) == 0) {
        res.set_content(fault(QStringLiteral("606"), QStringLiteral("Action Not Authorized")),
                        "text/xml; charset=\"utf-8\"");
        return;
    }

    QJsonObject record{{QStringLiteral("via"), QStringLiteral("tr064")}, {QStringLiteral("user"), user}};
    if (action == u"SetEnable" && (controlPath == u"wlanconfig1" || controlPath == u"wlanconfig2")) {
        const QString name = controlPath == u"wlanconfig1" ? QStringLiteral("wlan:settings/ap_enabled")
                                                           : QStringLiteral("wlan:settings/ap_enabled_scnd");
        const QString value = argument(body, QStringLiteral("NewEnable"));
        m_state.setVariable(name, value);
        record.insert(QStringLiteral("action"), QStringLiteral("set"));
        record.insert(QStringLiteral("name"), name);
        record.insert(QStringLiteral("value"), value);
    } else if (controlPath == u"x_voip" && action == u"X_AVM-DE_DialNumber") {
        record.insert(QStringLiteral("action"), QStringLiteral("dial"));
        record.insert(QStringLiteral("number"), argument(body, QStringLiteral("NewX_AVM-DE_PhoneNumber")));
        record.insert(QStringLiteral("port"), m_state.variable(QStringLiteral("telcfg:settings/DialPort")));
    } else if (controlPath == u"x_voip" && action == u"X_AVM-DE_DialHangup") {
        record.insert(QStringLiteral("action"), QStringLiteral("hangup"));
    } else {
        res.set_content(fault(QStringLiteral("401"), QStringLiteral("Invalid Action")),
                        "text/xml; charset=\"utf-8\"");
        return;
    }
    m_state.recordAction(record);
    res.status = 200;
    res.set_content(okAnswer(service, action), "text/xml; charset=\"utf-8\"");
}
