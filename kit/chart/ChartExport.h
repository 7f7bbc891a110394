#pragma once

#include "common/Export.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

#include <memory>

class GraphView;

namespace graph {

class Canvas;
class ExportJob;
class ItemPictures;

// Writes a chart to files: its picture as PNG, SVG or PDF, its samples as CSV. The files are written by
// another thread and appear complete or not at all.
class GRAPH_CHARTS_EXPORT ChartExport : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    explicit ChartExport(GraphView *view);
    ~ChartExport() override;

    // Of all that is being written, from 0 to 1; 1 while nothing is.
    double progress() const;
    bool isRunning() const { return !m_jobs.isEmpty(); }

    // The file is a path or a file URL. Whether it began; finished() tells the end in any case. A picture is
    // as large as the chart times scale, and its kind is the ending of the file's name: png, svg or pdf. The
    // data are those of the visible plots, in the visible range of x or all.
    Q_INVOKABLE bool exportImage(const QString &file, double scale = 1.0);
    Q_INVOKABLE bool exportData(const QString &file, bool all = false);

public slots:
    // Everything that has not ended yet.
    void cancel();

signals:
    // From the event loop. The error is a sentence, empty when the file is there.
    void finished(const QString &file, const QString &error);
    void progressChanged();
    void runningChanged();

private slots:
    void handlePictures();
    void handleProgress();
    void handleJobEnd(int number, const QString &error);

private:
    struct Job
    {
        int number = 0;
        QString file;
        std::shared_ptr<ExportJob> work;
        QString kind; // of a picture
        double scale = 1.0;
        ItemPictures *pictures = nullptr; // while they are taken
    };

    QString imageTrouble(const QString &kind, double scale) const;
    bool refuse(const QString &file, const QString &error);
    bool open(const QString &file, Job *job);
    void add(const Job &job);
    void paint(const Job &job);
    std::shared_ptr<Canvas> makeCanvas(const Job &job, QString *error) const;

    QPointer<GraphView> m_view;
    QVector<Job> m_jobs;
    int m_number = 0;
};

} // namespace graph
