#pragma once

#include "common/Export.h"
#include "painters/BasePainter.h"

#include <QFont>

// A text at a point in data units, drawn up to 10 of them outside the visible range.
class GRAPH_CHARTS_EXPORT TextPainter : public BasePainter
{
    Q_OBJECT
    Q_PROPERTY(QPointF origin READ origin WRITE setOrigin NOTIFY originChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY labelChanged)
    Q_PROPERTY(uint hTextAlignment READ hTextAlignment WRITE setHTextAlignment NOTIFY hTextAlignmentChanged)
    Q_PROPERTY(uint vTextAlignment READ vTextAlignment WRITE setVTextAlignment NOTIFY vTextAlignmentChanged)
    Q_PROPERTY(QColor labelColor READ labelColor WRITE setLabelColor NOTIFY labelColorChanged)
    Q_PROPERTY(double labelOffset READ labelOffset WRITE setLabelOffset NOTIFY labelOffsetChanged)

public:
    explicit TextPainter(QQuickItem *parent = nullptr);

    QPointF origin() const { return m_origin; }
    QFont font() const { return m_font; }
    QString label() const { return m_label; }
    uint hTextAlignment() const { return m_hTextAlignment; }
    uint vTextAlignment() const { return m_vTextAlignment; }
    QColor labelColor() const { return m_labelColor; }
    double labelOffset() const { return m_labelOffset; }

    void paint(QPainter *painter, const QRectF &visibleRect, float scaleX, float scaleY) override;

public slots:
    void setOrigin(const QPointF &origin);
    void setFont(const QFont &font);
    void setLabel(const QString &label);
    void setHTextAlignment(uint alignment);
    void setVTextAlignment(uint alignment);
    void setLabelColor(const QColor &color);
    void setLabelOffset(double offset);

signals:
    void originChanged();
    void fontChanged();
    void labelChanged();
    void hTextAlignmentChanged();
    void vTextAlignmentChanged();
    void labelColorChanged();
    void labelOffsetChanged();

private:
    int nudge(int x, int textWidth, const graph::PixelMapping &place) const;

    QPointF m_origin;
    QFont m_font{"Verdana", 12, QFont::Normal, false};
    QString m_label;
    uint m_hTextAlignment = Qt::AlignLeft;
    uint m_vTextAlignment = Qt::AlignBottom;
    QColor m_labelColor{"black"};
    double m_labelOffset = 0.0;
};
