#pragma once

#include "hostile/NastyValues.h"

#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickPaintedItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <memory>

// A chart with one more object of every type of the module, and random steps that mistreat it.
class HostileChart : public QObject
{
    Q_OBJECT

public:
    // A document with every type of a module, and the description of these types.
    struct Module
    {
        const char *name;
        const char *document;
        const char *types;
    };

    // In a window the scene graph paints the items as well.
    HostileChart(const Module &module, quint32 seed, bool inWindow);
    ~HostileChart() override;

    void step();
    void paintAll();

public slots:
    // Called by signals of the chart's objects: does something to the chart in the middle of a change.
    void interfere();

private:
    void listen();
    QObject *created(QByteArray document);
    void createEveryType(const Module &module);
    QObject *any(const QMetaObject *wanted = nullptr);
    void doOneOf(std::initializer_list<QPair<int, void (HostileChart::*)()>> things);
    void processEvents();
    void writeProperty();
    void changeList();
    void callMethod();
    void runScript();
    void loadHeatmap();
    void destroyOne();
    void moveItem();
    void pushSamples();
    void changeWindow();
    void resizeItem();
    void paintOne();
    void paint(QQuickPaintedItem *item);
    void log(const QObject *object, const char *what, const QVariant &value = {}) const;

    QVector<QPointer<QObject>> m_objects;
    NastyValues m_values;
    QTemporaryDir m_directory;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QObject> m_root;
    int m_interferences = 0;
};
