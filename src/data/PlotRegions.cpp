#include "data/PlotRegions.h"

#include "common/QtVersion.h"

#include <QDataStream>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using RegionList = QQmlListProperty<PlotRegion>;

PlotRegions *owner(RegionList *list)
{
    return qobject_cast<PlotRegions *>(list->object);
}

void appendRegion(RegionList *list, PlotRegion *region)
{
    if (PlotRegions *regions = owner(list))
        regions->append(region);
}

graph::ListIndex regionCount(RegionList *list)
{
    const PlotRegions *regions = owner(list);
    return regions ? regions->size() : 0;
}

PlotRegion *regionAt(RegionList *list, graph::ListIndex index)
{
    const PlotRegions *regions = owner(list);
    return regions ? regions->region(int(index)) : nullptr;
}

void clearRegions(RegionList *list)
{
    if (PlotRegions *regions = owner(list))
        regions->clear();
}

bool beginsEarlier(const PlotRegion *a, const PlotRegion *b)
{
    // NaN after all numbers, so that the order is one.
    return a->begin() < b->begin() || (std::isnan(b->begin()) && !std::isnan(a->begin()));
}

struct RegionValues
{
    bool valid = false;
    double begin = 0.0;
    double end = 0.0;
    double value = 0.0;
    QString name;
    QColor color;
    qint32 style = 0;
};

// False for components far outside the visible colours, which overflow when the colour is painted.
bool isPaintable(const QColor &color)
{
    constexpr double limit = 8.0;
    if (color.spec() != QColor::ExtendedRgb)
        return true;
    return qAbs(color.redF()) <= limit && qAbs(color.greenF()) <= limit && qAbs(color.blueF()) <= limit &&
           qAbs(color.alphaF()) <= limit;
}

// Qt takes any number for the kind of a colour; one that is no kind makes every later use of it undefined.
QColor readColor(QDataStream &stream)
{
    constexpr int length = 11; // the kind, and five numbers of two bytes
    char bytes[length];
    if (stream.readRawData(bytes, length) != length) {
        stream.setStatus(QDataStream::ReadPastEnd);
        return QColor();
    }
    QColor color;
    if (uchar(bytes[0]) <= QColor::ExtendedRgb) {
        QDataStream checked(QByteArray::fromRawData(bytes, length));
        checked.setByteOrder(stream.byteOrder());
        checked >> color;
        if (isPaintable(color))
            return color;
    }
    stream.setStatus(QDataStream::ReadCorruptData);
    return QColor();
}

RegionValues readRegion(QDataStream &stream)
{
    RegionValues region;
    stream >> region.valid >> region.begin >> region.end >> region.value >> region.name;
    region.color = readColor(stream);
    stream >> region.style;
    return region;
}

} // namespace

/*!
    \qmltype PlotRegions
    \inherits PlotData
    \inqmlmodule graph_plugin
    \brief Named spans of the x axis, such as channels or the bands of a band plan.

    Sample i is the begin and the value of region i.
*/
PlotRegions::PlotRegions(QObject *parent)
    : PlotData(parent)
{
}

QRectF PlotRegions::boundingRect() const
{
    graph::MinMax extentX;
    graph::MinMax extentY;
    for (const PlotRegion *region : m_regions) {
        if (!region || !std::isfinite(region->begin()) || !std::isfinite(region->end()) ||
            !std::isfinite(region->value()))
            continue;
        extentX.add({region->begin(), region->begin()});
        extentX.add({region->end(), region->end()});
        extentY.add({region->value(), region->value()});
    }
    return graph::boundingRect(extentX, extentY);
}

QPointF PlotRegions::sample(int index) const
{
    const PlotRegion *found = region(index);
    return found ? QPointF(found->begin(), found->value()) : QPointF();
}

QVector<QPointF> PlotRegions::samples(const QRectF &rect) const
{
    return sampleSpan(rect).toVector();
}

graph::SampleSpan PlotRegions::sampleSpan(double xMin, double xMax) const
{
    if (xMin > xMax)
        std::swap(xMin, xMax);
    QVector<int> indices;
    for (int i = 0; i < m_regions.size(); ++i) {
        if (m_regions.at(i) && m_regions.at(i)->overlaps(xMin, xMax))
            indices.append(i);
    }
    std::stable_sort(indices.begin(), indices.end(),
                     [this](int a, int b) { return beginsEarlier(m_regions.at(a), m_regions.at(b)); });
    QVector<QPointF> points;
    for (int index : qAsConst(indices))
        points.append(sample(index));
    return graph::SampleSpan(points, indices);
}

// The last region that begins at or before x; -1 when all begin after it.
int PlotRegions::indexOf(double x) const
{
    int found = -1;
    for (int i = 0; i < m_regions.size(); ++i) {
        const PlotRegion *candidate = m_regions.at(i);
        if (candidate && candidate->begin() <= x &&
            (found < 0 || candidate->begin() >= m_regions.at(found)->begin()))
            found = i;
    }
    return found;
}

void PlotRegions::clear()
{
    const QVector<QPointer<PlotRegion>> former = m_regions;
    m_regions.clear();
    for (PlotRegion *region : former) {
        if (region)
            region->disconnect(this);
    }
    if (former.isEmpty())
        return;
    emit sizeChanged(0);
    emit regionsChanged();
    PlotData::clear();
}

void PlotRegions::reserve(int n)
{
    if (n > 0)
        m_regions.reserve(n);
}

void PlotRegions::resize(int n)
{
    reserve(n);
}

bool PlotRegions::operator==(const PlotData &other) const
{
    if (!isSameKind(other) || size() != other.size())
        return false;
    const auto isEqual = [](const PlotRegion *a, const PlotRegion *b) {
        return a && b && a->hasValuesOf(*b);
    };
    return std::equal(m_regions.cbegin(), m_regions.cend(),
                      static_cast<const PlotRegions &>(other).m_regions.cbegin(), isEqual);
}

/*!
    \qmlproperty list<PlotRegion> PlotRegions::regions
    \default
    The regions; they are not owned. A region that is destroyed leaves the list.
*/
QQmlListProperty<PlotRegion> PlotRegions::regions()
{
    return RegionList(this, nullptr, appendRegion, regionCount, regionAt, clearRegions);
}

/*!
    \qmlmethod void PlotRegions::append(PlotRegion data)
    Adds a region at the end. Null is ignored.
*/
void PlotRegions::append(PlotRegion *data)
{
    if (!data)
        return;
    m_regions.append(data);
    if (m_staticTextPrepared)
        data->prepareStaticText(m_textTransform, m_textFont);
    connect(data, SIGNAL(regionChanged()), this, SLOT(emitPlotChanged()));
    connect(data, SIGNAL(destroyed()), this, SLOT(dropDestroyedRegions()), Qt::UniqueConnection);
    emitPlotChanged();
    emit sizeChanged(size());
    emit regionsChanged();
}

/*!
    \qmlmethod void PlotRegions::remove(PlotRegion data)
    Takes a region out of the list, once, and stops following it. It stays on the screen until the next
    repaint, so that many can be removed at the cost of one.
*/
void PlotRegions::remove(PlotRegion *data)
{
    if (!data)
        return;
    m_regions.removeOne(data);
    data->disconnect(this);
    if (m_regions.contains(data)) // it was in the list twice
        connect(data, SIGNAL(destroyed()), this, SLOT(dropDestroyedRegions()));
    emit regionsChanged();
}

void PlotRegions::dropDestroyedRegions()
{
    const int formerSize = m_regions.size();
    m_regions.removeAll(nullptr);
    if (m_regions.size() == formerSize)
        return;
    emit sizeChanged(m_regions.size());
    emit regionsChanged();
}

void PlotRegions::sort()
{
    std::sort(m_regions.begin(), m_regions.end(), beginsEarlier);
}

void PlotRegions::prepareStaticText(const QTransform &transform, const QFont &font)
{
    m_staticTextPrepared = true;
    m_textTransform = transform;
    m_textFont = font;
    for (PlotRegion *region : qAsConst(m_regions)) {
        if (region)
            region->prepareStaticText(transform, font);
    }
}

void PlotRegions::write(QDataStream &stream) const
{
    stream << qint32(size());
    const PlotRegion none;
    for (const PlotRegion *entry : m_regions) {
        const PlotRegion &region = entry ? *entry : none;
        stream << region.valid() << region.begin() << region.end() << region.value() << region.name()
               << region.color() << qint32(region.plotStyle());
    }
}

// The regions read are children of this object; those it had before are only let go.
void PlotRegions::read(QDataStream &stream)
{
    qint32 count = 0;
    stream >> count;
    if (count < 0)
        stream.setStatus(QDataStream::ReadCorruptData);
    // As plain values first: an object takes many times the bytes that it has in the stream.
    std::vector<RegionValues> regions;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
        regions.push_back(readRegion(stream));
    if (stream.status() != QDataStream::Ok)
        return;
    clear();
    for (const RegionValues &values : regions) {
        auto *region = new PlotRegion(this);
        region->setValid(values.valid);
        region->setBegin(values.begin);
        region->setEnd(values.end);
        region->setValue(values.value);
        region->setName(values.name);
        region->setColor(values.color);
        region->setPlotStyle(PlotRegion::PlotStyle(values.style));
        append(region);
    }
}
