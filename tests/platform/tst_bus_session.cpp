#include "platform/bus/BusPublisher.h"
#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <memory>

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
    void order(const QString &text) { write(text.toUtf8() + '\n'); }

private:
    bool m_isPublished;
};

} // namespace

class tst_bus_session : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void itemsAndTheirChanges();
    void longArraysInParts();
    void killedAndRestarted();
    void absentThenStarted();
    void frozen();
    void startedOnDemand();
    void hostile();
    void floodedWhileBusy();
    void nameIsTaken();
    void busKilledAndRestarted();
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
    startBus();
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
    QCOMPARE(labelOf(client), QStringLiteral("first"));
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
    QCOMPARE(labelOf(client), QStringLiteral("second"));
    QCOMPARE(vectorOf(client, QStringLiteral("t_one:doubleARRAY:")), (QVector<double>{0, 1, 2}));
    QCOMPARE(valueSpy.count(), 1);
    QCOMPARE(sizeSpy.count(), 1);
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
    QTest::ignoreMessage(QtWarningMsg, "\"absent\" is not on the session bus");
    auto *client = clientOf(QStringLiteral("absent"));
    QVERIFY(!client->getItem(label));
    QCOMPARE(clientOf(QStringLiteral("absent")), client);
    Service service(QStringLiteral("absent"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
}

void tst_bus_session::frozen()
{
    Service service(QStringLiteral("frozen"));
    QVERIFY(service.isPublished());
    service.signal(SIGSTOP);
    QTest::ignoreMessage(QtWarningMsg, "\"frozen\" does not answer");
    auto *client = clientOf(QStringLiteral("frozen"));
    QVERIFY(!client->getItem(label));
    // Another wait would say so again.
    QVERIFY(!clientOf(QStringLiteral("frozen"))->getItem(label));
    service.signal(SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    service.signal(SIGSTOP);
    service.order(QStringLiteral("value t_label: thawed"));
    service.signal(SIGCONT);
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("thawed"), patience);
}

void tst_bus_session::startedOnDemand()
{
    // On a busy machine the start may outlast the first wait; the items then come later, after a log line.
    QLoggingCategory::setFilterRules(QStringLiteral("toskorn.bus.warning=false"));
    auto *client = clientOf(QStringLiteral("demand"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("first"), patience);
    QLoggingCategory::setFilterRules(QString());
}

void tst_bus_session::hostile()
{
    Service service(QStringLiteral("hostile"), {QStringLiteral("--hostile")});
    QVERIFY(service.isPublished());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"hostile\" sends arrays")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("both a value and an array")));
    auto *client = clientOf(QStringLiteral("hostile"));
    for (const char *itemName : {"t_path:", "t_map:", "t_odd:"})
        QVERIFY(!client->getItem(QLatin1String(itemName)));
    QCOMPARE(vectorOf(client, QStringLiteral("t_even:")), (QVector<double>{0, 0}));

    QCOMPARE(vectorOf(client, QStringLiteral("t_late:")), QVector<double>());
    QCOMPARE(labelOf(client), QStringLiteral("good"));

    QSignalSpy spy(client->getItem(QStringLiteral("t_even:")), SIGNAL(sizeChanged()));
    service.order(QStringLiteral("attack"));
    QTRY_COMPARE_WITH_TIMEOUT(labelOf(client), QStringLiteral("survived"), patience);
    QCOMPARE(spy.count(), 0);
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

void tst_bus_session::nameIsTaken()
{
    Service service(QStringLiteral("taken"));
    QVERIFY(service.isPublished());
    BusPublisher publisher(QStringLiteral("taken"));
    publisher.setValue(label, QStringLiteral("own"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"taken\" cannot be published")));
    QVERIFY(!publisher.publish());
    QCOMPARE(labelOf(clientOf(QStringLiteral("taken"))), QStringLiteral("own"));
}

void tst_bus_session::busKilledAndRestarted()
{
    // What a client says that asks while the bus is going depends on how much of it has gone.
    QLoggingCategory::setFilterRules(QStringLiteral("toskorn.bus.warning=false"));
    auto service = std::make_unique<Service>(QStringLiteral("survivor"));
    auto *client = clientOf(QStringLiteral("survivor"));
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
    QLoggingCategory::setFilterRules(QString());
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
