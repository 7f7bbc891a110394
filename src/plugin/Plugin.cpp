#include "plugin/Plugin.h"

#include "plugin/Test.h"

#include <QByteArray>
#include <QtQml>

void Plugin::registerTypes(const char *uri)
{
    // The module's usual name, deliberately not compared with the URI: the types work under any name.
    const QByteArray moduleName("graph_plugin");
    Q_UNUSED(moduleName)

    qmlRegisterType<Test>(uri, 1, 0, "Test");
}
