#include "LogWatch.h"

#include <QString>

#include <atomic>
#include <cstdio>

namespace gallery {

namespace {

std::atomic<int> warnings{0};

void countedMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg)
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
