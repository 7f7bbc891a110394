#include "simulator/RecordingHeader.h"

#include <array>
#include <cmath>

namespace simulation {

namespace {

const QByteArray firstLine = QByteArrayLiteral("# format: replay-csv 1");

struct KindEntry
{
    const char *name;
    RecordingKind kind;
    const char *columns;
};

constexpr std::array<KindEntry, 5> kinds = {
    {{"xy", RecordingKind::Points, "x,y"},
     {"y", RecordingKind::Series, "y"},
     {"sweeps", RecordingKind::Sweeps, "t,y0,y1,..."},
     {"regions", RecordingKind::Regions, "begin,end,value,name,type"},
     {"events", RecordingKind::Events, "x,y,kind,loss,reflectance,slope_before"}}};

constexpr int mostPoints = 50000000;
// Tables go over the bus in one message with all their names.
constexpr int mostTableRows = 20000;
constexpr int longestHeaderLine = 1000;

} // namespace

bool RecordingHeaderReader::addLine(const QByteArray &line, QString *error)
{
    ++m_lines;
    if (m_lines == 1 && line != firstLine) {
        *error = QStringLiteral("the file does not begin with \"%1\"").arg(QString::fromLatin1(firstLine));
        return false;
    }
    if (line.size() > longestHeaderLine) {
        *error = QStringLiteral("the header line is longer than %1 bytes").arg(longestHeaderLine);
        return false;
    }
    const int colon = line.indexOf(':');
    const QString key = QString::fromUtf8(line.mid(1, colon - 1)).trimmed();
    if (colon < 0 || key.isEmpty()) {
        *error = QStringLiteral("%1 is not a header line \"# key: value\"").arg(quoted(line));
        return false;
    }
    if (m_entries.contains(key)) {
        *error = QStringLiteral("the header says \"%1\" twice").arg(key);
        return false;
    }
    m_entries.insert(key, {QString::fromUtf8(line.mid(colon + 1)).trimmed(), m_lines});
    return true;
}

bool RecordingHeaderReader::finish(RecordingHeader *header, ReadingError *error) const
{
    if (!readKind(header, error) || !readSpacing(header, error) ||
        !readCount("points", &header->points, error))
        return false;
    if (header->kind == RecordingKind::Sweeps && !readCount("sweeps", &header->sweeps, error))
        return false;
    const bool isTable = header->kind == RecordingKind::Regions || header->kind == RecordingKind::Events;
    const int most = isTable ? mostTableRows : mostPoints;
    if (qint64(header->points) * header->sweeps > most) {
        *error = {m_entries.value("points").line, QStringLiteral("more than %1 points").arg(most)};
        return false;
    }
    if (header->equallySpaced && !std::isfinite(header->xFirst + header->points * header->xStep)) {
        *error = {m_entries.value("x-step").line, QStringLiteral("the last sample lies beyond all numbers")};
        return false;
    }
    header->title = m_entries.value("title").value;
    header->xLabel = m_entries.value("x-label").value;
    header->xUnits = m_entries.value("x-unit").value;
    header->yLabel = m_entries.value("y-label").value;
    header->yUnits = m_entries.value("y-unit").value;
    return checkColumns(*header, error);
}

bool RecordingHeaderReader::readKind(RecordingHeader *header, ReadingError *error) const
{
    const Entry entry = m_entries.value("kind");
    QStringList known;
    for (const KindEntry &kind : kinds) {
        known.append(QString::fromLatin1(kind.name));
        if (entry.value != known.last())
            continue;
        header->kind = kind.kind;
        header->kindName = entry.value;
        return true;
    }
    if (entry.line == 0)
        *error = {0, QStringLiteral("the header has no \"kind\"")};
    else
        *error = {entry.line, QStringLiteral("%1 cannot be replayed, only the kinds %2")
                                  .arg(quoted(entry.value.toUtf8()), known.join(QStringLiteral(", ")))};
    return false;
}

bool RecordingHeaderReader::readSpacing(RecordingHeader *header, ReadingError *error) const
{
    const bool needed = header->kind == RecordingKind::Series || header->kind == RecordingKind::Sweeps;
    header->equallySpaced = m_entries.contains("x-first") && m_entries.contains("x-step");
    if (!needed && !header->equallySpaced)
        return true;
    if (!readNumber("x-first", &header->xFirst, error) || !readNumber("x-step", &header->xStep, error))
        return false;
    if (header->xStep > 0.0)
        return true;
    *error = {m_entries.value("x-step").line, QStringLiteral("\"x-step\" is not above 0")};
    return false;
}

bool RecordingHeaderReader::readCount(const QString &key, int *count, ReadingError *error) const
{
    const Entry entry = m_entries.value(key);
    bool isNumber = false;
    *count = entry.value.toInt(&isNumber);
    if (isNumber && *count >= 0 && *count <= mostPoints)
        return true;
    if (entry.line == 0)
        *error = {0, QStringLiteral("the header has no \"%1\"").arg(key)};
    else
        *error = {entry.line, QStringLiteral("\"%1\" is %2, not a number from 0 to %3")
                                  .arg(key, quoted(entry.value.toUtf8()), QString::number(mostPoints))};
    return false;
}

bool RecordingHeaderReader::readNumber(const QString &key, double *number, ReadingError *error) const
{
    const Entry entry = m_entries.value(key);
    bool isNumber = false;
    *number = entry.value.toDouble(&isNumber);
    if (isNumber && std::isfinite(*number))
        return true;
    if (entry.line == 0)
        *error = {0, QStringLiteral("the header has no \"%1\"").arg(key)};
    else
        *error = {entry.line,
                  QStringLiteral("\"%1\" is %2, not a number").arg(key, quoted(entry.value.toUtf8()))};
    return false;
}

bool RecordingHeaderReader::checkColumns(const RecordingHeader &header, ReadingError *error) const
{
    const Entry entry = m_entries.value("columns");
    const QString expected = QString::fromLatin1(kinds.at(size_t(header.kind)).columns);
    if (entry.line == 0 || entry.value == expected)
        return true;
    *error = {entry.line, QStringLiteral("the columns are %1, those of the kind %2 are \"%3\"")
                              .arg(quoted(entry.value.toUtf8()), header.kindName, expected)};
    return false;
}

QString quoted(const QByteArray &text)
{
    constexpr int longest = 40;
    QString result = QString::fromUtf8(text.left(longest));
    for (QChar &letter : result) {
        if (!letter.isPrint())
            letter = QLatin1Char('?');
    }
    return QStringLiteral("\"%1%2\"").arg(result, text.size() > longest ? QStringLiteral("...") : QString());
}

} // namespace simulation
