#include "PictureTaker.h"

#include "Shell.h"

#include <QDir>
#include <QFileInfo>
#include <QQuickItem>

#include <cstdio>

namespace gallery {

namespace {

const int lookInterval = 120;

// Milliseconds that a page has until it shows what its instrument sends, or until it asks for more.
int pageTimeout()
{
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("GRAPH_GALLERY_PATIENCE", &isNumber);
    return isNumber ? seconds * 1000 : 30000;
}

} // namespace

PictureTaker::PictureTaker(Shell *shell, QQuickView *view, QObject *parent)
    : QObject(parent)
    , m_shell(shell)
    , m_view(view)
{
    m_lookTimer.setSingleShot(true);
    m_lookTimer.setInterval(lookInterval);
    connect(&m_lookTimer, &QTimer::timeout, this, &PictureTaker::look);
    // A page that collects sweeps has that time for each of them.
    connect(shell, &Shell::sweepHeld, this, [this] { m_pageTime.start(); });
}

void PictureTaker::start(const QStringList &pages, const QString &file, const QString &folder)
{
    m_pages = pages;
    m_file = file;
    m_folder = folder;
    m_allTaken = true;
    QTimer::singleShot(0, this, &PictureTaker::openNextPage);
}

void PictureTaker::openNextPage()
{
    if (m_pages.isEmpty()) {
        emit finished(m_allTaken);
        return;
    }
    m_lastPicture = QImage();
    m_pageTime.start();
    m_shell->setPage(m_pages.first());
    m_lookTimer.start();
}

void PictureTaker::look()
{
    if (m_pageTime.elapsed() > pageTimeout()) {
        const QString reason = m_shell->instrumentError();
        fail(reason.isEmpty() ? "it was not ready in time" : reason);
        return;
    }
    if (m_view->rootObject()->property("pageBroken").toBool()) {
        fail("its document cannot be loaded");
        return;
    }
    if (!m_view->rootObject()->property("pageReady").toBool()) {
        m_lookTimer.start();
        return;
    }
    m_grab = m_view->rootObject()->grabToImage(m_view->size() * m_view->effectiveDevicePixelRatio());
    if (m_grab)
        connect(m_grab.data(), &QQuickItemGrabResult::ready, this, &PictureTaker::handleGrab);
    else
        fail("the window cannot be drawn");
}

void PictureTaker::handleGrab()
{
    const QImage picture = m_grab->image().convertToFormat(QImage::Format_RGB32);
    m_grab.reset();
    // Layout and coalesced changes settle over a few passes of the event loop: the picture that comes twice
    // counts.
    if (picture.isNull() || picture != m_lastPicture) {
        m_lastPicture = picture;
        m_lookTimer.start();
        return;
    }
    save(picture);
}

void PictureTaker::save(const QImage &picture)
{
    const QString file = m_file.isEmpty() ? QDir(m_folder).filePath(m_pages.first() + ".png") : m_file;
    QDir().mkpath(QFileInfo(file).path());
    if (!picture.save(file, "PNG")) {
        fail("cannot write " + file);
        return;
    }
    std::printf("%s\n", qPrintable(file));
    std::fflush(stdout);
    m_pages.removeFirst();
    openNextPage();
}

void PictureTaker::fail(const QString &reason)
{
    m_allTaken = false;
    qCritical("No picture of the page %s: %s", qPrintable(m_pages.first()), qPrintable(reason));
    m_pages.removeFirst();
    openNextPage();
}

} // namespace gallery
