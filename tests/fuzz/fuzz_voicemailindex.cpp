// Any bytes as an answering machine index file, and as a fax file name.
#include "voicemail/VoicemailEntries.h"
#include "voicemail/VoicemailIndex.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    QStringList names;
    for (const qsizetype offset : VoicemailIndex::recordOffsets(bytes.size())) {
        const VoicemailIndex::Record r = VoicemailIndex::readRecord(bytes, offset);
        const VoicemailEntry e = VoicemailEntries::entryForRecord(r, QStringLiteral("FRITZ/voicebox/"),
                                                                  QStringLiteral("meta0"), nullptr);
        if (names.size() < 2)
            names.append(e.RecFile);
    }
    const QByteArray rewritten = VoicemailIndex::withoutRecords(bytes, names);
    if (rewritten.size() > bytes.size())
        __builtin_trap();
    VoicemailEntries::entryForFaxFile(QString::fromLatin1(bytes.left(300)), nullptr);
    return 0;
}
