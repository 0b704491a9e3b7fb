#pragma once

#include "contacts/AddressBook.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QMutex>
#include <QString>

class SettingsStore;

// An address book of vCards: one .vcf file, or a folder of them (khard/vdirsyncer layout, read
// in file-name order). Re-read when a file changes, checked at most once per check interval.
class VCardAddressBook final : public AddressBook
{
public:
    explicit VCardAddressBook(QString path, int checkIntervalMs = 1000);

    // The book named by the global key "AddressBook"; null when the key is empty.
    static std::unique_ptr<VCardAddressBook> fromSettings(const SettingsStore& settings);

    QString path() const { return m_path; }
    bool isAvailable() const override;
    std::shared_ptr<const AddressBookSnapshot> snapshot() const override;
    bool addPerson(ABPerson& person, QString* error) override;

    // Problems of the last read (skipped cards), for the CLI and tests.
    QStringList lastProblems() const;

private:
    QString signature() const;
    void reloadLocked(const QString& signature) const;

    QString m_path;
    int m_checkIntervalMs;
    mutable QMutex m_mutex;
    mutable std::shared_ptr<const AddressBookSnapshot> m_snapshot;
    mutable QString m_signature;
    mutable QElapsedTimer m_sinceCheck;
    mutable QStringList m_problems;
};
