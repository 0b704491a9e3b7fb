#include "contacts/VCardAddressBook.h"

#include "base/Logging.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "contacts/VCardParser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QUuid>

namespace {
// The folder's cards, then those of its sub-folders: khard and vdirsyncer keep one folder per
// address book under a common root.
QFileInfoList cardFiles(const QString& folder)
{
    const QStringList patterns{QStringLiteral("*.vcf"), QStringLiteral("*.VCF"), QStringLiteral("*.vcard")};
    const QDir dir(folder);
    QFileInfoList files = dir.entryInfoList(patterns, QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo& sub : dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        files += QDir(sub.filePath()).entryInfoList(patterns, QDir::Files | QDir::Readable, QDir::Name);
    return files;
}

QString stamp(const QFileInfo& info)
{
    return QStringLiteral("%1|%2|%3;")
        .arg(info.filePath())
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch());
}
} // namespace

VCardAddressBook::VCardAddressBook(QString path, int checkIntervalMs)
    : m_path(std::move(path)), m_checkIntervalMs(checkIntervalMs)
{
}

std::unique_ptr<VCardAddressBook> VCardAddressBook::fromSettings(const SettingsStore& settings)
{
    QString path = settings.value(keys::AddressBook).toString();
    if (path.isEmpty())
        return nullptr;
    if (path == u"~" || path.startsWith(u"~/"))
        path = QDir::homePath() + path.mid(1);
    return std::make_unique<VCardAddressBook>(QDir::cleanPath(QDir::fromNativeSeparators(path)));
}

bool VCardAddressBook::isAvailable() const
{
    const QFileInfo info(m_path);
    return !m_path.isEmpty() && info.exists() && info.isReadable();
}

// Size and time of every card file: an editor that rewrites a file in place changes it too.
QString VCardAddressBook::signature() const
{
    const QFileInfo info(m_path);
    if (!info.exists())
        return {};
    if (!info.isDir())
        return stamp(info);
    QString sig;
    for (const QFileInfo& file : cardFiles(m_path))
        sig += stamp(file);
    return sig;
}

void VCardAddressBook::reloadLocked(const QString& sig) const
{
    auto snapshot = std::make_shared<AddressBookSnapshot>();
    QStringList problems;
    const QFileInfo info(m_path);
    const QFileInfoList files = info.isDir() ? cardFiles(m_path) : QFileInfoList{info};
    for (const QFileInfo& file : files) {
        QFile f(file.filePath());
        if (!f.open(QIODevice::ReadOnly)) {
            problems.append(QStringLiteral("%1: cannot be read: %2").arg(file.fileName(), f.errorString()));
            continue;
        }
        VCardParser::Result parsed = VCardParser::parse(f.readAll(), file.fileName());
        snapshot->people += std::move(parsed.people);
        problems += parsed.problems;
    }
    for (const QString& problem : std::as_const(problems))
        qCWarning(lcContacts).noquote() << "address book:" << problem;
    qCDebug(lcContacts) << "address book read:" << snapshot->people.size() << "contacts";
    m_snapshot = std::move(snapshot);
    m_signature = sig;
    m_problems = problems;
}

std::shared_ptr<const AddressBookSnapshot> VCardAddressBook::snapshot() const
{
    QMutexLocker lock(&m_mutex);
    if (!m_snapshot || !m_sinceCheck.isValid() || m_sinceCheck.elapsed() >= m_checkIntervalMs) {
        m_sinceCheck.start();
        const QString sig = signature();
        if (!m_snapshot || sig != m_signature)
            reloadLocked(sig);
    }
    return m_snapshot;
}

QStringList VCardAddressBook::lastProblems() const
{
    QMutexLocker lock(&m_mutex);
    return m_problems;
}

bool VCardAddressBook::addPerson(ABPerson& person, QString* error)
{
    const auto fail = [&](const QString& why) {
        if (error)
            *error = why;
        qCWarning(lcContacts).noquote() << "address book: contact not added:" << why;
        return false;
    };
    if (m_path.isEmpty())
        return fail(QStringLiteral("no address book is configured"));
    if (person.uid.isEmpty())
        person.uid = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QByteArray card = VCardParser::serialize(person);

    QMutexLocker lock(&m_mutex);
    const QFileInfo info(m_path);
    if (info.isDir()) {
        // One card per file, named by its UID, as vdirsyncer keeps them.
        QString base = person.uid;
        base.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9._-]")), QStringLiteral("_"));
        QSaveFile file(QDir(m_path).filePath(base + QStringLiteral(".vcf")));
        if (QFileInfo::exists(file.fileName()))
            return fail(QStringLiteral("a card named %1.vcf exists already").arg(base));
        if (!file.open(QIODevice::WriteOnly) || file.write(card) != card.size() || !file.commit())
            return fail(file.errorString());
    } else {
        QByteArray existing;
        if (info.exists()) {
            QFile in(m_path);
            if (!in.open(QIODevice::ReadOnly))
                return fail(in.errorString());
            existing = in.readAll();
            if (!existing.isEmpty() && !existing.endsWith('\n'))
                existing += "\r\n";
        }
        QSaveFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(existing + card) != existing.size() + card.size() || !file.commit())
            return fail(file.errorString());
    }
    // Seen on the next lookup without waiting for the check interval.
    m_sinceCheck.invalidate();
    return true;
}
