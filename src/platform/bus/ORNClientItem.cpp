#include "platform/bus/ORNClientItem.h"

#include "platform/bus/ItemValue.h"

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
    if (graph::sameValue(m_value, value))
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
    if (graph::sameContents(m_vector, vector))
        return;
    m_vector = vector;
    m_value = QVariant::fromValue(vector);
    emit sizeChanged();
}
