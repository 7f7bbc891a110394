#include "platform/bus/MessageValue.h"

#include "platform/bus/BusLimits.h"

#include <cstring>

namespace graph {

namespace {

template <typename Number> Number basic(DBusMessageIter *from)
{
    Number number{};
    dbus_message_iter_get_basic(from, &number);
    return number;
}

QString text(DBusMessageIter *from)
{
    return QString::fromUtf8(basic<const char *>(from));
}

QStringList texts(DBusMessageIter *from)
{
    QStringList list;
    DBusMessageIter array;
    for (dbus_message_iter_recurse(from, &array);
         dbus_message_iter_get_arg_type(&array) == DBUS_TYPE_STRING && list.size() < maxItems;
         dbus_message_iter_next(&array))
        list.append(text(&array));
    return list;
}

QVariant textsOrNothing(const QStringList &list)
{
    qint64 length = 0;
    for (const QString &one : list)
        length += one.size();
    return length > maxTextLength ? QVariant() : QVariant(list);
}

// What a variant holds.
QVariant content(DBusMessageIter *from)
{
    switch (dbus_message_iter_get_arg_type(from)) {
    case DBUS_TYPE_BOOLEAN:
        return basic<dbus_bool_t>(from) != 0;
    case DBUS_TYPE_BYTE:
        return int(basic<unsigned char>(from));
    case DBUS_TYPE_INT16:
        return int(basic<dbus_int16_t>(from));
    case DBUS_TYPE_UINT16:
        return int(basic<dbus_uint16_t>(from));
    case DBUS_TYPE_INT32:
        return int(basic<dbus_int32_t>(from));
    case DBUS_TYPE_UINT32:
        return uint(basic<dbus_uint32_t>(from));
    case DBUS_TYPE_INT64:
        return qlonglong(basic<dbus_int64_t>(from));
    case DBUS_TYPE_UINT64:
        return qulonglong(basic<dbus_uint64_t>(from));
    case DBUS_TYPE_DOUBLE:
        return basic<double>(from);
    case DBUS_TYPE_STRING: {
        const QString one = text(from);
        return one.size() > maxTextLength ? QVariant() : QVariant(one);
    }
    case DBUS_TYPE_ARRAY:
        return dbus_message_iter_get_element_type(from) == DBUS_TYPE_STRING ? textsOrNothing(texts(from))
                                                                            : QVariant();
    default:
        return {};
    }
}

void appendContent(DBusMessageIter *to, const char *signature, const void *value)
{
    DBusMessageIter variant;
    dbus_message_iter_open_container(to, DBUS_TYPE_VARIANT, signature, &variant);
    dbus_message_iter_append_basic(&variant, signature[0], value);
    dbus_message_iter_close_container(to, &variant);
}

} // namespace

quint64 readNumber(DBusMessageIter *from)
{
    const bool isNumber = dbus_message_iter_get_arg_type(from) == DBUS_TYPE_UINT64;
    const quint64 number = isNumber ? basic<dbus_uint64_t>(from) : 0;
    dbus_message_iter_next(from);
    return number;
}

QString readText(DBusMessageIter *from)
{
    const bool isText = dbus_message_iter_get_arg_type(from) == DBUS_TYPE_STRING;
    QString read = isText ? text(from) : QString();
    dbus_message_iter_next(from);
    return read;
}

QStringList readTexts(DBusMessageIter *from)
{
    const bool isList = dbus_message_iter_get_arg_type(from) == DBUS_TYPE_ARRAY;
    QStringList read = isList ? texts(from) : QStringList();
    dbus_message_iter_next(from);
    return read;
}

QVariant readVariant(DBusMessageIter *from)
{
    QVariant value;
    if (dbus_message_iter_get_arg_type(from) == DBUS_TYPE_VARIANT) {
        DBusMessageIter variant;
        dbus_message_iter_recurse(from, &variant);
        value = content(&variant);
    }
    dbus_message_iter_next(from);
    return value;
}

std::optional<QVector<double>> readBlock(DBusMessageIter *from)
{
    if (dbus_message_iter_get_arg_type(from) != DBUS_TYPE_ARRAY ||
        dbus_message_iter_get_element_type(from) != DBUS_TYPE_BYTE)
        return {};
    DBusMessageIter array;
    const char *bytes = nullptr;
    int size = 0;
    dbus_message_iter_recurse(from, &array);
    dbus_message_iter_get_fixed_array(&array, &bytes, &size);
    dbus_message_iter_next(from);
    if (size % int(sizeof(double)) != 0 || size / int(sizeof(double)) > maxElements)
        return {};
    QVector<double> vector(size / int(sizeof(double)));
    // An empty vector's memory is shared by all: not even zero bytes may be asked of it for writing.
    if (!vector.isEmpty())
        std::memcpy(vector.data(), bytes, size_t(size));
    return vector;
}

void appendNumber(DBusMessageIter *to, quint64 number)
{
    const dbus_uint64_t value = number;
    dbus_message_iter_append_basic(to, DBUS_TYPE_UINT64, &value);
}

void appendText(DBusMessageIter *to, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    const char *value = utf8.constData();
    dbus_message_iter_append_basic(to, DBUS_TYPE_STRING, &value);
}

void appendTexts(DBusMessageIter *to, const QStringList &texts)
{
    DBusMessageIter array;
    dbus_message_iter_open_container(to, DBUS_TYPE_ARRAY, DBUS_TYPE_STRING_AS_STRING, &array);
    for (const QString &one : texts)
        appendText(&array, one);
    dbus_message_iter_close_container(to, &array);
}

void appendVariant(DBusMessageIter *to, const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool: {
        const dbus_bool_t flag = value.toBool();
        return appendContent(to, "b", &flag);
    }
    case QMetaType::Int: {
        const dbus_int32_t number = value.toInt();
        return appendContent(to, "i", &number);
    }
    case QMetaType::UInt: {
        const dbus_uint32_t number = value.toUInt();
        return appendContent(to, "u", &number);
    }
    case QMetaType::LongLong: {
        const dbus_int64_t number = value.toLongLong();
        return appendContent(to, "x", &number);
    }
    case QMetaType::ULongLong: {
        const dbus_uint64_t number = value.toULongLong();
        return appendContent(to, "t", &number);
    }
    case QMetaType::Double: {
        const double number = value.toDouble();
        return appendContent(to, "d", &number);
    }
    case QMetaType::QStringList: {
        DBusMessageIter variant;
        dbus_message_iter_open_container(to, DBUS_TYPE_VARIANT, "as", &variant);
        appendTexts(&variant, value.toStringList());
        dbus_message_iter_close_container(to, &variant);
        return;
    }
    default: {
        const QByteArray utf8 = value.toString().toUtf8();
        const char *bytes = utf8.constData();
        return appendContent(to, "s", &bytes);
    }
    }
}

void appendBlock(DBusMessageIter *to, const double *elements, int count)
{
    DBusMessageIter array;
    dbus_message_iter_open_container(to, DBUS_TYPE_ARRAY, DBUS_TYPE_BYTE_AS_STRING, &array);
    dbus_message_iter_append_fixed_array(&array, DBUS_TYPE_BYTE, &elements, count * int(sizeof(double)));
    dbus_message_iter_close_container(to, &array);
}

} // namespace graph
