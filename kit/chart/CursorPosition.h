#pragma once

#include "kit/chart/CursorText.h"

#include <QVariant>

Q_MOC_INCLUDE("cursors/GraphCursor.h")

namespace graph {

// The position of a cursor, for CursorTag.qml.
class GRAPH_CHARTS_EXPORT CursorPosition : public CursorText
{
    Q_OBJECT
    Q_PROPERTY(GraphCursor *cursor READ cursor WRITE setCursor NOTIFY cursorChanged)
    Q_PROPERTY(bool atRight READ isAtRight WRITE setAtRight NOTIFY atRightChanged)
    // What is in the lower half of the cursor, as rectangles.
    Q_PROPERTY(QVariantList obstacles READ obstacles WRITE setObstacles NOTIFY obstaclesChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)
    // The rows at the bottom that readings keep clear of.
    Q_PROPERTY(double tagInset READ tagInset NOTIFY tagInsetChanged)

public:
    explicit CursorPosition(QQuickItem *parent = nullptr);

    GraphCursor *cursor() const;
    bool isAtRight() const { return m_isAtRight; }
    QVariantList obstacles() const { return m_obstacles; }
    bool isEmpty() const { return m_isEmpty; }
    double tagInset() const;

    void setCursor(GraphCursor *cursor);
    void setAtRight(bool atRight);
    void setObstacles(const QVariantList &obstacles);

    void read() override;
    void tell() override;
    double foundInset() const override { return m_inset; }

signals:
    void cursorChanged();
    void atRightChanged();
    void obstaclesChanged();
    void isEmptyChanged();
    void tagInsetChanged();

private:
    QString textOf(const GraphCursor &cursor) const;
    bool isBelow(const QSizeF &box) const;
    void place(const GraphCursor &cursor);
    void updateEmpty();

    QPointer<GraphCursor> m_cursor;
    bool m_isAtRight = false;
    QVariantList m_obstacles;
    bool m_isEmpty = true;
    double m_inset = 0.0;
    double m_toldInset = 0.0;
};

} // namespace graph
