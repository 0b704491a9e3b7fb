#include "voicemail/VoicemailEntries.h"

#include "base/Localization.h"
#include "voicemail/VoicemailLookups.h"

#include <QRegularExpression>

namespace VoicemailEntries {

namespace {

const QString kTimestampPattern = QStringLiteral("yyyy.MM.dd HH:mm");

QStringList contactFor(const QString& number, CallerNameLookup* names)
{
    if (!names || number.isEmpty())
        return emptyContact();
    QStringList c = names->searchNameForPhonenumber(number);
    while (c.size() < 3)
        c.append(QString());
    return c;
}

QDateTime epoch()
{
    return QDateTime::fromString(QStringLiteral("1970.01.01"), QStringLiteral("yyyy.MM.dd"));
}

QString capitalisedWords(const QString& text)
{
    QStringList words = text.split(u' ');
    for (QString& w : words)
        if (!w.isEmpty())
            w = w.left(1).toUpper() + w.mid(1).toLower();
    return words.join(u' ');
}

} // namespace

VoicemailEntry entryForRecord(const VoicemailIndex::Record& r, const QString& folder, const QString& file,
                              CallerNameLookup* names)
{
    VoicemailEntry e;
    e.durationSeconds = r.duration;
    e.CallDuration = QString::asprintf("%d:%02d", int((r.duration / 60) % 60), int(r.duration % 60));
    e.PhoneNumber = r.number;
    e.Contact = contactFor(r.number, names);
    e.RecFile = r.recFile;
    e.CalledLine = r.calledLine;
    // Filled year first and parsed year first, on purpose and unchanged: it yields no valid date,
    // so CallDate and CallTime carry the day and time of a message.
    const QString stamp =
        QString::asprintf("%02d.%02d.20%02d %02d:%02d", r.year, r.month, r.day, r.hour, r.minute);
    e.CallTimestamp = QDateTime::fromString(stamp, kTimestampPattern);
    e.CallDate = QString::asprintf("%02d.%02d.20%02d", r.day, r.month, r.year);
    e.CallTime = QString::asprintf("%02d:%02d", r.hour, r.minute);
    e.PATH = folder.endsWith(u'/') ? folder : folder + u'/';
    e.FILE = file;
    return e;
}

FaxEntry entryForFaxFile(const QString& path, CallerNameLookup* names)
{
    FaxEntry e;
    e.PATH = path;
    const QString name = path.section(u'/', -1);
    const QStringList pieces = name.split(u'_');
    if (pieces.size() < 3) {
        e.Contact = emptyContact();
        e.CallTime = QStringLiteral("00:00");
        e.CallTimestamp = epoch();
        return e;
    }
    e.CallTime = QString(pieces.at(1)).replace(u'.', u':');
    const QStringList date = pieces.at(0).split(u'.');
    if (date.size() >= 3) {
        const QString stamp = QStringLiteral("20%1.%2.%3 00:00").arg(date.at(2), date.at(1), date.at(0));
        e.CallTimestamp = QDateTime::fromString(stamp, kTimestampPattern);
    } else {
        e.CallTimestamp = epoch();
    }
    static const QRegularExpression digits(QStringLiteral("^[0-9]+$"));
    const QStringList kind = pieces.at(2).split(u'.');
    if (kind.size() >= 2 && digits.match(kind.at(1)).hasMatch()) {
        e.PhoneNumber = kind.at(1);
        e.Contact = contactFor(e.PhoneNumber, names);
    } else {
        e.Contact = emptyContact();
        e.PhoneNumber = kind.size() >= 2 ? capitalisedWords(kind.at(1)) : QString();
    }
    return e;
}

QString groupTitle(const QString& sortBy, const QDateTime& timestamp, const QString& number,
                   const QStringList& contact, const QString& line)
{
    QString title;
    if (sortBy == u"number")
        title = number;
    else if (sortBy == u"name")
        title = contact.value(1);
    else if (sortBy == u"line")
        title = line;
    else if (timestamp.isValid())
        title = timestamp.toString(QStringLiteral("yyyy.MM.dd"));
    return title.isEmpty() ? Localization::localized(QStringLiteral("unknown")) : title;
}

QVariantList grouped(const QList<VoicemailEntry>& entries, const QString& sortBy)
{
    QVariantList out;
    for (const VoicemailEntry& e : entries)
        out.append(QVariantMap{{QStringLiteral("Header"),
                                groupTitle(sortBy, e.CallTimestamp, e.PhoneNumber, e.Contact, e.CalledLine)},
                               {QStringLiteral("Entry"), e.toMap()}});
    return out;
}

QVariantList grouped(const QList<FaxEntry>& entries, const QString& sortBy)
{
    QVariantList out;
    for (const FaxEntry& e : entries)
        out.append(QVariantMap{{QStringLiteral("Header"),
                                groupTitle(sortBy, e.CallTimestamp, e.PhoneNumber, e.Contact, QString())},
                               {QStringLiteral("Entry"), e.toMap()}});
    return out;
}

} // namespace VoicemailEntries
