#include "contacts/ReverseSearchDefinitions.h"

#include "base/Logging.h"

#include <QDir>
#include <QFile>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace {

struct PlistDeleter
{
    void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};

QString stringValue(plist_t dict, const char* key)
{
    plist_t node = plist_dict_get_item(dict, key);
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return {};
    char* value = nullptr;
    plist_get_string_val(node, &value);
    const QString text = QString::fromUtf8(value);
    std::free(value);
    return text;
}

std::optional<QByteArray> readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace

std::optional<ReverseSearchDefinitions> ReverseSearchDefinitions::fromPlist(const QByteArray& bytes,
                                                                            QString* error)
{
    const auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return std::nullopt;
    };
    if (bytes.isEmpty() || bytes.size() > 16 * 1024 * 1024)
        return fail(QStringLiteral("empty or oversized definitions"));
    plist_t raw = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &raw);
    std::unique_ptr<void, PlistDeleter> root(raw);
    if (!raw || plist_get_node_type(raw) != PLIST_DICT)
        return fail(QStringLiteral("not a property list dictionary"));
    plist_t searches = plist_dict_get_item(raw, "ReverseSearch");
    if (!searches || plist_get_node_type(searches) != PLIST_DICT)
        return fail(QStringLiteral("no \"ReverseSearch\" dictionary"));

    ReverseSearchDefinitions result;
    plist_dict_iter iter = nullptr;
    plist_dict_new_iter(searches, &iter);
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(searches, iter, &key, &value);
        if (!key)
            break;
        const QString name = QString::fromUtf8(key);
        std::free(key);
        if (!value || plist_get_node_type(value) != PLIST_DICT) {
            qCWarning(lcContacts).noquote() << "reverse lookup: definition" << name << "is not a dictionary";
            continue;
        }
        ReverseSearchDefinition def;
        def.key = name;
        def.prefix = stringValue(value, "prefix");
        def.url = stringValue(value, "url");
        def.data = stringValue(value, "data");
        def.method = stringValue(value, "method");
        def.match = stringValue(value, "match");
        if (def.method.isEmpty())
            def.method = QStringLiteral("POST");
        result.m_definitions.append(def);
    }
    std::free(iter);
    return result;
}

std::optional<ReverseSearchDefinitions> ReverseSearchDefinitions::load(const QString& dataDir)
{
    const QString downloaded = QDir(dataDir).filePath(FileName);
    if (QFile::exists(downloaded)) {
        if (const auto bytes = readFile(downloaded)) {
            QString why;
            if (auto defs = fromPlist(*bytes, &why))
                return defs;
            qCWarning(lcContacts).noquote() << "reverse lookup: downloaded definitions unusable:" << why;
        }
    }
    if (const auto bytes = readFile(ShippedResource))
        return fromPlist(*bytes);
    return std::nullopt;
}

const ReverseSearchDefinition* ReverseSearchDefinitions::find(const QString& key) const
{
    for (const auto& def : m_definitions)
        if (def.key == key)
            return &def;
    return nullptr;
}
