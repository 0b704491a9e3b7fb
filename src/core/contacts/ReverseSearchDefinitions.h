#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

// One web directory: how to ask it and how to cut the name out of its answer.
struct ReverseSearchDefinition
{
    QString key;    // international prefix it serves, e.g. 0049
    QString prefix; // replaces the key in the number, normally the trunk prefix 0
    QString url;
    QString data;   // form parameters with ##NUMBER##
    QString method; // GET or POST
    QString match;  // capture group 1 is the name
};

// The definitions property list ("ReverseSearch" dictionary), keys in the file's order.
class ReverseSearchDefinitions
{
public:
    static inline const QString FileName = QStringLiteral("reverseSearch.plist");
    static inline const QString ShippedResource = QStringLiteral(":/tondrel/reverseSearch.plist");

    // nullopt with a reason when the bytes are not a property list with a "ReverseSearch" dict.
    static std::optional<ReverseSearchDefinitions> fromPlist(const QByteArray& bytes,
                                                             QString* error = nullptr);
    // The downloaded copy in dataDir when it exists, else the shipped one; nullopt when neither.
    static std::optional<ReverseSearchDefinitions> load(const QString& dataDir);

    const QVector<ReverseSearchDefinition>& definitions() const { return m_definitions; }
    const ReverseSearchDefinition* find(const QString& key) const;

private:
    QVector<ReverseSearchDefinition> m_definitions;
};
