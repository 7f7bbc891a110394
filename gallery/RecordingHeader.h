#pragma once

#include <QString>
#include <QVariantMap>

namespace gallery {

// The "# key: value" lines at the head of a recording; empty when the file cannot be read or has none.
QVariantMap recordingHeader(const QString &file);

} // namespace gallery
