#include "monitor/CallTable.h"

#include "base/Clock.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "monitor/CallerNameResolver.h"
#include "monitor/TNScriptManager.h"

namespace {
QString withoutHash(QString number)
{
    return number.remove(u'#');
}

const QStringList NoContact{QString(), QString(), QString()};
} // namespace

CallTable::CallTable(Context context) : m_context(std::move(context)) {}

std::shared_ptr<TNPreferences> CallTable::prefs() const
{
    return m_context.preferences ? m_context.preferences() : nullptr;
}

CallTable::Change CallTable::apply(const MonitorLine& line)
{
    switch (line.event) {
    case MonitorLine::Event::Ring:
        return ring(line);
    case MonitorLine::Event::Call:
        return call(line);
    case MonitorLine::Event::Connect:
        return connectLine(line);
    case MonitorLine::Event::Disconnect:
        return disconnect(line);
    case MonitorLine::Event::Unknown:
        break;
    }
    Change c;
    c.hasRecord = false;
    return c;
}

QStringList CallTable::contactFor(const QString& number, bool* unnamed) const
{
    QStringList contact = m_context.names.searchNameForPhonenumber(number);
    while (contact.size() < 3)
        contact.append(QString());
    *unnamed = contact.at(1).isEmpty();
    return contact.mid(0, 3);
}

CallTable::Change CallTable::ring(const MonitorLine& line)
{
    Change c;
    const QString caller = line.field(3);
    CallRecord r;
    r.calltime = line.field(0);
    r.cmd = QStringLiteral("RING");
    r.connID = line.field(2);
    r.line = line.field(4);
    r.number = withoutHash(caller);
    r.msn = line.field(5);
    bool unnamed = false;
    r.contact = caller.isEmpty() ? NoContact : contactFor(r.number, &unnamed);
    r.calltype = CallRecord::Incoming;
    r.dateStart = m_context.clock.now();
    r.showCall = showCallForLine(r.line, CallRecord::Incoming, false);
    r.UID = CallRecord::uniqueID();
    c.showCall = r.showCall;
    if (r.showCall) {
        m_calls.append(r);
        c.index = m_calls.size() - 1;
        c.announce = true;
        c.scriptState = TNScriptManager::Ringing;
        c.lookUpName = unnamed;
    }
    c.record = r;
    return c;
}

CallTable::Change CallTable::call(const MonitorLine& line)
{
    Change c;
    const QString connID = line.field(2);
    const QString extension = line.field(3);
    qsizetype dialled = NotFound;
    for (qsizetype i = m_calls.size() - 1; i >= 0; --i) {
        if (m_calls.at(i).cmd == u"DIAL") {
            dialled = i;
            break;
        }
    }
    if (dialled != NotFound) {
        CallRecord& r = m_calls[dialled];
        r.cmd = QStringLiteral("CALL");
        r.extension = extension;
        r.extensionTitle = extensionTitle(extension);
        r.line = line.field(4);
        r.msn = line.field(6);
        r.connID = connID;
        r.calltype = CallRecord::Outgoing;
        c.showCall = showCallForLine(r.line, CallRecord::Outgoing, false);
        c.index = dialled;
        c.announce = c.showCall;
        if (c.showCall)
            c.scriptState = TNScriptManager::OutgoingStarted;
        c.record = r;
    } else {
        // Begun at a telephone: kept only when the user wants such calls, and never announced.
        const QString called = line.field(5);
        CallRecord r;
        r.calltime = line.field(0);
        r.cmd = QStringLiteral("CALL");
        r.connID = connID;
        r.line = line.field(4);
        r.number = withoutHash(called);
        r.msn = line.field(6);
        r.extension = extension;
        r.extensionTitle = extensionTitle(extension);
        bool unnamed = false;
        r.contact = called.isEmpty() ? NoContact : contactFor(r.number, &unnamed);
        r.calltype = CallRecord::Outgoing;
        r.dateStart = m_context.clock.now();
        r.externalStart = true;
        r.showCall = showCallForLine(r.line, CallRecord::Outgoing, true);
        r.UID = CallRecord::uniqueID();
        c.showCall = r.showCall;
        if (r.showCall) {
            m_calls.append(r);
            c.index = m_calls.size() - 1;
            c.lookUpName = unnamed;
        }
        c.record = r;
    }
    m_connIDs.insert(connID, extension);
    changeStateForExtension(InCall, extension);
    c.extensionsChanged = true;
    return c;
}

CallTable::Change CallTable::connectLine(const MonitorLine& line)
{
    Change c;
    const QString connID = line.field(2);
    const QString extension = line.field(3);
    c.index = indexForConnID(connID);
    if (c.index != NotFound) {
        CallRecord& r = m_calls[c.index];
        r.cmd = QStringLiteral("CONNECT");
        r.extension = extension;
        r.extensionTitle = extensionTitle(extension);
        r.dateStart = m_context.clock.now();
        r.connected = true;
        r.showCall = showCallForLine(r.line, r.calltype, r.externalStart);
        c.showCall = r.showCall;
        c.record = r;
    } else {
        c.hasRecord = false;
        c.record.cmd = line.eventWord();
        c.record.calltime = line.field(0);
        c.record.connID = connID;
        c.record.extension = extension;
    }
    m_connIDs.insert(connID, extension);
    changeStateForExtension(InCall, extension);
    c.extensionsChanged = true;
    return c;
}

CallTable::Change CallTable::disconnect(const MonitorLine& line)
{
    Change c;
    const QString connID = line.field(2);
    c.index = indexForConnID(connID);
    if (c.index != NotFound) {
        CallRecord& r = m_calls[c.index];
        if (r.calltype == CallRecord::Incoming && r.cmd != u"CONNECT")
            r.calltype = CallRecord::Missed;
        r.cmd = QStringLiteral("DISCONNECT");
        r.connID = QStringLiteral("-1");
        r.duration = line.field(3);
        r.dateEnd = m_context.clock.now();
        r.showCall = showCallForLine(r.line, r.calltype, r.externalStart);
        c.showCall = r.showCall;
        c.announce = r.showCall;
        if (r.showCall)
            c.scriptState = r.calltype == CallRecord::Outgoing ? TNScriptManager::OutgoingEnded
                                                               : TNScriptManager::IncomingEnded;
        c.record = r;
    } else {
        c.hasRecord = false;
        c.record.cmd = line.eventWord();
        c.record.calltime = line.field(0);
        c.record.connID = connID;
        c.record.duration = line.field(3);
    }
    const auto it = m_connIDs.find(connID);
    if (it != m_connIDs.end()) {
        const QString extension = it.value();
        m_connIDs.erase(it);
        changeStateForExtension(Free, extension);
        c.extensionsChanged = true;
    }
    return c;
}

QString CallTable::extensionTitle(const QString& extension) const
{
    const auto p = prefs();
    if (!p || extension.isEmpty())
        return {};
    // The monitor counts the analogue ports from 0, the extension list from 1.
    bool ok = false;
    const int n = extension.toInt(&ok);
    const QString key = ok && n >= 0 && n <= 2 ? QString::number(n + 1) : extensionKey(extension);
    for (const QVariant& v : p->extensions) {
        const QVariantMap e = v.toMap();
        if (e.value(QStringLiteral("Intern")).toString() == key)
            return e.value(QStringLiteral("Title")).toString();
    }
    return {};
}

qsizetype CallTable::indexForConnID(const QString& connID) const
{
    for (qsizetype i = m_calls.size() - 1; i >= 0; --i)
        if (m_calls.at(i).connID == connID)
            return i;
    return NotFound;
}

qsizetype CallTable::indexForUID(const QString& uid) const
{
    for (qsizetype i = m_calls.size() - 1; i >= 0; --i)
        if (m_calls.at(i).UID == uid)
            return i;
    return NotFound;
}

void CallTable::clearConnections()
{
    m_extensions.clear();
    m_connIDs.clear();
}

QString CallTable::extensionKey(const QString& extension)
{
    bool ok = false;
    const int n = extension.toInt(&ok);
    if (ok && n >= 10 && n <= 29)
        return QString::number(n + 600);
    return extension;
}

void CallTable::changeStateForExtension(int state, const QString& extension)
{
    if (extension == u"4") {
        // The ISDN bus: every ISDN device shows busy until no connection uses the bus.
        int busState = Ringing;
        if (state == Free && !m_connIDs.values().contains(QStringLiteral("4")))
            busState = Free;
        for (int k = 50; k <= 59; ++k)
            m_extensions.insert(QString::number(k), busState);
    } else {
        m_extensions.insert(extensionKey(extension), state);
    }
}

bool CallTable::showCallForLine(const QString& line, int callType, bool startedExternal) const
{
    if (startedExternal)
        return m_context.settings.value(keys::MonitorOpenExternCalls).toBool();
    if (callType == CallRecord::Outgoing)
        return true;
    const auto p = prefs();
    if (!p || line.isEmpty())
        return true;
    for (const QVariant& v : p->lines) {
        const QVariantMap l = v.toMap();
        if (l.value(QStringLiteral("HideMonitor")).toBool() &&
            l.value(QStringLiteral("Line")).toString().endsWith(line))
            return false;
    }
    return true;
}

const CallRecord* CallTable::addDialledCall(const QString& number, const QString& extension,
                                            const QStringList& contact)
{
    const QString ext = extension.isEmpty() ? QStringLiteral("50") : extension;
    if (number.startsWith(QStringLiteral("**"))) {
        changeStateForExtension(Ringing, number.mid(2));
        changeStateForExtension(Ringing, ext);
        return nullptr;
    }
    CallRecord r;
    r.cmd = QStringLiteral("DIAL");
    r.number = number;
    r.extension = ext;
    r.extensionTitle = extensionTitle(ext);
    r.contact = contact;
    while (r.contact.size() < 3)
        r.contact.append(QString());
    r.calltype = CallRecord::Outgoing;
    r.dateStart = m_context.clock.now();
    r.showCall = true;
    r.UID = CallRecord::uniqueID();
    m_calls.append(r);
    changeStateForExtension(InCall, ext);
    return &m_calls.constLast();
}

bool CallTable::cancelCallForUID(const QString& uid)
{
    const qsizetype i = indexForUID(uid);
    if (i == NotFound)
        return false;
    CallRecord& r = m_calls[i];
    r.cmd = QStringLiteral("DISCONNECT");
    r.connected = false;
    changeStateForExtension(Free, r.extension);
    return true;
}

bool CallTable::setContactForUID(const QStringList& contact, const QString& uid)
{
    const qsizetype i = indexForUID(uid);
    if (i == NotFound)
        return false;
    m_calls[i].contact = contact;
    return true;
}

bool CallTable::setContactForConnID(const QStringList& contact, const QString& connID)
{
    const qsizetype i = indexForConnID(connID);
    if (i == NotFound)
        return false;
    m_calls[i].contact = contact;
    return true;
}

bool CallTable::setMemoIDForUID(qint64 memoID, const QString& uid)
{
    const qsizetype i = indexForUID(uid);
    if (i == NotFound)
        return false;
    if (memoID < 0)
        m_calls[i].MemoID.reset();
    else
        m_calls[i].MemoID = memoID;
    return true;
}
