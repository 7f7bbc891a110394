#pragma once

#include <QQmlExtensionPlugin>

// The entry into the module graph_kit: registers the types that are written in C++.
class KitPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override;
};
