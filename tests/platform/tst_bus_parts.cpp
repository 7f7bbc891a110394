#include "platform/bus/ArrayAssemblies.h"
#include "platform/bus/BusLimits.h"
#include "platform/bus/BusMessage.h"
#include "platform/bus/ItemStore.h"

#include <QtTest>

#include <dbus/dbus.h>

#include <random>

using graph::ItemNews;

namespace {

const auto sweep = QStringLiteral("t_sweep:");
const auto trace = QStringLiteral("t_yData:doubleARRAY:");
const graph::Sender service{QStringLiteral("org.toskorn.parts"), {}};

QByteArray bytesOf(const graph::Message &message)
{
    char *bytes = nullptr;
    int size = 0;
    dbus_message_set_serial(message.get(), 1);
    dbus_message_marshal(message.get(), &bytes, &size);
    const QByteArray copy(bytes, size);
    dbus_free(bytes);
    return copy;
}

graph::Message messageOf(const QByteArray &bytes)
{
    return graph::Message(dbus_message_demarshal(bytes.constData(), int(bytes.size()), nullptr));
}

ItemNews part(const QString &itemName, quint64 size, quint64 offset, int count, quint64 serial = 1)
{
    ItemNews news;
    news.kind = ItemNews::ArrayPart;
    news.serial = serial;
    news.itemName = itemName;
    news.size = size;
    news.offset = offset;
    news.elements = QVector<double>(count, double(offset));
    return news;
}

} // namespace

// What lies between the bytes of a message and the items of a client, without a bus.
class tst_bus_parts : public QObject
{
    Q_OBJECT

private slots:
    void newestValueWaits();
    void appendedElementsJoin();
    void whatAServiceMayKeepHere();
    void longArrays();
    void unfinishedArraysAreBounded();
    void messagesAndBack();
    void damagedMessages();
};

void tst_bus_parts::newestValueWaits()
{
    ItemStore store;
    store.watchAll();
    store.setValue(sweep, 1);
    store.setVector(trace, {1});
    store.setVector(trace, {2});
    store.setValue(sweep, 2);
    const ItemStore::Changes changes = store.takeChanges();
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.at(0).item.vector, QVector<double>{2});
    QCOMPARE(changes.at(1).item.value, QVariant(2));
    store.setVector(trace, {2});
    store.setValue(sweep, 2);
    QVERIFY(!store.hasChanges());
    QCOMPARE(store.setValue(trace, 1), ItemStore::WrongKind);
    QCOMPARE(store.setVector(sweep, {1}), ItemStore::WrongKind);
}

void tst_bus_parts::appendedElementsJoin()
{
    ItemStore store;
    store.watchAll();
    store.setVector(trace, {1, 2});
    store.append(trace, 0, 2, {3});
    QVERIFY2(store.takeChanges().at(0).appended < 0, "the array is new as a whole");
    store.append(trace, 0, 3, {4});
    store.append(trace, 2, 2, {5});
    const ItemStore::Changes changes = store.takeChanges();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).item.vector, (QVector<double>{3, 4, 5}));
    QCOMPARE(changes.at(0).appended, 2);
    QCOMPARE(changes.at(0).dropped, 2);
    for (const auto &[dropped, offset] : {std::pair(0, 2), std::pair(0, 4), std::pair(4, 0), std::pair(1, 3)})
        QCOMPARE(store.append(trace, quint64(dropped), quint64(offset), {6}), ItemStore::Misfit);
    QVERIFY(!store.hasChanges());
}

void tst_bus_parts::whatAServiceMayKeepHere()
{
    ItemStore store;
    const auto asked = QStringLiteral("asked");
    QVERIFY(!store.watch(asked) && store.isWanted(asked) && !store.isWanted(QStringLiteral("0")));
    for (int i = 0; i < graph::maxItems; ++i)
        QCOMPARE(store.setValue(QString::number(i), i), ItemStore::Taken);
    QCOMPARE(store.setValue(QStringLiteral("one more"), 1), ItemStore::NoRoom);
    QVERIFY2(!store.hasChanges(), "nobody watches these");
    QCOMPARE(store.setValue(asked, 1), ItemStore::Taken);
    QCOMPARE(store.takeChanges().size(), 1);
    QVERIFY(store.watch(QStringLiteral("7")));
    store.forgetUnwatched();
    QVERIFY(store.watch(QStringLiteral("7")));
    QVERIFY(!store.watch(QStringLiteral("8")));

    QCOMPARE(store.setValue(QString(graph::maxNameLength + 1, 'n'), 1), ItemStore::NoRoom);
    const QString text(graph::maxTextLength, 'x');
    const QVariant values[] = {text, QStringList{text}};
    int texts = 0;
    while (store.setValue(QStringLiteral("text%1").arg(texts), values[texts % 2]) == ItemStore::Taken)
        ++texts;
    QCOMPARE(texts, int(graph::maxItemBytes / (2 * graph::maxTextLength)) - 1);
    QCOMPARE(store.setVector(QStringLiteral("v"), QVector<double>(1 << 20)), ItemStore::NoRoom);
}

void tst_bus_parts::longArrays()
{
    qint64 bytes = 0;
    ArrayAssemblies assemblies(&bytes);
    ItemNews news = part(trace, 2, 0, 2);
    QCOMPARE(assemblies.add(&news), ArrayAssemblies::Complete);
    news = part(trace, 5, 0, 3);
    QCOMPARE(assemblies.add(&news), ArrayAssemblies::Unfinished);
    news = part(trace, 5, 3, 2);
    QCOMPARE(assemblies.add(&news), ArrayAssemblies::Complete);
    QCOMPARE(news.elements, (QVector<double>{0, 0, 0, 3, 3}));
    QCOMPARE(bytes, 0);
    const quint64 huge = std::numeric_limits<quint64>::max();
    for (ItemNews wrong :
         {part(trace, 5, 2, 2), part(trace, 5, 3, 0), part(trace, 5, 3, 3), part(trace, 5, 3, 2, 2),
          part(trace, 4, huge, 1), part(trace, huge, 3, 2), part(trace, 2, 3, 1)}) {
        news = part(trace, 5, 0, 3);
        assemblies.add(&news);
        QCOMPARE(assemblies.add(&wrong), ArrayAssemblies::Malformed);
        QCOMPARE(bytes, 0);
    }
    // What begins again after all was dropped is a new array.
    news = part(trace, 5, 0, 3);
    assemblies.add(&news);
    assemblies.clear();
    QCOMPARE(bytes, 0);
    news = part(trace, 5, 3, 2);
    QCOMPARE(assemblies.add(&news), ArrayAssemblies::Malformed);
    QCOMPARE(bytes, 0);
}

void tst_bus_parts::unfinishedArraysAreBounded()
{
    qint64 bytes = 0;
    ArrayAssemblies hostile(&bytes);
    for (int i = 0; i < 1000; ++i) {
        ItemNews news = part(QString::number(i), 1000, 0, 100);
        QCOMPARE(hostile.add(&news), ArrayAssemblies::Unfinished);
        QVERIFY(bytes <= graph::maxUnfinishedArrays * qint64(100 * sizeof(double)));
    }
    // The oldest have gone.
    ItemNews news = part(QStringLiteral("999"), 1000, 100, 900);
    QCOMPARE(hostile.add(&news), ArrayAssemblies::Complete);
    news = part(QStringLiteral("0"), 1000, 100, 900);
    QCOMPARE(hostile.add(&news), ArrayAssemblies::Malformed);
    // Other services count, too.
    bytes = graph::maxUnfinishedBytes;
    ArrayAssemblies other(&bytes);
    news = part(trace, 1000, 0, 1);
    QCOMPARE(other.add(&news), ArrayAssemblies::NoRoom);
    hostile.removeStale(std::chrono::steady_clock::now() + std::chrono::minutes(1));
    bytes = 0;
}

void tst_bus_parts::messagesAndBack()
{
    const QVariant values[] = {true,
                               -1,
                               4000000000U,
                               qlonglong(-5000000000),
                               qulonglong(1) << 63,
                               0.1,
                               QString::fromUtf8("m\u00e4sser"),
                               QString(graph::maxTextLength, 'x'),
                               QStringList{QStringLiteral("a"), QString()},
                               QStringList{QString(graph::maxTextLength - 1, 'x'), QStringLiteral("a")}};
    graph::ItemsAnswer answer;
    answer.serial = 7;
    for (const QVariant &value : values) {
        const ItemNews news = graph::itemNews(graph::valueSignal(service, 3, sweep, value).get());
        QCOMPARE(news.kind, ItemNews::Value);
        QCOMPARE(news.serial, quint64(3));
        QCOMPARE(news.itemName, sweep);
        QCOMPARE(news.value, value);
        QCOMPARE(news.value.userType(), value.userType());
        answer.items.values.insert(QLatin1String(value.typeName()), value);
    }
    const QString tooLong(graph::maxTextLength + 1, 'x');
    for (const QVariant &value : {QVariant(tooLong), QVariant(QStringList{tooLong})})
        QVERIFY(!graph::itemNews(graph::valueSignal(service, 3, sweep, value).get()).value.isValid());
    const QVector<double> vector{1, 2, 3, 4};
    const ItemNews appended =
        graph::itemNews(graph::arrayAppendedSignal(service, 4, trace, 9, vector, 1).get());
    QCOMPARE(appended.kind, ItemNews::ArrayAppended);
    QCOMPARE(appended.dropped, quint64(9));
    QCOMPARE(appended.offset, quint64(1));
    QCOMPARE(appended.elements, vector.mid(1));

    answer.items.vectors = {{trace, vector}, {QStringLiteral("t_none:doubleARRAY:"), {}}};
    answer.later = QStringList{QStringLiteral("t_long:doubleARRAY:")};
    const graph::Message request = graph::itemsRequest(service.busName);
    dbus_message_set_serial(request.get(), 1);
    const auto read = graph::itemsAnswer(messageOf(bytesOf(graph::itemsReply(request.get(), answer))).get());
    QVERIFY(read);
    QCOMPARE(read->serial, answer.serial);
    QCOMPARE(read->items.values, answer.items.values);
    QCOMPARE(read->items.vectors, answer.items.vectors);
    QCOMPARE(read->later, answer.later);
    QVERIFY(!graph::itemsAnswer(request.get()));
    QCOMPARE(graph::itemNews(request.get()).kind, ItemNews::None);
}

// Some of them are still messages; whatever they say is read without harm.
void tst_bus_parts::damagedMessages()
{
    graph::ItemsAnswer answer;
    answer.items.values = {{sweep, 1}, {QStringLiteral("t_names:"), QStringList{QStringLiteral("a")}}};
    answer.items.vectors = {{trace, {1, 2}}};
    const graph::Message request = graph::itemsRequest(service.busName);
    dbus_message_set_serial(request.get(), 1);
    const QByteArray whole[] = {bytesOf(graph::itemsReply(request.get(), answer)),
                                bytesOf(graph::valueSignal(service, 3, sweep, 0.5)),
                                bytesOf(graph::arrayPartSignal(service, 3, trace, {1, 2, 3}, 1))};
    std::minstd_rand random(1);
    int readable = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = whole[i % 3];
        for (unsigned damages = 1 + random() % 3; damages > 0; --damages)
            bytes[int(random() % unsigned(bytes.size()))] = char(random());
        const graph::Message message = messageOf(bytes);
        if (!message)
            continue;
        ++readable;
        graph::itemsAnswer(message.get());
        graph::itemNews(message.get());
    }
    QVERIFY(readable > 1000);
}

QTEST_GUILESS_MAIN(tst_bus_parts)
#include "tst_bus_parts.moc"
