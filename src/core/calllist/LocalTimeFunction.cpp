#include "calllist/LocalTimeFunction.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <ctime>
#include <limits>
#include <string>

namespace LocalTimeFunction {

namespace {

// The offset of one UTC day, when it does not change within that day.
struct DayCache
{
    long long day = std::numeric_limits<long long>::min();
    long offset = 0;
    bool constant = false;
};

long long floorDiv(long long a, long long b)
{
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

long utcOffset(long long t)
{
    const std::time_t tt = static_cast<std::time_t>(t);
    std::tm local{};
    localtime_r(&tt, &local);
    return local.tm_gmtoff;
}

long offsetAt(DayCache& cache, long long t)
{
    const long long day = floorDiv(t, 86400);
    if (day != cache.day) {
        cache.day = day;
        cache.offset = utcOffset(day * 86400);
        cache.constant = cache.offset == utcOffset(day * 86400 + 86399);
    }
    return cache.constant ? cache.offset : utcOffset(t);
}

// Days since 1970-01-01 to a civil date (proleptic Gregorian).
void civilFromDays(long long z, long long& y, unsigned& m, unsigned& d)
{
    z += 719468;
    const long long era = floorDiv(z, 146097);
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    y = static_cast<long long>(yoe) + era * 400;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = doy - (153 * mp + 2) / 5 + 1;
    m = mp < 10 ? mp + 3 : mp - 9;
    if (m <= 2)
        ++y;
}

void appendNumber(std::string& out, long long value, int width)
{
    std::string digits = std::to_string(value < 0 ? -value : value);
    if (value < 0)
        out += '-';
    if (static_cast<int>(digits.size()) < width)
        out.append(static_cast<size_t>(width) - digits.size(), '0');
    out += digits;
}

void localTime(sqlite3_context* ctx, int, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    const char* format = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
    const long long t = sqlite3_value_int64(argv[1]);
    auto* cache = static_cast<DayCache*>(sqlite3_user_data(ctx));
    const long long local = t + offsetAt(*cache, t);
    const long long days = floorDiv(local, 86400);
    const long long secs = local - days * 86400;
    long long year = 0;
    unsigned month = 0, day = 0;
    civilFromDays(days, year, month, day);

    std::string out;
    for (const char* p = format; *p; ++p) {
        if (*p != '%') {
            out += *p;
            continue;
        }
        switch (*++p) {
        case 'd':
            appendNumber(out, day, 2);
            break;
        case 'm':
            appendNumber(out, month, 2);
            break;
        case 'Y':
            appendNumber(out, year, 4);
            break;
        case 'H':
            appendNumber(out, secs / 3600, 2);
            break;
        case 'M':
            appendNumber(out, secs / 60 % 60, 2);
            break;
        case 'S':
            appendNumber(out, secs % 60, 2);
            break;
        case '%':
            out += '%';
            break;
        default: // like STRFTIME, an unknown directive gives NULL
            sqlite3_result_null(ctx);
            return;
        }
    }
    sqlite3_result_text(ctx, out.data(), static_cast<int>(out.size()), SQLITE_TRANSIENT);
}

} // namespace

void registerOn(SQLite::Database& db)
{
    sqlite3_create_function_v2(db.getHandle(), Name, 2, SQLITE_UTF8, new DayCache, localTime, nullptr,
                               nullptr, [](void* p) { delete static_cast<DayCache*>(p); });
}

bool supports(const QString& format)
{
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] != u'%')
            continue;
        if (i + 1 >= format.size() || !QStringLiteral("dmYHMS%").contains(format[i + 1]))
            return false;
        ++i;
    }
    return true;
}

} // namespace LocalTimeFunction
