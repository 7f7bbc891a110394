#pragma once

#include <QSaveFile>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

class QObject;

namespace graph {

// A file that another thread writes. It takes its name when it is complete; until then, and for good when
// something goes wrong, what was under that name before stays.
class ExportJob : public std::enable_shared_from_this<ExportJob>
{
public:
    // To be told of the share done; false ends the writing.
    using GoOn = std::function<bool(double)>;
    using Write = std::function<bool(QIODevice *, const GoOn &)>;

    // The receiver's slots handleProgress() and handleJobEnd(int number, QString error) are called in its
    // thread.
    ExportJob(QObject *receiver, int number);

    // False, and why in a few words, when there can be no file of that name.
    bool open(const QString &path, QString *why);
    void start(const Write &write);
    void cancel() { m_isCancelled = true; }
    // The receiver goes.
    void forgetReceiver();

    bool isCancelled() const { return m_isCancelled; }
    double share() const { return m_share; }

private:
    void run(const Write &write);
    bool goOn(double share);
    void end(const QString &error);

    std::mutex m_mutex;
    QObject *m_receiver;
    int m_number;
    std::unique_ptr<QSaveFile> m_file;
    std::atomic<bool> m_isCancelled{false};
    std::atomic<double> m_share{0.0};
};

bool writeAll(const QByteArray &bytes, QIODevice *device);
// In parts, so that it can be stopped.
bool writeInParts(const QByteArray &bytes, QIODevice *device, const ExportJob::GoOn &goOn);

} // namespace graph
