#include "monitor/ScriptActions.h"

#include "base/Logging.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace {

const QString FileName = QStringLiteral("ScriptActions.plist");
const char* const ListKey = "ScriptActions";

struct PlistFree
{
    void operator()(plist_t p) const { plist_free(p); }
};
using PlistPtr = std::unique_ptr<void, PlistFree>;

QVariant toVariant(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t b = 0;
        plist_get_bool_val(node, &b);
        return bool(b);
    }
    case PLIST_UINT: {
        uint64_t v = 0;
        plist_get_uint_val(node, &v);
        return qint64(v);
    }
    case PLIST_REAL: {
        double v = 0;
        plist_get_real_val(node, &v);
        return v;
    }
    case PLIST_STRING: {
        char* s = nullptr;
        plist_get_string_val(node, &s);
        const QString text = QString::fromUtf8(s);
        std::free(s);
        return text;
    }
    case PLIST_DATA: {
        char* d = nullptr;
        uint64_t n = 0;
        plist_get_data_val(node, &d, &n);
        const QByteArray data(d, qsizetype(n));
        std::free(d);
        return data;
    }
    case PLIST_ARRAY: {
        QVariantList list;
        for (uint32_t i = 0; i < plist_array_get_size(node); ++i)
            list << toVariant(plist_array_get_item(node, i));
        return list;
    }
    case PLIST_DICT: {
        QVariantMap map;
        plist_dict_iter it = nullptr;
        plist_dict_new_iter(node, &it);
        for (;;) {
            char* key = nullptr;
            plist_t value = nullptr;
            plist_dict_next_item(node, it, &key, &value);
            if (!key)
                break;
            map.insert(QString::fromUtf8(key), toVariant(value));
            std::free(key);
        }
        std::free(it);
        return map;
    }
    default:
        return {};
    }
}

plist_t fromVariant(const QVariant& v)
{
    switch (v.typeId()) {
    case QMetaType::Bool:
        return plist_new_bool(v.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return plist_new_uint(uint64_t(v.toLongLong()));
    case QMetaType::Double:
        return plist_new_real(v.toDouble());
    case QMetaType::QByteArray: {
        const QByteArray d = v.toByteArray();
        return plist_new_data(d.constData(), uint64_t(d.size()));
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        plist_t array = plist_new_array();
        for (const QVariant& item : v.toList())
            plist_array_append_item(array, fromVariant(item));
        return array;
    }
    case QMetaType::QVariantMap: {
        plist_t dict = plist_new_dict();
        const QVariantMap map = v.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            plist_dict_set_item(dict, it.key().toUtf8().constData(), fromVariant(it.value()));
        return dict;
    }
    default:
        return plist_new_string(v.toString().toUtf8().constData());
    }
}

QVariantList loadFrom(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = f.readAll();
    plist_t raw = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &raw);
    const PlistPtr root(raw);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT) {
        qCWarning(lcMonitor) << "Script actions file unreadable:" << path;
        return {};
    }
    plist_t list = plist_dict_get_item(root.get(), ListKey);
    return list ? toVariant(list).toList() : QVariantList();
}

} // namespace

namespace methods {

QVariantList loadOldScriptActions(const QString& scriptsDir)
{
    return loadFrom(QDir(scriptsDir).filePath(FileName));
}

QVariantList loadNewScriptActions(const QString& resourceDir)
{
    return loadFrom(QDir(resourceDir).filePath(FileName));
}

bool saveScriptActions(const QVariantList& actions, const QString& scriptsDir)
{
    if (!QDir().mkpath(scriptsDir))
        return false;
    const PlistPtr root(plist_new_dict());
    plist_dict_set_item(root.get(), ListKey, fromVariant(actions));
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    if (!xml)
        return false;
    QSaveFile f(QDir(scriptsDir).filePath(FileName));
    const bool ok = f.open(QIODevice::WriteOnly) && f.write(xml, length) == qint64(length) && f.commit();
    plist_to_xml_free(xml);
    if (!ok)
        qCWarning(lcMonitor) << "Cannot save the script actions:" << f.errorString();
    return ok;
}

} // namespace methods
