#pragma once

#include "FrameTimes.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>

namespace gallery {

// While it runs it has the window draw one frame after the other, and measures them.
class FrameMeter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QQuickWindow *window READ window WRITE setWindow NOTIFY windowChanged)
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)
    // In the last whole second; NaN before the first one is over.
    Q_PROPERTY(double framesPerSecond READ framesPerSecond NOTIFY measured)
    // Milliseconds in which the painted items of one frame paint; with OpenGL what comes after that on the
    // graphics processor does not count.
    Q_PROPERTY(double paintTime READ paintTime NOTIFY measured)

public:
    explicit FrameMeter(QObject *parent = nullptr);

    QQuickWindow *window() const { return m_window; }
    bool isRunning() const { return m_running; }
    double framesPerSecond() const { return m_times.framesPerSecond(); }
    double paintTime() const { return m_times.paintTime(); }

    void setWindow(QQuickWindow *window);
    void setRunning(bool on);

    // Starts measuring again, because another kind of frame follows.
    Q_INVOKABLE void restart();

signals:
    void windowChanged();
    void runningChanged();
    void measured();
    // The moment to change what the next frame shows.
    void frameShown();

private slots:
    void beginPainting();
    void endPainting();
    void handleFrame();

private:
    void follow();

    QPointer<QQuickWindow> m_window;
    bool m_running = false;
    QElapsedTimer m_clock;
    qint64 m_paintingBegin = 0;
    FrameTimes m_times;
};

} // namespace gallery
