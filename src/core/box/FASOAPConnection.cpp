#include "box/FASOAPConnection.h"

#include "base/Logging.h"
#include "box/FBConnection.h"
#include "box/XMLReader.h"

QByteArray FASOAPConnection::envelope(const QString& action, const Params& params)
{
    QString args;
    for (const auto& [name, value] : params)
        args += QStringLiteral("<%1>%2</%1>\n").arg(name, value.toHtmlEscaped());
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?> "
                          "<s:Envelope s:encodingStyle=\"http://schemas.xmlsoap.org/soap/encoding/\" "
                          "xmlns:s=\"http://schemas.xmlsoap.org/soap/envelope/\">\n"
                          "<s:Body> <u:%1 xmlns:u=\"urn:X_AVM-DE_OnTel-com:serviceId:X_AVM-DE_OnTel1\">\n"
                          "%2</u:%1>\n</s:Body> </s:Envelope>\n")
        .arg(action, args)
        .toUtf8();
}

QVariant FASOAPConnection::responseFor(const QString& action, const QString& answer)
{
    if (answer.contains(QStringLiteral("<html>"), Qt::CaseInsensitive))
        return {}; // the router's error page
    QString error;
    const QVariantMap doc = XMLReader::dictionaryForXMLString(answer, &error);
    if (!error.isEmpty())
        return {};
    return doc.value(QStringLiteral("s:Envelope"))
        .toMap()
        .value(QStringLiteral("s:Body"))
        .toMap()
        .value(QStringLiteral("u:%1Response").arg(action));
}

void FASOAPConnection::action(const QString& name, const Params& params, const Delegate& delegate)
{
    soapAction = name;
    FBRequest request;
    request.url = m_endpoint;
    request.method = "POST";
    request.body = envelope(name, params);
    request.setHeader("Content-Type", "text/xml; charset=utf-8");
    request.setHeader("Accept", "text/xml");
    request.setHeader("UserAgent", "AVM UPnP/1.0 Client 1.0");
    request.setHeader("SOAPAction", "urn:dslforum-org:service:X_AVM-DE_OnTel:1#" + name.toUtf8());
    request.setHeader("Content-Length", QByteArray::number(request.body.size()));
    FBConnection connection;
    connection.useDigest = true;
    connection.digestUser = QStringLiteral("dslf-config");
    connection.onUnauthorized = [] {};
    soapResults = connection.startWithRequest(request, true, FBEncoding::Utf8);
    const QVariant response = responseFor(name, soapResults);
    qCDebug(lcBox) << name << "-->" << response.isValid();
    if (delegate)
        delegate(name, response);
}
