#include "kit/chart/BusChecks.h"

#include "data/PlotData.h"
#include "platform/bus/ORNClientInterface.h"

namespace graph {

namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString withoutAddress(const PlotData &data)
{
    const QString written = data.busBinding().writtenAddress();
    if (written.isNull() || !written.isEmpty() || data.size() > 0)
        return {};
    return QStringLiteral(
        "has an empty address: write the name of the service, a comma and the prefix of its items, such "
        "as \"analyzer,spectrum\"");
}

QString withUnreadableAddress(const PlotData &data)
{
    const QString written = data.busBinding().writtenAddress();
    if (written.isEmpty())
        return {};
    const QStringList parts = written.split(QLatin1Char(','));
    QString why;
    if (parts.size() != 2)
        why = parts.size() < 2 ? QStringLiteral("has no comma") : QStringLiteral("has more than one comma");
    else if (parts.at(0).trimmed().isEmpty())
        why = QStringLiteral("names no service");
    else if (parts.at(1).trimmed().isEmpty())
        why = QStringLiteral("has no prefix");
    else if (written.contains(QLatin1Char(' ')))
        why = QStringLiteral("has a blank");
    else if (!data.busBinding().client())
        why = QStringLiteral("has a name that no service can have");
    if (why.isEmpty())
        return {};
    return QStringLiteral("cannot use the address %1, which %2: write the name of the service, a comma and "
                          "the prefix of "
                          "its items, without blanks, such as \"analyzer,spectrum\"")
        .arg(quoted(written), why);
}

// Whether the client's service is there; a bus library that cannot tell counts as one that is.
bool isServiceThere(ORNClientInterface *client)
{
    bool isThere = true;
    if (client->metaObject()->indexOfMethod("isServiceThere()") >= 0)
        QMetaObject::invokeMethod(client, "isServiceThere", Q_RETURN_ARG(bool, isThere));
    return isThere;
}

QString withoutService(const PlotData &data)
{
    ORNClientInterface *client = data.busBinding().client();
    if (!client || isServiceThere(client))
        return {};
    const QString service = data.busBinding().address().section(QLatin1Char(','), 0, 0);
    return QStringLiteral(
               "waits for the service %1, which is not on the bus: start it on the same session bus, which "
               "dbus-run-session opens where there is none, or correct the address %2")
        .arg(quoted(service), quoted(data.busBinding().address()));
}

QString withoutItem(const PlotData &data)
{
    if (!data.busBinding().client() || data.size() > 0)
        return {};
    QStringList arrays;
    for (const QString &item : data.busBinding().missingItems()) {
        if (item.endsWith(QLatin1String(":doubleARRAY:")))
            arrays.append(quoted(item));
    }
    if (arrays.isEmpty())
        return {};
    arrays.sort();
    return QStringLiteral("gets no values: the service %1 does not publish %2; compare the prefix in the "
                          "address %3 with "
                          "the names of its items")
        .arg(quoted(data.busBinding().address().section(QLatin1Char(','), 0, 0)),
             arrays.join(QStringLiteral(" and ")), quoted(data.busBinding().address()));
}

using BusCheck = QString (*)(const PlotData &);
const BusCheck busChecks[] = {withoutAddress, withUnreadableAddress, withoutService, withoutItem};

} // namespace

QString reasonOfBus(const PlotData &data)
{
    for (const BusCheck check : busChecks) {
        QString reason = check(data);
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

} // namespace graph
