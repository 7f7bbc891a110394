#include "RecordingHeader.h"

#include <QFile>

namespace gallery {

QVariantMap recordingHeader(const QString &fileName)
{
    QVariantMap header;
    QFile file(fileName);
    if (fileName.isEmpty() || !file.open(QIODevice::ReadOnly))
        return header;
    const int longestLine = 4096;
    QString line = QString::fromUtf8(file.readLine(longestLine));
    while (line.startsWith('#')) {
        const int colon = line.indexOf(':');
        if (colon > 0)
            header.insert(line.mid(1, colon - 1).trimmed(), line.mid(colon + 1).trimmed());
        line = QString::fromUtf8(file.readLine(longestLine));
    }
    return header;
}

} // namespace gallery
