#pragma once

#include "common/Export.h"
#include "common/QtVersion.h"

#include <QHash>
#include <QPointer>
#include <QQuickItem>
#include <QSet>
#include <QStringList>
#include <QTimer>
#include <QVector>

class AbstractPlot;
class GraphView;
class PlotData;

namespace graph {

class DiagnosisOverlay;
struct Finding;

// Looks at the chart that it lies in, a second after the chart or new data came, and reports, once
// each, what does not show and why.
class GRAPH_CHARTS_EXPORT Diagnosis : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(bool overlay READ overlay WRITE setOverlay NOTIFY overlayChanged)
    Q_PROPERTY(QStringList messages READ messages NOTIFY messagesChanged)

public:
    explicit Diagnosis(QQuickItem *parent = nullptr);
    ~Diagnosis() override;

    bool overlay() const { return m_overlay; }
    QStringList messages() const { return m_messages; }

    void setOverlay(bool overlay);

    // Looks now instead of in a second.
    void look();

signals:
    void overlayChanged();
    void messagesChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void componentComplete() override;

private slots:
    void lookSoon();
    void settle();
    void handleTime();
    void handleData();
    void handleScale();

private:
    GraphView *view() const;
    void watch(GraphView *view);
    void watchChildren(const QQuickItem *item);
    void watchPlot(AbstractPlot *plot);
    bool isNew(const AbstractPlot &plot) const;
    void tell(const Finding &finding);
    void tellOfPlace();
    void updateOverlay();

    bool m_overlay = false;
    bool m_isSettling = false; // before a look
    QStringList m_messages;
    QTimer m_timer;
    QSet<QString> m_told;
    // Data whose first samples have been compared with what is visible.
    QHash<const PlotData *, QPointer<const PlotData>> m_seen;
    QPointer<DiagnosisOverlay> m_paper;
};

} // namespace graph
