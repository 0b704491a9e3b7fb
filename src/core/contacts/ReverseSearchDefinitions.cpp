#include "contacts/ReverseSearchDefinitions.h"

#include "base/Logging.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

#include <plist/plist.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct PlistDeleter
{
    void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};

// Definitions are a few kilobytes nested five levels deep; far more is not a definitions file.
constexpr qsizetype kMaxBytes = 1024 * 1024;
constexpr int kMaxDepth = 16;

// The text of a string item, read with its length: an embedded NUL fails an assertion in
// libplist's plist_get_string_val, so such a string is refused instead.
std::optional<QString> stringValue(plist_t dict, const char* key)
{
    plist_t node = plist_dict_get_item(dict, key);
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return QString();
    uint64_t length = 0;
    const char* value = plist_get_string_ptr(node, &length);
    if (!value)
        return QString();
    if (length > uint64_t(kMaxBytes) || std::memchr(value, 0, size_t(length)))
        return std::nullopt;
    return QString::fromUtf8(value, qsizetype(length));
}

// libplist's readers recurse once per level and its binary reader crashed on deep nesting, so
// only XML is accepted, and only after a non-recursive reader has checked its form and depth.
QString refusalBeforeParsing(const QByteArray& bytes)
{
    if (bytes.isEmpty() || bytes.size() > kMaxBytes)
        return QStringLiteral("empty or oversized definitions (%1 bytes)").arg(bytes.size());
    if (bytes.startsWith("bplist"))
        return QStringLiteral("a binary property list (only XML is accepted)");
    QXmlStreamReader xml(bytes);
    int depth = 0;
    bool sawRoot = false;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (!sawRoot && xml.name() != u"plist")
                return QStringLiteral("not an XML property list");
            sawRoot = true;
            if (++depth > kMaxDepth)
                return QStringLiteral("nested deeper than %1 levels").arg(kMaxDepth);
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
        }
    }
    if (xml.hasError())
        return QStringLiteral("not well-formed XML: %1 (line %2)")
            .arg(xml.errorString())
            .arg(xml.lineNumber());
    if (!sawRoot)
        return QStringLiteral("not an XML property list");
    return {};
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
    if (const QString why = refusalBeforeParsing(bytes); !why.isEmpty())
        return fail(why);
    plist_t raw = nullptr;
    plist_from_xml(bytes.constData(), uint32_t(bytes.size()), &raw);
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
        const auto prefix = stringValue(value, "prefix");
        const auto url = stringValue(value, "url");
        const auto data = stringValue(value, "data");
        const auto method = stringValue(value, "method");
        const auto match = stringValue(value, "match");
        if (!prefix || !url || !data || !method || !match) {
            std::free(iter);
            return fail(QStringLiteral("definition %1 holds a NUL character").arg(name));
        }
        ReverseSearchDefinition def{name, *prefix, *url, *data, *method, *match};
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
