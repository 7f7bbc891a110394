#include "kit/chart/ExportJob.h"

#include <QFileInfo>
#include <QThreadPool>

namespace graph {

ExportJob::ExportJob(QObject *receiver, int number)
    : m_receiver(receiver)
    , m_number(number)
{
}

bool ExportJob::open(const QString &path, QString *why)
{
    const QFileInfo info(path);
    // A device would be replaced by the file.
    if (info.exists() && !info.isFile()) {
        *why = info.isDir() ? QStringLiteral("it is a folder") : QStringLiteral("it is no ordinary file");
        return false;
    }
    m_file = std::make_unique<QSaveFile>(path);
    if (!m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        *why = m_file->errorString();
        return false;
    }
    m_file->moveToThread(nullptr);
    return true;
}

void ExportJob::start(const Write &write)
{
    const std::shared_ptr<ExportJob> self = shared_from_this();
    QThreadPool::globalInstance()->start([self, write] { self->run(write); });
}

void ExportJob::forgetReceiver()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_receiver = nullptr;
}

void ExportJob::run(const Write &write)
{
    const bool isWritten = write(m_file.get(), [this](double share) { return goOn(share); });
    QString error;
    if (m_isCancelled || !isWritten) {
        error = m_isCancelled ? QStringLiteral("cancelled") : m_file->errorString();
        m_file->cancelWriting();
    } else if (!m_file->commit()) {
        error = m_file->errorString();
    }
    m_file.reset(); // with what is incomplete
    end(error);
}

bool ExportJob::goOn(double share)
{
    constexpr double step = 0.01;
    if (share >= m_share + step) {
        m_share = share;
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_receiver)
            QMetaObject::invokeMethod(m_receiver, "handleProgress", Qt::QueuedConnection);
    }
    return !m_isCancelled;
}

void ExportJob::end(const QString &error)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_receiver)
        QMetaObject::invokeMethod(m_receiver, "handleJobEnd", Qt::QueuedConnection, Q_ARG(int, m_number),
                                  Q_ARG(QString, error));
}

bool writeAll(const QByteArray &bytes, QIODevice *device)
{
    // The part that still had room is written without an error; only the next one tells what is wrong.
    for (int at = 0; at < bytes.size();) {
        const qint64 written = device->write(bytes.constData() + at, bytes.size() - at);
        if (written <= 0)
            return false;
        at += int(written);
    }
    return true;
}

bool writeInParts(const QByteArray &bytes, QIODevice *device, const ExportJob::GoOn &goOn)
{
    constexpr int part = 1 << 20;
    for (int at = 0; at < bytes.size(); at += part) {
        if (!writeAll(bytes.mid(at, part), device) || !goOn(double(at) / bytes.size()))
            return false;
    }
    return goOn(1.0);
}

} // namespace graph
