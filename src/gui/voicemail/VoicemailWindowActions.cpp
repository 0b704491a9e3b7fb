#include "VoicemailWindow.h"

#include "VoicemailListModel.h"

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "voicemail/TNFTPDatasource.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTableView>
#include <QThreadPool>
#include <QUrl>

using VoicemailTransfers::Outcome;

void VoicemailWindow::runTransfer(const QString& what, Work work, Done done)
{
    VBFTPConnection::Settings settings;
    if (!storageSettings(&settings))
        return;
    m_transferring = true;
    m_cancelled = false;
    clearError();
    m_statusText->setText(what);
    updateActions();
    // Made here, so that "STOPFTPTRANSFER" posted on this thread reaches it; released here too.
    auto connection = std::make_shared<VBFTPConnection>(m_center);
    QPointer<VoicemailWindow> self(this);
    QThreadPool::globalInstance()->start(
        [self, connection, settings, work = std::move(work), done = std::move(done)]() mutable {
            const Outcome outcome = work(*connection, settings);
            QMetaObject::invokeMethod(
                qApp,
                [self, outcome, done = std::move(done), connection = std::move(connection)] {
                    if (self)
                        self->transferDone(outcome, done);
                },
                Qt::QueuedConnection);
        });
}

void VoicemailWindow::transferDone(const Outcome& outcome, const Done& done)
{
    m_transferring = false;
    m_statusText->clear();
    const QString error = outcome.ok() ? QString()
                          : m_cancelled || outcome.kind == FTPError::Kind::Cancelled
                              ? tr("The transfer was cancelled.")
                              : outcome.error;
    if (!error.isEmpty())
        showError(error);
    done(outcome);
    updateActions();
    emit transferFinished(outcome.ok());
    if (m_reloadPending) {
        reload();
        // The reading that follows must not wipe out why the transfer failed.
        if (!error.isEmpty())
            showError(error);
    }
}

void VoicemailWindow::playSelected()
{
    const QList<int> rows = selectedRows();
    if (rows.size() != 1 || m_loading || m_transferring)
        return;
    const QString cache = m_cacheDir;
    const auto open = [this](const QString& path) {
        if (m_openFile)
            m_openFile(path);
        else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
            showError(tr("No program on this desktop opens %1.").arg(QFileInfo(path).fileName()));
    };
    if (currentTab() == FaxTab) {
        const FaxEntry fax = *m_faxModel->faxAt(rows.first());
        runTransfer(
            tr("Fetching the fax…"),
            [fax, cache](VBFTPConnection& c, const VBFTPConnection::Settings& s) {
                return VoicemailTransfers::fetchFax(c, s, fax, cache);
            },
            [this, fax, open](const Outcome& outcome) {
                if (!outcome.ok())
                    return;
                open(outcome.path);
                m_datasource->markFaxSeen(fax, m_clock->now());
                refreshNewMarkers();
            });
        return;
    }
    const VoicemailEntry message = *m_voicemailModel->voicemailAt(rows.first());
    runTransfer(
        tr("Fetching the message…"),
        [message, cache](VBFTPConnection& c, const VBFTPConnection::Settings& s) {
            return VoicemailTransfers::fetchVoicemail(c, s, message, cache);
        },
        [this, message, open](const Outcome& outcome) {
            if (!outcome.ok())
                return;
            open(outcome.path);
            m_datasource->markVoicemailSeen(message, m_clock->now());
            refreshNewMarkers();
        });
}

QString VoicemailWindow::suggestedName(int row) const
{
    if (currentTab() == FaxTab)
        return m_faxModel->faxAt(row)->fileName();
    const VoicemailEntry& e = *m_voicemailModel->voicemailAt(row);
    QString who = e.Contact.value(1).isEmpty() ? e.PhoneNumber : e.Contact.value(1);
    // Characters that file systems refuse or treat as folders.
    static const QString unsafe = QStringLiteral("/\\:*?\"<>|");
    for (QChar& c : who)
        if (unsafe.contains(c))
            c = u'_';
    const QDateTime recorded = e.recordedAt();
    const QString when =
        recorded.isValid() ? recorded.toString(QStringLiteral("yyyy-MM-dd HH.mm")) : e.RecFile;
    return (who.isEmpty() ? when : when + u' ' + who) + QStringLiteral(".wav");
}

void VoicemailWindow::saveSelectedAs()
{
    const QList<int> rows = selectedRows();
    if (rows.size() != 1 || m_loading || m_transferring)
        return;
    const bool fax = currentTab() == FaxTab;
    const QString name = suggestedName(rows.first());
    const QString filter = fax ? tr("PDF documents (*.pdf)") : tr("WAV audio (*.wav)");
    QString target;
    if (m_chooseSavePath) {
        target = m_chooseSavePath(name, filter);
    } else {
        QString folder = QStandardPaths::writableLocation(fax ? QStandardPaths::DocumentsLocation
                                                              : QStandardPaths::MusicLocation);
        if (folder.isEmpty())
            folder = QDir::homePath();
        target = QFileDialog::getSaveFileName(this, fax ? tr("Save fax") : tr("Save message"),
                                              QDir(folder).filePath(name), filter);
    }
    if (target.isEmpty())
        return;
    const QString cache = m_cacheDir;
    const auto save = [this, target](const Outcome& outcome) {
        if (outcome.ok())
            saveFetched(outcome.path, target);
    };
    if (fax) {
        const FaxEntry entry = *m_faxModel->faxAt(rows.first());
        runTransfer(
            tr("Fetching the fax…"),
            [entry, cache](VBFTPConnection& c, const VBFTPConnection::Settings& s) {
                return VoicemailTransfers::fetchFax(c, s, entry, cache);
            },
            save);
    } else {
        const VoicemailEntry entry = *m_voicemailModel->voicemailAt(rows.first());
        runTransfer(
            tr("Fetching the message…"),
            [entry, cache](VBFTPConnection& c, const VBFTPConnection::Settings& s) {
                return VoicemailTransfers::fetchVoicemail(c, s, entry, cache);
            },
            save);
    }
}

void VoicemailWindow::saveFetched(const QString& fetched, const QString& target)
{
    QFile in(fetched);
    QSaveFile out(target);
    if (!in.open(QIODevice::ReadOnly)) {
        showError(tr("%1 could not be read: %2").arg(fetched, in.errorString()));
        return;
    }
    const QByteArray data = in.readAll();
    if (!out.open(QIODevice::WriteOnly) || out.write(data) != data.size() || !out.commit()) {
        showError(tr("%1 could not be written: %2").arg(target, out.errorString()));
        return;
    }
    m_statusText->setText(tr("Saved as %1.").arg(QFileInfo(target).fileName()));
}

void VoicemailWindow::deleteSelected()
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty() || m_loading || m_transferring)
        return;
    const bool fax = currentTab() == FaxTab;
    const int count = int(rows.size());
    bool confirmed = false;
    if (m_confirmDelete) {
        confirmed = m_confirmDelete(count);
    } else {
        const QString question =
            fax ? (count == 1 ? tr("Delete this fax from the router?")
                              : tr("Delete %1 faxes from the router?").arg(count))
                : (count == 1 ? tr("Delete this message from the answering machine?")
                              : tr("Delete %1 messages from the answering machine?").arg(count));
        confirmed = QMessageBox::question(this, tr("Delete"), question, QMessageBox::Yes | QMessageBox::No,
                                          QMessageBox::No) == QMessageBox::Yes;
    }
    if (!confirmed)
        return;
    // Whatever went, the list is read again to show what is left.
    const auto reread = [this](const Outcome&) { m_reloadPending = true; };
    if (fax) {
        QList<FaxEntry> entries;
        for (int row : rows)
            entries.append(*m_faxModel->faxAt(row));
        runTransfer(
            tr("Deleting…"),
            [entries](VBFTPConnection& c, const VBFTPConnection::Settings& s) {
                return VoicemailTransfers::deleteFaxes(c, s, entries);
            },
            reread);
    } else {
        QList<VoicemailEntry> entries;
        for (int row : rows)
            entries.append(*m_voicemailModel->voicemailAt(row));
        runTransfer(
            tr("Deleting…"),
            [entries](VBFTPConnection& c, const VBFTPConnection::Settings& s) {
                return VoicemailTransfers::deleteVoicemails(c, s, entries);
            },
            reread);
    }
}

void VoicemailWindow::showContextMenu(const QPoint& pos)
{
    QTableView* view = table(currentTab());
    if (!view->indexAt(pos).isValid())
        return;
    QMenu menu(this);
    menu.addAction(m_play);
    menu.addAction(m_save);
    menu.addSeparator();
    menu.addAction(m_delete);
    menu.exec(view->viewport()->mapToGlobal(pos));
}
