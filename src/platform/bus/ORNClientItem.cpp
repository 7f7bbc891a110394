#include "platform/bus/ORNClientItem.h"

ORNClientItem::ORNClientItem(const QString &id, QObject *parent)
    : QObject(parent)
    , m_id(id)
{
}

QString ORNClientItem::getId() const
{
    return m_id;
}

QVariant ORNClientItem::getValue() const
{
    return m_value;
}

void ORNClientItem::setValue(const QVariant &value)
{
    if (m_value == value)
        return;
    m_value = value;
    emit valueChanged();
}

QVector<double> ORNVecDoubleClientItem::vector() const
{
    return m_vector;
}

void ORNVecDoubleClientItem::setVector(const QVector<double> &vector)
{
    m_vector = vector;
    emit sizeChanged();
}
