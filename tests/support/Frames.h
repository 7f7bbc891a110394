#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QQuickWindow>
#include <QScreen>

inline QImage frameOf(QQuickWindow *window)
{
    // What changed is told in the next pass of the event loop, and that may change something in turn.
    for (int pass = 0; pass < 4; ++pass)
        QCoreApplication::processEvents();
    const QImage picture = window->grabWindow();
    // The software scene graph without a display gives none, but paints a frame.
    return picture.isNull() ? window->screen()->grabWindow(window->winId()).toImage() : picture;
}
