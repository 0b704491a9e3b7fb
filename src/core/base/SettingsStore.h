#pragma once

#include <QMutex>
#include <QString>
#include <QVariant>
#include <QVariantMap>

// The user-defaults domain: one JSON document, global keys at the top level, per-location keys
// under "Locations". Thread-safe; every write goes to disk atomically.
class SettingsStore
{
public:
    enum class LoadResult { Loaded, Missing, Corrupt };

    explicit SettingsStore(QString filePath);

    QString filePath() const { return m_path; }

    // Reads the file. A corrupt file is copied aside and the store refuses to write until
    // resetAfterCorruption() is called, so nothing overwrites the user's settings silently.
    LoadResult load();
    bool isCorrupt() const;
    QString corruptionDetail() const;
    QString corruptCopyPath() const;
    void resetAfterCorruption();

    bool contains(const QString& key) const;
    QVariant value(const QString& key, const QVariant& fallback = {}) const;
    void setValue(const QString& key, const QVariant& value);
    void remove(const QString& key);
    QVariantMap snapshot() const;
    void clear();

    // Writes the document to disk; false (and a log line) when it cannot.
    bool sync();

    // The store of the composition root.

private:
    bool writeLocked();

    QString m_path;
    mutable QMutex m_mutex;
    QVariantMap m_values;
    bool m_corrupt = false;
    QString m_corruptDetail;
    QString m_corruptCopy;
};
