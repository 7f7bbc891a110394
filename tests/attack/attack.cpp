// One attack on a live chart of 800 x 480: attack SCENARIO PEER_PROGRAM [SECONDS]. Prints a row of the table in
// docs/reliability.md: the longest time between two frames, what memory and file descriptors the attack left behind,
// and whether the chart shows what was sent last. Fails when it does not, or when something is left; not for a gap, which
// other work on the machine lengthens. run.sh runs them all.
#include "axis/ValueAxis.h"
#include "data/PlotSeries.h"
#include "plugin/Plugin.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <thread>

namespace {

const char chart[] = R"(
    import QtQuick 2.15
    import charts 1.0
    GraphView {
        id: view
        property bool isSlow: false
        property string file
        property alias trace: trace
        property alias heatmap: heatmap
        axes: [
            ValueAxis { id: horizontal; maxValue: Math.max(1, trace.size - 1) },
            ValueAxis { id: vertical; alignment: Qt.AlignLeft; maxValue: 100 }
        ]
        GraphPlot { plotData: trace; plotStyle: GraphPlot.LinePlot }
        HeatmapPlot { id: heatmap; anchors.fill: parent }
        Text { text: trace.yLabel }
        Text { x: 400; text: trace.size }
        PlotSeries {
            id: trace
            axisX: horizontal; axisY: vertical; dbusAddress: "attacker,trace"
            onYLabelChanged: if (view.isSlow) for (var i = 0, sum = 0; i < 20000; ++i) sum += i
        }
    })";

// Megabytes that an attack may leave behind; checks of the memory take some of their own.
constexpr double mostMemory = IS_INSTRUMENTED ? 1e9 : 10;

double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

int openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}

void wait(double seconds)
{
    QEventLoop loop;
    QTimer::singleShot(int(seconds * 1000), Qt::PreciseTimer, &loop, SLOT(quit()));
    loop.exec();
}

bool waitFor(const std::function<bool()> &condition, double seconds)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < seconds * 1000)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return condition();
}

void stall(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

// Runs the event loop, and so the chart, while it waits for its process.
class Peer : public QProcess
{
public:
    Peer(const QString &program, const QString &name, int items = 0)
    {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start(program, {name, QString::number(items)});
        waitFor([this] { return canReadLine() || state() == NotRunning; }, 20);
        if (readLine().trimmed() != "published")
            qFatal("%s is not published", qPrintable(name));
    }
    ~Peer() override
    {
        signal(SIGCONT);
        kill();
        waitForFinished(-1);
    }
    void signal(int number) const { ::kill(pid_t(processId()), number); }
    void order(const QString &text) { write(text.toUtf8() + '\n'); }
    // Until the peer has done what it was told.
    void obey(
        const QString &text, const std::function<void()> &meanwhile = [] {})
    {
        order(text);
        while (state() == QProcess::Running && !canReadLine()) {
            wait(0.02);
            meanwhile();
        }
        if (!canReadLine())
            qFatal("the peer has ended: %s", qPrintable(errorString()));
        readLine();
    }
};

class Victim
{
public:
    Victim()
    {
        QQmlComponent component(&m_engine);
        component.setData(chart, QUrl());
        m_view.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!m_view)
            qFatal("%s", qPrintable(component.errorString()));
        m_trace = m_view->property("trace").value<PlotSeries *>();
        m_window.resize(800, 480);
        m_view->setParentItem(m_window.contentItem());
        m_view->setSize(QSizeF(800, 480));
        // By the window's thread: a render thread tells of frames, too.
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, &m_window, [this] { countFrame(); });
        m_ticker.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_ticker, &QTimer::timeout, &m_window, &QQuickWindow::update);
        m_ticker.start(16);
        m_window.show();
    }

    // Another page over the chart, in place of the one that was there.
    void turnPage(QQmlComponent &component)
    {
        m_page.reset(qobject_cast<QQuickItem *>(component.create()));
        m_page->setParentItem(m_window.contentItem());
        m_page->setSize(QSizeF(800, 480));
    }
    void closePage() { m_page.reset(); }
    QQmlEngine *engine() { return &m_engine; }

    QQuickItem *view() const { return m_view.get(); }
    PlotSeries *trace() const { return m_trace; }
    bool shows(double number) const
    {
        return m_trace->size() > 0 && m_trace->y(0) == number && m_trace->yLabel() == QString::number(number);
    }

    void expectStall() { m_clock.invalidate(); }
    void startMeasuring()
    {
        m_clock.invalidate();
        m_longestGap = 0;
    }
    double longestGap() const { return m_longestGap; }

private:
    void countFrame()
    {
        if (m_clock.isValid())
            m_longestGap = std::max(m_longestGap, double(m_clock.nsecsElapsed()) * 1e-6);
        m_clock.start();
    }

    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_view;
    std::unique_ptr<QQuickItem> m_page;
    PlotSeries *m_trace = nullptr;
    QTimer m_ticker;
    QElapsedTimer m_clock;
    double m_longestGap = 0;
};

struct Scene
{
    QString program;
    double seconds;
    std::unique_ptr<Peer> peer;
    std::unique_ptr<Victim> victim;
    QString remark;
    bool isAsWanted = true;

    void begin(int items = 0)
    {
        peer = std::make_unique<Peer>(program, QStringLiteral("attacker"), items);
        victim = std::make_unique<Victim>();
        waitFor([this] { return victim->trace()->size() > 0; }, 20);
        wait(1);
        victim->startMeasuring();
    }
    void restartPeer()
    {
        peer.reset(); // first: its name is to be free
        peer = std::make_unique<Peer>(program, QStringLiteral("attacker"));
    }
};

void deaf(Scene &scene)
{
    scene.peer->obey(QStringLiteral("arrays 100000 25 8"), [&, stalled = false]() mutable {
        if (!std::exchange(stalled, true)) {
            stall(4);
            scene.victim->expectStall();
        }
    });
}

void gigabyte(Scene &scene)
{
    QElapsedTimer clock;
    clock.start();
    scene.peer->obey(QStringLiteral("arrays 100000 40 32"), [&] {
        if (clock.elapsed() > 10000) {
            clock.restart();
            stall(5);
            scene.victim->expectStall();
        }
    });
}

void labels(Scene &scene)
{
    scene.victim->view()->setProperty("isSlow", true);
    scene.peer->obey(QStringLiteral("labels 48000 5"));
}

void unfinished(Scene &scene)
{
    scene.peer->obey(QStringLiteral("unfinished 6"));
}

void names(Scene &scene)
{
    scene.peer->obey(QStringLiteral("names 25000"));
}

void huge(Scene &scene)
{
    scene.peer->obey(QStringLiteral("huge 10000000"));
    waitFor([&] { return scene.victim->trace()->size() == 10000000; }, 30);
}

void restarts(Scene &scene)
{
    for (int i = 0; i < 100; ++i) {
        scene.peer->order(QStringLiteral("arrays 1000 200 1"));
        wait(0.05);
        scene.restartPeer();
    }
}

void frozen(Scene &scene)
{
    scene.peer->signal(SIGSTOP);
    std::vector<std::unique_ptr<Peer>> peers;
    QByteArray document("import QtQuick 2.15; import charts 1.0; Item {");
    for (int i = 0; i < 10; ++i) {
        peers.push_back(std::make_unique<Peer>(scene.program, QStringLiteral("frozen%1").arg(i)));
        peers.back()->signal(SIGSTOP);
        document += "PlotSeries { dbusAddress: \"frozen" + QByteArray::number(i) + ",trace\" }";
    }
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(document + '}', QUrl());
    scene.victim->startMeasuring();
    QElapsedTimer clock;
    clock.start();
    const std::unique_ptr<QObject> page(component.create());
    scene.remark = QStringLiteral("page there after %1 ms").arg(clock.elapsed());
    wait(3);
    for (auto &peer : peers)
        peer->signal(SIGCONT);
    const auto series = page->findChildren<PlotSeries *>();
    const auto alive = [&] {
        return std::count_if(series.begin(), series.end(), [](PlotSeries *one) { return one->size() == 2; });
    };
    waitFor([&] { return alive() == 10; }, 20);
    scene.remark += QStringLiteral(", %1 of 10 alive").arg(alive());
    scene.isAsWanted = alive() == 10;
    scene.peer->signal(SIGCONT);
}

void sparseHeatmap(Scene &scene)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("big.heatmap")));
    file.open(QIODevice::WriteOnly);
    // The header's two counts, big-endian, as large as they go, and a hole of as many cells.
    file.write("\xff\xff\xff\xff", 4);
    file.resize(4300000000LL);
    file.close();
    auto *heatmap = scene.victim->view()->property("heatmap").value<QObject *>();
    heatmap->setProperty("dataDirectory", folder.path());
    heatmap->setProperty("dataFilePath", file.fileName());
    wait(3);
}

void heatmapFolder(Scene &scene)
{
    static QTemporaryDir folder; // to empty it takes longer than what is measured
    for (int i = 0; i < 100000; ++i) {
        QFile file(folder.filePath(QStringLiteral("%1.heatmap").arg(i)));
        file.open(QIODevice::WriteOnly);
    }
    auto *heatmap = scene.victim->view()->property("heatmap").value<QObject *>();
    scene.victim->startMeasuring();
    heatmap->setProperty("dataDirectory", folder.path());
    for (int i = 0; i < 3; ++i) {
        heatmap->setProperty("dataFilePath", folder.filePath(QStringLiteral("%1.heatmap").arg(i)));
        wait(2);
    }
}

// A straight line through values over time.
class Trend
{
public:
    void add(double seconds, double value)
    {
        ++m_count;
        m_sums += QPointF(seconds, value);
        m_squares += QPointF(seconds * seconds, seconds * value);
    }
    // Per second.
    double slope() const
    {
        return (m_count * m_squares.y() - m_sums.x() * m_sums.y()) /
               (m_count * m_squares.x() - m_sums.x() * m_sums.x());
    }

private:
    int m_count = 0;
    QPointF m_sums, m_squares;
};

// 200 sweeps a second, zoomed in and out all the time; another page every 5 s, another service every minute.
void soak(Scene &scene)
{
    QQmlComponent page(scene.victim->engine());
    page.setData(chart, QUrl());
    constexpr int sweeps = 1000;
    const double settling = std::min(300.0, scene.seconds / 2);
    Trend memory;
    std::set<int> files;
    QElapsedTimer clock;
    clock.start();
    const auto seconds = [&clock] { return double(clock.elapsed()) / 1000; };
    int round = 0;
    for (; seconds() < scene.seconds; ++round) {
        scene.victim->turnPage(page);
        auto *axis = scene.victim->trace()->axisX();
        scene.peer->obey(QStringLiteral("arrays 2001 200 5"), [&, step = 0]() mutable {
            const double edge = 900 * (1 - std::cos(0.05 * ++step));
            axis->setMinVisible(edge);
            axis->setMaxVisible(2000 - 0.1 * edge);
        });
        if (round % 12 == 11)
            scene.restartPeer();
        if (seconds() > settling) {
            memory.add(seconds(), residentMegabytes());
            files.insert(openFiles());
        }
    }
    const double rise = memory.slope() * (seconds() - settling);
    scene.remark = QStringLiteral("%1 sweeps/s; after %2 s %3 MB in %4 s, %5 to %6 files")
                       .arg(sweeps * round / seconds(), 0, 'f', 0)
                       .arg(settling)
                       .arg(rise, 0, 'f', 2)
                       .arg(seconds() - settling, 0, 'f', 0)
                       .arg(*files.begin())
                       .arg(*files.rbegin());
    scene.victim->closePage();
    // A minute is too short to judge.
    scene.isAsWanted = scene.seconds < 600 || (std::abs(rise) <= 1 && files.size() == 1);
}

// A bus that takes connections and never says a word.
class MuteBus
{
public:
    explicit MuteBus(const QString &path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, qPrintable(path), sizeof address.sun_path);
        ::bind(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address);
        ::listen(m_socket, 16);
    }
    ~MuteBus() { ::close(m_socket); }

private:
    int m_socket;
};

int mute()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bus"));
    const MuteBus bus(path);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.toUtf8());
    QElapsedTimer clock;
    clock.start();
    Victim victim;
    const qint64 shown = clock.elapsed();
    victim.startMeasuring();
    wait(10);
    std::printf("| %-16s | %7.0f | %6s | %3s | %-5s | page there after %lld ms |\n", "mute bus",
                victim.longestGap(), "-", "-", "-", (long long)shown);
    std::fflush(stdout);
    // The end of the process is not measured: a library that hangs in its connection would hold it up.
    std::_Exit(0);
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    Plugin().registerTypes("charts");
    const QString name = application.arguments().value(1);
    Scene scene{application.arguments().value(2), application.arguments().value(3).toDouble(), {}, {}, {}};
    if (name == QLatin1String("mute"))
        return mute();

    const std::map<QString, std::function<void(Scene &)>> attacks{
        {QStringLiteral("deaf"), deaf},
        {QStringLiteral("gigabyte"), gigabyte},
        {QStringLiteral("labels"), labels},
        {QStringLiteral("unfinished"), unfinished},
        {QStringLiteral("names"), names},
        {QStringLiteral("huge"), huge},
        {QStringLiteral("restarts"), restarts},
        {QStringLiteral("frozen"), frozen},
        {QStringLiteral("sparse-heatmap"), sparseHeatmap},
        {QStringLiteral("heatmap-folder"), heatmapFolder},
        {QStringLiteral("million-items"), [](Scene &) { wait(3); }},
        {QStringLiteral("soak"), soak}};
    const auto attack = attacks.find(name);
    if (attack == attacks.end())
        qFatal("attack SCENARIO PEER_PROGRAM [SECONDS]");

    // A bus of our own, which ends with the process.
    QProcess daemon;
    daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                 QStringLiteral("--print-address")});
    daemon.waitForReadyRead(10000);
    qputenv("DBUS_SESSION_BUS_ADDRESS", daemon.readLine().trimmed());

    bool isRight = false;
    {
        const bool isMillion = name == QLatin1String("million-items");
        if (isMillion) { // here what is measured is the first fetch
            scene.victim = std::make_unique<Victim>();
            wait(1);
            scene.victim->startMeasuring();
        }
        double memory = residentMegabytes();
        int files = openFiles();
        if (isMillion) {
            scene.peer = std::make_unique<Peer>(scene.program, QStringLiteral("attacker"), 1000000);
            files = openFiles(); // with those to the peer, as below
        } else {
            scene.begin();
            memory = residentMegabytes();
            files = openFiles();
        }
        attack->second(scene);
        scene.victim->view()->setProperty("isSlow", false);
        scene.peer->order(QStringLiteral("last 42"));
        isRight = waitFor([&] { return scene.victim->shows(42); }, 20);
        const double gap = scene.victim->longestGap();
        wait(1);
        memory = residentMegabytes() - memory;
        files = openFiles() - files;
        std::printf("| %-16s | %7.0f | %+6.1f | %+3d | %-5s | %s |\n", qPrintable(name), gap, memory, files,
                    isRight ? "yes" : "NO", qPrintable(scene.remark));
        // The soak judges by itself what its pages take.
        const bool isLittle = name == QLatin1String("soak") || memory <= mostMemory;
        isRight = isRight && scene.isAsWanted && isLittle && files == 0;
        std::fflush(stdout);
        scene.victim.reset();
        scene.peer.reset();
    }
    daemon.terminate();
    daemon.waitForFinished();
    return isRight ? 0 : 1;
}
