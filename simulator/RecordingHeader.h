#pragma once

#include "simulator/Recording.h"

#include <QByteArray>

namespace simulation {

// Collects the "# key: value" lines in front of a recording's rows.
class RecordingHeaderReader
{
public:
    // False when the line is not one of a header; `error` then says why. `line` is without its end.
    bool addLine(const QByteArray &line, QString *error);
    // The header, once all its lines were added. False when a key is missing or its value is of no use; the
    // error's line is that of the value, or 0 for a missing key.
    bool finish(RecordingHeader *header, ReadingError *error) const;

private:
    struct Entry
    {
        QString value;
        int line = 0;
    };

    bool readKind(RecordingHeader *header, ReadingError *error) const;
    bool readSpacing(RecordingHeader *header, ReadingError *error) const;
    bool readCount(const QString &key, int *count, ReadingError *error) const;
    bool readNumber(const QString &key, double *number, ReadingError *error) const;
    bool checkColumns(const RecordingHeader &header, ReadingError *error) const;

    QMap<QString, Entry> m_entries;
    int m_lines = 0;
};

// A cell or a value as it is shown in a message: control characters replaced, long texts cut.
QString quoted(const QByteArray &text);

} // namespace simulation
