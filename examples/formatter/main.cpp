// An axis that tells times of day as hours and minutes: a formatter of one's own.
#include <platform/ui/BaseFormatter.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QtQml>

class HoursFormatter : public BaseFormatter
{
    Q_OBJECT

public:
    using BaseFormatter::BaseFormatter;

    QString formatValue(const QVariant &hours) const override
    {
        const int minutes = qRound(hours.toDouble() * 60.0);
        return QString("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QChar('0'));
    }
    QString getType() const override { return "hours"; }
    // Hours and minutes have as many digits as they have.
    void setSigDigs(int) override {}
    void setPrecision(int) override {}
};

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    qmlRegisterType<HoursFormatter>("Example", 1, 0, "HoursFormatter");
    QQmlApplicationEngine engine("qrc:/main.qml");
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}

#include "main.moc"
