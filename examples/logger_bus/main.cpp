// Publishes four voltages on the session bus as the service "supply", 200 samples per second each; logger.qml shows
// them.
#include <platform/bus/BusPublisher.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cmath>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    BusPublisher supply("supply");
    const QString names[] = {"battery", "motor", "logic", "sensor"};
    for (const QString &name : names) {
        supply.setValue(name + "_label:", name);
        supply.setValue(name + "_yUnits:", "V");
    }
    if (!supply.publish())
        return 1;

    const double levels[] = {24, 12, 5, 3.3};
    qint64 n = 0;
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        for (const qint64 end = clock.elapsed() / 5; n < end; ++n)
            for (int i = 0; i < 4; ++i)
                supply.append(names[i] + "_yData:doubleARRAY:", {levels[i] + std::sin(0.002 * (i + 1) * n)},
                              8 * 3600 * 200);
    });
    timer.start(20);
    return application.exec();
}
