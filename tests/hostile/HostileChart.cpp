#include "hostile/HostileChart.h"

#include "cursors/GraphCursor.h"
#include "cursors/GraphCursorAttached.h"
#include "kit/data/StreamPoints.h"
#include "kit/data/StreamSeries.h"
#include "platform/bus/OrnData.h"
#include "plots/HeatmapPlot.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQmlListReference>
#include <QQmlProperty>
#include <QRegularExpression>

#include <cstdio>
#include <limits>
#include <thread>

namespace {

// The first property and method that are not Qt's own.
const QMetaObject *qtBase(const QObject *object)
{
    const QMetaObject *base = object->metaObject();
    while (base != &QQuickPaintedItem::staticMetaObject && base != &QQuickItem::staticMetaObject &&
           base != &QObject::staticMetaObject)
        base = base->superClass();
    return base;
}

bool isOfQt(const QObject *object)
{
    return !qstrncmp(object->metaObject()->className(), "QQ", 2);
}

QByteArray contents(const char *path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

HostileChart::HostileChart(const Module &module, quint32 seed, bool inWindow)
    : m_values(seed, m_objects)
{
    m_root.reset(created(contents(module.document)));
    createEveryType(module);
    if (inWindow) {
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(320, 240);
        qobject_cast<QQuickItem *>(m_root.get())->setParentItem(m_window->contentItem());
        m_window->show();
    }
    const auto children = m_root->findChildren<QObject *>();
    for (QObject *child : children) {
        const QQmlContext *context = qmlContext(child);
        // Not what the module's own documents are made of.
        if (context && !context->baseUrl().isLocalFile())
            m_objects.append(child);
        if (QObject *attached = qmlAttachedPropertiesObject<GraphCursor>(child, false))
            m_objects.append(attached);
    }
    for (int i = 0; i < 3; ++i)
        m_objects.append(new OrnData(m_root.get()));
    listen();
}

HostileChart::~HostileChart()
{
    m_root.reset();
}

QObject *HostileChart::created(QByteArray document)
{
    QQmlComponent component(&m_engine);
    component.setData(document.replace("graph_plugin", "charts"), QUrl());
    QObject *object = component.create();
    if (!object)
        qFatal("%s", qPrintable(component.errorString()));
    return object;
}

// Whatever the module offers once more, on its own: to be put into the lists and properties of the others.
void HostileChart::createEveryType(const Module &module)
{
    auto types =
        QRegularExpression(QString("\"%1/(\\w+) 1\\.0\"\\](\\n\\s*isCreatable: false)?").arg(module.name))
            .globalMatch(QString::fromUtf8(contents(module.types)));
    if (!types.hasNext())
        qFatal("no types");
    while (types.hasNext()) {
        const auto type = types.next();
        if (type.capturedLength(2) > 0)
            continue;
        QObject *object =
            created("import " + QByteArray(module.name) + " 1.0\n" + type.captured(1).toUtf8() + " {}");
        object->setParent(m_root.get());
        if (auto *item = qobject_cast<QQuickItem *>(object)) {
            item->setParentItem(qobject_cast<QQuickItem *>(any(&QQuickItem::staticMetaObject)));
            item->setSize(QSizeF(100, 80));
        }
    }
}

// A few signals of each object are answered by another change of the chart.
void HostileChart::listen()
{
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("interfere()"));
    for (const QPointer<QObject> &object : qAsConst(m_objects)) {
        const QMetaObject *meta = object->metaObject();
        for (int i = qtBase(object)->methodCount(); i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() == QMetaMethod::Signal && m_values.oneIn(6))
                connect(object, meta->method(i), this, slot);
        }
    }
}

void HostileChart::log(const QObject *object, const char *what, const QVariant &value) const
{
    static const bool verbose = qEnvironmentVariableIsSet("GRAPH_HOSTILE_TRACE");
    if (!verbose)
        return;
    QString text;
    QDebug(&text) << object << what << value;
    std::fprintf(stderr, "%s\n", qPrintable(text.left(300)));
}

QObject *HostileChart::any(const QMetaObject *wanted)
{
    if (!wanted)
        wanted = &QObject::staticMetaObject;
    QObject *object = m_values.object(wanted);
    return object ? object : m_root ? m_root.get() : this;
}

// Does one of the things, each as often as its share of all says.
void HostileChart::doOneOf(std::initializer_list<QPair<int, void (HostileChart::*)()>> things)
{
    int shares = 0;
    for (const auto &thing : things)
        shares += thing.first;
    int chosen = m_values.below(shares);
    for (const auto &thing : things) {
        chosen -= thing.first;
        if (chosen < 0)
            return (this->*thing.second)();
    }
}

void HostileChart::step()
{
    m_interferences = 0;
    doOneOf({{56, &HostileChart::writeProperty},
             {40, &HostileChart::callMethod},
             {24, &HostileChart::runScript},
             {24, &HostileChart::paintOne},
             {16, &HostileChart::processEvents},
             {14, &HostileChart::changeList},
             {8, &HostileChart::resizeItem},
             {7, &HostileChart::moveItem},
             {2, &HostileChart::loadHeatmap},
             {2, &HostileChart::pushSamples},
             {1, &HostileChart::changeWindow},
             {1, &HostileChart::destroyOne}});
}

void HostileChart::interfere()
{
    if (m_interferences >= 20 || !m_values.oneIn(4))
        return;
    ++m_interferences;
    log(sender(), "interfere");
    doOneOf({{16, &HostileChart::writeProperty},
             {2, &HostileChart::callMethod},
             {1, &HostileChart::changeList},
             {1, &HostileChart::destroyOne},
             {1, &HostileChart::resizeItem}});
}

void HostileChart::processEvents()
{
    log(nullptr, "process events");
    QCoreApplication::processEvents();
}

void HostileChart::writeProperty()
{
    QObject *object = any();
    const QMetaObject *meta = object->metaObject();
    const int first = qtBase(object)->propertyCount();
    if (first == meta->propertyCount() || isOfQt(object))
        return;
    const QMetaProperty property = meta->property(first + m_values.below(meta->propertyCount() - first));
    if (!property.isWritable())
        return;
    QVariant value = m_values.value(property.userType(), property.isEnumType() ? property.typeName() : "");
    if (m_values.oneIn(20))
        value = m_values.oneIn(2) ? QVariant::fromValue(any()) : QVariant(); // of another kind
    log(object, property.name(), value);
    if (m_values.oneIn(2))
        property.write(object, value);
    else
        QQmlProperty::write(object, property.name(), value, &m_engine);
    // A property that can be written can be read.
    if (object && m_values.oneIn(4))
        property.read(object);
}

void HostileChart::changeList()
{
    QObject *object = any();
    for (const char *name : {"axes", "series", "markers", "regions"}) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        QQmlListReference list(object, name);
#else
        QQmlListReference list(object, name, &m_engine);
#endif
        if (!list.isValid())
            continue;
        QObject *element = m_values.object(list.listElementType());
        log(object, name, QVariant::fromValue(element));
        if (m_values.oneIn(6) && list.canClear())
            list.clear();
        else if (list.canAppend() && element != m_root.get())
            list.append(element);
        for (int i = 0; i < list.count(); ++i)
            list.at(i);
        return;
    }
}

void HostileChart::callMethod()
{
    QObject *object = any();
    const QMetaObject *meta = object->metaObject();
    const int first = qtBase(object)->methodCount();
    if (first == meta->methodCount() || isOfQt(object))
        return;
    const QMetaMethod method = meta->method(first + m_values.below(meta->methodCount() - first));
    if (method.name() == "fillData" && !m_values.oneIn(20))
        return; // what it adds makes every later step slow
    if (m_window && method.name().endsWith("arginsChanged"))
        return; // can make items, and so Qt's images of them, of any size
    QVariantList values;
    QGenericArgument arguments[10];
    const QList<QByteArray> types = method.parameterTypes();
    for (int i = 0; i < types.size(); ++i) {
        QVariant value = m_values.value(method.parameterType(i), types.at(i));
        if (!value.isValid() && method.parameterType(i) != QMetaType::QVariant)
            return;
        values.append(value);
    }
    for (int i = 0; i < values.size(); ++i) {
        const void *data =
            method.parameterType(i) == QMetaType::QVariant ? &values.at(i) : values.at(i).constData();
        arguments[i] = QGenericArgument(types.at(i), data);
    }
    log(object, method.methodSignature(), values);
    method.invoke(object, Qt::DirectConnection, arguments[0], arguments[1], arguments[2], arguments[3],
                  arguments[4], arguments[5]);
}

// What only a script can say: values that the engine has to convert first.
void HostileChart::runScript()
{
    static const char *const values[] = {"undefined",
                                         "null",
                                         "NaN",
                                         "-Infinity",
                                         "[]",
                                         "[1, undefined, 'x', null, {}]",
                                         "'text'",
                                         "''",
                                         "{}",
                                         "true",
                                         "-1",
                                         "4294967295",
                                         "1e300",
                                         "Qt.rect(NaN, 0, 1, 1)",
                                         "Qt.point(1e300, -1e300)",
                                         "'#zzz'",
                                         "(function() {})",
                                         "[[]]",
                                         "Qt.font({})",
                                         "new Array(5000)",
                                         "root",
                                         "series",
                                         "Qt.binding(function() { return NaN })"};
    const auto anyValue = [this] {
        return QString(values[m_values.below(int(sizeof(values) / sizeof(*values)))]);
    };
    QObject *object = any();
    const QMetaObject *meta = object->metaObject();
    if (isOfQt(object) || !qmlContext(object))
        return;
    QString code;
    const int properties = meta->propertyCount() - qtBase(object)->propertyCount();
    const int methods = meta->methodCount() - qtBase(object)->methodCount();
    if (properties > 0 && m_values.oneIn(2))
        code = QString("%1 = %2").arg(
            meta->property(meta->propertyCount() - 1 - m_values.below(properties)).name(), anyValue());
    else if (methods > 0)
        code = QString("%1(%2)").arg(
            QString(meta->method(meta->methodCount() - 1 - m_values.below(methods)).name()),
            QStringList(QStringList{anyValue(), anyValue(), anyValue()}.mid(m_values.below(4))).join(", "));
    // Qt's own enumerations have no room for any number, and fillData may add too much.
    static const QRegularExpression excluded(
        "^(fillData|\\w*marginsChanged|(set)?(line(Join)?Style|orientation\\w*|penStyle)\\b)",
        QRegularExpression::CaseInsensitiveOption);
    if (code.contains(excluded))
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    // Hands a slot a font of zeros, which no call survives, where the argument is none.
    if (code.contains(QRegularExpression("font\\(", QRegularExpression::CaseInsensitiveOption)))
        return;
#endif
    log(object, qPrintable(code));
    QQmlExpression(qmlContext(object), object, code).evaluate();
}

void HostileChart::loadHeatmap()
{
    QByteArray bytes(m_values.below(3000), '\0');
    for (char &byte : bytes)
        byte = char(m_values.oneIn(3) ? m_values.below(256) : m_values.below(9));
    QFile file(m_directory.filePath("random.heatmap"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s", qPrintable(file.errorString()));
    file.close();
    if (auto *plot = qobject_cast<HeatmapPlot *>(any(&HeatmapPlot::staticMetaObject)))
        plot->setProperty("dataFilePath", file.fileName());
}

void HostileChart::destroyOne()
{
    QObject *object = any();
    // What a Repeater made has no parent and is deleted by it alone.
    if (!object->parent() || object == this || object == sender() ||
        qobject_cast<GraphCursorAttached *>(object))
        return;
    log(object, "destroy");
    // Qt itself does not survive an item that goes while its geometry changes.
    const bool isHandled = m_interferences > 0 && qobject_cast<QQuickItem *>(object);
    if (!isHandled && m_values.oneIn(2))
        delete object;
    else
        object->deleteLater();
}

// As a device's thread does while the chart lives on.
void HostileChart::pushSamples()
{
    QObject *object = any();
    const QVector<double> samples = m_values.array();
    std::thread([&] {
        if (auto *series = qobject_cast<graph::StreamSeries *>(object))
            series->push(samples.constData(), samples.size());
        else if (auto *points = qobject_cast<graph::StreamPoints *>(object))
            points->push(samples.constData(), samples.constData(), samples.size());
    }).join();
}

// Closes, opens, or replaces the window, in which the item is again afterwards, or is not.
void HostileChart::changeWindow()
{
    if (!m_window)
        return;
    log(m_window.get(), "change window");
    auto *root = qobject_cast<QQuickItem *>(m_root.get());
    if (m_values.oneIn(3)) {
        auto other = std::make_unique<QQuickWindow>();
        other->resize(200, 300);
        if (m_values.oneIn(2))
            root->setParentItem(nullptr);
        std::swap(m_window, other);
        root->setParentItem(m_window->contentItem());
    } else if (m_values.oneIn(2)) {
        m_window->close();
    } else {
        root->setParentItem(root->parentItem() ? nullptr : m_window->contentItem());
    }
    m_window->setVisible(!m_values.oneIn(4));
}

void HostileChart::moveItem()
{
    auto *item = qobject_cast<QQuickItem *>(any(&QQuickItem::staticMetaObject));
    auto *parent = qobject_cast<QQuickItem *>(m_values.object(&QQuickItem::staticMetaObject));
    if (!item || item == m_root.get())
        return;
    for (QQuickItem *above = parent; above; above = above->parentItem()) {
        if (above == item)
            return;
    }
    log(item, "move to", QVariant::fromValue<QObject *>(parent));
    item->setParentItem(parent);
}

void HostileChart::resizeItem()
{
    auto *item = qobject_cast<QQuickItem *>(any(&QQuickItem::staticMetaObject));
    if (!item)
        return;
    const double sizes[] = {0,
                            1,
                            0.5,
                            1.5,
                            2,
                            3,
                            17.3,
                            100,
                            300,
                            301,
                            3000,
                            -5,
                            1e-300,
                            1e5,
                            1e12,
                            1e308,
                            std::numeric_limits<double>::infinity()};
    const int tooWide = 14;  // for most tests: what is drawn for every column takes long
    const int tooLarge = 10; // for a window, whose images would take gigabytes
    const int widths = m_window ? tooLarge : m_values.oneIn(200) ? 17 : tooWide;
    const QSizeF size(sizes[m_values.below(widths)], sizes[m_values.below(m_window ? tooLarge : 17)]);
    log(item, "resize", size);
    item->setSize(size);
    item->setVisible(!m_values.oneIn(4));
}

void HostileChart::paintOne()
{
    if (auto *item = qobject_cast<QQuickPaintedItem *>(any(&QQuickPaintedItem::staticMetaObject)))
        paint(item);
}

void HostileChart::paintAll()
{
    for (const QPointer<QObject> &object : qAsConst(m_objects)) {
        if (auto *item = qobject_cast<QQuickPaintedItem *>(object.data()))
            paint(item);
    }
}

void HostileChart::paint(QQuickPaintedItem *item)
{
    log(item, "paint");
    item->setRenderTarget(m_values.oneIn(4) ? QQuickPaintedItem::FramebufferObject
                                            : QQuickPaintedItem::Image);
    QImage image(160, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    item->paint(&painter);
}
