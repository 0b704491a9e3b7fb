#include "box/XMLReader.h"

#include <QXmlStreamReader>

namespace {
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

// Reads the current element's content; the reader stands on its start element.
QVariant readElement(QXmlStreamReader& xml)
{
    QVariantMap children;
    QString text;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QString name = xml.qualifiedName().toString();
            insertChild(children, name, readElement(xml));
        } else if (token == QXmlStreamReader::Characters) {
            text += xml.text();
        } else if (token == QXmlStreamReader::EndElement) {
            break;
        }
    }
    if (children.isEmpty())
        return text.trimmed();
    return children;
}
} // namespace

namespace XMLReader {

QVariantMap dictionaryForXMLString(const QString& text, QString* error)
{
    QXmlStreamReader xml(text);
    QVariantMap root;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement) {
            const QString name = xml.qualifiedName().toString();
            insertChild(root, name, readElement(xml));
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
