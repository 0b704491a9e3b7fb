#include "SimRequest.h"

#include <httplib.h>

namespace {
void parseInto(const std::string& text, SimParams& out)
{
    const QByteArray raw = QByteArray::fromStdString(text);
    for (const QByteArray& part : raw.split('&')) {
        if (part.isEmpty())
            continue;
        const qsizetype eq = part.indexOf('=');
        const QByteArray name = eq < 0 ? part : part.left(eq);
        const QByteArray value = eq < 0 ? QByteArray() : part.mid(eq + 1);
        out.items.append({QString::fromUtf8(QByteArray::fromPercentEncoding(name)),
                          QString::fromUtf8(QByteArray::fromPercentEncoding(value))});
    }
}
} // namespace

SimParams SimParams::fromRequest(const httplib::Request& req)
{
    SimParams p;
    const auto q = req.target.find('?');
    if (q != std::string::npos)
        parseInto(req.target.substr(q + 1), p);
    if (req.method == "POST")
        parseInto(req.body, p);
    return p;
}

bool SimParams::has(const QString& name) const
{
    for (const auto& [n, v] : items)
        if (n == name)
            return true;
    return false;
}

QString SimParams::value(const QString& name) const
{
    for (const auto& [n, v] : items)
        if (n == name)
            return v;
    return {};
}

std::string simLoginPage()
{
    return "<!DOCTYPE html>\n<html><head><title>FRITZ!Box</title></head><body>\n"
           "<form method=\"post\" action=\"/\"><input type=\"text\" name=\"username\">\n"
           "<input type=\"password\" name=\"password\"><button>Anmelden</button></form>\n</body></html>\n";
}
