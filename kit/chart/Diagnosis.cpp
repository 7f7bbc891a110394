#include "kit/chart/Diagnosis.h"

#include "cursors/GraphCursor.h"
#include "data/PlotData.h"
#include "kit/axis/ChartAxis.h"
#include "kit/chart/ChartChecks.h"
#include "kit/chart/ChartView.h"
#include "kit/chart/DiagnosisOverlay.h"
#include "kit/chart/PartChecks.h"
#include "kit/chart/ViewContents.h"
#include "kit/data/ItemName.h"
#include "kit/data/Telling.h"
#include "view/base/AbstractPlot.h"
#include "view/frame/GraphView.h"

#include <QQuickWindow>

namespace graph {

namespace {

// Bindings, layouts, Loaders and the first values from elsewhere have their time to arrive.
constexpr int patience = 900;
// Samples that come just before a look, or in one go with it on a busy machine, are not in the ranges yet.
constexpr int settling = 100;

// The first one below the item, those of views and in the other item apart.
const Diagnosis *diagnosisIn(const QQuickItem &item, const QQuickItem *other = nullptr)
{
    const QList<QQuickItem *> children = item.childItems();
    for (const QQuickItem *child : children) {
        if (const auto *diagnosis = qobject_cast<const Diagnosis *>(child))
            return diagnosis;
        const bool isApart = child == other || qobject_cast<const GraphView *>(child);
        if (const Diagnosis *found = isApart ? nullptr : diagnosisIn(*child, other))
            return found;
    }
    return nullptr;
}

// Which one speaks of a view: one of the document rather than a chart's own, which is in the overlay.
const Diagnosis *speakerOf(const GraphView &view)
{
    const auto *chart = qobject_cast<const ChartView *>(&view);
    const QQuickItem *overlay = chart ? chart->overlay() : nullptr;
    const Diagnosis *declared = diagnosisIn(view, overlay);
    return declared || !overlay ? declared : diagnosisIn(*overlay);
}

// The first view in or below the item that somebody looks at.
const GraphView *firstDiagnosed(const QQuickItem &item)
{
    if (!item.isVisible())
        return nullptr;
    const auto *view = qobject_cast<const GraphView *>(&item);
    const Diagnosis *speaker = view ? speakerOf(*view) : nullptr;
    if (speaker && speaker->isEnabled())
        return view;
    const QList<QQuickItem *> children = item.childItems();
    for (const QQuickItem *child : children) {
        if (const GraphView *found = firstDiagnosed(*child))
            return found;
    }
    return nullptr;
}

} // namespace

/*!
    \qmltype Diagnosis
    \inqmlmodule graph_kit
    \brief Tells why something of a chart is not to be seen, and what to write instead.

    A child of a GraphView. It looks at the chart one second after the chart came, after plots were added and
    after the first samples of data arrived, and says each thing once: in the log, category \c graph.kit, with
    type, id (or objectName), file and line of the item, and to those who listen to QQmlEngine::warnings. It is
    silent about what is hidden or merely empty. A Chart has one of its own, which is silent as soon as there is
    another one in its braces; of several the first speaks. With \c {enabled: false} it does not look.

    \code
    GraphView {
        axes: [ ... ]
        Diagnosis { overlay: true }
    }
    \endcode
*/
Diagnosis::Diagnosis(QQuickItem *parent)
    : QQuickItem(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(settle()));
    if (parent)
        lookSoon();
}

Diagnosis::~Diagnosis()
{
    delete m_paper;
}

/*!
    \qmlproperty bool Diagnosis::overlay
    Whether the messages are written over the chart as well. Default: false.
*/
void Diagnosis::setOverlay(bool overlay)
{
    if (m_overlay == overlay)
        return;
    m_overlay = overlay;
    emit overlayChanged();
    updateOverlay();
}

/*!
    \qmlproperty list<string> Diagnosis::messages
    \readonly
    What was told so far, oldest first.
*/

void Diagnosis::look()
{
    m_timer.stop();
    m_isSettling = false;
    GraphView *chart = view();
    if (!chart) {
        tellOfPlace();
        return;
    }
    // What has just come is not to be taken for what the chart knows nothing of.
    if (auto *own = qobject_cast<ChartView *>(chart))
        own->takePlots();
    watch(chart);
    // A hidden page is looked at when it shows.
    if (speakerOf(*chart) != this || !isEnabled() || !chart->isVisible() || !chart->window())
        return;
    // What is in no view is told by one of them.
    const bool isFirst = firstDiagnosed(*chart->window()->contentItem()) == chart;
    const auto findings = findReasons(
        *chart, [this](const AbstractPlot &plot) { return isNew(plot); }, isFirst);
    for (const AbstractPlot *plot : plotsOf(*chart)) {
        const PlotData *data = plot->plotData();
        if (data && data->size() > 0 && isNew(*plot))
            m_seen.insert(data, data);
    }
    for (auto seen = m_seen.begin(); seen != m_seen.end();)
        seen = *seen ? std::next(seen) : m_seen.erase(seen);
    for (const Finding &finding : findings)
        tell(finding);
}

void Diagnosis::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemParentHasChanged || change == ItemVisibleHasChanged || change == ItemSceneChange)
        lookSoon();
    QQuickItem::itemChange(change, data);
}

void Diagnosis::componentComplete()
{
    QQuickItem::componentComplete();
    lookSoon();
}

void Diagnosis::lookSoon()
{
    if (!m_timer.isActive())
        m_timer.start(patience);
}

void Diagnosis::settle()
{
    m_isSettling = !m_isSettling;
    if (m_isSettling)
        m_timer.start(settling);
    else
        handleTime();
}

void Diagnosis::handleTime()
{
    look();
}

void Diagnosis::handleData()
{
    const auto *data = qobject_cast<PlotData *>(sender());
    if (!data || data->size() == 0)
        return;
    // One look at the first samples: what is written later costs nothing here.
    disconnect(data, SIGNAL(plotChanged()), this, SLOT(handleData()));
    if (m_isSettling)
        m_timer.start(settling);
    lookSoon();
}

// Samples that had a place may have none on another scale.
void Diagnosis::handleScale()
{
    m_seen.clear();
    lookSoon();
}

GraphView *Diagnosis::view() const
{
    QQuickItem *item = parentItem();
    while (item && !qobject_cast<GraphView *>(item))
        item = item->parentItem();
    return static_cast<GraphView *>(item);
}

void Diagnosis::watch(GraphView *view)
{
    connect(view, SIGNAL(axesChanged()), this, SLOT(lookSoon()), Qt::UniqueConnection);
    connect(view, SIGNAL(visibleChanged()), this, SLOT(lookSoon()), Qt::UniqueConnection);
    watchChildren(view);
    for (AbstractPlot *plot : plotsOf(*view))
        watchPlot(plot);
}

void Diagnosis::watchChildren(const QQuickItem *item)
{
    connect(item, SIGNAL(childrenChanged()), this, SLOT(lookSoon()), Qt::UniqueConnection);
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children) {
        // What lies in a plot is its own.
        if (!qobject_cast<const AbstractPlot *>(child))
            watchChildren(child);
    }
}

void Diagnosis::watchPlot(AbstractPlot *plot)
{
    for (const char *signal : {SIGNAL(plotDataChanged(PlotData *)), SIGNAL(axisXChanged(ValueAxis *)),
                               SIGNAL(axisYChanged(ValueAxis *)), SIGNAL(visibleChanged())})
        connect(plot, signal, this, SLOT(lookSoon()), Qt::UniqueConnection);
    for (const ValueAxis *axis : {plot->axisX(), plot->axisY()}) {
        if (qobject_cast<const ChartAxis *>(axis))
            connect(axis, SIGNAL(scaleChanged()), this, SLOT(handleScale()), Qt::UniqueConnection);
    }
    if (plot->plotData() && isNew(*plot))
        connect(plot->plotData(), SIGNAL(plotChanged()), this, SLOT(handleData()), Qt::UniqueConnection);
}

bool Diagnosis::isNew(const AbstractPlot &plot) const
{
    return !m_seen.value(plot.plotData());
}

void Diagnosis::tell(const Finding &finding)
{
    if (!finding.about)
        return;
    const QString key = nameOf(finding.about) + finding.text;
    if (m_told.contains(key))
        return;
    m_told.insert(key);
    m_messages.append(graph::tell(finding.about, finding.text));
    emit messagesChanged();
    updateOverlay();
}

// In a cursor it is there to tell of that, unless the diagnosis of a view does.
void Diagnosis::tellOfPlace()
{
    const QQuickItem *around = parentItem() ? parentItem()->parentItem() : nullptr;
    if (const auto *cursor = qobject_cast<const GraphCursor *>(around)) {
        if (window() && !firstDiagnosed(*window()->contentItem()))
            tell({cursor, cursorInNoView()});
        return;
    }
    if (parentItem())
        tell({this, QStringLiteral(
                        "lies in no GraphView and has nothing to look at: move it into the braces of one")});
}

void Diagnosis::updateOverlay()
{
    GraphView *chart = view();
    if (!m_overlay || m_messages.isEmpty() || !chart) {
        delete m_paper;
        return;
    }
    if (!m_paper)
        m_paper = new DiagnosisOverlay(chart);
    m_paper->setMessages(m_messages);
}

} // namespace graph
