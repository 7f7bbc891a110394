// Feeds the four channels of main.qml with 200 samples per second each, and keeps the last eight hours of them.
#include <kit/data/StreamSeries.h>

#include <QGuiApplication>
#include <QQmlContext>
#include <QQuickView>
#include <QTimer>

#include <cmath>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQuickView view;
    QVector<graph::StreamSeries *> channels;
    for (const char *name : {"battery", "motor", "logic", "sensor"}) {
        channels.append(new graph::StreamSeries(1.0 / 200, 8 * 3600 * 200, &application));
        view.rootContext()->setContextProperty(name, channels.last());
    }
    view.setSource(QUrl("qrc:/main.qml"));
    view.show();

    // In place of a converter that measures.
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&channels, n = 0]() mutable {
        ++n;
        for (int i = 0; i < channels.size(); ++i)
            channels[i]->append(6 * (i + 1) + std::sin(0.002 * (i + 1) * n));
    });
    timer.start(5);
    return QGuiApplication::exec();
}
