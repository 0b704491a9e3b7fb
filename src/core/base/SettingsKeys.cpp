#include "base/SettingsKeys.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

const std::vector<GlobalKeyDef>& globalKeyTable()
{
    static const std::vector<GlobalKeyDef> table = {
        {keys::Locations, SettingType::Dict, QVariantMap()},
        {keys::CurrentLocation, SettingType::String, QString()},
        {keys::Profiles, SettingType::Array, QVariantList()},
        {keys::ListAtStartup, SettingType::Bool, false},
        {keys::ListAferCall, SettingType::Bool, false},
        {keys::DateFormatString, SettingType::String, QStringLiteral("dd.MM.yyyy HH:mm")},
        {keys::MenuDockState, SettingType::Int, 2},
        {keys::HotkeyCodeNewCall, SettingType::Int, -1},
        {keys::ModifierFlagsNewCall, SettingType::Int, -1},
        {keys::HotkeyCodeList, SettingType::Int, -1},
        {keys::ModifierFlagsList, SettingType::Int, -1},
        {keys::ShowCallinglistOnStart, SettingType::Int, -1},
        {keys::AutoUpdateReverseSearch, SettingType::Bool, true},
        {keys::ShowTrafficMonitorInMenu, SettingType::Bool, false},
        {keys::ShowTrafficMonitorWindow, SettingType::Bool, false},
        {keys::ShowTrafficMonitorMenuLabel, SettingType::Bool, false},
        {keys::ShowTrafficMonitorMenuGraph, SettingType::Bool, false},
        {keys::OutgoingCalls, SettingType::Array, QVariantList()},
        {keys::MonitorAlwaysOnTop, SettingType::Bool, false},
        {keys::MonitorOpenExternCalls, SettingType::Bool, false},
        {keys::SelCLGrp, SettingType::Int, -1},
        {keys::AddressBook, SettingType::String, QString()},
        {keys::ReverseSearchCustom, SettingType::Dict, QVariantMap()},
        {keys::ReverseSearchUpdateInterval, SettingType::Int, 86400},
        {keys::UpdateDateReverseSearch, SettingType::Date, QVariant()},
        {keys::Version, SettingType::String, QString()},
        {keys::ReverseSearchUpdateURL, SettingType::String, QString()},
        {keys::CallinglistSortOrdering, SettingType::Array, QVariantList()},
        {keys::ListDeleteInterval, SettingType::Int, 0},
        {keys::IPhoneExportState, SettingType::Bool, false},
        {keys::IPhoneExportPath, SettingType::String, QString()},
        {keys::IPhoneExportScript, SettingType::String, QString()},
        {keys::BadgeNewCalls, SettingType::Bool, false},
        {keys::BadgeNewAbsentiaCalls, SettingType::Bool, false},
    };
    return table;
}

const GlobalKeyDef* findGlobalKey(const QString& key)
{
    for (const auto& def : globalKeyTable())
        if (def.key == key)
            return &def;
    return nullptr;
}

QString settingTypeName(SettingType type)
{
    switch (type) {
    case SettingType::String:
        return QStringLiteral("string");
    case SettingType::Bool:
        return QStringLiteral("boolean");
    case SettingType::Int:
        return QStringLiteral("integer");
    case SettingType::Array:
        return QStringLiteral("array");
    case SettingType::Dict:
        return QStringLiteral("dictionary");
    case SettingType::Date:
        return QStringLiteral("date");
    }
    return {};
}

QVariant parseSettingValue(SettingType type, const QString& text, QString* error)
{
    const auto fail = [&](const QString& why) {
        if (error)
            *error = why;
        return QVariant();
    };
    switch (type) {
    case SettingType::String:
        return text;
    case SettingType::Bool: {
        const QString t = text.trimmed().toLower();
        if (t == u"true" || t == u"yes" || t == u"on" || t == u"1")
            return true;
        if (t == u"false" || t == u"no" || t == u"off" || t == u"0")
            return false;
        return fail(QStringLiteral("'%1' is not a boolean (true or false)").arg(text));
    }
    case SettingType::Int: {
        bool ok = false;
        const int v = text.trimmed().toInt(&ok);
        if (!ok)
            return fail(QStringLiteral("'%1' is not an integer").arg(text));
        return v;
    }
    case SettingType::Array:
    case SettingType::Dict: {
        QJsonParseError pe{};
        const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8(), &pe);
        if (pe.error != QJsonParseError::NoError)
            return fail(QStringLiteral("'%1' is not JSON: %2").arg(text, pe.errorString()));
        if (type == SettingType::Array && doc.isArray())
            return doc.array().toVariantList();
        if (type == SettingType::Dict && doc.isObject())
            return doc.object().toVariantMap();
        return fail(QStringLiteral("'%1' is not a JSON %2").arg(text, settingTypeName(type)));
    }
    case SettingType::Date: {
        const QDateTime dt = QDateTime::fromString(text.trimmed(), Qt::ISODate);
        if (!dt.isValid())
            return fail(QStringLiteral("'%1' is not an ISO date").arg(text));
        return dt;
    }
    }
    return fail(QStringLiteral("unknown type"));
}
