#pragma once

#include <QQmlExtensionPlugin>

// The library's entry: registers every chart type at version 1.0 under the URI that the engine passes.
class Plugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QQmlExtensionInterface")

public:
    void registerTypes(const char *uri) override;
};
