#include "platform/bus/OrnData.h"

OrnData::OrnData(QObject *parent)
    : QObject(parent)
{
}

void OrnData::setValue(const QVariant &value)
{
    if (m_value == value)
        return;
    m_value = value;
    emit valueChanged();
}
