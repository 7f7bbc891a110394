#pragma once

#include "platform/bus/ItemValue.h"

#include <QString>
#include <QStringList>

#include <dbus/dbus.h>

#include <optional>

// Single arguments of messages. Reading moves on to the next argument; what has another type reads as empty,
// and nothing that a message holds can do harm.
namespace graph {

quint64 readNumber(DBusMessageIter *from);
QString readText(DBusMessageIter *from);
QStringList readTexts(DBusMessageIter *from);
// A value of a type that items hold; else invalid, as are texts above maxTextLength.
QVariant readVariant(DBusMessageIter *from);
// The doubles whose memory the bytes are; nothing when they are no whole number of doubles or above
// maxElements.
std::optional<QVector<double>> readBlock(DBusMessageIter *from);

// Calls take(name, iterator at the value) for the entries of a dictionary.
template <typename Take> void forEachEntry(DBusMessageIter *from, Take take)
{
    DBusMessageIter array;
    DBusMessageIter entry;
    dbus_message_iter_recurse(from, &array);
    while (dbus_message_iter_get_arg_type(&array) == DBUS_TYPE_DICT_ENTRY) {
        dbus_message_iter_recurse(&array, &entry);
        const QString name = readText(&entry);
        take(name, &entry);
        dbus_message_iter_next(&array);
    }
    dbus_message_iter_next(from);
}

void appendNumber(DBusMessageIter *to, quint64 number);
void appendText(DBusMessageIter *to, const QString &text);
void appendTexts(DBusMessageIter *to, const QStringList &texts);
// Of a type that items hold.
void appendVariant(DBusMessageIter *to, const QVariant &value);
// The memory of the doubles.
void appendBlock(DBusMessageIter *to, const double *elements, int count);

// One entry of a dictionary, its value written by append(iterator).
template <typename Append> void appendEntry(DBusMessageIter *to, const QString &name, Append append)
{
    DBusMessageIter entry;
    dbus_message_iter_open_container(to, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
    appendText(&entry, name);
    append(&entry);
    dbus_message_iter_close_container(to, &entry);
}

} // namespace graph
