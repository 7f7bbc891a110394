// A trace that another thread feeds, here with a million samples a second.
#include <kit/data/StreamSeries.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>

#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <thread>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    graph::StreamSeries voltage(1e-6, 10'000'000);

    std::atomic<bool> isRunning(true);
    std::thread converter([&] {
        for (double phase = 0.0; isRunning; phase += 0.02) {
            std::array<double, 1000> block;
            for (std::size_t i = 0; i < block.size(); ++i)
                block[i] = std::sin(phase) * std::sin(0.01 * double(i));
            voltage.push(block.data(), int(block.size()));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });

    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("voltage", &voltage);
    engine.load(QUrl("qrc:/main.qml"));
    const int status = engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
    isRunning = false;
    converter.join();
    return status;
}
