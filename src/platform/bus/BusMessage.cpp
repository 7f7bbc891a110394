#include "platform/bus/BusMessage.h"

#include "platform/bus/BusLimits.h"
#include "platform/bus/BusName.h"
#include "platform/bus/MessageValue.h"

#include <dbus/dbus.h>

#include <algorithm>

namespace graph {

const char itemsInterface[] = "org.toskorn.Items";

namespace {

const char getItemsMethod[] = "GetItems";
const char answerSignature[] = "ta{sv}a{say}as";
const char valueChanged[] = "ValueChanged";
const char arrayChanged[] = "ArrayChanged";
const char arrayAppended[] = "ArrayAppended";

Message itemsSignal(const Sender &sender, const char *name)
{
    const QByteArray path = busPath(sender.busName).toLatin1();
    Message message(dbus_message_new_signal(path.constData(), itemsInterface, name));
    if (!sender.receiver.isEmpty())
        dbus_message_set_destination(message.get(), sender.receiver.constData());
    return message;
}

// The last three arguments of both array signals.
void appendPart(DBusMessageIter *to, quint64 first, const QVector<double> &vector, int offset)
{
    appendNumber(to, first);
    appendNumber(to, quint64(offset));
    appendBlock(to, vector.constData() + offset, std::min(int(vector.size()) - offset, maxPartElements));
}

using Filter = std::function<bool(const QString &)>;

// Whether there is room for one more item, or it is one of those that always have some.
bool isTaken(ItemsAnswer *answer, const QString &name, const Filter &isWanted)
{
    if (answer->items.values.size() + answer->items.vectors.size() < maxItems || (isWanted && isWanted(name)))
        return true;
    answer->isCut = true;
    return false;
}

void readValues(DBusMessageIter *from, ItemsAnswer *answer, const Filter &isWanted)
{
    forEachEntry(from, [&](const QString &name, DBusMessageIter *entry) {
        if (!isTaken(answer, name, isWanted))
            return;
        const QVariant value = readVariant(entry);
        if (value.isValid())
            answer->items.values.insert(name, value);
    });
}

void readArrays(DBusMessageIter *from, ItemsAnswer *answer, const Filter &isWanted)
{
    forEachEntry(from, [&](const QString &name, DBusMessageIter *entry) {
        if (!isTaken(answer, name, isWanted))
            return;
        if (const auto vector = readBlock(entry))
            answer->items.vectors.insert(name, *vector);
        else
            ++answer->malformed;
    });
}

ItemNews arrayNews(ItemNews::Kind kind, DBusMessageIter *from, ItemNews news)
{
    (kind == ItemNews::ArrayPart ? news.size : news.dropped) = readNumber(from);
    news.offset = readNumber(from);
    const auto elements = readBlock(from);
    news.kind = elements ? kind : ItemNews::Malformed;
    if (elements)
        news.elements = *elements;
    return news;
}

} // namespace

void MessageRelease::operator()(DBusMessage *message) const
{
    dbus_message_unref(message);
}

std::optional<ItemsAnswer> itemsAnswer(DBusMessage *message, const Filter &isWanted)
{
    DBusMessageIter from;
    if (!dbus_message_has_signature(message, answerSignature) || !dbus_message_iter_init(message, &from))
        return {};
    ItemsAnswer answer;
    answer.serial = readNumber(&from);
    readValues(&from, &answer, isWanted);
    readArrays(&from, &answer, isWanted);
    answer.later = readTexts(&from);
    return answer;
}

ItemNews itemNews(DBusMessage *message)
{
    DBusMessageIter from;
    const bool isValue = dbus_message_is_signal(message, itemsInterface, valueChanged);
    const bool isPart = dbus_message_is_signal(message, itemsInterface, arrayChanged);
    const bool isAppended = dbus_message_is_signal(message, itemsInterface, arrayAppended);
    if (!isValue && !isPart && !isAppended)
        return {};
    ItemNews news;
    news.kind = ItemNews::Malformed;
    if (!dbus_message_has_signature(message, isValue ? "tsv" : "tsttay") ||
        !dbus_message_iter_init(message, &from))
        return news;
    news.serial = readNumber(&from);
    news.itemName = readText(&from);
    if (!isValue)
        return arrayNews(isPart ? ItemNews::ArrayPart : ItemNews::ArrayAppended, &from, news);
    news.kind = ItemNews::Value;
    news.value = readVariant(&from);
    return news;
}

Message itemsRequest(const QString &busName)
{
    return Message(dbus_message_new_method_call(busName.toLatin1().constData(),
                                                busPath(busName).toLatin1().constData(), itemsInterface,
                                                getItemsMethod));
}

bool isItemsRequest(DBusMessage *message)
{
    const char *interface = dbus_message_get_interface(message);
    return dbus_message_get_type(message) == DBUS_MESSAGE_TYPE_METHOD_CALL &&
           dbus_message_has_member(message, getItemsMethod) &&
           (!interface || !qstrcmp(interface, itemsInterface));
}

Message itemsReply(DBusMessage *request, const ItemsAnswer &answer)
{
    Message message(dbus_message_new_method_return(request));
    DBusMessageIter to;
    DBusMessageIter array;
    dbus_message_iter_init_append(message.get(), &to);
    appendNumber(&to, answer.serial);
    dbus_message_iter_open_container(&to, DBUS_TYPE_ARRAY, "{sv}", &array);
    for (auto it = answer.items.values.cbegin(); it != answer.items.values.cend(); ++it)
        appendEntry(&array, it.key(), [&](DBusMessageIter *entry) { appendVariant(entry, it.value()); });
    dbus_message_iter_close_container(&to, &array);
    dbus_message_iter_open_container(&to, DBUS_TYPE_ARRAY, "{say}", &array);
    for (auto it = answer.items.vectors.cbegin(); it != answer.items.vectors.cend(); ++it)
        appendEntry(&array, it.key(), [&](DBusMessageIter *entry) {
            appendBlock(entry, it.value().constData(), it.value().size());
        });
    dbus_message_iter_close_container(&to, &array);
    appendTexts(&to, answer.later);
    return message;
}

Message valueSignal(const Sender &sender, quint64 serial, const QString &itemName, const QVariant &value)
{
    Message message = itemsSignal(sender, valueChanged);
    DBusMessageIter to;
    dbus_message_iter_init_append(message.get(), &to);
    appendNumber(&to, serial);
    appendText(&to, itemName);
    appendVariant(&to, value);
    return message;
}

Message arrayPartSignal(const Sender &sender, quint64 serial, const QString &itemName,
                        const QVector<double> &vector, int offset)
{
    Message message = itemsSignal(sender, arrayChanged);
    DBusMessageIter to;
    dbus_message_iter_init_append(message.get(), &to);
    appendNumber(&to, serial);
    appendText(&to, itemName);
    appendPart(&to, quint64(vector.size()), vector, offset);
    return message;
}

Message arrayAppendedSignal(const Sender &sender, quint64 serial, const QString &itemName, quint64 dropped,
                            const QVector<double> &vector, int offset)
{
    Message message = itemsSignal(sender, arrayAppended);
    DBusMessageIter to;
    dbus_message_iter_init_append(message.get(), &to);
    appendNumber(&to, serial);
    appendText(&to, itemName);
    appendPart(&to, dropped, vector, offset);
    return message;
}

qint64 sizeOfText(const QString &text)
{
    return text.size() * qint64(sizeof(QChar));
}

qint64 sizeOfValue(const QVariant &value)
{
    constexpr qint64 overhead = 64;
    qint64 size = overhead;
    if (value.userType() == QMetaType::QString) {
        size += sizeOfText(value.toString());
    } else if (value.userType() == QMetaType::QStringList) {
        for (const QString &text : value.toStringList())
            size += overhead + sizeOfText(text);
    }
    return size;
}

} // namespace graph
