#include "Complaint.h"

#include <QTextStream>

#include <cstdio>

ExitStatus complain(const QString &message, ExitStatus status)
{
    QTextStream(stderr) << "simulator: " << message << '\n';
    return status;
}
