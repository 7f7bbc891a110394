// Feeds the four channels of main.qml with 200 samples per second each, and keeps the last eight hours of them.
#include <kit/data/StreamSeries.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlContext>
#include <QQuickView>
#include <QTimer>

#include <cmath>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    graph::StreamSeries channels[4];
    const char *names[] = {"battery", "motor", "logic", "sensor"};
    QQuickView view;
    for (int i = 0; i < 4; ++i) {
        channels[i].setInterval(1.0 / 200);
        channels[i].setCapacity(8 * 3600 * 200);
        view.rootContext()->setContextProperty(names[i], &channels[i]);
    }

    const double levels[] = {24, 12, 5, 3.3};
    qint64 n = 0;
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        for (const qint64 end = clock.elapsed() / 5; n < end; ++n)
            for (int i = 0; i < 4; ++i)
                channels[i].append(QVector<double>{levels[i] + std::sin(0.002 * (i + 1) * n)});
    });
    timer.start(20);

    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl("qrc:/main.qml"));
    view.show();
    return application.exec();
}
