#include "kit/data/NumberList.h"

#include "kit/data/Telling.h"

#include <QDateTime>
#include <QJSValue>
#include <QSequentialIterable>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace graph {

namespace {

template <typename Element> QVector<double> converted(const QByteArray &bytes, int offset, int count)
{
    QVector<double> numbers(count);
    if constexpr (std::is_same_v<Element, double>) {
        std::memcpy(numbers.data(), bytes.constData() + offset, std::size_t(count) * sizeof(double));
    } else {
        const auto *elements = reinterpret_cast<const Element *>(bytes.constData() + offset);
        std::copy(elements, elements + count, numbers.begin());
    }
    return numbers;
}

// An array of a script has any length, however little is in it.
constexpr double mostElements = 1e8;

double lengthOf(const QVariant &list)
{
    const bool isScript = list.userType() == qMetaTypeId<QJSValue>();
    const QJSValue array = isScript ? list.value<QJSValue>() : QJSValue();
    return array.isArray() ? array.property(QStringLiteral("length")).toNumber() : 0.0;
}

using Conversion = QVector<double> (*)(const QByteArray &, int, int);

// Null for what is no typed array.
Conversion conversionOf(const QString &type)
{
    struct Known
    {
        const char *type;
        Conversion conversion;
    };
    static const Known known[] = {
        {"Float64Array", converted<double>},      {"Float32Array", converted<float>},
        {"Int32Array", converted<qint32>},        {"Uint32Array", converted<quint32>},
        {"Int16Array", converted<qint16>},        {"Uint16Array", converted<quint16>},
        {"Int8Array", converted<qint8>},          {"Uint8Array", converted<quint8>},
        {"Uint8ClampedArray", converted<quint8>},
    };
    for (const Known &candidate : known) {
        if (type == QLatin1String(candidate.type))
            return candidate.conversion;
    }
    return nullptr;
}

// The elements of a typed array lie in one buffer, which is read as a whole: asked for one by one they cost a
// hundred times as much.
std::optional<QVector<double>> typedArray(const QJSValue &array)
{
    const QString type =
        array.property(QStringLiteral("constructor")).property(QStringLiteral("name")).toString();
    const Conversion conversion = conversionOf(type);
    if (!conversion)
        return std::nullopt;
    const QByteArray bytes = array.property(QStringLiteral("buffer")).toVariant().toByteArray();
    const int offset = array.property(QStringLiteral("byteOffset")).toInt();
    const int length = array.property(QStringLiteral("byteLength")).toInt();
    const int count = array.property(QStringLiteral("length")).toInt();
    if (offset < 0 || length < 0 || count < 0 || qint64(offset) + length > bytes.size())
        return std::nullopt;
    return conversion(bytes, offset, count);
}

std::optional<QVector<double>> elements(const QVariant &list)
{
    if (!list.canConvert<QVariantList>() || list.userType() == QMetaType::QString)
        return std::nullopt;
    QVector<double> numbers;
    const auto iterable = list.value<QSequentialIterable>();
    numbers.reserve(iterable.size());
    for (const QVariant &element : iterable)
        numbers.append(numberIn(element));
    return numbers;
}

std::optional<QVector<double>> numbersIn(const QVariant &list)
{
    const int type = list.userType();
    if (type == qMetaTypeId<QVector<double>>())
        return list.value<QVector<double>>();
    if (type == qMetaTypeId<QList<double>>())
        return list.value<QList<double>>().toVector();
    if (type == qMetaTypeId<std::vector<double>>()) {
        const auto values = list.value<std::vector<double>>();
        return QVector<double>(values.begin(), values.end());
    }
    if (type == qMetaTypeId<QJSValue>()) {
        const QJSValue value = list.value<QJSValue>();
        if (!value.isObject())
            return std::nullopt;
        if (auto numbers = typedArray(value))
            return numbers;
        return numbersIn(value.toVariant());
    }
    return elements(list);
}

bool isPair(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QVariantList:
    case QMetaType::QVariantMap:
    case QMetaType::QPoint:
    case QMetaType::QPointF:
    case QMetaType::QVector2D:
        return true;
    default:
        return false;
    }
}

// Other libraries take points one by one.
void tellOfPairs(const QObject *owner, const char *elements)
{
    const QString name = QLatin1String(elements);
    const QString advice = name == QLatin1String("samples")
                               ? QStringLiteral("StreamPoints and append([0, 1], [5, 3])")
                               : QStringLiteral("positions: [0, 1]; values: [5, 3]");
    tellOnce(owner, elements,
             QStringLiteral(
                 "is given points or lists among its %1, which leave gaps: write x and y in a list each, %2")
                 .arg(name, advice));
}

// Gaps are NaN in arrays of numbers, and undefined in what is read from a file; a text or a point is a mistake.
void tellOfMistakes(const QObject *owner, const char *elements, const QVariant &list)
{
    const bool isScript = list.userType() == qMetaTypeId<QJSValue>();
    const QVariantList values = isScript ? list.value<QJSValue>().toVariant().toList() : list.toList();
    if (std::any_of(values.begin(), values.end(), isPair))
        tellOfPairs(owner, elements);
    const auto isText = [](const QVariant &value) {
        return value.userType() == QMetaType::QString && std::isnan(numberIn(value));
    };
    const auto text = std::find_if(values.begin(), values.end(), isText);
    if (text != values.end())
        tellOnce(owner, elements,
                 QStringLiteral("is given the text \"%1\" among its %2, which leaves a gap: write numbers")
                     .arg(text->toString(), QLatin1String(elements)));
}

} // namespace

double numberIn(const QVariant &value)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    if (value.userType() == QMetaType::QDateTime) {
        const QDateTime date = value.toDateTime();
        return date.isValid() ? double(date.toMSecsSinceEpoch()) / 1000.0 : none;
    }
    bool isNumber = false;
    const double result = value.toDouble(&isNumber);
    return isNumber ? result : none;
}

bool beginsWithDate(const QVariant &list)
{
    if (list.userType() == qMetaTypeId<QJSValue>())
        return list.value<QJSValue>().property(0).isDate();
    return list.userType() == QMetaType::QVariantList &&
           list.toList().value(0).userType() == QMetaType::QDateTime;
}

std::optional<QVector<double>> numberList(const QObject *owner, const char *elements, const QVariant &list)
{
    if (const double length = lengthOf(list); length > mostElements) {
        tellOnce(
            owner, elements,
            QStringLiteral("is given %1 of the length %2, and takes none of them: write a list of at most %3")
                .arg(QLatin1String(elements))
                .arg(length, 0, 'f', 0)
                .arg(mostElements, 0, 'f', 0));
        return QVector<double>();
    }
    auto numbers = numbersIn(list);
    const auto isGap = [](double value) { return std::isnan(value); };
    if (numbers && std::any_of(numbers->cbegin(), numbers->cend(), isGap))
        tellOfMistakes(owner, elements, list);
    return numbers;
}

std::optional<QVector<double>> numberListOf(const QObject *owner, const char *property, const QVariant &list)
{
    auto numbers = numberList(owner, property, list);
    if (!numbers && list.isValid() && !list.isNull())
        tell(
            owner,
            QStringLiteral("is given %1 that are no list: write %1: [1, 2, 3]").arg(QLatin1String(property)));
    return numbers;
}

std::optional<double> numberOf(const QObject *owner, const char *property, const QVariant &value)
{
    const double result = numberIn(value);
    if (!std::isnan(result) || value.userType() == QMetaType::Double)
        return result;
    const QString text = value.toString();
    tell(owner,
         QStringLiteral("is given %1 as its %2: write a number, or a date, of which it takes the seconds "
                        "since 1970")
             .arg(text.isEmpty() ? QStringLiteral("nothing") : QLatin1Char('"') + text + QLatin1Char('"'),
                  QLatin1String(property)));
    return std::nullopt;
}

} // namespace graph
