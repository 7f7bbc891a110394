#pragma once

#include "platform/ui/BaseFormatter.h"

#include <QFontMetrics>
#include <QPaintEngine>
#include <QPainter>
#include <QVector>

// Keeps the lines and the texts that are drawn, and where the texts are, from their ascent to their descent.
class PaintRecorder : public QPaintEngine, public QPaintDevice
{
public:
    struct Text
    {
        QString text;
        QRectF rect;
    };

    template <typename Draw>
    explicit PaintRecorder(Draw draw)
        : QPaintEngine(AllFeatures)
    {
        QPainter painter(this);
        draw(&painter);
    }

    QVector<QLineF> lines;
    QVector<Text> texts;

    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawRects(const QRectF *, int) override {}
    Type type() const override { return User; }
    void drawLines(const QLineF *drawn, int count) override
    {
        for (int i = 0; i < count; ++i)
            lines.append(drawn[i]);
    }
    void drawTextItem(const QPointF &at, const QTextItem &item) override
    {
        const QFontMetrics metrics(item.font());
        texts.append({item.text(), QRectF(at.x(), at.y() - metrics.ascent(),
                                          metrics.horizontalAdvance(item.text()), metrics.height())});
    }
    QPaintEngine *paintEngine() const override { return const_cast<PaintRecorder *>(this); }

protected:
    int metric(PaintDeviceMetric which) const override
    {
        if (which == PdmDevicePixelRatio)
            return 1;
        return which == PdmDevicePixelRatioScaled ? int(devicePixelRatioFScale()) : 96;
    }
};

// A formatter that writes down what it is asked for.
class FeetText : public BaseFormatter
{
public:
    QString formatValue(const QVariant &value) const override
    {
        asked.append(value.toDouble());
        return "<" + QString::number(value.toDouble(), 'f', decimals) + ">";
    }
    QString getType() const override { return "FeetFormatter"; }
    void setSigDigs(int) override {}
    void setPrecision(int precision) override { decimals = precision; }

    int decimals = 0;
    mutable QVector<double> asked;
};
