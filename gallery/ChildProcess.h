#pragma once

#include <QProcess>

namespace gallery {

// A process that never outlives this program: asked to end by stop(), and by the system if this program is
// killed.
class ChildProcess : public QProcess
{
    Q_OBJECT

public:
    explicit ChildProcess(QObject *parent = nullptr);
    ~ChildProcess() override;

    void stop();

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
protected:
    void setupChildProcess() override;
#endif
};

} // namespace gallery
