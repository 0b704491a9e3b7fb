#include "contacts/VCardParser.h"

#include <QCryptographicHash>
#include <QStringDecoder>

#include <optional>

namespace {

struct LogicalLine
{
    QByteArray text;
    int lineNumber = 0;
};

QByteArray headOf(const QByteArray& line)
{
    const qsizetype colon = line.indexOf(':');
    return (colon < 0 ? line : line.left(colon)).toUpper();
}

bool isQuotedPrintableLine(const QByteArray& line)
{
    return headOf(line).contains("QUOTED-PRINTABLE");
}

bool isBase64Line(const QByteArray& line)
{
    const QByteArray head = headOf(line);
    return head.contains("BASE64") || head.contains("ENCODING=B");
}

// Folded lines (a leading blank or tab) are joined; quoted-printable soft breaks ("=" at the
// end) continue on the next line as 2.1 exporters write them.
QVector<LogicalLine> unfold(const QByteArray& data)
{
    QVector<LogicalLine> out;
    QByteArray normalized = data;
    if (normalized.startsWith("\xEF\xBB\xBF"))
        normalized.remove(0, 3);
    normalized.replace("\r\n", "\n");
    normalized.replace('\r', '\n');
    const QList<QByteArray> physical = normalized.split('\n');
    bool continueSoftBreak = false;
    for (int i = 0; i < physical.size(); ++i) {
        const QByteArray& line = physical.at(i);
        if (continueSoftBreak && !out.isEmpty()) {
            out.last().text.chop(1); // the "=" of the soft break
            out.last().text += line;
        } else if (!line.isEmpty() && (line.at(0) == ' ' || line.at(0) == '\t') && !out.isEmpty()) {
            out.last().text += line.mid(1);
        } else if (!out.isEmpty() && !line.trimmed().isEmpty() && !line.contains(':') &&
                   isBase64Line(out.last().text)) {
            out.last().text += line.trimmed(); // 2.1 exporters that do not indent picture data
        } else if (line.trimmed().isEmpty()) {
            continueSoftBreak = false;
            continue;
        } else {
            out.append({line, i + 1});
        }
        const QByteArray& current = out.last().text;
        continueSoftBreak = current.endsWith('=') && isQuotedPrintableLine(current);
    }
    return out;
}

QByteArray decodeQuotedPrintable(const QByteArray& in)
{
    QByteArray out;
    out.reserve(in.size());
    for (qsizetype i = 0; i < in.size(); ++i) {
        const char c = in.at(i);
        if (c == '=' && i + 2 < in.size()) {
            bool ok = false;
            const int v = in.mid(i + 1, 2).toInt(&ok, 16);
            if (ok) {
                out.append(char(v));
                i += 2;
                continue;
            }
        }
        if (c == '=' && i == in.size() - 1)
            break; // trailing soft break
        out.append(c);
    }
    return out;
}

QString decodeText(const QByteArray& bytes, const QString& charset)
{
    const QString cs = charset.trimmed().toLower();
    if (cs.isEmpty() || cs == u"utf-8" || cs == u"utf8") {
        QStringDecoder utf8(QStringDecoder::Utf8);
        const QString text = utf8(bytes);
        // Old exports without a charset are often Latin-1.
        if (!utf8.hasError())
            return text;
        if (!cs.isEmpty())
            return text;
        return QString::fromLatin1(bytes);
    }
    if (cs == u"iso-8859-1" || cs == u"latin1" || cs == u"windows-1252" || cs == u"cp1252")
        return QString::fromLatin1(bytes);
    QStringDecoder decoder(cs.toLatin1().constData());
    if (decoder.isValid())
        return decoder(bytes);
    return QString::fromUtf8(bytes);
}

// Splits at unescaped `sep` and resolves \n \, \; \\ in each part.
QStringList splitEscaped(const QString& value, QChar sep)
{
    QStringList parts;
    QString current;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c == u'\\' && i + 1 < value.size()) {
            const QChar n = value.at(++i);
            current += (n == u'n' || n == u'N') ? QChar(u'\n') : n;
        } else if (c == sep) {
            parts.append(current);
            current.clear();
        } else {
            current += c;
        }
    }
    parts.append(current);
    return parts;
}

QString unescape(const QString& value)
{
    return splitEscaped(value, QChar(0)).join(QString());
}

struct Property
{
    QString group;
    QString name;
    QStringList types;
    QString value;
};

// NAME;PARAM=A,B;BARE:value, with quoted parameter values that may hold ":" or ";".
std::optional<Property> parseProperty(const QByteArray& line)
{
    qsizetype colon = -1;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char c = line.at(i);
        if (c == '"')
            quoted = !quoted;
        else if (c == ':' && !quoted) {
            colon = i;
            break;
        }
    }
    if (colon <= 0)
        return std::nullopt;
    const QString head = QString::fromUtf8(line.left(colon));
    QByteArray raw = line.mid(colon + 1);

    QStringList params;
    QString part;
    quoted = false;
    for (const QChar c : head) {
        if (c == u'"')
            quoted = !quoted;
        else if (c == u';' && !quoted) {
            params.append(part);
            part.clear();
        } else
            part += c;
    }
    params.append(part);

    Property p;
    QString name = params.takeFirst().trimmed();
    if (const qsizetype dot = name.indexOf(u'.'); dot >= 0) {
        p.group = name.left(dot).toLower();
        name = name.mid(dot + 1);
    }
    p.name = name.toUpper();
    bool qp = false;
    QString charset;
    for (const QString& param : std::as_const(params)) {
        const qsizetype eq = param.indexOf(u'=');
        const QString key = eq < 0 ? QStringLiteral("TYPE") : param.left(eq).trimmed().toUpper();
        const QString val = eq < 0 ? param.trimmed() : param.mid(eq + 1).trimmed();
        if (key == u"ENCODING" || (eq < 0 && val.compare(u"QUOTED-PRINTABLE", Qt::CaseInsensitive) == 0)) {
            qp = qp || val.compare(u"QUOTED-PRINTABLE", Qt::CaseInsensitive) == 0;
        } else if (key == u"CHARSET") {
            charset = val;
        } else if (key == u"TYPE") {
            for (const QString& t : val.split(u','))
                if (!t.trimmed().isEmpty())
                    p.types.append(t.trimmed().toUpper());
        }
    }
    if (qp)
        raw = decodeQuotedPrintable(raw);
    p.value = decodeText(raw, charset);
    return p;
}

// Apple's own labels on grouped entries, _$!<Mobile>!$_ and the like.
QString labelForAppleLabel(const QString& text)
{
    QString t = text;
    if (t.startsWith(u"_$!<") && t.endsWith(u">!$_"))
        t = t.mid(4, t.size() - 8);
    const QString lower = t.toLower();
    if (lower == u"mobile" || lower == u"cell")
        return PhoneLabel::Mobile;
    if (lower == u"iphone")
        return PhoneLabel::IPhone;
    if (lower == u"home")
        return PhoneLabel::Home;
    if (lower == u"work")
        return PhoneLabel::Work;
    if (lower == u"main")
        return PhoneLabel::Main;
    return PhoneLabel::Other;
}

class CardBuilder
{
public:
    void add(const Property& p)
    {
        if (p.name == u"N") {
            const QStringList parts = splitEscaped(p.value, u';');
            m_person.lastName = parts.value(0).trimmed();
            m_person.firstName = parts.value(1).trimmed();
        } else if (p.name == u"FN") {
            m_fn = unescape(p.value).trimmed();
        } else if (p.name == u"ORG") {
            m_person.organization = splitEscaped(p.value, u';').value(0).trimmed();
        } else if (p.name == u"UID") {
            m_person.uid = unescape(p.value).trimmed();
        } else if (p.name == u"CATEGORIES") {
            for (const QString& c : splitEscaped(p.value, u','))
                if (!c.trimmed().isEmpty() && !m_person.groups.contains(c.trimmed()))
                    m_person.groups.append(c.trimmed());
        } else if (p.name == u"TEL") {
            QString number = unescape(p.value).trimmed();
            if (number.startsWith(u"tel:", Qt::CaseInsensitive))
                number = number.mid(4);
            if (const qsizetype semi = number.indexOf(u';'); semi >= 0)
                number = number.left(semi); // ";ext=" of tel URIs
            if (number.isEmpty())
                return;
            m_person.phones.append({VCardParser::labelForTypes(p.types), number});
            m_phoneGroups.append(p.group);
        } else if (p.name == u"X-ABLABEL" && !p.group.isEmpty()) {
            m_appleLabels.append({p.group, labelForAppleLabel(unescape(p.value).trimmed())});
        }
    }

    ABPerson finish(const QByteArray& rawCard)
    {
        for (const auto& [group, label] : std::as_const(m_appleLabels))
            for (qsizetype i = 0; i < m_phoneGroups.size(); ++i)
                if (m_phoneGroups.at(i) == group)
                    m_person.phones[i].label = label;
        // Cards with FN only (common in 4.0) still need a name to show.
        if (m_person.firstName.isEmpty() && m_person.lastName.isEmpty() && !m_fn.isEmpty() &&
            m_fn != m_person.organization)
            m_person.firstName = m_fn;
        if (m_person.uid.isEmpty())
            m_person.uid =
                QStringLiteral("vcf-") +
                QString::fromLatin1(QCryptographicHash::hash(rawCard, QCryptographicHash::Sha1).toHex());
        return m_person;
    }

private:
    ABPerson m_person;
    QString m_fn;
    QStringList m_phoneGroups;
    QVector<std::pair<QString, QString>> m_appleLabels;
};

bool isLine(const QByteArray& line, const char* what)
{
    return line.trimmed().compare(what, Qt::CaseInsensitive) == 0;
}

} // namespace

namespace VCardParser {

QString labelForTypes(const QStringList& types)
{
    const auto has = [&](const char* t) { return types.contains(QString::fromLatin1(t)); };
    if (has("IPHONE"))
        return PhoneLabel::IPhone;
    if (has("CELL") || has("MOBILE"))
        return PhoneLabel::Mobile;
    if (has("FAX") || has("PAGER"))
        return PhoneLabel::Other;
    if (has("MAIN"))
        return PhoneLabel::Main;
    if (has("HOME"))
        return PhoneLabel::Home;
    if (has("WORK"))
        return PhoneLabel::Work;
    return PhoneLabel::Other;
}

Result parse(const QByteArray& data, const QString& source)
{
    Result result;
    const QVector<LogicalLine> lines = unfold(data);
    std::optional<CardBuilder> card;
    int cardStart = 0;
    int nested = 0;
    bool afterEmptyAgent = false;
    QByteArray raw;
    QString problem;
    const auto fail = [&](const QString& why) {
        result.problems.append(QStringLiteral("%1:%2: card skipped: %3").arg(source).arg(cardStart).arg(why));
    };
    for (const LogicalLine& line : lines) {
        if (isLine(line.text, "BEGIN:VCARD")) {
            if (card && (nested > 0 || afterEmptyAgent)) {
                ++nested; // a 2.1 AGENT card embedded on its own lines is not a contact
                continue;
            }
            if (card)
                fail(QStringLiteral("no END:VCARD before the next card"));
            card.emplace();
            cardStart = line.lineNumber;
            raw.clear();
            problem.clear();
            afterEmptyAgent = false;
            continue;
        }
        if (!card) {
            if (!line.text.trimmed().isEmpty())
                result.problems.append(
                    QStringLiteral("%1:%2: text outside a card ignored").arg(source).arg(line.lineNumber));
            continue;
        }
        if (isLine(line.text, "END:VCARD")) {
            if (nested > 0) {
                --nested;
                afterEmptyAgent = false;
                continue;
            }
            if (problem.isEmpty())
                result.people.append(card->finish(raw));
            else
                fail(problem);
            card.reset();
            continue;
        }
        raw += line.text;
        raw += '\n';
        if (nested > 0)
            continue;
        const auto property = parseProperty(line.text);
        if (!property) {
            if (problem.isEmpty())
                problem = QStringLiteral("line %1 has no value").arg(line.lineNumber);
            continue;
        }
        afterEmptyAgent = property->name == u"AGENT" && property->value.trimmed().isEmpty();
        card->add(*property);
    }
    if (card)
        fail(QStringLiteral("no END:VCARD"));
    return result;
}

namespace {
// A line break of any form (CR LF, lone CR, LF) becomes the escape \n: a raw CR would end the content
// line for every reader, ours included, and vCard has no escape for CR alone.
QString escapeValue(const QString& text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'\\' || c == u';' || c == u',')
            out += u'\\';
        if (c == u'\r' || c == u'\n') {
            out += QStringLiteral("\\n");
            if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n')
                ++i;
        } else {
            out += c;
        }
    }
    return out;
}

// Lines longer than 75 octets are folded without cutting a UTF-8 sequence.
QByteArray folded(const QString& line)
{
    const QByteArray bytes = line.toUtf8();
    QByteArray out;
    qsizetype start = 0;
    qsizetype limit = 75;
    while (bytes.size() - start > limit) {
        qsizetype cut = start + limit;
        while (cut > start && (uchar(bytes.at(cut)) & 0xC0) == 0x80)
            --cut;
        out += bytes.mid(start, cut - start);
        out += "\r\n ";
        start = cut;
        limit = 74;
    }
    out += bytes.mid(start);
    out += "\r\n";
    return out;
}

QString typesForLabel(const QString& label)
{
    if (label == PhoneLabel::Home)
        return QStringLiteral("HOME,VOICE");
    if (label == PhoneLabel::Work)
        return QStringLiteral("WORK,VOICE");
    if (label == PhoneLabel::Mobile)
        return QStringLiteral("CELL");
    if (label == PhoneLabel::Main)
        return QStringLiteral("MAIN");
    if (label == PhoneLabel::IPhone)
        return QStringLiteral("IPHONE");
    return QStringLiteral("VOICE");
}
} // namespace

QByteArray serialize(const ABPerson& person)
{
    QByteArray out = "BEGIN:VCARD\r\nVERSION:3.0\r\n";
    out += folded(QStringLiteral("UID:") + escapeValue(person.uid));
    out +=
        folded(QStringLiteral("N:%1;%2;;;").arg(escapeValue(person.lastName), escapeValue(person.firstName)));
    QString fn = QStringList{person.firstName, person.lastName}.join(u' ').trimmed();
    if (fn.isEmpty())
        fn = person.organization;
    out += folded(QStringLiteral("FN:") + escapeValue(fn));
    if (!person.organization.isEmpty())
        out += folded(QStringLiteral("ORG:") + escapeValue(person.organization));
    for (const ABPhone& phone : person.phones)
        out += folded(
            QStringLiteral("TEL;TYPE=%1:%2").arg(typesForLabel(phone.label), escapeValue(phone.value)));
    if (!person.groups.isEmpty()) {
        QStringList groups;
        for (const QString& g : person.groups)
            groups.append(escapeValue(g));
        out += folded(QStringLiteral("CATEGORIES:") + groups.join(u','));
    }
    out += "END:VCARD\r\n";
    return out;
}

} // namespace VCardParser
