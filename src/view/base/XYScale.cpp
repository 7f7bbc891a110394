#include "view/base/XYScale.h"

#include "axis/ValueAxis.h"
#include "common/SceneExit.h"
#include "view/base/AbstractPlot.h"
#include "view/base/StampNode.h"

#include <QPainter>
#include <QSet>

#include <algorithm>

namespace {

template <typename T> bool sameObjects(const QVector<QPointer<T>> &stored, const QList<T *> &given)
{
    return std::equal(stored.begin(), stored.end(), given.begin(), given.end());
}

template <typename T> QVector<QPointer<T>> guarded(const QList<T *> &objects)
{
    return QVector<QPointer<T>>(objects.begin(), objects.end());
}

} // namespace

/*!
    \qmltype XYScale
    \inqmlmodule graph_plugin
    \brief A plane for the grid lines and labels of the axes of a GraphView.

    Declare it as a child of the view and name it as an axis' \c linesPlane or \c labelsPlane. Several planes
   can be stacked by their \c z, for example one below the plots for the grid and one above them for the
   labels. All planes of a view draw for one plot area, which keeps clear of the widest margin that any of
   them needs on each side.

    \qmlsignal XYScale::marginsChanged(int left, int right, int top, int bottom)
    The room in pixels that the plane's axes need on each side: the greatest \c margin of the axes there.

    \qmlmethod void XYScale::handleAxesChanged()
    \internal
    Collects the axes of the plots again.

    \qmlmethod void XYScale::handleMarginsChanged()
    \internal
    Computes the margins again.
*/
XYScale::XYScale(QQuickItem *parent)
    : ShiftedItem(parent)
{
    setFlag(ItemHasContents);
    setRenderTarget(Image);
    setOpaquePainting(false);
    setAntialiasing(false);
}

XYScale::~XYScale()
{
    graph::leaveScene(this);
    ValueAxis::forgetPlane(this);
}

void XYScale::setPlots(const QList<AbstractPlot *> &plots)
{
    if (sameObjects(m_plots, plots))
        return;
    // Of a thousand plots one comes or goes.
    QSet<AbstractPlot *> former(m_plots.begin(), m_plots.end());
    m_plots = guarded(plots);
    for (AbstractPlot *plot : plots) {
        if (former.remove(plot))
            continue;
        connect(plot, SIGNAL(axisXChanged(ValueAxis *)), this, SLOT(handleAxesChanged()));
        connect(plot, SIGNAL(axisYChanged(ValueAxis *)), this, SLOT(handleAxesChanged()));
    }
    for (AbstractPlot *plot : qAsConst(former)) {
        if (plot)
            disconnect(plot, nullptr, this, nullptr);
    }
    handleAxesChanged();
}

void XYScale::setStandingAxes(const QList<ValueAxis *> &axes)
{
    if (sameObjects(m_standingAxes, axes))
        return;
    m_standingAxes = guarded(axes);
    handleAxesChanged();
}

void XYScale::handleAxesChanged()
{
    QList<ValueAxis *> axes;
    const auto collect = [this, &axes](ValueAxis *axis) {
        if (axis && (axis->labelsPlane() == this || axis->linesPlane() == this) && !axes.contains(axis))
            axes.append(axis);
    };
    for (ValueAxis *axis : qAsConst(m_standingAxes))
        collect(axis);
    for (AbstractPlot *plot : qAsConst(m_plots)) {
        if (!plot)
            continue;
        collect(plot->axisX());
        collect(plot->axisY());
    }
    setAxes(axes);
}

void XYScale::setAxes(const QList<ValueAxis *> &axes)
{
    if (sameObjects(m_axes, axes))
        return;
    for (ValueAxis *axis : qAsConst(m_axes)) {
        if (axis)
            disconnect(axis, nullptr, this, nullptr);
    }
    m_axes = guarded(axes);
    for (ValueAxis *axis : axes) {
        connect(axis, SIGNAL(marginChanged()), this, SLOT(handleMarginsChanged()));
        connect(axis, SIGNAL(destroyed()), this, SLOT(handleMarginsChanged()));
        connect(axis, SIGNAL(destroyed()), this, SLOT(update()));
        // Without a zoom rectangle a moved visible edge is not announced by axisChanged().
        connect(axis, SIGNAL(minVisibleChanged(double)), this, SLOT(update()));
        connect(axis, SIGNAL(maxVisibleChanged(double)), this, SLOT(update()));
        repaintWith(axis);
    }
    handleMarginsChanged();
    update();
}

void XYScale::repaintWith(ValueAxis *axis)
{
    m_repaintingAxes.removeAll(nullptr);
    if (m_repaintingAxes.contains(axis))
        return;
    m_repaintingAxes.append(axis);
    // The axis is the context, so this lasts after it leaves the plane, which may be gone by then.
    connect(axis, &ValueAxis::axisChanged, axis, [plane = QPointer<XYScale>(this)] {
        if (plane)
            plane->update();
    });
}

void XYScale::handleMarginsChanged()
{
    const QMargins margins(marginAt(Qt::AlignLeft), marginAt(Qt::AlignTop), marginAt(Qt::AlignRight),
                           marginAt(Qt::AlignBottom));
    if (margins == m_margins)
        return;
    m_margins = margins;
    // Only until the view hears of it, which knows what the other planes need.
    setPlotAreaMargins(margins);
    emit marginsChanged(margins.left(), margins.right(), margins.top(), margins.bottom());
    update();
}

// The greatest margin of the axes at a side, and next to it, away from the plot area, those of the axes that have
// one of their own.
int XYScale::marginAt(Qt::Alignment side)
{
    const auto isAt = [side](const ValueAxis *axis) { return axis && axis->alignment() == side; };
    int margin = 0;
    for (const ValueAxis *axis : qAsConst(m_axes)) {
        if (isAt(axis) && !axis->hasOwnMargin())
            margin = qMax(margin, axis->margin());
    }
    for (ValueAxis *axis : qAsConst(m_axes)) {
        if (!isAt(axis) || !axis->hasOwnMargin())
            continue;
        if (axis->setMarginOffset(margin))
            update();
        margin += axis->visible() ? axis->margin() : 0;
    }
    return margin;
}

void XYScale::setPlotAreaMargins(const QMargins &margins)
{
    if (m_plotAreaMargins == margins)
        return;
    m_plotAreaMargins = margins;
    update();
}

QSGNode *XYScale::updatePaintNode(QSGNode *old, UpdatePaintNodeData *data)
{
    QSGNode *stamps = graph::stampedNode(this, old, graph::FigureChange::AsAWhole);
    return stamps ? stamps : QQuickPaintedItem::updatePaintNode(old, data);
}

void XYScale::paintShifted(QPainter *painter)
{
    const QRectF plotRect = boundingRect().marginsRemoved(m_plotAreaMargins);
    for (ValueAxis *axis : qAsConst(m_axes)) {
        if (axis && axis->linesPlane() == this)
            axis->paintLines(painter, plotRect);
    }
    // Labels keep their place on every target.
    if (const double shift = shiftOn(*painter); shift != 0.0)
        painter->translate(-shift, -shift);
    paintLabels(painter, plotRect);
}

void XYScale::paintLabels(QPainter *painter, const QRectF &plotRect)
{
    const auto isHere = [this](const ValueAxis *axis) { return axis && axis->labelsPlane() == this; };
    if (std::none_of(m_axes.cbegin(), m_axes.cend(), isHere))
        return;
    graph::LabelSurroundings surroundings{boundingRect(), {}};
    for (const ValueAxis *axis : qAsConst(m_axes)) {
        if (axis)
            surroundings.axes.append(axis->look());
    }
    // Labels of vertical axes lie above those of horizontal ones, in any order of the axes.
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        for (ValueAxis *axis : qAsConst(m_axes)) {
            if (isHere(axis) && axis->orientation() == orientation)
                axis->paintLabels(painter, plotRect, surroundings);
        }
    }
}
