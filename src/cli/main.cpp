#include "CliContext.h"
#include "Command.h"

#include "base/Localization.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tondrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TONDREL_VERSION));
    Localization::install();

    QTextStream out(stdout);
    QTextStream err(stderr);
    QTextStream in(stdin);
    CliContext ctx(out, err, in);
    return runCli(argc, argv, ctx);
}
