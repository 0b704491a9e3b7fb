#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

// XML into nested dictionaries keyed by element names with their prefixes ("s:Envelope"). A leaf
// element gives its text, an element with children a dictionary, a repeated element a list.
namespace XMLReader {

QVariantMap dictionaryForXMLString(const QString& xml, QString* error = nullptr);
QVariantMap dictionaryForXMLData(const QByteArray& xml, QString* error = nullptr);

} // namespace XMLReader
