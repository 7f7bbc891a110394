#pragma once

#include "common/Export.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/CursorLabel.h"
#include "kit/chart/EarlyItem.h"

#include <QPointer>

class GraphCursor;

namespace graph {

class CursorLabels;

// What a text in a cursor says, for the item that is around this one, and the geometry of the box it is written in.
// It is found when CursorLabels is asked, or before a frame, once for all texts of the cursor: bindings would find it again
// with each of the many things that a moved cursor changes.
class GRAPH_CHARTS_EXPORT CursorText : public EarlyItem, public CursorLabel
{
    Q_OBJECT
    Q_PROPERTY(graph::ChartView *chart READ chart WRITE setChart NOTIFY partsChanged)
    Q_PROPERTY(QQuickItem *box READ box WRITE setBox NOTIFY partsChanged)
    Q_PROPERTY(QQuickItem *label READ label WRITE setLabel NOTIFY partsChanged)
    // That of the document, else what there is to say.
    Q_PROPERTY(QString text READ text WRITE setText RESET resetText NOTIFY textChanged)

public:
    explicit CursorText(QQuickItem *parent = nullptr);
    ~CursorText() override;

    ChartView *chart() const { return m_chart; }
    QQuickItem *box() const { return m_box; }
    QQuickItem *label() const { return m_label; }
    QString text() const;

    void setChart(ChartView *chart);
    void setBox(QQuickItem *box);
    void setLabel(QQuickItem *label);
    void setText(const QString &text);
    void resetText();

    void show() override {}
    void tell() override;
    void askForFrame() override { prepareFrame(); }
    QQuickItem *around() const override { return parentItem(); }

signals:
    void partsChanged();
    void textChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void prepare() override;

    // The cursor whose child the item around is.
    GraphCursor *holder() const;
    void invalidate();
    void refresh() const;
    bool hasOwnText() const { return m_hasOwnText; }
    void findText(const QString &text);
    const QString &foundText() const { return m_text; }
    // Into the label, whose size is true afterwards; whether it is another one.
    bool write(const QString &text);

private slots:
    void join();

private:
    void watchSize(QQuickItem *item);

    QPointer<ChartView> m_chart;
    QPointer<QQuickItem> m_box;
    QPointer<QQuickItem> m_label;
    QPointer<CursorLabels> m_labels;
    QPointer<QQuickItem> m_around;
    QString m_text;
    QString m_written;
    bool m_hasOwnText = false;
    bool m_isWriting = false;
    bool m_hasNews = false;
};

} // namespace graph
