#include "calllist/JournalImporter.h"

#include "base/Clock.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "calllist/CallListExport.h"
#include "calllist/JournalBadge.h"
#include "calllist/JournalParser.h"
#include "calllist/TNCallinglist.h"
#include "contacts/AddressBookSearch.h"

#include <QFile>
#include <QSet>

namespace {
constexpr qint64 kOverlapSeconds = 86400;
// The router's sample row, which only ever stands at the head of the journal.
const QString kSampleNumber = QStringLiteral("1234567");
constexpr qsizetype kSampleRowLines = 6;

QString cancelDate(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("dd.MM.yy HH:mm"));
}

// Journals that write 4 for outgoing calls use 3 for rejected incoming ones.
bool usesTypeFour(const QStringList& lines, qsizetype first)
{
    for (qsizetype i = first; i < lines.size(); ++i)
        if (lines[i].startsWith(u"4;"))
            return true;
    return false;
}

bool isPage(const QString& firstLine)
{
    const QString head = firstLine.trimmed();
    return head.startsWith(u"<!DOCTYPE", Qt::CaseInsensitive) ||
           head.startsWith(u"<html", Qt::CaseInsensitive);
}
} // namespace

JournalImporter::JournalImporter(TNCallinglist& calls, SettingsStore& settings, const AddressBook* book,
                                 Clock* clock)
    : m_calls(calls), m_settings(settings), m_book(book), m_clock(clock)
{
}

void JournalImporter::finishUnreadable(int profile)
{
    m_calls.notificationCenter().post(Notifications::RELOADCALLINGLIST, &m_calls);
    m_calls.endUpdatingProfile(profile);
}

JournalImportResult JournalImporter::getCSVListFromHost(const QString& path, int profile)
{
    JournalImportResult r;
    if (!m_calls.beginUpdatingProfile(profile))
        return r;
    qCInfo(lcCalllist) << "updating ..." << profile;

    // Minute resolution, as the journal writes it.
    const std::optional<qint64> newest = m_calls.newestCallDateForProfile(profile);
    const qint64 lastSaved = newest ? *newest - (*newest % 60) : 0;
    r.cancelString = newest ? u';' + cancelDate(lastSaved) + u';' : QStringLiteral(";;");

    const bool download = path.isEmpty();
    QString text;
    if (download) {
        if (m_download)
            text = m_download(r.cancelString);
        else
            qCWarning(lcCalllist) << "no way to download the journal";
    } else {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            qCWarning(lcCalllist) << "cannot read the journal file" << path << file.errorString();
            finishUnreadable(profile);
            r.result = -1;
            return r;
        }
        text = JournalParser::decode(file.readAll());
    }
    return importText(text, download, profile, lastSaved, r);
}

JournalImportResult JournalImporter::importText(const QString& text, bool download, int profile,
                                                qint64 lastSaved, JournalImportResult r)
{
    const QStringList lines = JournalParser::splitLines(text);
    const auto prefs = m_calls.prefsForProfile(profile);
    const QStringList prefixList = prefs ? prefs->prefixis : QStringList();
    if (lines.size() < 2 || isPage(lines.first()) || prefixList.size() < 4) {
        qCWarning(lcCalllist) << "the journal cannot be read:"
                              << (prefixList.size() < 4 ? "no dialling prefixes" : "not a journal");
        finishUnreadable(profile);
        r.result = -1;
        return r;
    }
    const Prefixis prefixis(prefixList);
    const QString localPrefix = prefixis.trunk + prefixis.area;

    // The header stands before the rows (after "sep=;"); a file may come without one.
    const bool sep = lines.first().contains(u"sep=");
    const qsizetype headerLine = sep ? 1 : 0;
    const std::optional<JournalColumns> header = JournalColumns::fromHeader(lines[headerLine]);
    qsizetype first = sep ? 2 : (download ? 1 : 0);
    if (header)
        first = headerLine + 1;
    JournalParser parser(header);
    const bool typeFour = usesTypeFour(lines, first);

    const Clock& clock = m_clock ? *m_clock : Clock::system();
    if (download || !m_calls.getMarkerDate(profile, TNCallinglist::MarkerImport))
        m_calls.updateMarkerDate(profile, TNCallinglist::MarkerImport, clock.now());

    CallBatch batch = m_calls.beginBatch();
    QSet<QString> knownNumbers; // found in the caller cache during this import
    QSet<QString> notInAddressBook;
    bool overlap = false;
    JournalRow row;
    QString why;
    const qsizetype total = lines.size();
    for (qsizetype i = first; i < total; ++i) {
        if (m_progress && (i & 1023) == 0)
            m_progress(i, total);
        const JournalParser::Outcome outcome = parser.parse(lines[i], &row, &why);
        if (outcome == JournalParser::Outcome::Ignored)
            continue;
        if (outcome == JournalParser::Outcome::Bad) {
            ++r.badLines;
            qCDebug(lcCalllist) << "skipping journal line" << i + 1 << "bad" << why;
            continue;
        }
        if (i < kSampleRowLines && row.number == kSampleNumber)
            continue;
        if (!row.number.isEmpty() && !row.number.startsWith(u'0'))
            row.number.prepend(localPrefix);

        if (download) {
            if (!overlap && row.calldate <= lastSaved)
                overlap = true;
            if (overlap) {
                if (row.calldate < lastSaved - kOverlapSeconds) {
                    r.stoppedEarly = true;
                    break;
                }
                if (batch.containsCall(profile, row.calldate, row.number)) {
                    ++r.duplicates;
                    continue;
                }
            }
        }

        QStringList contact;
        bool fromCache = false;
        if (row.number.isEmpty()) {
            // Withheld numbers share no name.
        } else if (knownNumbers.contains(row.number)) {
            fromCache = true;
        } else if (!batch.searchCaller(row.number).isEmpty()) {
            knownNumbers.insert(row.number);
            fromCache = true;
        } else if (!notInAddressBook.contains(row.number)) {
            const QStringList found = adressbooksearch::searchAdressbookForPhoneNew(
                row.number, prefixis, m_book, prefs->contactFormat);
            if (!found.value(1).isEmpty())
                contact = found;
            else
                notInAddressBook.insert(row.number);
        }
        if (!fromCache && contact.isEmpty() && row.hasNameColumn && !row.name.isEmpty())
            contact = {QString(), row.name, QString()};

        int state = row.type;
        if (state == 4)
            state = 3;
        else if (state == 3 && typeFour)
            state = 2;
        const NewCall call{profile, state, row.calldate, row.number, row.extension, row.line, row.duration};
        if (!batch.insertCall(call))
            continue;
        if (!contact.isEmpty() && !fromCache)
            batch.insertCaller(contact[1], row.number, contact[0], contact[2]);
        ++r.result;
        if (state == 2)
            ++r.missed;
        if (row.type == 1)
            r.incoming = true;
    }
    if (!batch.commit()) {
        r.result = r.missed = 0;
        r.incoming = false;
    }
    if (m_progress)
        m_progress(total, total);
    if (r.badLines)
        qCWarning(lcCalllist) << "skipped" << r.badLines << "journal lines that could not be read";

    if (download) {
        const int days = m_settings.value(keys::ListDeleteInterval).toInt();
        if (days >= 1)
            m_calls.deleteCallsOlderThanDays(profile, days);
    }
    m_calls.refreshCallsCounterForProfile(profile);

    auto& center = m_calls.notificationCenter();
    if (r.incoming)
        center.post(Notifications::RELOADABFAXLIST, &m_calls);
    center.post(Notifications::RELOADCALLINGLIST, &m_calls);
    center.post(Notifications::REFRESHLATESTCALLSMENU);
    m_calls.endUpdatingProfile(profile);

    if (r.result > 0 && m_settings.value(keys::IPhoneExportState).toBool())
        CallListExport::exportiPhoneCallerlistForProfile(m_calls, profile, m_settings, clock.now());

    if (download && r.result > 0) {
        const QList<qint64> counter = m_calls.callsCounter();
        r.badge = JournalBadge::title(m_settings, counter.value(TNCallinglist::CounterNew), r.missed);
    }
    qCInfo(lcCalllist) << "imported" << r.result << "calls for profile" << profile;
    return r;
}
