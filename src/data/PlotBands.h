#pragma once

#include "data/PlotPoints.h"

#include <QStringList>

class PlotBands : public PlotPoints
{
    Q_OBJECT

public:
    explicit PlotBands(QObject *parent = nullptr);

    void clear() override;
    void resize(int n) override;
    bool operator==(const PlotData &other) const override;
    void sort() override;

    Q_INVOKABLE void append(const QPointF &point, const QString &name);
    // The names of the points in the x range of `rect`, in the order of samples().
    Q_INVOKABLE QStringList names(const QRectF &rect) const;

protected:
    const QMetaObject *kind() const override { return &staticMetaObject; }
    void write(QDataStream &stream) const override;
    void read(QDataStream &stream) override;

private:
    QVector<QString> m_names; // of the first points; the others have none
};
