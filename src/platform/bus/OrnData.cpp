#include "platform/bus/OrnData.h"

#include "platform/bus/ItemValue.h"

OrnData::OrnData(QObject *parent)
    : QObject(parent)
{
}

void OrnData::setValue(const QVariant &value)
{
    if (graph::sameValue(m_value, value))
        return;
    m_value = value;
    emit valueChanged();
}
