#pragma once

#include "platform/bus/BusItems.h"

#include <QDBusMessage>
#include <QStringList>

#include <optional>

// What services and clients say to each other. A service has one object with one interface:
//   method GetItems() -> (t serial, a{sv} values, a{say} arrays, as later)
//   signal ValueChanged(t serial, s item, v value)
//   signal ArrayChanged(t serial, s item, t size, t offset, ay part)
// The serial counts the service's changes, so that a client drops the news that its items already hold. An
// array is the memory of its doubles, in the byte order of the machine that both ends run on. One beyond a
// message's limits comes in parts; "later" names the arrays that do not fit into the answer and follow it as
// signals.
namespace graph {

extern const char itemsInterface[];
extern const char getItemsMethod[];
extern const char valueChangedSignal[];
extern const char valueChangedSignature[];
extern const char arrayChangedSignal[];
extern const char arrayChangedSignature[];

// The bus refuses an array of more than 64 MiB and a message of more than 128 MiB; QtDBus ends the process
// that tries.
constexpr int maxPartElements = 1 << 21;
constexpr int maxAnsweredElements = 1 << 22;
constexpr int maxTextLength = 1 << 20;

struct ItemsAnswer
{
    quint64 serial = 0;
    BusItems items;
    QStringList later;
};

// The answer that fits into one message; what does not is listed in `later`.
ItemsAnswer itemsAnswer(quint64 serial, const BusItems &items);
QVariantList messageArguments(const ItemsAnswer &answer);
// Nothing when the message has not the layout of an answer. Values of unknown types are left out, and so are
// arrays whose bytes are no whole number of doubles: they are counted in `malformed`.
std::optional<ItemsAnswer> itemsAnswer(const QDBusMessage &message, int *malformed);

// One ArrayChanged message's arguments for the elements from `offset` on, at most maxPartElements. The part
// refers to the vector's memory: send it before the vector changes.
QVariantList arrayPartArguments(quint64 serial, const QString &itemName, const QVector<double> &vector,
                                int offset);

// The doubles whose memory `block` is; nothing when its size is no multiple of theirs.
std::optional<QVector<double>> vectorOfBlock(const QByteArray &block);

} // namespace graph
