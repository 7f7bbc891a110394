#include "data/PlotPoints.h"
#include "data/PlotSeries.h"
#include "fuzz/FuzzInput.h"
#include "platform/bus/BusName.h"

#include <QCoreApplication>

#include <dbus/dbus.h>

#include <memory>

namespace {

class Client : public ORNClientInterface
{
public:
    ORNClientItem *newItem(const QString &name)
    {
        ORNClientItem *item = nullptr;
        if (name.endsWith(QLatin1String(":doubleARRAY:")))
            item = new ORNVecDoubleClientItem(name, this);
        else
            item = new ORNClientItem(name, this);
        return item;
    }
};

Client *client = nullptr;

} // namespace

// In place of the bus library: a service of any name that publishes whatever item it is asked for.
ORNClientInterface *ORNClientInterface::getSessionBusClient(const QString &, QObject *)
{
    return client;
}

ORNClientItem *ORNClientInterface::getItem(const QString &itemName)
{
    return static_cast<Client *>(this)->newItem(itemName);
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    return 0;
}

// A text that is written to dbusAddress, and the name of a service.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes = FuzzInput(data, size).rest();
    const QString text = QString::fromUtf8(bytes);
    const QByteArray busName = graph::busName(text).toUtf8();
    if (!busName.isEmpty()) {
        FUZZ_CHECK(dbus_validate_bus_name(busName.constData(), nullptr));
        FUZZ_CHECK(dbus_validate_path(graph::busPath(busName).toUtf8().constData(), nullptr));
    }

    Client service;
    client = &service;
    PlotSeries series;
    PlotPoints points;
    for (PlotData *follower : {static_cast<PlotData *>(&series), static_cast<PlotData *>(&points)}) {
        follower->setDbusAddress(text);
        FUZZ_CHECK(follower->dbusAddress() == (text.contains(QLatin1Char(',')) ? text : QString()));
    }
    for (ORNClientItem *item : service.findChildren<ORNClientItem *>()) {
        if (auto *vector = qobject_cast<ORNVecDoubleClientItem *>(item))
            emit vector->sizeChanged();
        else
            emit item->valueChanged();
    }
    // Whatever the prefix, the keys are those that were asked for: two of them are no properties.
    FUZZ_CHECK(series.dynamicPropertyNames().size() <= 2 && points.dynamicPropertyNames().isEmpty());
    return 0;
}
