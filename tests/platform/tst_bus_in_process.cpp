#include "platform/bus/BusName.h"
#include "platform/bus/BusPublisher.h"
#include "platform/bus/ItemValue.h"
#include "platform/bus/ORNClientInterface.h"
#include "platform/bus/ORNClientItem.h"
#include "support/Table.h"

#include <QtTest>

#include <cmath>
#include <memory>

namespace {

const auto label = QStringLiteral("t_label:");
const auto trace = QStringLiteral("t_yData:doubleARRAY:");

ORNVecDoubleClientItem *vectorItem(ORNClientInterface *client)
{
    return qobject_cast<ORNVecDoubleClientItem *>(client->getItem(trace));
}

} // namespace

class tst_bus_in_process : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void clientsSeeChanges();
    void exactComparison();
    void kindsStay();
    void withoutBusThenPublished();
    void publisherComesBack();
    void publisherGoesWhileTelling();
    void secondPublisherIsRefused();
};

void tst_bus_in_process::names_data()
{
    columns<QString, bool>({"service", "isValid"});
    QTest::newRow("plain") << "analyzer" << true;
    QTest::newRow("digits, hyphen, underscore") << "otdr-2_b" << true;
    QTest::newRow("dotted") << "maker.analyzer" << true;
    QTest::newRow("longest") << QString(243, QLatin1Char('a')) << true;
    QTest::newRow("too long") << QString(244, QLatin1Char('a')) << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("digit first") << "2otdr" << false;
    QTest::newRow("blank") << "an alyzer" << false;
    QTest::newRow("empty element") << "a..b" << false;
    QTest::newRow("dot last") << "a." << false;
    QTest::newRow("no letter of ASCII") << QString::fromUtf8("m\u00e4sser") << false;
}

void tst_bus_in_process::names()
{
    QFETCH(QString, service);
    QFETCH(bool, isValid);
    QCOMPARE(graph::busName(service), isValid ? QLatin1String("org.toskorn.") + service : QString());
    if (isValid)
        return;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is no name for a service")));
    QVERIFY(!ORNClientInterface::getSessionBusClient(service, this));
    // One line for the name, however often it is used.
    QVERIFY(!ORNClientInterface::getSessionBusClient(service, this));
    BusPublisher publisher(service);
    publisher.setValue(label, 1);
    QVERIFY(!publisher.publish());
}

void tst_bus_in_process::clientsSeeChanges()
{
    BusPublisher publisher(QStringLiteral("changes"));
    publisher.setValue(label, QStringLiteral("first"));
    publisher.setVector(trace, {1, 2});
    auto *client = ORNClientInterface::getSessionBusClient(QStringLiteral("changes"), nullptr);
    QCOMPARE(ORNClientInterface::getSessionBusClient(QStringLiteral("changes"), this), client);
    QVERIFY(!client->getItem(QStringLiteral("t_none:")));
    QCOMPARE(client->getItem(label)->getId(), label);
    QCOMPARE(client->getItem(label)->getValue(), QVariant(QStringLiteral("first")));

    QSignalSpy valueSpy(client->getItem(label), SIGNAL(valueChanged()));
    QSignalSpy sizeSpy(vectorItem(client), SIGNAL(sizeChanged()));
    publisher.setValue(label, QStringLiteral("second"));
    publisher.setValue(label, QStringLiteral("second"));
    QCOMPARE(valueSpy.count(), 1);
    const QVector<double> changed{1, 3};
    publisher.setVector(trace, changed);
    QCOMPARE(sizeSpy.count(), 1);
    const QVector<double> seen = vectorItem(client)->vector();
    QVERIFY2(seen.constData() == changed.constData(), "the vector was copied");
    publisher.setValue(QStringLiteral("t_later:"), 5);
    QCOMPARE(client->getItem(QStringLiteral("t_later:"))->getValue().toInt(), 5);
}

void tst_bus_in_process::exactComparison()
{
    QVERIFY(!graph::sameValue(1e9, 1e9 + 1e-3));
    QVERIFY(graph::sameValue(std::nan(""), std::nan("")));
    QVERIFY(!graph::sameValue(1, QStringLiteral("1")));
    QVERIFY(graph::sameValue(graph::itemValue(0.5F), 0.5));
    QVERIFY(graph::sameContents({std::nan("")}, {std::nan("")}));
    QVERIFY(!graph::sameContents({0.0}, {-0.0}));
}

void tst_bus_in_process::kindsStay()
{
    BusPublisher publisher(QStringLiteral("kinds"));
    publisher.setValue(label, 1);
    publisher.setVector(trace, {1});
    auto *client = ORNClientInterface::getSessionBusClient(QStringLiteral("kinds"), nullptr);
    for (int i = 0; i < 3; ++i)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot publish")));
    publisher.setVector(label, {2});
    publisher.setValue(trace, 2);
    publisher.setValue(label, QPoint());
    QCOMPARE(client->getItem(label)->getValue().toInt(), 1);
    QCOMPARE(vectorItem(client)->vector(), QVector<double>{1});
}

void tst_bus_in_process::withoutBusThenPublished()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"early\" cannot be reached")));
    auto *client = ORNClientInterface::getSessionBusClient(QStringLiteral("early"), nullptr);
    QVERIFY(client);
    QCOMPARE(ORNClientInterface::getSessionBusClient(QStringLiteral("early"), nullptr), client);
    QVERIFY(!client->getItem(label));
    BusPublisher publisher(QStringLiteral("early"));
    publisher.setValue(label, 7);
    QCOMPARE(client->getItem(label)->getValue().toInt(), 7);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"early\" cannot be published")));
    QVERIFY(!publisher.publish());
}

void tst_bus_in_process::publisherComesBack()
{
    const auto name = QStringLiteral("back");
    auto publisher = std::make_unique<BusPublisher>(name);
    publisher->setVector(trace, {1, 2, 3});
    auto *client = ORNClientInterface::getSessionBusClient(name, nullptr);
    auto *item = vectorItem(client);
    QSignalSpy spy(item, SIGNAL(sizeChanged()));
    publisher.reset();
    QCOMPARE(vectorItem(client), item);
    QCOMPARE(item->vector().size(), 3);
    publisher = std::make_unique<BusPublisher>(name);
    publisher->setVector(trace, {4});
    QCOMPARE(spy.count(), 1);
    QCOMPARE(item->vector(), QVector<double>{4});
}

void tst_bus_in_process::publisherGoesWhileTelling()
{
    auto *publisher = new BusPublisher(QStringLiteral("going"));
    publisher->setValue(label, 1);
    auto *client = ORNClientInterface::getSessionBusClient(QStringLiteral("going"), nullptr);
    int heard = 0;
    connect(client->getItem(label), &ORNClientItem::valueChanged, this, [&] {
        if (++heard == 1)
            publisher->setValue(QStringLiteral("t_made_while_telling:"), 3);
        else
            delete publisher;
    });
    publisher->setValue(label, 2);
    publisher->setValue(label, 3);
    QCOMPARE(heard, 2);
    QCOMPARE(client->getItem(label)->getValue().toInt(), 3);
    QVERIFY(client->getItem(QStringLiteral("t_made_while_telling:")));
}

void tst_bus_in_process::secondPublisherIsRefused()
{
    BusPublisher first(QStringLiteral("twice"));
    first.setValue(label, 1);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("the second one publishes nothing")));
    auto second = std::make_unique<BusPublisher>(QStringLiteral("twice"));
    second->setValue(label, 2);
    second.reset();
    auto *client = ORNClientInterface::getSessionBusClient(QStringLiteral("twice"), nullptr);
    QCOMPARE(client->getItem(label)->getValue().toInt(), 1);
    first.setValue(label, 3);
    QCOMPARE(client->getItem(label)->getValue().toInt(), 3);
}

QTEST_GUILESS_MAIN(tst_bus_in_process)
#include "tst_bus_in_process.moc"
