#include "contacts/BoxPhonebookReader.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>

namespace BoxPhonebookReader {

namespace {
const QRegularExpression& declarationPattern()
{
    static const QRegularExpression re(QStringLiteral(R"(^\s*<\?xml[^>]*\?>)"));
    return re;
}

QString declaredEncoding(const QString& declaration)
{
    static const QRegularExpression re(QStringLiteral(R"(encoding\s*=\s*["']([^"']+)["'])"),
                                       QRegularExpression::CaseInsensitiveOption);
    return re.match(declaration).captured(1);
}

// Markup inside a name or number is read through to its text; deeper than this is not a book.
constexpr int kMaxTextDepth = 32;

// The element's text including that of child elements, without recursion (the reader's own
// readElementText recurses once per level and overflowed the stack on deeply nested markup).
QString elementText(QXmlStreamReader& xml)
{
    QString text;
    int depth = 1;
    while (depth > 0 && !xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth > kMaxTextDepth)
                xml.raiseError(QStringLiteral("markup nested deeper than %1 levels").arg(kMaxTextDepth));
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            text += xml.text();
            break;
        default:
            break;
        }
    }
    return text.trimmed();
}

BoxPhonebookNumber readNumber(QXmlStreamReader& xml)
{
    const auto attributes = xml.attributes();
    BoxPhonebookNumber number;
    number.type = attributes.value(QLatin1String("type")).toString();
    number.id = attributes.value(QLatin1String("id")).toString();
    number.prio = attributes.value(QLatin1String("prio")).toString();
    number.quickDial = attributes.value(QLatin1String("quickdial")).toString();
    number.vanity = attributes.value(QLatin1String("vanity")).toString();
    number.number = elementText(xml);
    return number;
}

BoxPhonebookContact readContact(QXmlStreamReader& xml)
{
    BoxPhonebookContact contact;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"category") {
            contact.category = elementText(xml);
        } else if (xml.name() == u"person") {
            while (xml.readNextStartElement()) {
                if (xml.name() == u"realName")
                    contact.name = elementText(xml);
                else
                    xml.skipCurrentElement();
            }
        } else if (xml.name() == u"telephony") {
            while (xml.readNextStartElement()) {
                if (xml.name() == u"number")
                    contact.numbers.append(readNumber(xml));
                else
                    xml.skipCurrentElement();
            }
        } else {
            xml.skipCurrentElement();
        }
    }
    return contact;
}

BoxPhonebook readBook(QXmlStreamReader& xml)
{
    BoxPhonebook book;
    book.name = xml.attributes().value(QLatin1String("name")).toString();
    book.owner = xml.attributes().value(QLatin1String("owner")).toString();
    while (xml.readNextStartElement()) {
        if (xml.name() == u"contact")
            book.contacts.append(readContact(xml));
        else
            xml.skipCurrentElement();
    }
    return book;
}
} // namespace

QString bookFromDownload(const QString& answerBytes)
{
    const auto match = declarationPattern().match(answerBytes);
    if (!match.hasMatch())
        return answerBytes;
    const QByteArray bytes = answerBytes.toLatin1();
    const QString rest = answerBytes.mid(match.capturedEnd());
    const QString encoding = declaredEncoding(match.captured(0));
    if (encoding.isEmpty())
        return rest;
    auto decoder = QStringDecoder(encoding.toLatin1().constData());
    if (!decoder.isValid())
        return rest;
    return decoder(bytes.mid(match.capturedEnd()));
}

bool parse(const QString& text, QVector<BoxPhonebook>* books, QString* error)
{
    QVector<BoxPhonebook> result;
    QXmlStreamReader xml(text);
    if (!xml.readNextStartElement() || xml.name() != u"phonebooks") {
        *error = xml.hasError() ? xml.errorString() : QStringLiteral("the answer is not a phone book");
        return false;
    }
    while (xml.readNextStartElement()) {
        if (xml.name() == u"phonebook")
            result.append(readBook(xml));
        else
            xml.skipCurrentElement();
    }
    // Anything after the root element must still be well-formed.
    while (!xml.atEnd() && !xml.hasError())
        xml.readNext();
    if (xml.hasError()) {
        *error = QStringLiteral("the phone book is not well-formed: %1 (line %2)")
                     .arg(xml.errorString())
                     .arg(xml.lineNumber());
        return false;
    }
    if (result.isEmpty()) {
        *error = QStringLiteral("the answer holds no phone book");
        return false;
    }
    if (books)
        *books = result;
    return true;
}

} // namespace BoxPhonebookReader
