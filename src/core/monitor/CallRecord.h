#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

// One live call as the call monitor sees it. Fields carry the record's key names; toMap/fromMap
// give the key-value form used by scripts, the CLI and the call monitor window.
struct CallRecord
{
    enum CallType { Incoming = 1, Missed = 2, Outgoing = 3 };

    QString calltime;
    QString cmd;
    QString connID;
    QString line;
    QString number;
    QString msn;
    QString extension;
    QString extensionTitle;
    QString duration;
    QStringList contact{QString(), QString(), QString()}; // abid, name, label
    int calltype = Incoming;
    QDateTime dateStart;
    QDateTime dateEnd;
    bool connected = false;
    bool externalStart = false;
    bool showCall = true;
    std::optional<qint64> MemoID;
    QString MemoSubject;
    QString MemoBody;
    QString UID;
    QVariant UILocalNote; // the presenter's handle of the delivered notification

    QString contactABID() const { return contact.value(0); }
    QString contactName() const { return contact.value(1); }
    QString contactLabel() const { return contact.value(2); }

    // Key-value form; dates stay QDateTime (the caller decides how to print them).
    QVariantMap toMap() const;
    static CallRecord fromMap(const QVariantMap& map);

    static QString uniqueID();
};
