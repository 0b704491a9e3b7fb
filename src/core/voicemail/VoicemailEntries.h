#pragma once

#include "voicemail/VoicemailEntry.h"
#include "voicemail/VoicemailIndex.h"

#include <QList>
#include <QVariantList>

class CallerNameLookup;

// Turning index records and fax file names into list entries, and grouping them for display.
namespace VoicemailEntries {

VoicemailEntry entryForRecord(const VoicemailIndex::Record& record, const QString& folder,
                              const QString& file, CallerNameLookup* names);

// path: the fax file's full path; its name is date "_" time "_" kind.sender.pdf.
FaxEntry entryForFaxFile(const QString& path, CallerNameLookup* names);

// Group title by sortBy ("date", "number", "name", "line"); empty gives the localized "unknown".
QString groupTitle(const QString& sortBy, const QDateTime& timestamp, const QString& number,
                   const QStringList& contact, const QString& line);

// [{"Header": title, "Entry": entry map}, ...] in the given order.
QVariantList grouped(const QList<VoicemailEntry>& entries, const QString& sortBy);
QVariantList grouped(const QList<FaxEntry>& entries, const QString& sortBy);

} // namespace VoicemailEntries
