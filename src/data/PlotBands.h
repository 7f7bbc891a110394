#pragma once

#include "common/Export.h"
#include "data/PlotPoints.h"

#include <QStringList>

// Points with a name each.
class GRAPH_CHARTS_EXPORT PlotBands : public PlotPoints
{
    Q_OBJECT

public:
    explicit PlotBands(QObject *parent = nullptr);

    bool operator==(const PlotData &other) const override;
    void sort() override;

    Q_INVOKABLE void append(const QPointF &point, const QString &name);
    Q_INVOKABLE QStringList names(const QRectF &rect) const;

protected:
    const QMetaObject *kind() const override { return &staticMetaObject; }
    void write(QDataStream &stream) const override;
    void read(QDataStream &stream) override;

private slots:
    void dropNames();

private:
    // One for each point, empty where none was given.
    QVector<QString> allNames() const;

    QVector<QString> m_names; // of the first points; never more than there are points
};
