#include "platform/bus/BusThread.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <dbus/dbus.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <condition_variable>
#include <mutex>
#include <vector>

namespace {

using Lock = std::lock_guard<std::mutex>;

// The reader of the log may not come for long.
constexpr int maxLines = 16;

QByteArray addressOfBus()
{
    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus");
    if (address.isEmpty())
        address =
            QFileInfo::exists(usual) ? QLatin1String("unix:path=") + usual : QStringLiteral("autolaunch:");
    // A bus that was started again at its old place has a new identity, which an address may demand.
    return address.remove(QRegularExpression(QStringLiteral(",guid=[^,;]*"))).toLocal8Bit();
}

// glibc takes a large block that was given back for the size of blocks to come: up to 64 MiB it then keeps at the end
// of each thread's heap. After one large message that memory would stay with the bus thread for good. A program
// that was started with limits of its own keeps them.
void limitKeptMemory()
{
#ifdef __GLIBC__
    constexpr int largestBlock = 4 << 20;
    for (const char *choice : {"GLIBC_TUNABLES", "MALLOC_MMAP_THRESHOLD_", "MALLOC_TRIM_THRESHOLD_"}) {
        if (qEnvironmentVariableIsSet(choice))
            return;
    }
    // Refused where heaps are so small, on 32 bits, that little can stay in them.
    if (mallopt(M_MMAP_THRESHOLD, largestBlock))
        mallopt(M_TRIM_THRESHOLD, 2 * largestBlock);
#endif
}

} // namespace

// Outlives a thread that hangs in a system call when the process ends.
struct BusThread::Shared
{
    Shared()
        : event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
    }
    ~Shared() { close(event); }

    void signalEvent() const
    {
        const quint64 one = 1;
        // Fails only when the event is signalled already.
        if (write(event, &one, sizeof one) < 0)
            return;
    }
    void clearEvent() const
    {
        quint64 count = 0;
        if (read(event, &count, sizeof count) < 0)
            return;
    }

    const int event;
    std::mutex mutex;
    std::condition_variable ended;
    std::vector<Task> tasks;
    QStringList lines;
    std::function<void()> wake;
    bool isToEnd = false;
    bool hasEnded = false;
};

BusThread::BusThread(const BusPatience &patience, std::function<void()> wake)
    : m_shared(std::make_shared<Shared>())
{
    // Others in this process may use the library as well.
    dbus_threads_init_default();
    limitKeptMemory();
    m_shared->wake = std::move(wake);
    m_thread = std::thread(&BusThread::run, m_shared, addressOfBus(), patience);
}

BusThread::~BusThread()
{
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    m_shared->isToEnd = true;
    m_shared->wake = nullptr;
    m_shared->signalEvent();
    // To connect to a bus that is stopped may take for ever.
    const bool hasEnded =
        m_shared->ended.wait_for(lock, std::chrono::seconds(2), [this] { return m_shared->hasEnded; });
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

void BusThread::post(Task task)
{
    const Lock lock(m_shared->mutex);
    m_shared->tasks.push_back(std::move(task));
    m_shared->signalEvent();
}

void BusThread::rouse()
{
    m_shared->signalEvent();
}

QStringList BusThread::takeLines()
{
    const Lock lock(m_shared->mutex);
    return std::exchange(m_shared->lines, {});
}

void BusThread::run(const std::shared_ptr<Shared> &shared, const QByteArray &address,
                    const BusPatience &patience)
{
    const auto wake = [&shared] {
        const Lock lock(shared->mutex);
        if (shared->wake)
            shared->wake();
    };
    const auto tell = [&shared](const QString &line) {
        const Lock lock(shared->mutex);
        if (shared->lines.size() < maxLines)
            shared->lines.append(line);
    };
    {
        BusLink link(address, patience, wake, tell);
        for (bool isToEnd = false; !isToEnd;) {
            std::vector<Task> tasks;
            {
                const Lock lock(shared->mutex);
                tasks.swap(shared->tasks);
                isToEnd = shared->isToEnd;
            }
            for (const Task &task : tasks)
                task(link);
            const int wait = link.turn();
            pollfd sources[] = {
                {shared->event, POLLIN, 0},
                {link.descriptor(), short(link.wantsToWrite() ? POLLIN | POLLOUT : POLLIN), 0}};
            if (!isToEnd)
                poll(sources, 2, wait);
            shared->clearEvent();
        }
    }
    const Lock lock(shared->mutex);
    shared->hasEnded = true;
    shared->ended.notify_all();
}
