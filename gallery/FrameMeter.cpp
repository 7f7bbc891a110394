#include "FrameMeter.h"

namespace gallery {

FrameMeter::FrameMeter(QObject *parent)
    : QObject(parent)
{
    m_clock.start();
}

void FrameMeter::setWindow(QQuickWindow *window)
{
    if (m_window == window)
        return;
    if (m_window)
        disconnect(m_window, nullptr, this, nullptr);
    m_window = window;
    follow();
    emit windowChanged();
}

void FrameMeter::setRunning(bool on)
{
    if (m_running == on)
        return;
    m_running = on;
    if (m_window && !on)
        disconnect(m_window, nullptr, this, nullptr);
    follow();
    emit runningChanged();
}

void FrameMeter::restart()
{
    m_times.reset();
    emit measured();
}

void FrameMeter::follow()
{
    restart();
    if (!m_window || !m_running)
        return;
    // Every renderer has painted items paint while it takes over the scene, not while it renders: there the
    // pictures are only put together. The render thread, where there is one, has this thread wait meanwhile,
    // so that the members need no lock.
    connect(m_window, &QQuickWindow::beforeSynchronizing, this, &FrameMeter::beginPainting,
            Qt::DirectConnection);
    connect(m_window, &QQuickWindow::afterSynchronizing, this, &FrameMeter::endPainting,
            Qt::DirectConnection);
    connect(m_window, &QQuickWindow::frameSwapped, this, &FrameMeter::handleFrame);
    m_window->update();
}

void FrameMeter::beginPainting()
{
    m_paintingBegin = m_clock.nsecsElapsed();
}

void FrameMeter::endPainting()
{
    m_times.addPainting(m_clock.nsecsElapsed() - m_paintingBegin);
}

void FrameMeter::handleFrame()
{
    // A frame of the render thread may still be announced after the end.
    if (!m_window || !m_running)
        return;
    if (m_times.addFrame(m_clock.nsecsElapsed()))
        emit measured();
    emit frameShown();
    // A window that is not exposed draws no frames; measuring goes on with the first one after that.
    if (m_window && m_running)
        m_window->update();
}

} // namespace gallery
