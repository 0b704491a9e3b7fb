// The call list window's actions between calls and contacts: looking a number up on the web
// and adding it to the address book.
#include "CallListWindow.h"

#include "AddContactDialog.h"
#include "CallListModel.h"

#include "base/Localization.h"
#include "calllist/TNCallinglist.h"
#include "contacts/AddressBook.h"
#include "contacts/CallerIdentification.h"
#include "contacts/ReverseLookup.h"

#include <QApplication>
#include <QPointer>
#include <QStatusBar>
#include <QThreadPool>

namespace {
constexpr int MessageMs = 8000;
} // namespace

bool CallListWindow::lookUpSelectedNumber()
{
    const QList<int> rows = selectedCallRows();
    ReverseLookup* lookup = ReverseLookup::shared();
    if (rows.size() != 1 || m_lookingUp || !lookup)
        return false;
    const QString number = m_model->index(rows.first(), 0).data(CallListModel::NumberRole).toString();
    if (number.isEmpty())
        return false;
    m_lookingUp = true;
    updateActions();
    statusBar()->showMessage(tr("Looking up %1…").arg(number));
    // Asked by the user: runs whatever the location's automatic lookup setting says. A name found
    // goes into the caller cache and "RELOADCALLINGLIST" is posted, as for a ringing call.
    const Prefixis prefixis = Prefixis::current(&m_manager);
    QPointer<CallListWindow> self(this);
    QThreadPool::globalInstance()->start([self, lookup, number, prefixis] {
        const QString name = lookup->threadReverseSearch(QString(), number, prefixis, nullptr, {});
        QMetaObject::invokeMethod(
            qApp,
            [self, number, name] {
                if (self)
                    self->lookUpDone(number, name);
            },
            Qt::QueuedConnection);
    });
    return true;
}

void CallListWindow::lookUpDone(const QString& number, const QString& name)
{
    m_lookingUp = false;
    statusBar()->showMessage(name.isEmpty() ? Localization::localized(QStringLiteral("noReverseMatch"))
                                            : tr("%1: %2").arg(number, name),
                             MessageMs);
    reloadList();
    emit lookUpFinished(number, name);
}

AddContactDialog* CallListWindow::openAddContact()
{
    AddressBook* book = AddressBook::shared();
    const QList<int> rows = selectedCallRows();
    if (!book || rows.size() != 1)
        return nullptr;
    const QString number = m_model->index(rows.first(), 0).data(CallListModel::NumberRole).toString();
    if (number.isEmpty())
        return nullptr;
    auto* dialog = new AddContactDialog(*book, number, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, number] { contactAdded(number); });
    dialog->open();
    return dialog;
}

void CallListWindow::contactAdded(const QString& number)
{
    // A name cached earlier (a web lookup) would hide the new contact: ask the book afresh,
    // which caches its answer.
    m_calls.resetCallerNamesForNumber(number);
    methods::searchNameForPhonenumber(number);
    reloadList();
    statusBar()->showMessage(tr("%1 was added to the address book.").arg(number), MessageMs);
}
