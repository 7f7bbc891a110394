// A trace that a program feeds: 200 new samples a second, of which the last minute stays.
#include <kit/data/StreamSeries.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QTimer>

#include <cmath>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    graph::StreamSeries voltage;
    voltage.setInterval(1.0 / 200.0);
    voltage.setCapacity(60 * 200);

    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("voltage", &voltage);
    engine.load(QUrl("qrc:/main.qml"));

    int sample = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const double value = std::sin(0.02 * sample++);
        voltage.append(&value, 1);
    });
    timer.start(5);
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
