#include "Headless.h"

#include <QFile>

namespace gallery {

namespace {

void setDefaultVariable(const char *name, const QByteArray &value)
{
    if (!qEnvironmentVariableIsSet(name))
        qputenv(name, value);
}

} // namespace

bool hasNoDisplay()
{
    return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

HeadlessDrawing::HeadlessDrawing()
{
    setDefaultVariable("QT_QPA_PLATFORM", "offscreen");
    setDefaultVariable("QT_QUICK_BACKEND", "software");

    setDefaultVariable("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit());

    QFile form(":/fonts.conf");
    QFile file(m_folder.filePath("fonts.conf"));
    if (!form.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly))
        return;
    file.write(form.readAll().replace("@CACHE@", m_folder.filePath("cache").toUtf8()));
    setDefaultVariable("FONTCONFIG_FILE", file.fileName().toLocal8Bit());
}

} // namespace gallery
