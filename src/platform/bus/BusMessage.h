#pragma once

#include "platform/bus/BusItems.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

struct DBusMessage;

// What services and clients say to each other; docs/bus.md describes it for those who write a service. A
// service has one object with one interface:
//   method GetItems() -> (t serial, a{sv} values, a{say} arrays, as later)
//   signal ValueChanged(t serial, s item, v value)
//   signal ArrayChanged(t serial, s item, t size, t offset, ay part)
//   signal ArrayAppended(t serial, s item, t dropped, t offset, ay part)
// The serial counts the service's changes, so that a client drops changes that its items already have. An
// array is the memory of its doubles, in the byte order of the machine that both ends run on.
namespace graph {

struct MessageRelease
{
    void operator()(DBusMessage *message) const;
};
using Message = std::unique_ptr<DBusMessage, MessageRelease>;

extern const char itemsInterface[];

// The answer to GetItems.
struct ItemsAnswer
{
    quint64 serial = 0;
    BusItems items;
    QStringList later;  // arrays that do not fit into the answer and follow it as signals
    bool isCut = false; // some items were left out
    int malformed = 0;  // arrays that were left out: their bytes are no whole number of doubles, or too many
};

// One of the signals.
struct ItemNews
{
    enum Kind { None, Malformed, Value, ArrayPart, ArrayAppended };

    Kind kind = None;
    quint64 serial = 0;
    QString itemName;
    QVariant value;     // invalid when its type is none that items hold
    quint64 size = 0;   // of the whole array
    quint64 offset = 0; // of the first of `elements` in it
    quint64 dropped = 0;
    QVector<double> elements;
};

// Decoding takes any message, also a damaged one, and depends on nothing else.

// Nothing when the message has not the layout of an answer. Values of unknown types are left out, and so are the
// items beyond maxItems unless they are wanted.
std::optional<ItemsAnswer> itemsAnswer(DBusMessage *message,
                                       const std::function<bool(const QString &)> &isWanted = {});
// None when the message is none of the signals.
ItemNews itemNews(DBusMessage *message);

Message itemsRequest(const QString &busName);
bool isItemsRequest(DBusMessage *message);
// `answer` has to be within the limits of a message.
Message itemsReply(DBusMessage *request, const ItemsAnswer &answer);

// Signals of the service `busName`; to everybody when `receiver` is empty.
struct Sender
{
    QString busName;
    QByteArray receiver;
};
Message valueSignal(const Sender &sender, quint64 serial, const QString &itemName, const QVariant &value);
// The elements from `offset` on, at most maxPartElements.
Message arrayPartSignal(const Sender &sender, quint64 serial, const QString &itemName,
                        const QVector<double> &vector, int offset);
// The elements of `vector` from `offset` on, likewise. The receiver first drops its `dropped` oldest ones, and
// then has `offset` of them.
Message arrayAppendedSignal(const Sender &sender, quint64 serial, const QString &itemName, quint64 dropped,
                            const QVector<double> &vector, int offset);

// What the text, or the value, takes in memory and in a message, roughly.
qint64 sizeOfText(const QString &text);
qint64 sizeOfValue(const QVariant &value);

} // namespace graph
