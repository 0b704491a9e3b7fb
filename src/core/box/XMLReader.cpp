#include "box/XMLReader.h"

#include <QXmlStreamReader>

#include <vector>

namespace {
// Router answers nest a handful of levels; anything deeper is not an answer we understand.
constexpr int kMaxDepth = 64;

void insertChild(QVariantMap& into, const QString& name, const QVariant& value)
{
    auto it = into.find(name);
    if (it == into.end()) {
        into.insert(name, value);
        return;
    }
    QVariantList list = it->typeId() == QMetaType::QVariantList ? it->toList() : QVariantList{*it};
    list.append(value);
    *it = list;
}

struct OpenElement
{
    QString name;
    QVariantMap children;
    QString text;
};
} // namespace

namespace XMLReader {

QVariantMap dictionaryForXMLString(const QString& text, QString* error)
{
    QXmlStreamReader xml(text);
    QVariantMap root;
    // An explicit stack instead of recursion: the input decides the depth.
    std::vector<OpenElement> open;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            if (open.size() >= kMaxDepth) {
                xml.raiseError(QStringLiteral("elements nested deeper than %1 levels").arg(kMaxDepth));
                break;
            }
            open.push_back({xml.qualifiedName().toString(), {}, {}});
        } else if (token == QXmlStreamReader::Characters && !open.empty()) {
            open.back().text += xml.text();
        } else if (token == QXmlStreamReader::EndElement && !open.empty()) {
            OpenElement done = std::move(open.back());
            open.pop_back();
            const QVariant value =
                done.children.isEmpty() ? QVariant(done.text.trimmed()) : QVariant(done.children);
            insertChild(open.empty() ? root : open.back().children, done.name, value);
        }
    }
    if (xml.hasError()) {
        if (error)
            *error = xml.errorString();
        return {};
    }
    return root;
}

QVariantMap dictionaryForXMLData(const QByteArray& data, QString* error)
{
    return dictionaryForXMLString(QString::fromUtf8(data), error);
}

} // namespace XMLReader
