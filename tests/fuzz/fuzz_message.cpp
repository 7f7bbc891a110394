#include "fuzz/FuzzInput.h"
#include "platform/bus/ArrayAssemblies.h"
#include "platform/bus/BusLimits.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/ItemStore.h"

#include <dbus/dbus.h>

namespace {

using graph::Message;

// Names that come again, so that messages meet.
QByteArray anyName(FuzzInput &input)
{
    const QByteArray names[] = {"t_yData:doubleARRAY:", "t_label:", QByteArray(), "\xc3\xbc",
                                QByteArray(300, 'n')};
    return names[input.take<unsigned char>() % 5];
}

void appendBasic(DBusMessageIter *to, int type, const void *value)
{
    dbus_message_iter_append_basic(to, type, value);
}

void appendName(DBusMessageIter *to, FuzzInput &input)
{
    const QByteArray name = anyName(input);
    const char *text = name.constData();
    appendBasic(to, DBUS_TYPE_STRING, &text);
}

// Small numbers often, all others sometimes.
void appendNumber(DBusMessageIter *to, FuzzInput &input)
{
    const auto small = input.take<signed char>();
    const dbus_uint64_t number = small >= 0 ? dbus_uint64_t(small) : input.take<quint64>();
    appendBasic(to, DBUS_TYPE_UINT64, &number);
}

void appendBlock(DBusMessageIter *to, FuzzInput &input)
{
    const int count = input.take<unsigned char>();
    const int odd = input.take<unsigned char>() == 1 ? 3 : 0;
    const QByteArray bytes(count * int(sizeof(double)) + odd, char(count));
    const char *block = bytes.constData();
    DBusMessageIter array;
    dbus_message_iter_open_container(to, DBUS_TYPE_ARRAY, "y", &array);
    dbus_message_iter_append_fixed_array(&array, DBUS_TYPE_BYTE, &block, bytes.size());
    dbus_message_iter_close_container(to, &array);
}

void appendNames(DBusMessageIter *to, FuzzInput &input)
{
    DBusMessageIter array;
    dbus_message_iter_open_container(to, DBUS_TYPE_ARRAY, "s", &array);
    for (int count = input.take<unsigned char>() % 8; count > 0; --count)
        appendName(&array, input);
    dbus_message_iter_close_container(to, &array);
}

void appendNumberVariant(DBusMessageIter *to, char type, quint64 bits)
{
    const char signature[] = {type, '\0'};
    DBusMessageIter variant;
    dbus_message_iter_open_container(to, DBUS_TYPE_VARIANT, signature, &variant);
    appendBasic(&variant, type, &bits);
    dbus_message_iter_close_container(to, &variant);
}

void appendVariant(DBusMessageIter *to, FuzzInput &input)
{
    const char *const numbers = "ybnqiuxtd";
    const char *const others[] = {"s", "as", "ay", "v"};
    const int kind = input.take<unsigned char>() % 13;
    if (kind < 9) {
        const quint64 bits = input.take<quint64>();
        appendNumberVariant(to, numbers[kind], numbers[kind] == 'b' ? bits % 2 : bits);
        return;
    }
    DBusMessageIter variant;
    dbus_message_iter_open_container(to, DBUS_TYPE_VARIANT, others[kind - 9], &variant);
    if (kind == 9)
        appendName(&variant, input);
    else if (kind == 10)
        appendNames(&variant, input);
    else if (kind == 11)
        appendBlock(&variant, input);
    else
        appendNumberVariant(&variant, 't', 7);
    dbus_message_iter_close_container(to, &variant);
}

template <typename Append>
void appendEntries(DBusMessageIter *to, const char *type, FuzzInput &input, Append append)
{
    DBusMessageIter array;
    DBusMessageIter entry;
    dbus_message_iter_open_container(to, DBUS_TYPE_ARRAY, type, &array);
    for (int count = input.take<unsigned char>() % 8; count > 0; --count) {
        dbus_message_iter_open_container(&array, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
        appendName(&entry, input);
        append(&entry, input);
        dbus_message_iter_close_container(&array, &entry);
    }
    dbus_message_iter_close_container(to, &array);
}

Message newSignal(FuzzInput &input)
{
    const char *const names[] = {"ValueChanged", "ArrayChanged", "ArrayAppended"};
    const int name = input.take<unsigned char>() % 3;
    Message message(dbus_message_new_signal("/org/toskorn/a", graph::itemsInterface, names[name]));
    DBusMessageIter to;
    dbus_message_iter_init_append(message.get(), &to);
    appendNumber(&to, input);
    appendName(&to, input);
    if (name == 0) {
        appendVariant(&to, input);
    } else {
        appendNumber(&to, input);
        appendNumber(&to, input);
        appendBlock(&to, input);
    }
    return message;
}

Message newAnswer(FuzzInput &input)
{
    Message message(dbus_message_new(DBUS_MESSAGE_TYPE_METHOD_RETURN));
    dbus_message_set_reply_serial(message.get(), 1);
    DBusMessageIter to;
    dbus_message_iter_init_append(message.get(), &to);
    appendNumber(&to, input);
    appendEntries(&to, "{sv}", input, appendVariant);
    appendEntries(&to, "{say}", input, appendBlock);
    appendNames(&to, input);
    return message;
}

// The bytes of a message, some of them changed.
QByteArray damagedBytes(const Message &message, FuzzInput &input)
{
    dbus_message_set_serial(message.get(), 1);
    char *wire = nullptr;
    int length = 0;
    if (!dbus_message_marshal(message.get(), &wire, &length))
        return QByteArray();
    QByteArray bytes(wire, length);
    dbus_free(wire);
    for (int count = input.take<unsigned char>() % 4; count > 0; --count) {
        const int at = input.take<quint16>() % length;
        bytes[at] = char(bytes[at] ^ input.take<char>());
    }
    return bytes;
}

// What a client does with the messages of one service.
class Receiver
{
public:
    ~Receiver()
    {
        m_assemblies.clear();
        FUZZ_CHECK(m_totalBytes == 0);
    }

    void take(const QByteArray &bytes)
    {
        const Message message(dbus_message_demarshal(bytes.constData(), bytes.size(), nullptr));
        if (!message)
            return;
        graph::isItemsRequest(message.get());
        if (const auto answer = graph::itemsAnswer(message.get())) {
            for (auto it = answer->items.values.cbegin(); it != answer->items.values.cend(); ++it)
                m_store.setValue(it.key(), it.value());
            for (auto it = answer->items.vectors.cbegin(); it != answer->items.vectors.cend(); ++it)
                m_store.setVector(it.key(), it.value());
            for (const QString &name : answer->later)
                m_store.makeVector(name);
        }
        graph::ItemNews news = graph::itemNews(message.get());
        FUZZ_CHECK(news.elements.size() <= bytes.size());
        if (news.kind == graph::ItemNews::Value && news.value.isValid())
            m_store.setValue(news.itemName, news.value);
        else if (news.kind == graph::ItemNews::ArrayPart)
            takePart(&news);
        else if (news.kind == graph::ItemNews::ArrayAppended)
            m_store.append(news.itemName, news.dropped, news.offset, news.elements);
    }

    void tell()
    {
        m_store.watchAll();
        for (const ItemStore::Change &change : m_store.takeChanges()) {
            FUZZ_CHECK(change.itemName.size() <= graph::maxNameLength);
            FUZZ_CHECK(change.appended <= change.item.vector.size() || change.dropped > 0);
        }
        FUZZ_CHECK(!m_store.hasChanges());
        m_store.forgetUnwatched();
    }

private:
    void takePart(graph::ItemNews *news)
    {
        const quint64 size = news->size;
        if (m_assemblies.add(news) != ArrayAssemblies::Complete)
            return;
        FUZZ_CHECK(quint64(news->elements.size()) == size);
        m_store.setVector(news->itemName, news->elements);
    }

    qint64 m_totalBytes = 0;
    ArrayAssemblies m_assemblies{&m_totalBytes};
    ItemStore m_store;
};

} // namespace

// Some messages, built and damaged; or the bytes of one.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    FuzzInput input(data, size);
    Receiver receiver;
    for (int count = 0; count < 32 && !input.atEnd(); ++count) {
        const auto kind = input.take<unsigned char>();
        if (kind == 'l' || kind == 'B') { // the first byte of a message
            receiver.take(char(kind) + input.rest());
            break;
        }
        receiver.take(damagedBytes(kind % 4 == 0 ? newAnswer(input) : newSignal(input), input));
        if (kind % 8 == 1)
            receiver.tell();
    }
    receiver.tell();
    return 0;
}
