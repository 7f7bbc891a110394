#include "view/frame/WorldView.h"

#include "view/zoom/ZoomRect.h"

/*!
    \qmltype WorldView
    \inqmlmodule graph_plugin
    \brief Gives an overview document the zoom state of the chart it shows.
*/
WorldView::WorldView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setAntialiasing(false);
}

/*!
    \qmlproperty ZoomRect WorldView::zoomRect
    \readonly
    The view's zoom state, null without a view.
*/
ZoomRect *WorldView::zoomRect() const
{
    return m_view ? m_view->zoomRect() : nullptr;
}

/*!
    \qmlproperty GraphView WorldView::view
    The chart, null by default and after the chart was destroyed.
*/
void WorldView::setView(GraphView *view)
{
    if (m_view == view)
        return;
    if (m_view)
        disconnect(m_view, nullptr, this, nullptr);
    m_view = view;
    if (view)
        connect(view, SIGNAL(destroyed()), this, SLOT(forgetView()));
    emit viewChanged(view);
    emit zoomRectChanged(zoomRect());
}

void WorldView::forgetView()
{
    emit viewChanged(nullptr);
    emit zoomRectChanged(nullptr);
}
