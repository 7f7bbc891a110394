#include "platform/bus/BusName.h"

namespace graph {

namespace {

bool isLetter(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || c == QLatin1Char('_') || c == QLatin1Char('-');
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

} // namespace

QString busName(const QString &serviceName)
{
    const QString name = QLatin1String("org.toskorn.") + serviceName;
    if (name.size() > 255)
        return {};
    bool elementStarts = true;
    for (const QChar c : serviceName) {
        if (!isLetter(c) && (elementStarts || (!isDigit(c) && c != QLatin1Char('.'))))
            return {};
        elementStarts = c == QLatin1Char('.');
    }
    return elementStarts ? QString() : name;
}

QString busPath(const QString &busName)
{
    QString path = QLatin1Char('/') + busName;
    path.replace(QLatin1Char('.'), QLatin1Char('/'));
    // A path may not hold the hyphen that a name may.
    return path.replace(QLatin1Char('-'), QLatin1String("_2d"));
}

} // namespace graph
