#include "plots/HeatmapPlot.h"

#include "plots/HeatmapCleanup.h"
#include "plots/HeatmapRaster.h"
#include "view/base/StrokeNode.h"

#include <QDateTime>
#include <QDebug>
#include <QElapsedTimer>
#include <QFile>
#include <QPainter>

#include <algorithm>
#include <exception>
#include <iostream>
#include <new>

namespace {

constexpr int imageWidth = 650;
constexpr int imageHeight = 525;
constexpr int redrawInterval = 200; // ms
// The measurement has been restarted: what was shown no longer holds.
constexpr int restartedState = 2;

void printTime(const QElapsedTimer &timer, const char *purpose)
{
    std::cout << timer.elapsed() << " ms to " << purpose << " the heat map data" << std::endl;
}

} // namespace

const std::vector<unsigned int> HeatmapPlot::m_heatMapColors = {
    0x00000000, 0xFF00E6E6, 0xFF00A8E6, 0xFF0044B3, 0xFF5CFF00, 0xFF2F8000, 0xFFFFFF00, 0xFFFF0000};

/*!
    \qmltype HeatmapPlot
    \inqmlmodule graph_plugin
    \inherits AbstractPlot
    \brief A spectrum over time: the colour of a cell tells how often a level was seen at a frequency.

    The horizontal axis is in MHz, the vertical one in the level unit of \l units. The map is 650 by 525
    pixels at most, for any size of the item.

    \qmlproperty enumeration HeatmapPlot::renderTarget
    The property of Qt's painted items, \c FramebufferObject by default. Unlike other plots this one never
   shifts what it draws.
*/
HeatmapPlot::HeatmapPlot(QQuickItem *parent)
    : AbstractPlot(parent)
    , m_heatmap(std::make_shared<const graph::Heatmap>())
{
    m_redrawTimer.setSingleShot(true);
    m_redrawTimer.setInterval(redrawInterval);
    connect(&m_redrawTimer, SIGNAL(timeout()), this, SLOT(drawHeatmap()));
    m_redrawTimer.start();
}

/*!
    \qmlproperty int HeatmapPlot::offset
    Is added to the levels of the file, in dB; 0 by default. Without a notify signal.
*/
void HeatmapPlot::setOffset(int offset)
{
    if (m_offset == offset)
        return;
    m_offset = offset;
    update();
}

/*!
    \qmlproperty bool HeatmapPlot::enabled
    False hides the map; true by default. It does not enable or disable the item's input. Without a notify signal.

    \qmlmethod void HeatmapPlot::setMapEnabled(bool enabled)
    Writes \c enabled.
*/
void HeatmapPlot::setMapEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    update();
}

/*!
    \qmlproperty string HeatmapPlot::units
    The unit of the vertical axis: "DBUV", "DBM" or, with any other text, that of the file, dBmV. Empty by default.
    Without a notify signal.
*/
void HeatmapPlot::setUnits(const QString &units)
{
    if (m_units == units)
        return;
    m_units = units;
    update();
}

/*!
    \qmlproperty string HeatmapPlot::dataFilePath
    The heat map file; each write reads it, the same path as well. The file and older ones are then deleted
    from dataDirectory, by another thread where that holds many files. A file that cannot be opened for reading
    and writing, that is empty, or that claims more than 16777216 cells leaves the map as it is; in a file that
    is too short, what is missing is transparent.
*/
void HeatmapPlot::setDataFilePath(const QString &path)
{
    m_dataFilePath = path;
    readDataFromFile(path);
    update();
    emit dataFilePathChanged();
}

/*!
    \qmlproperty int HeatmapPlot::testPointState
    The state of the measurement. 2, a restart, empties the map, and the item repaints every 200 ms until the
    state changes. 0 by default; a change is not announced.
*/
void HeatmapPlot::setTestPointState(int state)
{
    m_testPointState = state;
    if (state != restartedState)
        return;
    setHeatmap(std::make_shared<const graph::Heatmap>());
    update();
}

/*!
    \qmlproperty string HeatmapPlot::dataDirectory
    The directory in which files that are no longer needed are deleted, "/dev/" by default; nothing is deleted
    while it is empty.
*/
void HeatmapPlot::setDataDirectory(const QString &directory)
{
    m_dataDirectory = directory;
}

/*!
    \qmlmethod double HeatmapPlot::dBmVLevelConversion(double level)
    A level in dBmV in the unit of \c units, at 75 ohms for dBm.
*/
double HeatmapPlot::dBmVLevelConversion(double level) const
{
    if (m_units == QLatin1String("DBUV"))
        return level + 60.0;
    if (m_units == QLatin1String("DBM"))
        return level - 48.7506; // at 75 ohms
    return level;
}

void HeatmapPlot::drawHeatmap()
{
    update();
}

void HeatmapPlot::readDataFromFile(const QString &path)
{
    QElapsedTimer timer;
    timer.start();
    QFile file(path);
    QDateTime modified;
    if (!path.isEmpty() && file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        if (file.size() == 0)
            return;
        // Asked of the open file, before it is read: what is written from now on is left for the next read.
        modified = file.fileTime(QFileDevice::FileModificationTime);
        try {
            setHeatmap(std::make_shared<const graph::Heatmap>(graph::readHeatmap(file)));
        } catch (const std::exception &error) {
            qWarning() << "Heat map" << path << "-" << error.what();
        }
    }
    graph::removeHeatmapFiles(m_dataDirectory, modified);
    printTime(timer, "parse");
}

void HeatmapPlot::setHeatmap(std::shared_ptr<const graph::Heatmap> heatmap)
{
    const std::lock_guard<std::mutex> lock(m_dataMutex);
    m_heatmap.swap(heatmap);
}

std::shared_ptr<const graph::Heatmap> HeatmapPlot::heatmap() const
{
    const std::lock_guard<std::mutex> lock(m_dataMutex);
    return m_heatmap;
}

bool HeatmapPlot::isPaintable(const graph::PixelMapping &) const
{
    return m_enabled;
}

double HeatmapPlot::framebufferShift() const
{
    return 0.0;
}

void HeatmapPlot::paintPlot(const graph::PlotFrame &frame)
{
    QElapsedTimer timer;
    timer.start();
    // By name: the timer belongs to another thread than this one may be.
    if (m_testPointState == restartedState && !m_redrawTimer.isActive())
        QMetaObject::invokeMethod(&m_redrawTimer, "start");
    try {
        draw(frame);
    } catch (const std::exception &error) {
        // Beyond here it would end the application.
        qWarning() << "Heat map -" << error.what();
        return;
    }
    printTime(timer, "display");
}

void HeatmapPlot::draw(const graph::PlotFrame &frame)
{
    const std::shared_ptr<const graph::Heatmap> map = heatmap();
    const std::lock_guard<std::mutex> lock(m_imageMutex);
    const auto isFree = [](const QImage &image) { return image.isDetached(); };
    auto found = std::find_if(m_images.begin(), m_images.end(), isFree);
    QImage &image = found != m_images.end() ? *found : m_images.front();
    // All colours are opaque or entirely transparent, so they are the same premultiplied, which is drawn
    // faster.
    if (!isFree(image))
        image = QImage(imageWidth, imageHeight, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        throw std::bad_alloc();
    graph::rasterizeHeatmap(*map, dBmVLevelConversion(m_offset + map->referenceLevel), frame.mapping,
                            m_heatMapColors,
                            {reinterpret_cast<unsigned int *>(image.bits()), imageWidth, imageHeight});
    frame.painter->drawImage(0, 0, image);
}

// A graphics processor draws the picture as a layer, which it is.
bool HeatmapPlot::paintsStrokesOnly() const
{
    return graph::isSoftwareSceneGraph(*window());
}
