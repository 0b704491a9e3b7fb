#include "SimPhonebook.h"

#include "Scenario.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QUrl>
#include <QXmlStreamReader>

#include <httplib.h>

namespace {
const char* const kRawTypeHeader = "X-Sim-Form-Content-Type";

QByteArray value(const QList<QPair<QString, QByteArray>>& parts, const QString& name, bool* found = nullptr)
{
    for (const auto& [key, content] : parts)
        if (key == name) {
            if (found)
                *found = true;
            return content;
        }
    if (found)
        *found = false;
    return {};
}

QByteArray withoutLineEnd(QByteArray text)
{
    if (text.endsWith("\r\n"))
        text.chop(2);
    else if (text.endsWith('\n'))
        text.chop(1);
    return text;
}

// Characters outside Latin-1 as character references, like the router's export.
QByteArray latin1Xml(const QString& text)
{
    QByteArray out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c.unicode() < 256)
            out += char(c.unicode());
        else
            out += "&#" + QByteArray::number(c.unicode()) + ';';
    }
    return out;
}
} // namespace

SimPhonebook::SimPhonebook(Scenario& scenario, SessionCheck sessionCheck)
    : m_scenario(scenario), m_sessionCheck(std::move(sessionCheck))
{
}

QString SimPhonebook::defaultBook()
{
    return QStringLiteral(
        "<phonebooks>\n<phonebook name=\"Telefonbuch\"><contact><category>0</category><person><realName>A. "
        "Muster"
        "</realName></person><telephony><number\ntype=\"home\" quickdial=\"2\" vanity=\"1\" "
        "prio=\"1\">07216080"
        "</number><number\ntype=\"mobile\" quickdial=\"\" vanity=\"\" "
        "prio=\"0\">017011223344</number></telephony>"
        "<services /><setup /></contact><contact><category>1</category><person><realName>Bäckerei Krüger"
        "</realName></person><telephony><number\ntype=\"work\" quickdial=\"\" vanity=\"\" prio=\"1\">0304711"
        "</number></telephony><services /><setup /></contact>\n</phonebook>\n</phonebooks>\n");
}

void SimPhonebook::keepFormBodyRaw(const httplib::Request& req)
{
    // The request object is the server's own mutable one; only its type header is renamed.
    auto& request = const_cast<httplib::Request&>(req);
    auto it = request.headers.find("Content-Type");
    if (it == request.headers.end() || it->second.rfind("multipart/form-data", 0) != 0)
        return;
    request.headers.emplace(kRawTypeHeader, it->second);
    it->second = "application/octet-stream";
}

QList<QPair<QString, QByteArray>> SimPhonebook::formParts(const QByteArray& body,
                                                          const QByteArray& contentType)
{
    QList<QPair<QString, QByteArray>> parts;
    const qsizetype at = contentType.indexOf("boundary=");
    if (at < 0)
        return parts;
    const QByteArray delimiter = "--" + contentType.mid(at + 9).trimmed();
    qsizetype pos = body.indexOf(delimiter);
    static const QRegularExpression nameRe(QStringLiteral("name=\"([^\"]*)\""));
    while (pos >= 0) {
        qsizetype start = pos + delimiter.size();
        if (body.mid(start, 2) == "--")
            break;
        start = body.indexOf('\n', start);
        if (start < 0)
            break;
        ++start;
        const qsizetype next = body.indexOf(delimiter, start);
        if (next < 0)
            break;
        const QByteArray chunk = withoutLineEnd(body.mid(start, next - start));
        qsizetype headerEnd = chunk.indexOf("\r\n\r\n");
        qsizetype skip = 4;
        const qsizetype lfEnd = chunk.indexOf("\n\n");
        if (headerEnd < 0 || (lfEnd >= 0 && lfEnd < headerEnd)) {
            headerEnd = lfEnd;
            skip = 2;
        }
        if (headerEnd >= 0) {
            const QString headers = QString::fromUtf8(chunk.left(headerEnd));
            parts.append({nameRe.match(headers).captured(1), chunk.mid(headerEnd + skip)});
        }
        pos = next;
    }
    return parts;
}

bool SimPhonebook::authorised(const QList<QPair<QString, QByteArray>>& parts) const
{
    bool hasSid = false;
    const QString sid = QString::fromUtf8(value(parts, QStringLiteral("sid"), &hasSid)).trimmed();
    if (hasSid)
        return m_sessionCheck && m_sessionCheck(sid);
    bool hasPassword = false;
    const QByteArray encoded = value(parts, QStringLiteral("login:command/password"), &hasPassword).trimmed();
    if (!hasPassword)
        return false;
    const QString password = QUrl::fromPercentEncoding(encoded);
    for (const QJsonValue& user : m_scenario.value(QStringLiteral("users")).toArray())
        if (user.toObject().value(QStringLiteral("password")).toString() == password)
            return true;
    return false;
}

std::string SimPhonebook::exportBook() const
{
    const QString book = m_scenario.value(QStringLiteral("phonebook")).toString(defaultBook());
    const QByteArray out = "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n" + latin1Xml(book);
    return out.toStdString();
}

std::string SimPhonebook::importBook(const QByteArray& file, int* status)
{
    static const QRegularExpression declaration(QStringLiteral(R"(^\s*<\?xml[^>]*\?>)"));
    static const QRegularExpression encodingRe(QStringLiteral(R"(encoding\s*=\s*["']([^"']+)["'])"));
    const QString latin = QString::fromLatin1(file);
    const auto match = declaration.match(latin);
    QString book = latin;
    if (match.hasMatch()) {
        const QString declared = encodingRe.match(match.captured(0)).captured(1);
        const QString encoding = declared.isEmpty() ? QStringLiteral("UTF-8") : declared;
        auto decoder = QStringDecoder(encoding.toLatin1().constData());
        book = decoder.isValid() ? decoder(file.mid(match.capturedEnd())) : latin.mid(match.capturedEnd());
    }
    QXmlStreamReader xml(book);
    bool sawBook = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == u"phonebook")
            sawBook = true;
    }
    if (xml.hasError() || !sawBook) {
        *status = 200; // the router shows its error page and keeps its book
        return "<html><body><p>Die Datei ist kein gültiges Telefonbuch.</p></body></html>";
    }
    QMutexLocker lock(&m_mutex);
    m_scenario.setValue(QStringLiteral("phonebook"), book.trimmed());
    ++m_uploads;
    return "<html><body><p>Das Telefonbuch wurde wiederhergestellt.</p></body></html>";
}

std::string SimPhonebook::handle(const httplib::Request& req, int* status)
{
    QByteArray type = QByteArray::fromStdString(req.get_header_value(kRawTypeHeader));
    if (type.isEmpty())
        type = QByteArray::fromStdString(req.get_header_value("Content-Type"));
    const auto parts = formParts(QByteArray::fromStdString(req.body), type);
    if (!authorised(parts)) {
        *status = 403;
        return "<html><body><p>Zugriff verweigert.</p></body></html>";
    }
    if (value(parts, QStringLiteral("PhonebookId")).trimmed() != "0") {
        *status = 404;
        return {};
    }
    bool importing = false;
    const QByteArray file = value(parts, QStringLiteral("PhonebookImportFile"), &importing);
    if (importing)
        return importBook(file, status);
    if (value(parts, QStringLiteral("PhonebookExport")).trimmed() == "1")
        return exportBook();
    *status = 400;
    return {};
}

void SimPhonebook::install(httplib::Server& server)
{
    server.Post("/cgi-bin/firmwarecfg", [this](const httplib::Request& req, httplib::Response& res) {
        int status = 200;
        const std::string body = handle(req, &status);
        res.status = status;
        res.set_content(body, "text/html; charset=utf-8");
    });
}

void SimPhonebook::installControl(httplib::Server& server)
{
    server.Get("/_sim/phonebook", [this](const httplib::Request&, httplib::Response& res) {
        QMutexLocker lock(&m_mutex);
        const QJsonObject o{
            {QStringLiteral("book"), m_scenario.value(QStringLiteral("phonebook")).toString(defaultBook())},
            {QStringLiteral("uploads"), m_uploads}};
        res.set_content(QJsonDocument(o).toJson(QJsonDocument::Compact).toStdString(), "application/json");
    });
}
