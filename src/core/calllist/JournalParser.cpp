#include "calllist/JournalParser.h"

#include <QDateTime>
#include <QStringDecoder>

namespace {

enum Column { Type, Date, Name, Number, Area, Extension, Line, Duration, Unknown };

Column columnFor(const QString& title)
{
    static const QList<std::pair<QString, Column>> titles = {
        {QStringLiteral("typ"), Type},
        {QStringLiteral("type"), Type},
        {QStringLiteral("datum"), Date},
        {QStringLiteral("date"), Date},
        {QStringLiteral("name"), Name},
        {QStringLiteral("rufnummer"), Number},
        {QStringLiteral("number"), Number},
        {QStringLiteral("landes-/ortsnetzbereich"), Area},
        {QStringLiteral("country/area"), Area},
        {QStringLiteral("nebenstelle"), Extension},
        {QStringLiteral("extension"), Extension},
        {QStringLiteral("eigene rufnummer"), Line},
        {QStringLiteral("local number"), Line},
        {QStringLiteral("outgoing caller id"), Line},
        {QStringLiteral("dauer"), Duration},
        {QStringLiteral("duration"), Duration},
    };
    const QString key = title.trimmed().toLower();
    for (const auto& [text, column] : titles)
        if (text == key)
            return column;
    return Unknown;
}

// The value of count (at most nine) digits at pos, or -1.
int digits(QStringView s, qsizetype pos, qsizetype count)
{
    int value = 0;
    for (qsizetype i = pos; i < pos + count; ++i) {
        const QChar c = s[i];
        if (c < u'0' || c > u'9')
            return -1;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

} // namespace

std::optional<JournalColumns> JournalColumns::fromHeader(const QString& line)
{
    const QStringList titles = line.split(u';');
    JournalColumns c;
    c.type = c.date = c.name = c.number = c.extension = c.line = c.duration = -1;
    c.count = int(titles.size());
    for (int i = 0; i < titles.size(); ++i) {
        switch (columnFor(titles[i])) {
        case Type:
            c.type = i;
            break;
        case Date:
            c.date = i;
            break;
        case Name:
            c.name = i;
            break;
        case Number:
            c.number = i;
            break;
        case Extension:
            c.extension = i;
            break;
        case Line:
            c.line = i;
            break;
        case Duration:
            c.duration = i;
            break;
        case Area:
        case Unknown:
            break;
        }
    }
    if (c.type < 0 || c.date < 0 || c.number < 0 || c.extension < 0 || c.line < 0 || c.duration < 0)
        return std::nullopt;
    return c;
}

std::optional<JournalColumns> JournalColumns::fromFieldCount(qsizetype count)
{
    switch (count) {
    case 6:
        return JournalColumns{0, 1, -1, 2, 3, 4, 5, 6};
    case 7:
        return JournalColumns{0, 1, 2, 3, 4, 5, 6, 7};
    case 8:
        return JournalColumns{0, 1, 2, 3, 5, 6, 7, 8};
    default:
        return std::nullopt;
    }
}

QString JournalParser::decode(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text.startsWith(QChar(0xFEFF)) ? text.mid(1) : text;
    return QString::fromLatin1(bytes);
}

QStringList JournalParser::splitLines(const QString& text)
{
    QStringList lines = text.split(u'\n');
    for (QString& l : lines)
        if (l.endsWith(u'\r'))
            l.chop(1);
    return lines;
}

std::optional<qint64> JournalParser::parseDate(QStringView s, bool longYear)
{
    const qsizetype yearDigits = longYear ? 4 : 2;
    if (s.size() != 12 + yearDigits || s[2] != u'.' || s[5] != u'.' || s[6 + yearDigits] != u' ' ||
        s[9 + yearDigits] != u':')
        return std::nullopt;
    const int day = digits(s, 0, 2), month = digits(s, 3, 2), year = digits(s, 6, yearDigits);
    const int hour = digits(s, 7 + yearDigits, 2), minute = digits(s, 10 + yearDigits, 2);
    if (day < 0 || month < 0 || year < 0 || hour < 0 || minute < 0)
        return std::nullopt;
    // The router writes two-digit years of this century.
    const QDate date(longYear ? year : 2000 + year, month, day);
    const QTime time(hour, minute);
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time).toSecsSinceEpoch();
}

bool JournalParser::isDuration(QStringView s)
{
    // "h:mm" with at most four digits of hours: more overflowed the sum in the statistics.
    const qsizetype colon = s.indexOf(u':');
    if (colon < 1 || colon > 4 || s.size() - colon != 3)
        return false;
    const int minutes = digits(s, colon + 1, 2);
    return digits(s, 0, colon) >= 0 && minutes >= 0 && minutes < 60;
}

JournalParser::Outcome JournalParser::parse(const QString& text, JournalRow* row, QString* why)
{
    const QStringList f = text.split(u';');
    if (f.size() < 6 || f[0].isEmpty())
        return Outcome::Ignored;
    // Rows that do not match the header are read by their own field count: old firmware wrote
    // seven-field rows under a six-column header.
    std::optional<JournalColumns> c =
        m_header && m_header->count == f.size() ? m_header : JournalColumns::fromFieldCount(f.size());
    if (!c) {
        *why = QStringLiteral("%1 fields").arg(f.size());
        return Outcome::Bad;
    }
    bool ok = false;
    row->type = f[c->type].trimmed().toInt(&ok);
    if (!ok || row->type < 1 || row->type > 4) {
        *why = QStringLiteral("type");
        return Outcome::Bad;
    }
    const QString date = f[c->date].trimmed();
    if (date.size() == 16)
        m_longDates = true;
    const auto when = parseDate(date, m_longDates);
    if (!when) {
        *why = QStringLiteral("date");
        return Outcome::Bad;
    }
    row->calldate = *when;
    row->duration = f[c->duration].trimmed();
    if (!isDuration(row->duration)) {
        *why = QStringLiteral("duration");
        return Outcome::Bad;
    }
    row->hasNameColumn = c->name >= 0;
    row->name = row->hasNameColumn ? f[c->name].trimmed() : QString();
    row->number = f[c->number].trimmed();
    row->extension = f[c->extension].trimmed();
    row->line = f[c->line].trimmed();
    return Outcome::Row;
}
