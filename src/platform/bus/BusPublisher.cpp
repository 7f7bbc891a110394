#include "platform/bus/BusPublisher.h"

BusPublisher::BusPublisher(const QString &, QObject *parent)
    : QObject(parent)
{
}

BusPublisher::~BusPublisher() = default;

bool BusPublisher::publish()
{
    return false;
}

void BusPublisher::setValue(const QString &, const QVariant &) {}

void BusPublisher::setVector(const QString &, const QVector<double> &) {}
