#include "box/FBSOAPConnection.h"

#include "base/Localization.h"
#include "base/TNPreferences.h"
#include "box/RouterSession.h"

#include <QRegularExpression>

QString FBSOAPConnection::controlUrl(const QString& base, const QString& controlPath)
{
    return base + QStringLiteral("/upnp/control/") + controlPath;
}

QByteArray FBSOAPConnection::envelope(const FBSOAPRequest& request)
{
    const QString xml =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                       "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope/\" "
                       "xmlns:ns1=\"urn:dslforum-org:service:%1\" "
                       "xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" "
                       "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                       "xmlns:SOAP-ENC=\"http://schemas.xmlsoap.org/soap/encoding/\" "
                       "SOAP-ENV:encodingStyle=\"http://schemas.xmlsoap.org/soap/encoding/\">"
                       "<SOAP-ENV:Body>%2</SOAP-ENV:Body></SOAP-ENV:Envelope>")
            .arg(request.serviceType, request.bodyXml);
    return xml.toUtf8();
}

FBRequest FBSOAPConnection::buildRequest(const QString& url, const FBSOAPRequest& soap)
{
    FBRequest request;
    request.url = url;
    request.method = "POST";
    request.body = envelope(soap);
    request.setHeader("Content-Type", "text/xml; charset=utf-8");
    request.setHeader("User-Agent", "AVM UPnP/1.0 Client 1.0");
    request.setHeader(
        "SOAPAction",
        QStringLiteral("urn:dslforum-org:service:%1#%2").arg(soap.serviceType, soap.action).toUtf8());
    request.setHeader("Content-Length", QByteArray::number(request.body.size()));
    return request;
}

QString FBSOAPConnection::startWithRequest(const FBRequest& request, bool needsOutput, TNPreferences& config,
                                           RouterSession& session)
{
    connection.setLocation(&config, &session);
    connection.cancelOnString = cancelOnString;
    connection.useDigest = true;
    {
        QMutexLocker lock(&session.mutex());
        if (config.remoteAccess) {
            connection.digestUser = config.remoteUserName;
            connection.digestPassword = config.remotePassWord;
        } else {
            connection.digestUser =
                config.userName.isEmpty() ? QStringLiteral("dslf-config") : config.userName;
            connection.digestPassword = config.passWord;
        }
    }
    return connection.startWithRequest(request, needsOutput, FBEncoding::Utf8);
}

RouterFailure FBSOAPConnection::reportFault(const QString& answer)
{
    static const QRegularExpression codeRe(QStringLiteral(".*<errorCode>(.*)</errorCode>.*"));
    static const QRegularExpression descRe(QStringLiteral(".*<errorDescription>(.*)</errorDescription>.*"));
    const QString code = codeRe.match(answer).captured(1);
    if (code.isEmpty())
        return {};
    // 606: the user may not run the action.
    if (code == u"606")
        return RouterFailure::make(RouterFailure::Kind::MissingRight, QStringLiteral("errorTR064_606"));
    QString description = descRe.match(answer).captured(1);
    if (description.isEmpty())
        description = Localization::localized(QStringLiteral("unknown"));
    return RouterFailure::withText(
        RouterFailure::Kind::RouterError, QStringLiteral("errorTR064_ErrorCode"),
        Localization::localizedFormat(QStringLiteral("errorTR064_ErrorCode"), code, description));
}
