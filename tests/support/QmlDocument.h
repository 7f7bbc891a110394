#pragma once

#include "plugin/Plugin.h"

#include <QImage>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickPaintedItem>
#include <QtTest>

#include <memory>

// Registers the types under a name of the tests' own: under its usual name the engine would load the plugin as well.
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

    // The object that the root's property of that name, usually an alias or an id made visible, holds.
    template <typename T = QObject>
    T *object(const char *name) const
    {
        auto *found = qobject_cast<T *>(m_root->property(name).value<QObject *>());
        if (!found)
            qFatal("no %s of that type", name);
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
    QImage image(qMax(1, int(item->width())), qMax(1, int(item->height())), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item->paint(&painter);
    return image;
}

// The topmost and bottommost painted row of a column, (-1, -1) where there is none.
inline QPair<int, int> paintedRows(const QImage &image, int column)
{
    QPair<int, int> rows(-1, -1);
    for (int row = 0; row < image.height(); ++row) {
        if (qAlpha(image.pixel(column, row)) == 0)
            continue;
        if (rows.first == -1)
            rows.first = row;
        rows.second = row;
    }
    return rows;
}
