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
    graph::StreamSeries voltage(1.0 / 200, 60 * 200);

    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("voltage", &voltage);
    engine.load(QUrl("qrc:/main.qml"));

    int sample = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { voltage.append(std::sin(0.02 * sample++)); });
    timer.start(5);
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
