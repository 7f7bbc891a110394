#include "LogWatch.h"

#include <QString>

#include <atomic>
#include <cstdio>

namespace gallery {

namespace {

std::atomic<int> warnings{0};

// An instrument on a busy machine; a page that stays without its data is told of in another way.
bool isPatienceAsked(const QMessageLogContext &context, const QString &text)
{
    return !qstrcmp(context.category, "toskorn.bus") && text.endsWith(QLatin1String("does not answer"));
}

void countedMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if ((type == QtWarningMsg || type == QtCriticalMsg) && !isPatienceAsked(context, text))
        ++warnings;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

} // namespace

void startCountingWarnings()
{
    qInstallMessageHandler(countedMessage);
}

int warningCount()
{
    return warnings;
}

} // namespace gallery
