#pragma once

#include "plugin/Plugin.h"
#include "support/Pictures.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickPaintedItem>
#include <QtTest>

#include <memory>

// Registers the types under a name of the tests' own: under its usual name the engine would load the plugin
// as well.
inline void registerTypes()
{
    static const bool once = (Plugin().registerTypes("charts"), true);
    Q_UNUSED(once)
}

// A document written in a test, instantiated with the module's types.
class QmlDocument
{
public:
    explicit QmlDocument(const QByteArray &body)
    {
        registerTypes();
        m_component.setData("import QtQuick 2.15\nimport charts 1.0\n" + body, QUrl());
        m_root.reset(m_component.create());
        if (!m_root)
            qFatal("%s", qPrintable(m_component.errorString()));
    }

    QObject *root() const { return m_root.get(); }
    void destroyRoot() { m_root.reset(); }

    // The object of that id, or what a property of the root of that name holds.
    template <typename T = QObject> T *object(const QString &id) const
    {
        auto *found = qobject_cast<T *>(qmlContext(root())->contextProperty(id).value<QObject *>());
        if (!found)
            qFatal("no %s of that type", qPrintable(id));
        return found;
    }

private:
    QQmlEngine m_engine;
    QQmlComponent m_component{&m_engine};
    std::unique_ptr<QObject> m_root;
};

// What the item paints once pending changes have reached it, without the shift that a framebuffer gets.
inline QImage painted(QQuickPaintedItem *item)
{
    QCoreApplication::processEvents();
    item->setRenderTarget(QQuickPaintedItem::Image);
    const QSize size(qMax(1, int(item->width())), qMax(1, int(item->height())));
    return picture([item](QPainter *painter) { item->paint(painter); }, size, Qt::transparent);
}

using Rows = QPair<int, int>;
const Rows nothing(-1, -1);

// The topmost and bottommost painted row of a column.
inline Rows paintedRows(const QImage &image, int column)
{
    Rows rows = nothing;
    for (int row = 0; row < image.height(); ++row) {
        if (qAlpha(image.pixel(column, row)) == 0)
            continue;
        if (rows.first == -1)
            rows.first = row;
        rows.second = row;
    }
    return rows;
}

// Whether both ends are the same but for the rounding of a slanted edge.
inline bool isClose(const Rows &a, const Rows &b)
{
    return qAbs(a.first - b.first) <= 1 && qAbs(a.second - b.second) <= 1;
}
