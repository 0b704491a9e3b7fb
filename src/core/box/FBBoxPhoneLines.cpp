// Reading the router's extensions, lines and fax lines and merging them with the stored lists.
#include "box/FBBoxPhoneHelper.h"

#include "base/Localization.h"
#include "box/FBBoxConnectionHelper.h"

#include <QVariantMap>

namespace {
bool usable(const QString& value)
{
    return !value.isEmpty() && FBBoxConnectionHelper::validQueryResult(value);
}

qsizetype indexOfKey(const QVariantList& list, const QString& key, const QString& value)
{
    for (qsizetype i = 0; i < list.size(); ++i)
        if (list[i].toMap().value(key).toString() == value)
            return i;
    return -1;
}

QVariantMap lineRecord(const QString& line, const QString& title)
{
    return {{QStringLiteral("Line"), line},
            {QStringLiteral("Title"), title},
            {QStringLiteral("Online"), true},
            {QStringLiteral("HideMonitor"), false},
            {QStringLiteral("HideList"), false}};
}
} // namespace

namespace FBBoxPhoneHelper {

QStringList extensionVariables()
{
    QStringList names;
    for (int i = 0; i < 3; ++i)
        names << QStringLiteral("telcfg:settings/MSN/Port%1/Name").arg(i);
    for (int i = 1; i <= 8; ++i)
        names << QStringLiteral("telcfg:settings/NTHotDialList/Name%1").arg(i);
    for (int i = 1; i <= 6; ++i)
        names << QStringLiteral("telcfg:settings/Foncontrol/User%1/Name").arg(i)
              << QStringLiteral("telcfg:settings/Foncontrol/User%1/Intern").arg(i);
    return names;
}

QStringList lineVariables()
{
    QStringList names;
    for (int i = 0; i <= 9; ++i)
        names << QStringLiteral("telcfg:settings/MSN/MSN%1").arg(i);
    names << QStringLiteral("telcfg:settings/MSN/POTS");
    for (int i = 0; i <= 31; ++i)
        names << QStringLiteral("sip:settings/sip%1/displayname").arg(i);
    return names;
}

QStringList faxLineVariables()
{
    QStringList names;
    for (int i = 0; i <= 9; ++i)
        names << QStringLiteral("telcfg:settings/FaxMSN%1").arg(i);
    return names;
}

QVariantList extensionsFromValues(const QStringList& values)
{
    QVariantList result;
    if (values.size() < 23)
        return result;
    const auto add = [&](const QString& intern, const QString& title, const char* typ) {
        result.append(QVariantMap{{QStringLiteral("Intern"), intern},
                                  {QStringLiteral("Title"), title},
                                  {QStringLiteral("Typ"), QString::fromLatin1(typ)},
                                  {QStringLiteral("Show"), true}});
    };
    for (int i = 0; i < 3; ++i)
        if (usable(values[i]))
            add(QString::number(i + 1), values[i], "FON");
    add(QStringLiteral("50"), Localization::localized(QStringLiteral("ISDNDevices")), "S0");
    for (int i = 0; i < 8; ++i)
        if (usable(values[3 + i]))
            add(QString::number(51 + i), values[3 + i], "S0");
    for (int i = 0; i < 6; ++i) {
        const QString& name = values[11 + 2 * i];
        const QString& intern = values[12 + 2 * i];
        if (usable(name) && usable(intern))
            add(intern, name, "DECT");
    }
    return result;
}

QVariantList linesFromValues(const QStringList& values)
{
    QVariantList result;
    int sip = 1;
    for (qsizetype i = 0; i < values.size() && i < 43; ++i) {
        const QString& v = values[i];
        if (v.isEmpty() || v == u"er")
            continue;
        if (i < 10)
            result.append(lineRecord(v, v));
        else if (i == 10)
            result.append(lineRecord(v, QStringLiteral("POTS")));
        else
            result.append(lineRecord(v, QStringLiteral("SIP%1").arg(sip++)));
    }
    return result;
}

QVariantList faxLinesFromValues(const QStringList& values)
{
    QVariantList result;
    for (const QString& v : values)
        if (!v.isEmpty() && v != u"er")
            result.append(QVariantMap{
                {QStringLiteral("Line"), v}, {QStringLiteral("Title"), v}, {QStringLiteral("Online"), true}});
    return result;
}

QVariantList mergeExtensions(const QVariantList& existing, const QVariantList& fromBox)
{
    QVariantList result;
    for (const QVariant& entry : fromBox) {
        QVariantMap e = entry.toMap();
        const qsizetype i =
            indexOfKey(existing, QStringLiteral("Intern"), e.value(QStringLiteral("Intern")).toString());
        if (i >= 0)
            e.insert(QStringLiteral("Show"), existing[i].toMap().value(QStringLiteral("Show")));
        result.append(e);
    }
    return result;
}

QVariantList mergeLines(const QVariantList& existing, const QVariantList& fromBox)
{
    QVariantList result = existing;
    for (const QVariant& entry : fromBox) {
        QVariantMap line = entry.toMap();
        const qsizetype i =
            indexOfKey(result, QStringLiteral("Line"), line.value(QStringLiteral("Line")).toString());
        if (i < 0) {
            result.append(line);
            continue;
        }
        const QVariantMap old = result[i].toMap();
        line.insert(QStringLiteral("HideList"), old.value(QStringLiteral("HideList"), false));
        line.insert(QStringLiteral("HideMonitor"), old.value(QStringLiteral("HideMonitor"), false));
        result[i] = line;
    }
    return result;
}

QVariantList mergeFaxLines(const QVariantList& existing, const QVariantList& fromBox)
{
    if (existing.isEmpty())
        return fromBox;
    QVariantList result = existing;
    for (const QVariant& entry : fromBox) {
        const qsizetype i = indexOfKey(result, QStringLiteral("Line"),
                                       entry.toMap().value(QStringLiteral("Line")).toString());
        if (i < 0)
            result.append(entry);
        else
            result[i] = entry;
    }
    return result;
}

QVariantList getExtensionsFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs,
                                          RouterSession& session)
{
    const QStringList values =
        FBBoxConnectionHelper::componentsArrayForVariables(extensionVariables(), prefs, session);
    if (values.isEmpty())
        return {};
    return mergeExtensions(existing, extensionsFromValues(values));
}

QVariantList getLinesFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs,
                                     RouterSession& session)
{
    const QStringList values =
        FBBoxConnectionHelper::componentsArrayForVariables(lineVariables(), prefs, session);
    return mergeLines(existing, linesFromValues(values));
}

QVariantList getFaxLinesFromBoxAndMerge(const QVariantList& existing, TNPreferences* prefs,
                                        RouterSession& session)
{
    const QStringList values =
        FBBoxConnectionHelper::componentsArrayForVariables(faxLineVariables(), prefs, session);
    return mergeFaxLines(existing, faxLinesFromValues(values));
}

} // namespace FBBoxPhoneHelper
