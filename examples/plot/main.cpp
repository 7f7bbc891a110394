// A plot of one's own: a stem from the baseline to each sample.
#include <data/PlotData.h>
#include <view/base/AbstractPlot.h>

#include <QGuiApplication>
#include <QPainter>
#include <QQmlApplicationEngine>

class StemPlot : public AbstractPlot
{
    Q_OBJECT

protected:
    void paintPlot(const graph::PlotFrame &frame) override
    {
        frame.painter->setPen(QPen(penColor(), 2));
        const double base = frame.mapping.y(baseline());
        const graph::SampleSpan samples = plotData()->sampleSpan(frame.visibleRect);
        for (int i = 0; i < samples.size(); ++i) {
            const QPointF top(frame.mapping.x(samples.x(i)), frame.mapping.y(samples.y(i)));
            frame.painter->drawLine(QPointF(top.x(), base), top);
            frame.painter->drawEllipse(top, 3, 3);
        }
    }
};

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    qmlRegisterType<StemPlot>("Example", 1, 0, "StemPlot");
    QQmlApplicationEngine engine("qrc:/main.qml");
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}

#include "main.moc"
