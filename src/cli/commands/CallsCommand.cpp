#include "CallsCommand.h"

#include "CliContext.h"

#include "app/AppEnvironment.h"
#include "base/TNPreferences.h"
#include "calllist/CallListActions.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

namespace {

QString str(const std::string& s)
{
    return QString::fromStdString(s);
}

} // namespace

int parseCallState(const QString& text)
{
    if (text.isEmpty() || text == u"all")
        return 0;
    if (text == u"in")
        return 1;
    if (text == u"missed")
        return 2;
    if (text == u"out")
        return 3;
    bool ok = false;
    const int n = text.toInt(&ok);
    if (ok && n >= 1 && n <= 3)
        return n;
    throw CliError(2, QStringLiteral("unknown call state '%1' (all, in, out, missed)").arg(text));
}

namespace {
int parseState(const QString& text)
{
    return parseCallState(text);
}

QString stateText(int callstate)
{
    switch (callstate) {
    case 1:
        return QStringLiteral("in");
    case 2:
        return QStringLiteral("missed");
    case 3:
        return QStringLiteral("out");
    default:
        return QString::number(callstate);
    }
}

} // namespace

TNCallinglist& cliCallinglist(CliContext& ctx)
{
    ctx.open();
    TNCallinglist* calls = ctx.environment().callinglist();
    if (!calls)
        throw CliError(
            1, QStringLiteral("the call database %1 cannot be opened").arg(ctx.paths().databaseFile()));
    return *calls;
}

void CallsCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* calls = app.add_subcommand("calls", "The call list of the location");
    calls->require_subcommand(1);

    auto* list =
        calls->add_subcommand("list", "List calls, grouped by day (newest first unless sorted otherwise)");
    list->add_option("--state", m_list.state,
                     "all, in, out, missed, new or smart:ID (ID from 'smartlist list')");
    list->add_option("--search", m_list.search, "Text to find");
    list->add_option("--column", m_list.column,
                     "Search only in: name, number, extension, line, duration, date");
    list->add_option("--sort", m_list.sort,
                     "Sort by: date, name, number, extension, line, duration, callstateimg");
    auto* asc = list->add_flag("--asc", m_list.asc, "Ascending");
    list->add_flag("--desc", m_list.desc, "Descending")->excludes(asc);
    list->add_option("--limit", m_list.limit, "At most this many calls");
    list->callback([this, &ctx] { ctx.action = [this, &ctx] { this->list(ctx); }; });

    auto* counters = calls->add_subcommand("counters", "The counters of the side table");
    counters->callback([this, &ctx] { ctx.action = [this, &ctx] { this->counters(ctx); }; });

    auto* stats = calls->add_subcommand("stats", "Number of calls and talk time");
    stats->add_option("--year", m_stats.year, "Only this year");
    stats->add_option("--month", m_stats.month, "Only this month (1-12)")->check(CLI::Range(1, 12));
    stats->add_option("--state", m_stats.state, "in, out or missed");
    stats->callback([this, &ctx] { ctx.action = [this, &ctx] { this->stats(ctx); }; });

    auto* years = calls->add_subcommand("years", "The years with calls, newest first");
    years->callback([this, &ctx] { ctx.action = [this, &ctx] { this->years(ctx); }; });

    auto* del = calls->add_subcommand("delete", "Delete calls by their row id");
    del->add_option("rowid", m_rowids, "Row ids as 'calls list' shows them")->required();
    del->callback([this, &ctx] { ctx.action = [this, &ctx] { this->remove(ctx); }; });

    setupImportExport(*calls, ctx);
}

void CallsCommand::list(CliContext& ctx)
{
    auto prefs = ctx.targetLocation();
    TNCallinglist& calls = cliCallinglist(ctx);
    const int profile = prefs->activeProfileInt;

    int selector = ListQuery::SelectorAll;
    const QString state = str(m_list.state);
    if (state.startsWith(u"smart:")) {
        bool ok = false;
        const qint64 id = state.mid(6).toLongLong(&ok);
        QList<qint64> ids = calls.smartLists().getAllSmartListIDsForProfile(profile);
        std::reverse(ids.begin(), ids.end()); // the selector counts from the oldest list
        const qsizetype position = ok ? ids.indexOf(id) : -1;
        if (position < 0)
            throw CliError(1, QStringLiteral("no smart list %1 for this location").arg(state.mid(6)));
        selector = ListQuery::SelectorFirstSmartList + int(position);
    } else if (state == u"new") {
        selector = ListQuery::SelectorNew;
    } else {
        selector = parseState(state);
    }
    if (!m_list.column.empty() && !ListQuery::searchColumnExpression(str(m_list.column), QString()))
        throw CliError(2, QStringLiteral("unknown search column '%1'").arg(str(m_list.column)));
    if (!m_list.sort.empty() && !ListQuery::sortExpression(str(m_list.sort)))
        throw CliError(2, QStringLiteral("unknown sort column '%1'").arg(str(m_list.sort)));
    if (m_list.limit < 0)
        throw CliError(2, QStringLiteral("--limit must not be negative"));

    QString direction;
    if (m_list.asc)
        direction = QStringLiteral("ASC");
    else if (m_list.desc || !m_list.sort.empty())
        direction = QStringLiteral("DESC");

    if (ctx.json) {
        QVariantList rows;
        for (const CallRow& row :
             calls.getCallerlistForProfile(profile, selector, str(m_list.search), str(m_list.column),
                                           str(m_list.sort), direction, m_list.limit))
            rows.append(row.toVariantMap());
        ctx.printJson(rows);
        return;
    }
    const auto entries = calls.callListEntriesForProfile(
        profile, selector, str(m_list.search), str(m_list.column), str(m_list.sort), direction, m_list.limit);
    if (entries.isEmpty()) {
        ctx.out() << "No calls.\n";
        return;
    }
    for (const CallListEntry& e : entries) {
        if (e.isDayHeader) {
            ctx.out() << "== " << e.dayText << " (" << e.dayCount << ")\n";
            continue;
        }
        const CallRow& c = e.call;
        ctx.out() << c.rowid << "\t" << e.dateText << "\t" << stateText(c.callstate) << "\t"
                  << (c.phonenumber.isEmpty() ? QStringLiteral("-") : c.phonenumber) << "\t" << c.name << "\t"
                  << c.extension << "\t" << c.line << "\t" << c.duration << "\n";
    }
}

void CallsCommand::counters(CliContext& ctx)
{
    auto prefs = ctx.targetLocation();
    TNCallinglist& calls = cliCallinglist(ctx);
    const int profile = prefs->activeProfileInt;
    calls.refreshCallsCounterForProfile(profile);
    const QList<qint64> counter = calls.callsCounter();
    QStringList names = {QStringLiteral("incoming"),  QStringLiteral("outgoing"), QStringLiteral("missed"),
                         QStringLiteral("all"),       QStringLiteral("current"),  QStringLiteral("new"),
                         QStringLiteral("voicemail"), QStringLiteral("fax")};
    for (const QString& name : calls.smartLists().getAllSmartListNamesForProfile(profile))
        names.append(name);
    QVariantList rows;
    for (qsizetype i = 0; i < counter.size() && i < names.size(); ++i)
        rows.append(QVariantMap{{QStringLiteral("position"), int(i)},
                                {QStringLiteral("name"), names[i]},
                                {QStringLiteral("count"), counter[i]}});
    if (ctx.json) {
        ctx.printJson(rows);
        return;
    }
    for (const QVariant& row : rows) {
        const QVariantMap r = row.toMap();
        ctx.out() << r.value(QStringLiteral("name")).toString() << ": "
                  << r.value(QStringLiteral("count")).toLongLong() << "\n";
    }
}

void CallsCommand::stats(CliContext& ctx)
{
    auto prefs = ctx.targetLocation();
    TNCallinglist& calls = cliCallinglist(ctx);
    const int profile = prefs->activeProfileInt;
    const int state = parseState(str(m_stats.state));
    if (m_stats.year < 0)
        throw CliError(2, QStringLiteral("--year must be a year"));
    const qint64 count = calls.getCallCounterStatisticForProfile(profile, m_stats.month, m_stats.year, state);
    const auto time = calls.getTimeCounterStatisticForProfile(profile, m_stats.month, m_stats.year, state);
    if (ctx.json) {
        ctx.printJson(QVariantMap{{QStringLiteral("calls"), count},
                                  {QStringLiteral("hours"), time.hours()},
                                  {QStringLiteral("minutes"), time.minutes()}});
        return;
    }
    ctx.out() << "calls: " << count << "\n"
              << "time: " << time.hours() << ":"
              << QStringLiteral("%1").arg(time.minutes(), 2, 10, QLatin1Char('0')) << "\n";
}

void CallsCommand::years(CliContext& ctx)
{
    auto prefs = ctx.targetLocation();
    const QStringList years = cliCallinglist(ctx).getYearsStatisticForProfile(prefs->activeProfileInt);
    if (ctx.json) {
        ctx.printJson(QVariant(years).toList());
        return;
    }
    for (const QString& y : years)
        ctx.out() << y << "\n";
}

void CallsCommand::remove(CliContext& ctx)
{
    auto prefs = ctx.targetLocation();
    TNCallinglist& calls = cliCallinglist(ctx);
    const int profile = prefs->activeProfileInt;
    // Only calls of this location: a row id of another location is refused, and then nothing
    // is deleted.
    QList<qint64> wanted;
    for (long long rowid : m_rowids)
        wanted.append(rowid);
    CallListActions actions(calls, ctx.environment().contacts());
    const CallListActions::Deletion done = actions.deleteCalls(profile, wanted);
    if (!done.foreign.isEmpty()) {
        QStringList unknown;
        for (qint64 rowid : done.foreign)
            unknown.append(QString::number(rowid));
        throw CliError(1, QStringLiteral("no call with row id %1 in this location")
                              .arg(unknown.join(QStringLiteral(", "))));
    }
    if (done.deleted < 0)
        throw CliError(1, QStringLiteral("the calls could not be deleted: the call database refused it"));
    if (ctx.json)
        ctx.printJson(QVariantMap{{QStringLiteral("deleted"), int(m_rowids.size())}});
    else
        ctx.out() << "Deleted " << m_rowids.size() << " call(s).\n";
}
