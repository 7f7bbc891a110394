#include "plots/ArrayElement.h"

#include <QJSValue>
#include <QSequentialIterable>

namespace graph {

namespace {

// An array written by QML may still be a script value.
QVariant unwrapped(const QVariant &value)
{
    return value.userType() == qMetaTypeId<QJSValue>() ? value.value<QJSValue>().toVariant() : value;
}

// Qt would read the characters of a string as a sequence.
bool isArray(const QVariant &value)
{
    return value.userType() != QMetaType::QString && value.userType() != QMetaType::QByteArray &&
           value.canConvert<QVariantList>();
}

} // namespace

QVariant arrayElement(const QVariant &value, int index)
{
    QVariant plain = unwrapped(value);
    if (!isArray(plain))
        return plain;
    const QSequentialIterable elements = plain.value<QSequentialIterable>();
    return index >= 0 && index < elements.size() ? elements.at(index) : QVariant();
}

bool isEmptyArray(const QVariant &value)
{
    const QVariant plain = unwrapped(value);
    return !plain.isValid() || (isArray(plain) && plain.value<QSequentialIterable>().size() == 0);
}

QString valueText(const QVariant &value)
{
    const int type = value.userType();
    if (type == QMetaType::Double || type == QMetaType::Float)
        return QString::number(value.toDouble(), 'g', 6);
    return value.toString();
}

} // namespace graph
