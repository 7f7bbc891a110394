#include "simulator/RecordingReader.h"

#include "simulator/RecordingHeader.h"

#include <QIODevice>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace simulation {

namespace {

constexpr int largestFile = 1 << 29;
constexpr int longestText = 200;
// Some editors put it in front of UTF-8.
const QByteArray byteOrderMark = QByteArrayLiteral("\xef\xbb\xbf");
const QByteArray beginning = QByteArrayLiteral("# format: ");

enum class Rule {
    Sample, // finite or nan
    Finite,
    Rising, // finite and never below the row before
    Text
};

struct Column
{
    const char *name;
    Rule rule;
    QVector<double> numbers = {};
    QStringList texts = {};
};

QVector<Column> columnsOf(RecordingKind kind)
{
    switch (kind) {
    case RecordingKind::Points:
        return {{"x", Rule::Rising}, {"y", Rule::Sample}};
    case RecordingKind::Series:
        return {{"y", Rule::Sample}};
    case RecordingKind::Sweeps:
        return {{"t", Rule::Rising}, {"y", Rule::Sample}};
    case RecordingKind::Regions:
        return {{"begin", Rule::Finite},
                {"end", Rule::Finite},
                {"value", Rule::Sample},
                {"name", Rule::Text},
                {"type", Rule::Text}};
    case RecordingKind::Events:
        return {{"x", Rule::Rising},    {"y", Rule::Sample},           {"kind", Rule::Text},
                {"loss", Rule::Sample}, {"reflectance", Rule::Sample}, {"slope_before", Rule::Sample}};
    }
    return {};
}

// Steps through the lines of a text that is held in memory.
class LineCursor
{
public:
    explicit LineCursor(const QByteArray &text)
        : m_next(text.constData() + (text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0))
        , m_end(text.constData() + text.size())
    {
    }

    bool atEnd() const { return m_next == m_end; }
    bool startsWith(char letter) const { return m_next != m_end && *m_next == letter; }
    int number() const { return m_number; }
    const char *begin() const { return m_begin; }
    const char *end() const { return m_lineEnd; }
    QByteArray text() const { return QByteArray(m_begin, int(m_lineEnd - m_begin)); }

    // False when the line is cut off before its line end.
    bool advance()
    {
        ++m_number;
        m_begin = m_next;
        const void *feed = std::memchr(m_next, '\n', size_t(m_end - m_next));
        m_lineEnd = feed ? static_cast<const char *>(feed) : m_end;
        m_next = feed ? m_lineEnd + 1 : m_end;
        if (m_lineEnd != m_begin && m_lineEnd[-1] == '\r')
            --m_lineEnd;
        return feed != nullptr;
    }

private:
    const char *m_next;
    const char *m_end;
    const char *m_begin = nullptr;
    const char *m_lineEnd = nullptr;
    int m_number = 0;
};

class RowReader
{
public:
    explicit RowReader(const RecordingHeader &header)
        : m_header(header)
        , m_columns(columnsOf(header.kind))
        , m_cells(header.kind == RecordingKind::Sweeps ? header.points + 1 : m_columns.size())
        , m_expectedRows(header.kind == RecordingKind::Sweeps ? header.sweeps : header.points)
    {
    }

    // False, and the reason, when rows are missing.
    bool isComplete(QString *error) const
    {
        if (m_rows == m_expectedRows)
            return true;
        *error = QStringLiteral("the file ends after %1 rows, but its header says \"%2: %3\"")
                     .arg(QString::number(m_rows), countKey(), QString::number(m_expectedRows));
        return false;
    }

    // False, and the reason, for a row that is not one of this kind of recording.
    bool addRow(const char *begin, const char *end, QString *error)
    {
        if (m_rows == m_expectedRows) {
            *error = QStringLiteral("one row more than the header's \"%1: %2\"")
                         .arg(countKey())
                         .arg(m_expectedRows);
            return false;
        }
        const char *cell = begin;
        for (int i = 0;; ++i) {
            const void *found = std::memchr(cell, ',', size_t(end - cell));
            const char *cellEnd = found ? static_cast<const char *>(found) : end;
            if (i == m_cells || (cellEnd == end && i + 1 < m_cells)) {
                *error = wrongCount(begin, end);
                return false;
            }
            if (!addCell(m_columns[qMin(i, m_columns.size() - 1)], cell, cellEnd, error))
                return false;
            if (cellEnd == end)
                break;
            cell = cellEnd + 1;
        }
        *error = contradiction();
        ++m_rows;
        return error->isEmpty();
    }

    Recording recording() const
    {
        Recording result;
        result.header = m_header;
        for (const Column &column : m_columns) {
            const QString name = QString::fromLatin1(column.name);
            if (column.rule == Rule::Text)
                result.texts.insert(name, column.texts);
            else
                result.numbers.insert(name, column.numbers);
        }
        return result;
    }

private:
    QString countKey() const
    {
        return m_header.kind == RecordingKind::Sweeps ? QStringLiteral("sweeps") : QStringLiteral("points");
    }

    // Why the cells of the last row do not fit together.
    QString contradiction() const
    {
        const double first = m_columns.at(0).numbers.last();
        if (m_header.kind == RecordingKind::Regions && m_columns.at(1).numbers.last() < first)
            return QStringLiteral("the region ends before it begins");
        if (m_header.kind != RecordingKind::Points || !m_header.equallySpaced)
            return QString();
        // Columns are rounded to few digits: half a step is what tells one sample from the next.
        const double expected = m_header.xFirst + m_rows * m_header.xStep;
        if (std::abs(first - expected) <= 0.5 * m_header.xStep)
            return QString();
        return QStringLiteral("\"x\" is %1, but \"x-first\" and \"x-step\" make it %2")
            .arg(first)
            .arg(expected);
    }

    QString wrongCount(const char *begin, const char *end) const
    {
        const int found = 1 + QByteArray::fromRawData(begin, int(end - begin)).count(',');
        return QStringLiteral("%1 columns, not %2").arg(found).arg(m_cells);
    }

    static bool addCell(Column &column, const char *begin, const char *end, QString *error)
    {
        if (column.rule == Rule::Text && end - begin > longestText) {
            *error = QStringLiteral("%1 in the column \"%2\" is longer than %3 bytes")
                         .arg(quoted(QByteArray(begin, int(end - begin))), QString::fromLatin1(column.name))
                         .arg(longestText);
            return false;
        }
        if (column.rule == Rule::Text) {
            column.texts.append(QString::fromUtf8(begin, int(end - begin)));
            return true;
        }
        double value = 0.0;
        const std::from_chars_result result = std::from_chars(begin, end, value);
        const bool isNumber = result.ec == std::errc() && result.ptr == end &&
                              (std::isfinite(value) || (std::isnan(value) && column.rule == Rule::Sample));
        if (!isNumber) {
            *error = QStringLiteral("%1 in the column \"%2\" is not a number")
                         .arg(quoted(QByteArray(begin, int(end - begin))), QString::fromLatin1(column.name));
            return false;
        }
        if (column.rule == Rule::Rising && !column.numbers.isEmpty() && value < column.numbers.last()) {
            *error = QStringLiteral("\"%1\" falls").arg(QString::fromLatin1(column.name));
            return false;
        }
        column.numbers.append(value);
        return true;
    }

    const RecordingHeader &m_header;
    QVector<Column> m_columns;
    int m_cells;
    int m_expectedRows;
    int m_rows = 0;
};

// Reads piece by piece, so that an endless device is recognised at once.
bool readAll(QIODevice &device, QByteArray *text, ReadingError *error)
{
    std::array<char, 1 << 16> piece;
    while (true) {
        const qint64 count = device.read(piece.data(), piece.size());
        if (count <= 0)
            break;
        text->append(piece.data(), int(count));
        const int mark = text->startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
        if (!beginning.startsWith(text->mid(mark, beginning.size())))
            break; // the header will be refused
        if (text->size() > largestFile) {
            *error = {0, QStringLiteral("the file is larger than %1 bytes").arg(largestFile)};
            return false;
        }
    }
    if (text->isEmpty())
        *error = {1, QStringLiteral("the file is empty")};
    return !text->isEmpty();
}

// A cut number may still look like a number, so a last line without its end cannot be trusted.
QString cutOff()
{
    return QStringLiteral("the last line is cut off: it has no line end");
}

bool readHeader(LineCursor &lines, RecordingHeader *header, ReadingError *error)
{
    RecordingHeaderReader reader;
    while (lines.number() == 0 || lines.startsWith('#')) {
        const bool complete = lines.advance();
        if (!reader.addLine(lines.text(), &error->message)) {
            error->line = lines.number();
            return false;
        }
        if (!complete) {
            *error = {lines.number(), cutOff()};
            return false;
        }
    }
    if (reader.finish(header, error))
        return true;
    if (error->line == 0)
        error->line = lines.number();
    return false;
}

bool readRows(LineCursor &lines, RowReader &rows, ReadingError *error)
{
    while (!lines.atEnd()) {
        const bool complete = lines.advance();
        error->line = lines.number();
        if (!complete) {
            error->message = cutOff();
            return false;
        }
        if (lines.begin() == lines.end()) {
            error->message = QStringLiteral("empty line");
            return false;
        }
        if (*lines.begin() == '#') {
            error->message = QStringLiteral("header line after the first row");
            return false;
        }
        if (!rows.addRow(lines.begin(), lines.end(), &error->message))
            return false;
    }
    return true;
}

} // namespace

std::optional<Recording> recordingFrom(QIODevice &device, ReadingError *error)
{
    QByteArray text;
    RecordingHeader header;
    if (!readAll(device, &text, error))
        return {};
    LineCursor lines(text);
    if (!readHeader(lines, &header, error))
        return {};
    RowReader rows(header);
    if (!readRows(lines, rows, error))
        return {};
    error->line = lines.number();
    if (!rows.isComplete(&error->message))
        return {};
    return rows.recording();
}

} // namespace simulation
