#include "hostile/NastyValues.h"

#include <QColor>
#include <QFont>
#include <QMetaType>
#include <QPointF>
#include <QRectF>
#include <QStringList>
#include <QVector2D>

#include <limits>

namespace {

using Limits = std::numeric_limits<double>;

// clang-format off
const double nastyNumbers[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 0.0, -0.0, -1.0,
                               Limits::denorm_min(), Limits::min(), Limits::epsilon(), Limits::max(),
                               Limits::lowest(), 1e308, -1e308, 1e100, 1e-300, 2147483648.0, -2147483649.0, 4.5e15,
                               1e10, -1e10, 16777216.0, 0.1, 1.0};
const int nastyIntegers[] = {0, 1, -1, 2, 3, 255, 32767, 32768, 65536, -65536, 1 << 24, 1 << 28,
                             std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
const char *const nastyTexts[] = {"", " ", "Hz", "dBm", "DBUV", "FeetFormatter", "FeetFormatterScaled", ",", "a,b",
                                  ",,,", "%1 %2 %n", "\n\t", "<b>bold</b>&amp;", "\xe2\x80\xae\xd7\x90\xf0\x9f\x98\x80",
                                  "file:///nowhere.png", "/nowhere", ":/nowhere", "1e999"};
// clang-format on

template <typename T, int size> const T &anyOf(const T (&values)[size], NastyValues &nasty)
{
    return values[nasty.below(size)];
}

} // namespace

double NastyValues::number()
{
    if (oneIn(3))
        return anyOf(nastyNumbers, *this);
    return oneIn(2) ? m_random.generateDouble() : m_random.generateDouble() * 200.0 - 50.0;
}

int NastyValues::integer()
{
    return oneIn(3) ? anyOf(nastyIntegers, *this) : below(40) - 5;
}

int NastyValues::enumerator()
{
    return oneIn(6) ? anyOf(nastyIntegers, *this) : oneIn(2) ? below(8) : 1 << below(10);
}

QString NastyValues::text()
{
    if (oneIn(30))
        return QString(5000, QChar(0x20 + below(0x3000)));
    if (oneIn(6))
        return QString(1, QChar(0xd800 + below(0x400))); // half a character
    return QString::fromUtf8(anyOf(nastyTexts, *this));
}

QVector<double> NastyValues::array()
{
    const int sizes[] = {0, 1, 2, 3, 50, 400, 5000};
    QVector<double> values(oneIn(60) ? 200000 : anyOf(sizes, *this));
    const bool ascending = oneIn(2);
    const bool nasty = oneIn(2);
    for (int i = 0; i < values.size(); ++i)
        values[i] = nasty && oneIn(8) ? number() : ascending ? 0.25 * i : m_random.generateDouble() * 100.0;
    return values;
}

QObject *NastyValues::object(const QMetaObject *wanted)
{
    if (oneIn(6))
        return nullptr;
    QVector<QObject *> candidates;
    for (const QPointer<QObject> &object : m_objects) {
        if (object && (!wanted || object->metaObject()->inherits(wanted)))
            candidates.append(object);
    }
    return candidates.isEmpty() ? nullptr : candidates.at(below(candidates.size()));
}

QVariant NastyValues::value(int type, const QByteArray &typeName)
{
    static const QByteArrayList plainNumbers = {"PlotStyle", "TickInterval", "AxisStyle", "AxisRangeOrder",
                                                "PeakType"};
    if (QMetaType(type).flags() & QMetaType::PointerToQObject) {
        const QMetaType pointerType(type);
        QObject *pointer = object(pointerType.metaObject());
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        return QVariant(pointerType, &pointer);
#else
        return QVariant(type, &pointer);
#endif
    }
    // Qt's own enumerations have no room for other numbers, so that merely reading them would be undefined.
    if (typeName.startsWith("Qt::"))
        return below(typeName == "Qt::Orientation" ? 4 : 8);
    if (typeName.contains("::") || plainNumbers.contains(typeName))
        return enumerator();
    switch (type) {
    case QMetaType::Double:
        return number();
    case QMetaType::Float:
        return float(qBound(-3e38, number(), 3e38));
    case QMetaType::Int:
        return integer();
    case QMetaType::UInt:
        return uint(integer());
    case QMetaType::Bool:
        return oneIn(2);
    case QMetaType::QString:
        return text();
    case QMetaType::QStringList:
        return QStringList(QStringList{text(), text()}.mid(below(3)));
    case QMetaType::QColor:
        return QColor(oneIn(3) ? QString("none")
                               : QString("#%1").arg(m_random.generate(), 8, 16, QLatin1Char('0')));
    case QMetaType::QPointF:
        return QPointF(number(), number());
    case QMetaType::QRectF:
        return QRectF(number(), number(), number(), number());
    case QMetaType::QVector2D:
        return QVector2D(float(qBound(-3e38, number(), 3e38)), float(m_random.generateDouble()));
    case QMetaType::QVariant:
        return oneIn(2)   ? QVariant(text())
               : oneIn(2) ? QVariant(number())
               : oneIn(4) ? QVariant::fromValue(array())
                          : QVariant(QVariantList{text(), number(), QVariant(), QVariantMap()});
    case QMetaType::QFont: {
        const int sizes[] = {1, 2, 7, 12, 40, 400, 20000};
        QFont font(oneIn(2) ? "Roboto" : text());
        font.setPixelSize(anyOf(sizes, *this));
        if (oneIn(3))
            font.setPointSizeF(0.001);
        font.setBold(oneIn(3));
        return font;
    }
    default:
        break;
    }
    if (type == qMetaTypeId<QVector<double>>())
        return QVariant::fromValue(array());
    if (type == qMetaTypeId<QList<double>>())
        return QVariant::fromValue(array().toList());
    return QVariant();
}
