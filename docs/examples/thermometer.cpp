#include <QtCore>
#include <QtDBus>

using Arrays = QMap<QString, QByteArray>;
const QString path = "/org/toskorn/thermometer", label = "room_label:", readings = "room_yData:doubleARRAY:";

struct Thermometer : public QDBusVirtualObject
{
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &call, const QDBusConnection &bus) override
    {
        const QVariantMap values{{label, "Room"}};
        const Arrays arrays{{readings, bytesFrom(0)}};
        return call.member() == "GetItems" &&
               bus.send(call.createReply({serial, values, QVariant::fromValue(arrays), QStringList()}));
    }
    void read()
    {
        const quint64 offset = quint64(elements.size());
        elements.append(20 + std::sin(0.1 * double(offset)));
        QDBusMessage signal = QDBusMessage::createSignal(path, "org.toskorn.Items", "ArrayAppended");
        signal << ++serial << readings << quint64(0) << offset << bytesFrom(int(offset));
        QDBusConnection::sessionBus().send(signal);
    }
    QByteArray bytesFrom(int first) const
    {
        return {reinterpret_cast<const char *>(elements.data() + first), (int(elements.size()) - first) * 8};
    }
    QVector<double> elements;
    quint64 serial = 0;
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<Arrays>();
    Thermometer thermometer;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { thermometer.read(); });
    timer.start(100);
    QDBusConnection::sessionBus().registerVirtualObject(path, &thermometer);
    return QDBusConnection::sessionBus().registerService("org.toskorn.thermometer") ? application.exec() : 1;
}
