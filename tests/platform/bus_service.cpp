// A service for the tests over a real bus: bus_service NAME [--hostile] [--stay]. It says "published" when its clients
// may come, obeys the lines on its standard input, and ends with them and, without --stay, with the bus.
//   value ITEM TEXT      publishes a text
//   ramp ITEM COUNT      publishes the array 0, 1, 2 ...
//   append ITEM COUNT CAPACITY  appends 0, 1, 2 ... one by one
//   attack               (hostile) sends signals that no good service sends
//   flood COUNT          (hostile) sends an array of 100 000 elements that often, says "flooded" when the bus has all
//   pour COUNT           (hostile) appends 2 elements to an array of 2 that often, says "poured" likewise
//   lose                 (hostile) appends to an array longer than the one that was sent
//   labels COUNT         (hostile) sends the texts 0, 1, 2 ... for one item
#include "platform/bus/BusPublisher.h"
#include "platform/bus/BusRegistry.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSocketNotifier>

#include <unistd.h>

#include <cstring>
#include <iostream>
#include <limits>
#include <memory>
#include <numeric>

namespace {

using Blocks = QMap<QString, QByteArray>;

const auto path = QStringLiteral("/org/toskorn/hostile");
const auto itemsInterface = QStringLiteral("org.toskorn.Items");

QVector<double> ramp(int count)
{
    QVector<double> vector(count);
    std::iota(vector.begin(), vector.end(), 0.0);
    return vector;
}

class HostileObject : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        if (message.path() != path)
            return bus.send(message.createReply(1));
        const QVariantMap values{{QStringLiteral("t_label:"), QStringLiteral("good")},
                                 {QStringLiteral("t_path:"), QVariant::fromValue(QDBusObjectPath("/a"))},
                                 {QStringLiteral("t_map:"), QVariantMap{{QStringLiteral("a"), 1}}}};
        const Blocks blocks{{QStringLiteral("t_odd:"), QByteArray(15, 'x')},
                            {QStringLiteral("t_even:"), QByteArray(16, '\0')},
                            {QStringLiteral("t_label:"), QByteArray(8, '\0')}};
        return bus.send(message.createReply(
            {quint64(1), values, QVariant::fromValue(blocks), QStringList{QStringLiteral("t_late:")}}));
    }
};

void signal(const char *name, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(path, itemsInterface, QLatin1String(name));
    message.setArguments(arguments);
    QDBusConnection::sessionBus().send(message);
}

void attack()
{
    const auto label = QStringLiteral("t_label:");
    const auto even = QStringLiteral("t_even:");
    const quint64 huge = std::numeric_limits<quint64>::max();
    const quint64 serial = 9;
    signal("ValueChanged", {});
    signal("ValueChanged", {label, 1});
    signal("ValueChanged", {serial, label, QVariant::fromValue(QDBusVariant(QVariantMap()))});
    signal("ArrayChanged", {serial, even, quint64(1), quint64(0), QByteArray(7, 'x')});
    signal("ArrayChanged", {serial, even, huge, quint64(0), QByteArray(8, 'x')});
    signal("ArrayChanged", {serial, even, huge, huge, QByteArray(8, 'x')});
    signal("ArrayChanged", {serial, even, quint64(0), quint64(0), QByteArray(8, 'x')});
    signal("ArrayChanged", {serial, even, quint64(3), quint64(1), QByteArray(16, 'x')});
    signal("ArrayChanged", {serial, label, quint64(1), quint64(0), QByteArray(8, 'x')});
    signal("ValueChanged", {serial, label, QVariant::fromValue(QDBusVariant(QStringLiteral("survived")))});
}

void sayWhenTaken(const char *word)
{
    // Answered after all before has been taken.
    QDBusConnection::sessionBus().interface()->isServiceRegistered(QStringLiteral("org.toskorn.hostile"));
    std::cout << word << std::endl;
}

void flood(int count)
{
    const QVector<double> elements = ramp(100000);
    QByteArray block(reinterpret_cast<const char *>(elements.constData()),
                     elements.size() * int(sizeof(double)));
    for (int i = 0; i < count; ++i) {
        const double number = i;
        std::memcpy(block.data(), &number, sizeof number);
        signal("ArrayChanged",
               {quint64(9), QStringLiteral("t_even:"), quint64(elements.size()), quint64(0), block});
    }
    sayWhenTaken("flooded");
}

void pour(int count)
{
    for (int i = 0; i < count; ++i)
        signal("ArrayAppended",
               {quint64(9), QStringLiteral("t_even:"), quint64(2), quint64(0), QByteArray(16, '\0')});
    sayWhenTaken("poured");
}

void lose()
{
    signal("ArrayAppended",
           {quint64(9), QStringLiteral("t_even:"), quint64(0), quint64(99), QByteArray(8, '\0')});
}

void obey(const QByteArray &order, BusPublisher *publisher)
{
    const QStringList words = QString::fromUtf8(order).split(QLatin1Char(' '));
    if (words.first() == QLatin1String("attack"))
        attack();
    else if (words.first() == QLatin1String("lose"))
        lose();
    else if (words.first() == QLatin1String("labels"))
        for (int i = 0; i < words.value(1).toInt(); ++i)
            signal("ValueChanged", {quint64(9), QStringLiteral("t_label:"),
                                    QVariant::fromValue(QDBusVariant(QString::number(i)))});
    else if (words.first() == QLatin1String("flood"))
        flood(words.value(1).toInt());
    else if (words.first() == QLatin1String("pour"))
        pour(words.value(1).toInt());
    else if (words.first() == QLatin1String("value"))
        publisher->setValue(words.value(1), words.value(2));
    else if (words.first() == QLatin1String("ramp"))
        publisher->setVector(words.value(1), ramp(words.value(2).toInt()));
    else if (words.first() == QLatin1String("append"))
        for (int i = 0; i < words.value(2).toInt(); ++i)
            publisher->append(words.value(1), {double(i)}, words.value(3).toInt());
}

void readOrders(BusPublisher *publisher)
{
    static QByteArray orders;
    char buffer[256];
    const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
    if (count <= 0) {
        QCoreApplication::quit();
        return;
    }
    orders.append(buffer, int(count));
    for (int end = orders.indexOf('\n'); end >= 0; end = orders.indexOf('\n')) {
        obey(orders.left(end), publisher);
        orders.remove(0, end + 1);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!application.arguments().contains(QStringLiteral("--stay")))
        bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                    QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                    &application, SLOT(quit()));
    std::unique_ptr<BusPublisher> publisher;
    HostileObject hostile;
    if (application.arguments().contains(QStringLiteral("--hostile"))) {
        qDBusRegisterMetaType<Blocks>();
        bus.registerVirtualObject(path, &hostile);
        bus.registerService(QStringLiteral("org.toskorn.hostile"));
        bus.registerVirtualObject(QStringLiteral("/org/toskorn/odd"), &hostile);
        bus.registerService(QStringLiteral("org.toskorn.odd"));
        bus.registerService(QStringLiteral("org.toskorn.bare"));
    } else {
        // What is published has to wake the bus thread, which else looks after the bus every few seconds.
        BusPatience patience;
        patience.quiet = patience.answer = 3600000;
        BusRegistry::instance().setPatience(patience);
        publisher = std::make_unique<BusPublisher>(application.arguments().value(1));
        publisher->setValue(QStringLiteral("t_label:"), QStringLiteral("first"));
        publisher->setVector(QStringLiteral("t_none:doubleARRAY:"), {});
        publisher->setVector(QStringLiteral("t_one:doubleARRAY:"), {1.5});
        publisher->setVector(QStringLiteral("t_million:doubleARRAY:"), ramp(1000000));
        if (!publisher->publish())
            return 1;
    }
    // A service that the bus started has no orders to wait for.
    QSocketNotifier orders(STDIN_FILENO, QSocketNotifier::Read);
    orders.setEnabled(!qEnvironmentVariableIsSet("DBUS_STARTER_ADDRESS"));
    QObject::connect(&orders, &QSocketNotifier::activated, &application,
                     [&] { readOrders(publisher.get()); });
    std::cout << "published" << std::endl;
    return application.exec();
}
