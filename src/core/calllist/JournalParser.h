#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// Where the fields of a journal row stand. -1: the journal has no such column.
struct JournalColumns
{
    int type = 0;
    int date = 1;
    int name = 2;
    int number = 3;
    int extension = 4;
    int line = 5;
    int duration = 6;
    int count = 7;

    // From a header line (German or English, blanks after ";" allowed); nullopt when the line
    // is not a journal header.
    static std::optional<JournalColumns> fromHeader(const QString& line);
    // Without a header: 6 fields have no name, 8 fields carry the area after the number.
    static std::optional<JournalColumns> fromFieldCount(qsizetype count);
};

// One journal row with its fields checked.
struct JournalRow
{
    int type = 0;        // 1 incoming, 2 missed, 3 outgoing or rejected, 4 outgoing
    qint64 calldate = 0; // local time of the text, as Unix seconds
    QString name;        // as the router knows it; empty without a name column
    bool hasNameColumn = false;
    QString number;
    QString extension;
    QString line;
    QString duration; // h:mm
};

// Reads journal text: the decoding, the header and one row at a time.
class JournalParser
{
public:
    // UTF-8 when the bytes are valid UTF-8, else ISO-8859-1 (older routers).
    static QString decode(const QByteArray& bytes);
    // Lines without their "\r".
    static QStringList splitLines(const QString& text);

    // The column layout of the header; without it each row is read by its field count.
    explicit JournalParser(std::optional<JournalColumns> header = std::nullopt) : m_header(header) {}

    enum class Outcome { Row, Ignored, Bad };
    // Ignored: an empty line or one the router pads with (empty first field, under six fields).
    // Bad: a wrong field count, date, type or duration; the reason goes to *why.
    Outcome parse(const QString& text, JournalRow* row, QString* why);

    // The four-digit-year date form, once met, stays for the rest of the journal.
    bool longDates() const { return m_longDates; }

    // "dd.MM.yy HH:mm" (years 2000-2099) or "dd.MM.yyyy HH:mm" in local time; nullopt when bad.
    static std::optional<qint64> parseDate(QStringView text, bool longYear);
    static bool isDuration(QStringView text);

private:
    std::optional<JournalColumns> m_header;
    bool m_longDates = false;
};
