#include "platform/bus/BusMessage.h"

#include "platform/bus/ItemValue.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <algorithm>
#include <cstring>

namespace graph {

using Blocks = QMap<QString, QByteArray>;

const char itemsInterface[] = "org.toskorn.Items";
const char getItemsMethod[] = "GetItems";
const char valueChangedSignal[] = "ValueChanged";
const char valueChangedSignature[] = "tsv";
const char arrayChangedSignal[] = "ArrayChanged";
const char arrayChangedSignature[] = "tsttay";

namespace {

const char answerSignature[] = "ta{sv}a{say}as";

// Without a copy: valid while the vector is.
QByteArray blockOfVector(const QVector<double> &vector, int offset, int count)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(vector.constData() + offset),
                                   count * int(sizeof(double)));
}

} // namespace

ItemsAnswer itemsAnswer(quint64 serial, const BusItems &items)
{
    ItemsAnswer answer;
    answer.serial = serial;
    answer.items.values = items.values;
    int room = maxAnsweredElements;
    for (auto it = items.vectors.cbegin(); it != items.vectors.cend(); ++it) {
        if (it->size() > room) {
            answer.later.append(it.key());
        } else {
            answer.items.vectors.insert(it.key(), *it);
            room -= it->size();
        }
    }
    return answer;
}

QVariantList messageArguments(const ItemsAnswer &answer)
{
    qDBusRegisterMetaType<Blocks>();
    QVariantMap values;
    for (auto it = answer.items.values.cbegin(); it != answer.items.values.cend(); ++it)
        values.insert(it.key(), it.value());
    Blocks blocks;
    for (auto it = answer.items.vectors.cbegin(); it != answer.items.vectors.cend(); ++it)
        blocks.insert(it.key(), blockOfVector(it.value(), 0, it->size()));
    return {answer.serial, values, QVariant::fromValue(blocks), answer.later};
}

std::optional<ItemsAnswer> itemsAnswer(const QDBusMessage &message, int *malformed)
{
    if (message.signature() != QLatin1String(answerSignature))
        return {};
    const QVariantList arguments = message.arguments();
    ItemsAnswer answer;
    answer.serial = arguments.at(0).toULongLong();
    const auto values = qdbus_cast<QVariantMap>(arguments.at(1));
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        const QVariant value = itemValue(it.value());
        if (value.isValid())
            answer.items.values.insert(it.key(), value);
    }
    const auto blocks = qdbus_cast<Blocks>(arguments.at(2));
    for (auto it = blocks.cbegin(); it != blocks.cend(); ++it) {
        if (const auto vector = vectorOfBlock(it.value()))
            answer.items.vectors.insert(it.key(), *vector);
        else
            ++*malformed;
    }
    answer.later = arguments.at(3).toStringList();
    return answer;
}

QVariantList arrayPartArguments(quint64 serial, const QString &itemName, const QVector<double> &vector,
                                int offset)
{
    const int count = std::min(int(vector.size()) - offset, maxPartElements);
    return {serial, itemName, quint64(vector.size()), quint64(offset), blockOfVector(vector, offset, count)};
}

std::optional<QVector<double>> vectorOfBlock(const QByteArray &block)
{
    if (block.size() % int(sizeof(double)) != 0)
        return {};
    QVector<double> vector(block.size() / int(sizeof(double)));
    // An empty vector's memory is shared by all: not even zero bytes may be asked of it for writing.
    if (!vector.isEmpty())
        std::memcpy(vector.data(), block.constData(), size_t(block.size()));
    return vector;
}

} // namespace graph
