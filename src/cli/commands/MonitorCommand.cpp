#include "MonitorCommand.h"

#include "CliContext.h"

#include "app/AppEnvironment.h"
#include "app/CallListSync.h"
#include "app/CallMonitorService.h"
#include "base/TNPreferences.h"
#include "calllist/TNCallinglist.h"
#include "monitor/NotificationPresenter.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThreadPool>
#include <QTimer>

#include <optional>

namespace {

// On a terminal the notifications are printed with the event that caused them.
class PrintedNotifications final : public NotificationPresenter
{
public:
    bool isAvailable() const override { return true; }
    QVariant deliver(const CallNotification& note, const QVariant&) override
    {
        pending = note;
        return note.uid;
    }
    void withdraw(const QVariant&) override {}
    std::optional<CallNotification> pending;
};

QVariantMap jsonRecord(const QString& event, const CallRecord& record,
                       const std::optional<CallNotification>& note)
{
    QVariantMap map = record.toMap();
    map.remove(QStringLiteral("UILocalNote"));
    for (const char* key : {"dateStart", "dateEnd"}) {
        const QString k = QString::fromLatin1(key);
        if (map.contains(k)) {
            // With the offset, so a reader in another time zone gets the same instant.
            const QDateTime t = map.value(k).toDateTime();
            map.insert(k, t.toOffsetFromUtc(t.offsetFromUtc()).toString(Qt::ISODate));
        }
    }
    map.insert(QStringLiteral("event"), event);
    if (note)
        map.insert(QStringLiteral("notification"), QVariantMap{{QStringLiteral("title"), note->title},
                                                               {QStringLiteral("subtitle"), note->subtitle},
                                                               {QStringLiteral("body"), note->body}});
    return map;
}

QString textLine(const QString& event, const CallRecord& r, const QStringList& fields)
{
    QString text =
        QStringLiteral("%1 %2 conn %3").arg(fields.value(0), event.leftJustified(10), fields.value(2));
    if (!r.number.isEmpty() || event == u"RING" || event == u"CALL")
        text +=
            QStringLiteral(" number %1").arg(r.number.isEmpty() ? QStringLiteral("(withheld)") : r.number);
    if (!r.line.isEmpty())
        text += QStringLiteral(" line %1").arg(r.line);
    if (!r.extension.isEmpty())
        text += QStringLiteral(" ext %1").arg(r.extension);
    if (event == u"DISCONNECT") {
        static const char* const types[] = {"", "answered", "missed", "outgoing"};
        text += QStringLiteral(" duration %1s").arg(r.duration);
        if (!r.UID.isEmpty() && r.calltype >= 1 && r.calltype <= 3)
            text += QStringLiteral(" %1").arg(QString::fromLatin1(types[r.calltype]));
    }
    if (!r.UID.isEmpty() && !r.showCall)
        text += QStringLiteral(" (filtered)");
    return text;
}

} // namespace

void MonitorCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("monitor", "Print the router's call events as they happen");
    cmd->add_option("--count", m_count, "Exit after this many events")->check(CLI::NonNegativeNumber);
    cmd->add_option("--timeout", m_timeout, "Exit after this many seconds")->check(CLI::NonNegativeNumber);
    cmd->callback([this, &ctx] { ctx.action = [this, &ctx] { run(ctx); }; });
}

void MonitorCommand::run(CliContext& ctx)
{
    ctx.open();
    const auto prefs = ctx.targetLocation();
    if (prefs->hostName.isEmpty())
        throw CliError(1, QStringLiteral("the location has no host name"));

    PrintedNotifications printed;
    CallMonitorService::Hooks hooks;
    hooks.presenter = &printed;
    hooks.location = prefs;
    CallListSync* sync = ctx.environment().callListSync();
    CallMonitorService service(ctx.environment(), std::move(hooks));
    StreamListener& listener = service.listener();

    QEventLoop loop;
    int events = 0;
    bool everConnected = false;
    QObject::connect(&listener, &StreamListener::lineProcessed, &loop,
                     [&](const QString& event, const CallRecord& record, bool, const QStringList& fields) {
                         if (ctx.json) {
                             ctx.out() << QJsonDocument(QJsonObject::fromVariantMap(
                                                            jsonRecord(event, record, printed.pending)))
                                              .toJson(QJsonDocument::Compact)
                                       << "\n";
                         } else {
                             ctx.out() << textLine(event, record, fields) << "\n";
                             if (printed.pending) {
                                 QStringList parts{printed.pending->title + QStringLiteral(": ") +
                                                   printed.pending->subtitle};
                                 parts += printed.pending->body.split(u'\n', Qt::SkipEmptyParts);
                                 ctx.out() << "    " << parts.join(QStringLiteral(" | ")) << "\n";
                             }
                         }
                         ctx.out().flush();
                         printed.pending.reset();
                         if (m_count > 0 && ++events >= m_count)
                             loop.quit();
                     });
    QObject::connect(&listener, &StreamListener::connectedChanged, &loop, [&](bool connected) {
        if (connected) {
            everConnected = true;
            ctx.err() << "tondrel-cli: connected to the call monitor of " << prefs->hostName << "\n";
            ctx.err().flush();
        }
    });
    QObject::connect(&service.reconnector(), &CallMonitorReconnector::retryScheduled, &loop,
                     [&](int delayMs, const QString& why) {
                         ctx.err() << "tondrel-cli: call monitor: " << why << "; trying again in "
                                   << delayMs / 1000.0 << " s\n";
                         ctx.err().flush();
                     });
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
    if (m_timeout > 0)
        deadline.start(int(m_timeout * 1000));

    service.start();
    loop.exec();
    service.stop();
    // A journal import started by the last call finishes before the program ends.
    QThreadPool::globalInstance()->waitForDone();
    if (sync)
        sync->waitForDone();
    ctx.out().flush();
    if (!everConnected)
        throw CliError(1, QStringLiteral("cannot connect to the call monitor of %1 on port %2")
                              .arg(prefs->hostName)
                              .arg(prefs->callMonitorPort));
}
