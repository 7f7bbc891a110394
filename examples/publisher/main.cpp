// A thermometer that anybody on the session bus can follow, for example with
//   Chart { Trace { address: "thermometer,room" } }
#include <platform/bus/BusPublisher.h>

#include <QCoreApplication>
#include <QTimer>

#include <cmath>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    BusPublisher thermometer("thermometer");
    thermometer.setValue("room_label:", "Room");
    thermometer.setValue("room_yUnits:", "degC");
    if (!thermometer.publish())
        return 1;

    int seconds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        // Only what is new travels; who comes later gets the last hour at once.
        thermometer.append("room_yData:doubleARRAY:", {20.0 + std::sin(0.1 * seconds++)}, 3600);
    });
    timer.start(1000);
    return QCoreApplication::exec();
}
