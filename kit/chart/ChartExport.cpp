#include "kit/chart/ChartExport.h"

#include "kit/chart/Canvas.h"
#include "kit/chart/CsvTable.h"
#include "kit/chart/ExportJob.h"
#include "kit/chart/ItemPictures.h"
#include "kit/chart/ScenePainting.h"
#include "kit/data/KitLog.h"
#include "view/frame/GraphView.h"

#include <QFileInfo>
#include <QQmlEngine>
#include <QUrl>

#include <algorithm>
#include <cmath>

namespace graph {

namespace {

constexpr double longestSide = 16384.0; // in pixels

const QString png = QStringLiteral("png");
const QString svg = QStringLiteral("svg");
const QString notAFile = QStringLiteral("it is no file; write a path or a file URL");
const QString pdf = QStringLiteral("pdf");

// Empty for a URL of something else than a file.
QString pathOf(const QString &file)
{
    if (file.startsWith(QLatin1String("file:")))
        return QUrl(file).toLocalFile();
    return file.contains(QLatin1String("://")) || file.startsWith(QLatin1String("qrc:")) ? QString() : file;
}

QString suffixOf(const QString &file)
{
    return QFileInfo(pathOf(file)).suffix().toLower();
}

QString cannotWrite(const QString &file, const QString &why)
{
    return QStringLiteral("The chart cannot be written to \"%1\": %2.").arg(file, why);
}

// A chart has to be somewhere for its paths to be known.
QStringList importPathsOf(const QObject *object)
{
    if (const QQmlEngine *engine = qmlEngine(object))
        return engine->importPathList();
    return QQmlEngine().importPathList();
}

} // namespace

ChartExport::ChartExport(GraphView *view)
    : QObject(view)
    , m_view(view)
{
}

ChartExport::~ChartExport()
{
    for (const Job &job : qAsConst(m_jobs)) {
        job.work->cancel();
        job.work->forgetReceiver();
    }
}

double ChartExport::progress() const
{
    if (m_jobs.isEmpty())
        return 1.0;
    double share = 0.0;
    for (const Job &job : m_jobs)
        share += job.work->share();
    return share / m_jobs.size();
}

/*!
    \qmlmethod bool Chart::exportImage(string file, real scale = 1)
    Writes a picture of the chart to a path or file URL that ends with .png, .svg or .pdf: the chart as it is
    now, as large as it is times scale (at most 16384 pixels each way). SVG and PDF hold lines and texts, not
    pixels. Gives whether it began; exportFinished() tells the end in any case. Another thread writes the file,
    which appears complete or not at all.

    \qmlmethod bool Chart::exportData(string file, bool all = false)
    Writes the samples of the visible traces as CSV to a path or file URL that ends with .csv, those in the visible
    range of x or all: a line of names
    with units, then a line for each sample. The column of x has the title of its axis, or "x"; of a Time axis it
    has dates as ISO 8601 (2023-11-14T23:13:20.250Z, in local time with +01:00 or the like) and the title or "Time".
    Traces at the same x share a column of it; a LimitLine is no
    data and has none. Numbers have points and are exact in every locale; a gap is an empty field. Begins and ends like exportImage().

    \qmlmethod void Chart::cancelExport()
    Ends all exports that go on, without files.

    \qmlsignal Chart::exportFinished(string file, string error)
    The error is empty when the file is there, or else a sentence, which is also in the log (category \c
    graph.kit) unless the export was cancelled.

    \qmlproperty real Chart::exportProgress
    \readonly
    From 0 to 1 while exports go on, 1 otherwise.
*/
bool ChartExport::exportImage(const QString &file, double scale)
{
    const QString kind = suffixOf(file);
    const QString trouble = pathOf(file).isEmpty() ? notAFile : imageTrouble(kind, scale);
    if (!trouble.isEmpty())
        return refuse(file, trouble);
    Job job;
    job.kind = kind;
    job.scale = scale;
    if (!open(file, &job))
        return false;
    const QVector<QQuickItem *> items = itemsToGrab(m_view);
    if (!items.isEmpty()) {
        job.pictures = new ItemPictures(items, scale, this);
        connect(job.pictures, SIGNAL(taken()), this, SLOT(handlePictures()));
    }
    add(job);
    if (items.isEmpty())
        paint(job);
    return true;
}

bool ChartExport::exportData(const QString &file, bool all)
{
    if (!pathOf(file).isEmpty() && suffixOf(file) != QLatin1String("csv"))
        return refuse(file, QStringLiteral("the name of a table ends with .csv"));
    const auto table = std::make_shared<CsvTable>(*m_view, all);
    if (table->isEmpty())
        return refuse(file, QStringLiteral("there are no %1 samples")
                                .arg(all ? QString() : QStringLiteral("visible"))
                                .simplified());
    Job job;
    if (!open(file, &job))
        return false;
    add(job);
    job.work->start(
        [table](QIODevice *device, const ExportJob::GoOn &goOn) { return table->write(device, goOn); });
    return true;
}

void ChartExport::cancel()
{
    const QVector<Job> jobs = m_jobs;
    for (const Job &job : jobs) {
        job.work->cancel();
        if (job.pictures)
            handleJobEnd(job.number, QString());
    }
}

QString ChartExport::imageTrouble(const QString &kind, double scale) const
{
    if (kind != png && kind != svg && kind != pdf)
        return QStringLiteral("the name of a picture ends with .png, .svg or .pdf");
    if (!m_view->isVisible() || !(m_view->width() > 0.0 && m_view->height() > 0.0))
        return QStringLiteral("the chart is not visible");
    if (!std::isfinite(scale) || scale <= 0.0)
        return QStringLiteral("the scale has to be above 0");
    const QSizeF size = m_view->size() * scale;
    const auto [shorter, longer] = std::minmax({size.width(), size.height()});
    if (longer > longestSide || shorter < 1.0)
        return QStringLiteral("a picture has 1 to %1 pixels each way, not %2 x %3")
            .arg(longestSide)
            .arg(size.width())
            .arg(size.height());
    return {};
}

bool ChartExport::refuse(const QString &file, const QString &error)
{
    const QString sentence = cannotWrite(file, error);
    qCWarning(kitLog).noquote() << sentence;
    QMetaObject::invokeMethod(this, "finished", Qt::QueuedConnection, Q_ARG(QString, file),
                              Q_ARG(QString, sentence));
    return false;
}

bool ChartExport::open(const QString &file, Job *job)
{
    const QString path = pathOf(file);
    if (path.isEmpty())
        return refuse(file, notAFile);
    job->number = ++m_number;
    job->file = file;
    job->work = std::make_shared<ExportJob>(this, job->number);
    QString why;
    return job->work->open(path, &why) || refuse(file, why);
}

void ChartExport::add(const Job &job)
{
    m_jobs.append(job);
    if (m_jobs.size() == 1)
        emit runningChanged();
    emit progressChanged();
}

void ChartExport::handlePictures()
{
    for (Job &job : m_jobs) {
        if (!job.pictures || job.pictures != sender())
            continue;
        const Job ready = job;
        job.pictures = nullptr;
        paint(ready);
        ready.pictures->deleteLater();
        return;
    }
}

void ChartExport::paint(const Job &job)
{
    QString error = QStringLiteral("the chart is not visible");
    const std::shared_ptr<Canvas> canvas =
        imageTrouble(job.kind, job.scale).isEmpty() ? makeCanvas(job, &error) : nullptr;
    if (!canvas) {
        QMetaObject::invokeMethod(this, "handleJobEnd", Qt::QueuedConnection, Q_ARG(int, job.number),
                                  Q_ARG(QString, error));
        return;
    }
    paintScene(m_view, job.pictures ? job.pictures->pictures() : QHash<QQuickItem *, QImage>(), canvas.get());
    // To pack the pixels takes long; the others have to do with the fonts of this thread.
    const QByteArray complete = job.kind == png ? QByteArray() : canvas->finish();
    job.work->start([canvas, complete](QIODevice *device, const ExportJob::GoOn &goOn) {
        return writeInParts(complete.isEmpty() ? canvas->finish() : complete, device, goOn);
    });
}

std::shared_ptr<Canvas> ChartExport::makeCanvas(const Job &job, QString *error) const
{
    if (job.kind == svg)
        return makeSvgCanvas(m_view->size(), job.scale, importPathsOf(m_view), error);
    return job.kind == pdf ? makePdfCanvas(m_view->size(), job.scale)
                           : makePngCanvas(m_view->size(), job.scale);
}

void ChartExport::handleProgress()
{
    emit progressChanged();
}

void ChartExport::handleJobEnd(int number, const QString &error)
{
    const auto isIt = [number](const Job &job) { return job.number == number; };
    const auto found = std::find_if(m_jobs.begin(), m_jobs.end(), isIt);
    if (found == m_jobs.end())
        return;
    const Job job = *found;
    m_jobs.erase(found);
    delete job.pictures;
    const bool isCancelled = job.work->isCancelled();
    const QString why = isCancelled ? QStringLiteral("the export was cancelled") : error;
    const QString sentence = why.isEmpty() ? QString() : cannotWrite(job.file, why);
    if (!sentence.isEmpty() && !isCancelled)
        qCWarning(kitLog).noquote() << sentence;
    emit progressChanged();
    if (m_jobs.isEmpty())
        emit runningChanged();
    emit finished(job.file, sentence);
}

} // namespace graph
