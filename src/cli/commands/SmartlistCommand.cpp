#include "SmartlistCommand.h"

#include "CallsCommand.h"
#include "CliContext.h"

#include "base/Localization.h"
#include "base/TNPreferences.h"
#include "calllist/TNCallinglist.h"

namespace {

struct Names
{
    const char* column;
    int code;
    std::vector<const char*> conditions; // index = condition code
};

const std::vector<Names>& nameTable()
{
    static const std::vector<Names> table = {
        {"date",
         Smart::ColumnDate,
         {"today", "curr_month", "curr_year", "day", "month", "year", "last_days", "days_ago"}},
        {"name", Smart::ColumnName, {"is", "is_not", "contains", "contains_not"}},
        {"number", Smart::ColumnNumber, {"is", "is_not", "contains", "contains_not"}},
        {"extension", Smart::ColumnExtension, {"is", "is_not", "contains", "contains_not"}},
        {"line", Smart::ColumnLine, {"is", "is_not", "contains", "contains_not"}},
        {"duration", Smart::ColumnDuration, {"is", "is_not", "contains", "contains_not"}},
        {"type", Smart::ColumnCallType, {"in", "out", "missed", "new"}},
    };
    return table;
}

bool needsValue(int column, int condition)
{
    if (column == Smart::ColumnCallType)
        return false;
    if (column == Smart::ColumnDate)
        return condition >= Smart::DayOfMonth;
    return true;
}

// "column:condition[:value]", e.g. "name:contains:Mu", "date:last_days:7", "type:missed".
SmartCondition parseCondition(const QString& text)
{
    const qsizetype first = text.indexOf(u':');
    const qsizetype second = first < 0 ? -1 : text.indexOf(u':', first + 1);
    const QString column = text.left(first);
    const QString condition =
        first < 0 ? QString() : text.mid(first + 1, second < 0 ? -1 : second - first - 1);
    const QString value = second < 0 ? QString() : text.mid(second + 1);
    for (const Names& n : nameTable()) {
        if (column != QLatin1String(n.column))
            continue;
        for (size_t i = 0; i < n.conditions.size(); ++i) {
            if (condition != QLatin1String(n.conditions[i]))
                continue;
            const int code = int(i);
            if (needsValue(n.code, code) && second < 0)
                throw CliError(2, QStringLiteral("condition '%1' needs a value (%2:%3:VALUE)")
                                      .arg(text, column, condition));
            if (n.code == Smart::ColumnDate && code >= Smart::DayOfMonth) {
                bool ok = false;
                value.toInt(&ok);
                if (!ok)
                    throw CliError(2, QStringLiteral("condition '%1' needs a number").arg(text));
            }
            return {n.code, code, value};
        }
        QStringList known;
        for (const char* c : n.conditions)
            known.append(QLatin1String(c));
        throw CliError(2, QStringLiteral("unknown condition '%1' for %2 (%3)")
                              .arg(condition, column, known.join(QStringLiteral(", "))));
    }
    throw CliError(2, QStringLiteral("unknown column in condition '%1' (date, name, number, extension, line, "
                                     "duration, type)")
                          .arg(text));
}

QString conditionText(const SmartCondition& c)
{
    for (const Names& n : nameTable()) {
        if (n.code != c.listcolumn)
            continue;
        const QString cond = c.condition >= 0 && size_t(c.condition) < n.conditions.size()
                                 ? QLatin1String(n.conditions[size_t(c.condition)])
                                 : QString::number(c.condition);
        QString out = QLatin1String(n.column) + u':' + cond;
        if (needsValue(c.listcolumn, c.condition))
            out += u':' + c.condvalue;
        return out;
    }
    return QStringLiteral("%1:%2:%3").arg(c.listcolumn).arg(c.condition).arg(c.condvalue);
}

// The list of this location with that id, or a CliError.
SmartListInfo ownList(TNCallinglist& calls, int profile, qint64 id)
{
    for (const SmartListInfo& info : calls.smartLists().smartListsForProfile(profile))
        if (info.rowid == id)
            return info;
    throw CliError(1, QStringLiteral("no smart list %1 in this location").arg(id));
}

} // namespace

void SmartlistCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* smart = app.add_subcommand("smartlist", "Saved filters of the call list");
    smart->require_subcommand(1);

    auto* add = smart->add_subcommand("add", "Add a smart list; prints its id");
    add->add_option("--name", m_name, "Name shown in the side table")->required();
    add->add_option(
        "--condition", m_conditions,
        "COLUMN:CONDITION[:VALUE], repeatable. Columns and conditions: date today|curr_month|curr_year|"
        "day|month|year|last_days|days_ago; name, number, extension, line, duration "
        "is|is_not|contains|contains_not; type in|out|missed|new");
    add->add_flag("--any", m_any, "A call matches when any condition holds (default: all)");
    add->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            QList<SmartCondition> conditions;
            for (const std::string& text : m_conditions)
                conditions.append(parseCondition(QString::fromStdString(text)));
            if (m_any)
                conditions.prepend({Smart::ColumnMatchAny, 1, QString()});
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            const qint64 id = calls.insertSmartListForProfile(prefs->activeProfileInt,
                                                              QString::fromStdString(m_name), conditions);
            if (!id)
                throw CliError(1, QStringLiteral("the smart list could not be stored"));
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("id"), id}});
            else
                ctx.out() << id << "\n";
        };
    });

    auto* list = smart->add_subcommand("list", "The smart lists with their counts, newest first");
    list->callback([&ctx] {
        ctx.action = [&ctx] {
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            const int profile = prefs->activeProfileInt;
            QVariantList rows;
            for (const SmartListInfo& info : calls.smartLists().smartListsForProfile(profile))
                rows.append(QVariantMap{{QStringLiteral("id"), info.rowid},
                                        {QStringLiteral("name"), info.name},
                                        {QStringLiteral("count"),
                                         calls.getSmartCallsCounterFromListForProfile(profile, info.rowid)}});
            if (ctx.json) {
                ctx.printJson(rows);
                return;
            }
            if (rows.isEmpty())
                ctx.out() << "No smart lists.\n";
            for (const QVariant& row : rows) {
                const QVariantMap r = row.toMap();
                ctx.out() << r.value(QStringLiteral("id")).toLongLong() << "\t"
                          << r.value(QStringLiteral("name")).toString() << "\t"
                          << r.value(QStringLiteral("count")).toLongLong() << "\n";
            }
        };
    });

    auto* del = smart->add_subcommand("delete", "Delete smart lists with their conditions");
    del->add_option("id", m_ids, "Smart list ids")->required();
    del->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            for (long long id : m_ids)
                ownList(calls, prefs->activeProfileInt, id);
            for (long long id : m_ids)
                if (!calls.deleteSmartListForID(id))
                    throw CliError(1, QStringLiteral("smart list %1 could not be deleted").arg(id));
            if (ctx.json)
                ctx.printJson(QVariantMap{{QStringLiteral("deleted"), int(m_ids.size())}});
            else
                ctx.out() << "Deleted " << m_ids.size() << " smart list(s).\n";
        };
    });

    auto* show = smart->add_subcommand("show", "A smart list's conditions and count");
    show->add_option("id", m_id, "Smart list id")->required();
    show->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = ctx.targetLocation();
            TNCallinglist& calls = cliCallinglist(ctx);
            const int profile = prefs->activeProfileInt;
            const SmartListInfo info = ownList(calls, profile, m_id);
            bool any = false;
            QVariantList conditions;
            QStringList texts;
            for (const SmartCondition& c : calls.smartLists().getSmartConditionsForID(m_id)) {
                if (c.listcolumn == Smart::ColumnMatchAny) {
                    any = true;
                    continue;
                }
                texts.append(conditionText(c));
                conditions.append(QVariantMap{{QStringLiteral("listcolumn"), c.listcolumn},
                                              {QStringLiteral("condition"), c.condition},
                                              {QStringLiteral("condvalue"), c.condvalue},
                                              {QStringLiteral("text"), texts.last()}});
            }
            const qint64 count = calls.getSmartCallsCounterFromListForProfile(profile, m_id);
            if (ctx.json) {
                ctx.printJson(QVariantMap{
                    {QStringLiteral("id"), info.rowid},
                    {QStringLiteral("name"), info.name},
                    {QStringLiteral("match"), any ? QStringLiteral("any") : QStringLiteral("all")},
                    {QStringLiteral("conditions"), conditions},
                    {QStringLiteral("count"), count}});
                return;
            }
            ctx.out() << "id: " << info.rowid << "\nname: " << info.name
                      << "\nmatch: " << (any ? "any" : "all") << "\ncount: " << count << "\n";
            for (const QString& t : texts)
                ctx.out() << "condition: " << t << "\n";
        };
    });
}
