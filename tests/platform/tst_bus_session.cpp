#include "data/PlotSeries.h"
#include "platform/bus/BusClient.h"
#include "platform/bus/BusPublisher.h"
#include "platform/bus/BusRegistry.h"
#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <csignal>
#include <memory>
#include <numeric>
#include <thread>

namespace {

const auto label = QStringLiteral("t_label:");
const auto trace = QStringLiteral("t_yData:doubleARRAY:");
constexpr int patience = 60000; // ms, only ever used up by a failure

QVector<double> vectorOf(ORNClientInterface *client, const QString &itemName)
{
    auto *item = qobject_cast<ORNVecDoubleClientItem *>(client->getItem(itemName));
    return item ? item->vector() : QVector<double>{-1};
}

QString labelOf(ORNClientInterface *client)
{
    return client->getItem(label) ? client->getItem(label)->getValue().toString() : QString();
}

ORNClientInterface *clientOf(const QString &service)
{
    return ORNClientInterface::getSessionBusClient(service, nullptr);
}

// What the bus says of a service that takes its time depends on how busy the machine is, so tests look for the lines
// that they are about. All others are QtTest's.
QStringList lines;
QtMessageHandler nextHandler = nullptr;

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!qstrcmp(context.category, "toskorn.bus"))
        lines.append(text);
    else
        nextHandler(type, context, text);
}

int timesTold(const char *words)
{
    return int(lines.filter(QLatin1String(words)).size());
}

// A process of this test; killed with it.
class Process : public QProcess
{
public:
    Process(const QString &program, const QStringList &arguments)
    {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start(program, arguments);
    }
    ~Process() override
    {
        signal(SIGCONT);
        kill();
        waitForFinished(-1);
    }
    QByteArray line() { return waitForReadyRead(patience) ? readLine().trimmed() : QByteArray(); }
    void signal(int number) const { ::kill(pid_t(processId()), number); }
};

class Service : public Process
{
public:
    explicit Service(const QString &name, const QStringList &options = {})
        : Process(QStringLiteral(BUS_SERVICE), QStringList(name) + options)
        , m_isPublished(line() == "published")
    {
    }
    bool isPublished() const { return m_isPublished; }
    void order(const QString &text)
    {
        write(text.toUtf8() + '\n');
        waitForBytesWritten(patience);
    }

private:
    bool m_isPublished;
};

} // namespace

class tst_bus_session : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void itemsAndTheirChanges();
    void longArraysInParts();
    void killedAndRestarted();
    void absentThenStarted();
    void frozen();
    void startedOnDemand();
    void hostile();
    void floodedWhileBusy();
    void slowReader();
    void lostElements();
    void pageOfFrozenServices();
    void appendedElements();
    void documentedPublisher();
    void publishedHereMeanwhile();
    void nameIsTaken();
    void busKilledAndRestarted();
    void publishersComeBack();
    void busThatStopsAnswering();
    void cleanup();
    void cleanupTestCase();

private:
    void startBus();

    QTemporaryDir m_home;
    std::unique_ptr<Process> m_daemon;
};

void tst_bus_session::initTestCase()
{
    QDir(m_home.path()).mkpath(QStringLiteral("dbus-1/services"));
    QFile file(m_home.filePath(QStringLiteral("dbus-1/services/org.toskorn.demand.service")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[D-BUS Service]\nName=org.toskorn.demand\nExec=" BUS_SERVICE " demand\n");
    file.close();
    qputenv("XDG_DATA_HOME", m_home.path().toLocal8Bit());
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    BusPatience patienceWithBus;
    patienceWithBus.answer = 6000;
    patienceWithBus.quiet = 1000;
    BusRegistry::instance().setPatience(patienceWithBus);
    startBus();
}

void tst_bus_session::init()
{
    // Here, as QtTest sets its own for each test.
    nextHandler = qInstallMessageHandler(handleMessage);
    lines.clear();
}

void tst_bus_session::cleanup()
{
    qInstallMessageHandler(nextHandler);
}

// Always at the same place, and every time with an identity of its own.
void tst_bus_session::startBus()
{
    const QString place = QStringLiteral("--address=unix:path=") + m_home.filePath(QStringLiteral("bus"));
    m_daemon = std::make_unique<Process>(QStringLiteral(DBUS_DAEMON),
                                         QStringList{QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                     QStringLiteral("--print-address"), place});
    const QByteArray address = m_daemon->line();
    QVERIFY2(address.startsWith("unix:"), address.constData());
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
}

void tst_bus_session::itemsAndTheirChanges()
{
    Service service(QStringLiteral("plain"));
    QVERIFY(service.isPublished());
    auto *client = clientOf(QStringLiteral("plain"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    QCOMPARE(vectorOf(client, QStringLiteral("t_none:doubleARRAY:")), QVector<double>());
    QCOMPARE(vectorOf(client, QStringLiteral("t_one:doubleARRAY:")), QVector<double>{1.5});
    const QVector<double> million = vectorOf(client, QStringLiteral("t_million:doubleARRAY:"));
    QCOMPARE(million.size(), 1000000);
    QCOMPARE(million.at(654321), 654321.0);
    QVERIFY(!client->getItem(trace));

    QSignalSpy valueSpy(client->getItem(label), SIGNAL(valueChanged()));
    QSignalSpy sizeSpy(client->getItem(QStringLiteral("t_one:doubleARRAY:")), SIGNAL(sizeChanged()));
    service.order(QStringLiteral("value t_label: second"));
    service.order(QStringLiteral("ramp t_one:doubleARRAY: 3"));
    service.order(QStringLiteral("ramp t_yData:doubleARRAY: 1000"));
    QTRY_COMPARE_WITH_TIMEOUT(vectorOf(client, trace).size(), 1000, patience);
    // Each item is told by itself; a busy machine may do so in several turns of the event loop.
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("second"), patience);
    QTRY_COMPARE_WITH_TIMEOUT(vectorOf(client, QStringLiteral("t_one:doubleARRAY:")),
                              (QVector<double>{0, 1, 2}), patience);
    QCOMPARE(valueSpy.count(), 1);
    QCOMPARE(sizeSpy.count(), 1);

    // Who asks for the client is not to start with values that have been replaced, even before the event loop runs.
    service.order(QStringLiteral("value t_label: third"));
    const QDeadlineTimer end(patience);
    while (labelOf(clientOf(QStringLiteral("plain"))) != QLatin1String("third") && !end.hasExpired())
        std::this_thread::yield();
    QCOMPARE(labelOf(client), QStringLiteral("third"));
}

void tst_bus_session::longArraysInParts()
{
    Service service(QStringLiteral("long"));
    service.order(QStringLiteral("ramp t_before: 4500000"));
    service.order(QStringLiteral("value t_done: yes"));
    auto *client = clientOf(QStringLiteral("long"));
    QTRY_VERIFY_WITH_TIMEOUT(client->getItem(QStringLiteral("t_done:")), patience);
    service.order(QStringLiteral("ramp t_after: 4200000"));
    for (const auto &[name, size] : {std::pair("t_before:", 4500000), std::pair("t_after:", 4200000)}) {
        QTRY_COMPARE_WITH_TIMEOUT(vectorOf(client, QLatin1String(name)).size(), size, patience);
        QCOMPARE(vectorOf(client, QLatin1String(name)).last(), size - 1.0);
        QCOMPARE(vectorOf(client, QLatin1String(name)).at(1 << 21), double(1 << 21));
    }
}

void tst_bus_session::killedAndRestarted()
{
    auto service = std::make_unique<Service>(QStringLiteral("restarted"));
    auto *client = clientOf(QStringLiteral("restarted"));
    service->order(QStringLiteral("value t_label: last"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("last"), patience);
    ORNClientItem *item = client->getItem(label);
    for (int round = 0; round < 3; ++round) {
        service->signal(SIGKILL);
        service->waitForFinished(-1);
        QCOMPARE(labelOf(client), QStringLiteral("last"));
        service = std::make_unique<Service>(QStringLiteral("restarted"));
        QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
        // News of the new process count although its serials started again.
        service->order(QStringLiteral("value t_label: last"));
        QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("last"), patience);
        QCOMPARE(client->getItem(label), item);
    }
}

void tst_bus_session::absentThenStarted()
{
    auto *client = clientOf(QStringLiteral("absent"));
    QVERIFY(!client->getItem(label));
    QCOMPARE(clientOf(QStringLiteral("absent")), client);
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("\"absent\""), 1, patience);
    Service service(QStringLiteral("absent"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
}

void tst_bus_session::frozen()
{
    Service service(QStringLiteral("frozen"));
    QVERIFY(service.isPublished());
    service.signal(SIGSTOP);
    auto *client = clientOf(QStringLiteral("frozen"));
    QVERIFY(!client->getItem(label));
    // Another wait would say so again.
    QVERIFY(!clientOf(QStringLiteral("frozen"))->getItem(label));
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("\"frozen\" does not answer"), 1, patience);
    service.signal(SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    service.signal(SIGSTOP);
    service.order(QStringLiteral("value t_label: thawed"));
    service.signal(SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("thawed"), patience);
    QCOMPARE(timesTold("\"frozen\""), 1);
}

void tst_bus_session::startedOnDemand()
{
    // On a busy machine the start may outlast the first wait; the items then come later.
    auto *client = clientOf(QStringLiteral("demand"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
}

void tst_bus_session::hostile()
{
    Service service(QStringLiteral("hostile"), {QStringLiteral("--hostile")});
    QVERIFY(service.isPublished());
    auto *client = clientOf(QStringLiteral("hostile"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("good"), patience);
    for (const char *itemName : {"t_path:", "t_map:", "t_odd:"})
        QVERIFY(!client->getItem(QLatin1String(itemName)));
    QCOMPARE(vectorOf(client, QStringLiteral("t_even:")), (QVector<double>{0, 0}));

    QCOMPARE(vectorOf(client, QStringLiteral("t_late:")), QVector<double>());

    QSignalSpy spy(client->getItem(QStringLiteral("t_even:")), SIGNAL(sizeChanged()));
    service.order(QStringLiteral("attack"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("survived"), patience);
    QCOMPARE(spy.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("\"hostile\" sends arrays"), 1, patience);
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("\"hostile\" published both a value and an array"), 1, patience);
    // What was lost is asked for again.
    service.order(QStringLiteral("lose"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("good"), patience);
    clientOf(QStringLiteral("odd"));
    clientOf(QStringLiteral("bare"));
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("\"odd\" answers with \"i\" which are no items"), 1, patience);
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("\"bare\" has no items: "), 1, patience);
}

// More than a bus library holds for a thread that does not come to read it.
void tst_bus_session::floodedWhileBusy()
{
    Service service(QStringLiteral("hostile"), {QStringLiteral("--hostile")});
    auto *client = clientOf(QStringLiteral("hostile"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("good"), patience);
    service.order(QStringLiteral("flood 200"));
    QCOMPARE(service.line(), QByteArray("flooded"));
    QTRY_COMPARE_WITH_TIMEOUT(vectorOf(client, QStringLiteral("t_even:")).at(0), 199.0, patience);
    service.order(QStringLiteral("attack"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("survived"), patience);
}

// More changes than there is time for: other events have their turn after each, and most values are left out.
void tst_bus_session::slowReader()
{
    Service service(QStringLiteral("hostile"), {QStringLiteral("--hostile")});
    auto *client = clientOf(QStringLiteral("hostile"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("good"), patience);
    int sinceTick = 0;
    int mostSinceTick = 0;
    QTimer ticker;
    connect(&ticker, &QTimer::timeout, this, [&] { sinceTick = 0; });
    ticker.start(0);
    const auto read = [&] {
        mostSinceTick = std::max(mostSinceTick, ++sinceTick);
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < 5;) {
        }
    };
    const auto connection = connect(client->getItem(label), &ORNClientItem::valueChanged, this, read);
    service.order(QStringLiteral("labels 20000"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("19999"), patience);
    QVERIFY2(mostSinceTick <= 2, qPrintable(QString::number(mostSinceTick)));
    disconnect(connection);
}

// What was dropped again before anybody could be told of it.
void tst_bus_session::lostElements()
{
    Service service(QStringLiteral("hostile"), {QStringLiteral("--hostile")});
    auto *client = clientOf(QStringLiteral("hostile"));
    QTRY_COMPARE_WITH_TIMEOUT(vectorOf(client, QStringLiteral("t_even:")).size(), 2, patience);
    service.order(QStringLiteral("pour 1000"));
    QCOMPARE(service.line(), QByteArray("poured"));
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("elements of \"t_even:\" were dropped"), 1, patience);
}

// All of them are waited for together, and each comes alive when its service does.
void tst_bus_session::pageOfFrozenServices()
{
    std::vector<std::unique_ptr<Service>> services;
    for (int i = 0; i < 10; ++i) {
        services.push_back(std::make_unique<Service>(QStringLiteral("frozen%1").arg(i)));
        services.back()->signal(SIGSTOP);
    }
    QElapsedTimer clock;
    clock.start();
    PlotSeries page[11];
    for (int i = 0; i < 10; ++i)
        page[i].setDbusAddress(QStringLiteral("frozen%1,t").arg(i));
    page[10].setDbusAddress(QStringLiteral("notyet,t"));
    QVERIFY2(clock.elapsed() < 4000, "the waits for each service add up");
    QTRY_COMPARE_WITH_TIMEOUT(timesTold("does not answer"), 10, patience);
    for (const auto &service : services)
        service->signal(SIGCONT);
    services.push_back(std::make_unique<Service>(QStringLiteral("notyet")));
    for (const PlotSeries &series : page)
        QTRY_COMPARE_WITH_TIMEOUT(series.label(), QStringLiteral("first"), patience);
    // An item that the service did not have when the address was written.
    services.back()->order(QStringLiteral("ramp t_yData:doubleARRAY: 5"));
    QTRY_COMPARE_WITH_TIMEOUT(page[10].size(), 5, patience);
    services.back()->order(QStringLiteral("ramp t_yData:doubleARRAY: 6"));
    QTRY_COMPARE_WITH_TIMEOUT(page[10].size(), 6, patience);
}

void tst_bus_session::appendedElements()
{
    Service service(QStringLiteral("appending"));
    auto *client = clientOf(QStringLiteral("appending"));
    service.order(QStringLiteral("append t_log:doubleARRAY: 1000 1000000"));
    service.order(QStringLiteral("append t_rolling:doubleARRAY: 1000 10"));
    service.order(QStringLiteral("value t_done: yes"));
    QTRY_VERIFY_WITH_TIMEOUT(client->getItem(QStringLiteral("t_done:")), patience);
    QVector<double> log(1000);
    std::iota(log.begin(), log.end(), 0.0);
    const auto logName = QStringLiteral("t_log:doubleARRAY:");
    QCOMPARE(vectorOf(client, logName), log);
    QCOMPARE(vectorOf(client, QStringLiteral("t_rolling:doubleARRAY:")), log.mid(990));
    // Only what is new travels, and the client tells how much of the array that is.
    QSignalSpy spy(client, SIGNAL(arrayAppended(QString, int)));
    service.order(QStringLiteral("append t_log:doubleARRAY: 3 1000000"));
    QTRY_COMPARE_WITH_TIMEOUT(vectorOf(client, logName).size(), 1003, patience);
    QCOMPARE(vectorOf(client, logName).mid(998), (QVector<double>{998, 999, 0, 1, 2}));
    int appended = 0;
    for (const QList<QVariant> &arguments : spy)
        appended += arguments.at(0) == logName ? arguments.at(1).toInt() : 0;
    QCOMPARE(appended, 3);
}

void tst_bus_session::documentedPublisher()
{
    QFile source(QStringLiteral(DOCS "/examples/thermometer.cpp"));
    QFile page(QStringLiteral(DOCS "/bus.md"));
    QVERIFY(source.open(QIODevice::ReadOnly) && page.open(QIODevice::ReadOnly));
    QVERIFY(page.readAll().contains(source.readAll()));

    PlotSeries series;
    series.setDbusAddress(QStringLiteral("thermometer,room"));
    const Process thermometer(QStringLiteral(THERMOMETER), {});
    QTRY_VERIFY_WITH_TIMEOUT(series.size() > 2, patience);
    QCOMPARE(series.label(), QStringLiteral("Room"));
    QCOMPARE(series.y(2), 20 + std::sin(0.2));
}

// In the middle of what the service on the bus has told.
void tst_bus_session::publishedHereMeanwhile()
{
    auto *client = qobject_cast<BusClient *>(clientOf(QStringLiteral("moved")));
    QVERIFY(!client->getItem(QStringLiteral("t_one:doubleARRAY:")) && !client->getItem(label));
    // Where it tells: what the bus has been asked to send.
    const auto rules = [] {
        QProcess bus;
        bus.start(QStringLiteral("dbus-send"),
                  {"--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                   "org.freedesktop.DBus.Debug.Stats.GetAllMatchRules"});
        bus.waitForFinished();
        return bus.readAllStandardOutput();
    };
    QVERIFY(rules().isEmpty() || rules().contains("moved"));
    std::unique_ptr<BusPublisher> own;
    connect(client, &BusClient::itemAdded, this, [&] {
        if (own)
            return;
        own = std::make_unique<BusPublisher>(QStringLiteral("moved"));
        own->setValue(label, QStringLiteral("own"));
    });
    Service service(QStringLiteral("moved"));
    QTRY_VERIFY_WITH_TIMEOUT(own, patience);
    QTest::qWait(0);
    QCOMPARE(labelOf(client), QStringLiteral("own"));
    QTRY_COMPARE_WITH_TIMEOUT(rules().count("moved"), 0, patience);
}

void tst_bus_session::nameIsTaken()
{
    Service service(QStringLiteral("taken"));
    QVERIFY(service.isPublished());
    BusPublisher publisher(QStringLiteral("taken"));
    publisher.setValue(label, QStringLiteral("own"));
    QVERIFY(!publisher.publish());
    QCOMPARE(timesTold("\"taken\" cannot be published"), 1);
    QCOMPARE(labelOf(clientOf(QStringLiteral("taken"))), QStringLiteral("own"));
}

void tst_bus_session::busKilledAndRestarted()
{
    auto service = std::make_unique<Service>(QStringLiteral("survivor"));
    auto *client = clientOf(QStringLiteral("survivor"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    ORNClientItem *item = client->getItem(label);
    for (const char *newcomer : {"newcomer", "nextcomer"}) {
        service->order(QStringLiteral("value t_label: last"));
        QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("last"), patience);
        m_daemon->signal(SIGKILL);
        service->waitForFinished(-1);
        auto *lateClient = clientOf(QLatin1String(newcomer));
        QTest::qWait(0);
        QCOMPARE(labelOf(client), QStringLiteral("last"));
        startBus();
        service = std::make_unique<Service>(QStringLiteral("survivor"));
        const Service late{QLatin1String(newcomer)};
        QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(labelOf(lateClient), QStringLiteral("first"), patience);
        QCOMPARE(client->getItem(label), item);
    }
}

void tst_bus_session::publishersComeBack()
{
    Service service(QStringLiteral("returning"), {QStringLiteral("--stay")});
    auto *client = clientOf(QStringLiteral("returning"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    m_daemon->signal(SIGKILL);
    m_daemon->waitForFinished(-1);
    service.order(QStringLiteral("value t_label: meanwhile"));
    startBus();
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("meanwhile"), patience);
    service.order(QStringLiteral("value t_label: afterwards"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("afterwards"), patience);
}

// It keeps its connections and says nothing; at its place there is another one.
void tst_bus_session::busThatStopsAnswering()
{
    auto service = std::make_unique<Service>(QStringLiteral("mute"));
    auto *client = clientOf(QStringLiteral("mute"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    m_daemon->signal(SIGSTOP);
    QFile::rename(m_home.filePath(QStringLiteral("bus")), m_home.filePath(QStringLiteral("stopped")));
    const std::unique_ptr<Process> stopped = std::move(m_daemon);
    startBus();
    service = std::make_unique<Service>(QStringLiteral("mute"));
    service->order(QStringLiteral("value t_label: elsewhere"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("elsewhere"), patience);
}

void tst_bus_session::cleanupTestCase()
{
    // The bus goes before its clients, and with it the service that it started. Asked to, it removes its
    // socket.
    m_daemon->terminate();
    QVERIFY(m_daemon->waitForFinished(patience));
}

QTEST_GUILESS_MAIN(tst_bus_session)
#include "tst_bus_session.moc"
