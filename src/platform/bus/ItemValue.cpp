#include "platform/bus/ItemValue.h"

#include <QStringList>

#include <cmath>
#include <cstring>

namespace graph {

QVariant itemValue(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QStringList:
        return value;
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return value.toInt();
    case QMetaType::Long:
        return value.toLongLong();
    case QMetaType::ULong:
        return value.toULongLong();
    case QMetaType::Float:
        return value.toDouble();
    default:
        return {};
    }
}

bool sameValue(const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    // QVariant compares doubles loosely, which would swallow a step of 1 mHz at 1 GHz.
    if (a.userType() == QMetaType::Double) {
        const double left = a.toDouble();
        const double right = b.toDouble();
        return left == right || (std::isnan(left) && std::isnan(right));
    }
    return a == b;
}

bool sameContents(const QVector<double> &a, const QVector<double> &b)
{
    if (a.size() != b.size())
        return false;
    return a.constData() == b.constData() ||
           std::memcmp(a.constData(), b.constData(), sizeof(double) * size_t(a.size())) == 0;
}

} // namespace graph
