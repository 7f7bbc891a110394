// A service that misuses the bus: attack_peer NAME [ITEMS]. It answers GetItems with a short trace, a label and ITEMS
// further values, says "published", and obeys the lines on its standard input. It says "done" after each and ends
// with its input.
//   arrays SIZE RATE SECONDS   whole arrays of SIZE elements, RATE of them a second
//   labels RATE SECONDS        changes of one text
//   unfinished SECONDS         first parts of arrays that announce 200 million elements, each under a new name
//   names COUNT                COUNT new items
//   huge SIZE                  one array of SIZE elements, in parts
//   last NUMBER                the array {NUMBER, NUMBER} and the label NUMBER
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <iostream>
#include <string>
#include <thread>

namespace {

using Blocks = QMap<QString, QByteArray>;

const auto trace = QStringLiteral("trace_yData:doubleARRAY:");
const auto label = QStringLiteral("trace_yLabel:");
constexpr int partElements = 1 << 21;

QByteArray block(int size, double value)
{
    const QVector<double> elements(size, value);
    return {reinterpret_cast<const char *>(elements.constData()), size * int(sizeof(double))};
}

class Peer : public QDBusVirtualObject
{
public:
    Peer(const QString &name, int items)
        : m_path(QStringLiteral("/org/toskorn/") + name)
        , m_bus(QDBusConnection::sessionBus())
    {
        m_values.insert(label, QStringLiteral("first"));
        for (int i = 0; i < items; ++i)
            m_values.insert(QStringLiteral("extra_%1:").arg(i), i);
        m_bus.registerVirtualObject(m_path, this);
        m_isPublished = m_bus.registerService(QStringLiteral("org.toskorn.") + name);
    }

    bool isPublished() const { return m_isPublished; }
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        const Blocks blocks{{trace, m_trace}};
        return bus.send(
            message.createReply({m_serial, m_values, QVariant::fromValue(blocks), QStringList()}));
    }

    void array(const QString &name, quint64 size, double value)
    {
        ++m_serial;
        m_trace = block(2, value); // who asks is given less than who listens
        quint64 offset = 0;
        do {
            const int count = int(std::min<quint64>(partElements, size - offset));
            part(name, size, offset, block(count, value));
            offset += quint64(count);
        } while (offset < size);
    }

    void firstPart(const QString &name, quint64 announced)
    {
        ++m_serial;
        part(name, announced, 0, block(1 << 17, 0));
    }

    void value(const QString &name, const QVariant &value)
    {
        if (name == label)
            m_values.insert(name, value);
        send("ValueChanged", {++m_serial, name, QVariant::fromValue(QDBusVariant(value))});
    }

private:
    void part(const QString &name, quint64 size, quint64 offset, const QByteArray &bytes)
    {
        send("ArrayChanged", {m_serial, name, size, offset, bytes});
    }

    void send(const char *member, const QVariantList &arguments)
    {
        QDBusMessage message =
            QDBusMessage::createSignal(m_path, QStringLiteral("org.toskorn.Items"), QLatin1String(member));
        message.setArguments(arguments);
        m_bus.send(message);
    }

    QString m_path;
    QDBusConnection m_bus;
    QVariantMap m_values;
    QByteArray m_trace = block(2, 1);
    quint64 m_serial = 1;
    bool m_isPublished = false;
};

// Calls the function RATE times a second, evenly, with the number of the call.
template <typename Function> void repeat(double rate, double seconds, Function function)
{
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < rate * seconds; ++i) {
        while (clock.nsecsElapsed() * 1e-9 * rate < i) {
            QCoreApplication::processEvents();
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        function(i);
    }
}

void obey(Peer &peer, const QStringList &words)
{
    const QString order = words.value(0);
    const double first = words.value(1).toDouble();
    const double second = words.value(2).toDouble();
    const double third = words.value(3).toDouble();
    if (order == QLatin1String("arrays"))
        repeat(second, third, [&](int i) { peer.array(trace, quint64(first), i); });
    else if (order == QLatin1String("labels"))
        repeat(first, second, [&](int i) { peer.value(label, QString::number(i)); });
    else if (order == QLatin1String("unfinished"))
        repeat(300, first,
               [&](int i) { peer.firstPart(QStringLiteral("new_%1:doubleARRAY:").arg(i), 200000000); });
    else if (order == QLatin1String("names"))
        repeat(first, 1, [&](int i) { peer.value(QStringLiteral("name_%1:").arg(i), i); });
    else if (order == QLatin1String("huge"))
        peer.array(trace, quint64(first), 3);
    else if (order == QLatin1String("last")) {
        peer.array(trace, 2, first);
        peer.value(label, words.value(1));
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<Blocks>();
    Peer peer(application.arguments().value(1), application.arguments().value(2).toInt());
    if (!peer.isPublished())
        return 1;
    std::cout << "published" << std::endl;

    // Lines are read beside the event loop, which answers the bus.
    std::thread reader([&] {
        for (std::string line; std::getline(std::cin, line);) {
            const QStringList words = QString::fromStdString(line).split(QLatin1Char(' '));
            QMetaObject::invokeMethod(
                &application,
                [&peer, words] {
                    obey(peer, words);
                    std::cout << "done" << std::endl;
                },
                Qt::BlockingQueuedConnection);
        }
        QMetaObject::invokeMethod(
            &application, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    });
    const int result = application.exec();
    reader.join();
    return result;
}
