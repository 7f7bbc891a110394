#include "platform/bus/BusPublisher.h"

#include <QDir>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

// Every example of the documentation works as it is: it loads, says nothing in the log, and all
// its plots with data show some; and a diagnosis finds nothing in it.
class TestExamples : public QObject
{
    Q_OBJECT

private slots:
    void example_data();
    void example();
};

void TestExamples::example_data()
{
    static const QRegularExpression block("```qml\\n(.*?)```",
                                          QRegularExpression::DotMatchesEverythingOption);
    QTest::addColumn<QByteArray>("document");
    // The start page first: it uses the second module alone, and no other example has made its types known yet.
    const QDir documents(DOCUMENTS);
    QStringList pages = QDir(documents.filePath("docs")).entryList({"*.md"}, QDir::Files, QDir::Name);
    pages.replaceInStrings(QRegularExpression("^"), "docs/");
    pages.move(pages.indexOf("docs/README.md"), 0);
    for (const QString &page : pages << "README.md") {
        QFile file(documents.filePath(page));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (auto blocks = block.globalMatch(text); blocks.hasNext();) {
            const QRegularExpressionMatch match = blocks.next();
            const int line = text.left(match.capturedStart()).count('\n') + 1;
            QTest::addRow("%s, line %d", qPrintable(page), line) << match.captured(1).toUtf8();
        }
    }
}

void TestExamples::example()
{
    QFETCH(QByteArray, document);
    // What the simulator publishes, as far as the examples read it.
    BusPublisher analyzer("analyzer");
    analyzer.setValue("spectrum_xRangeBegin:", 700e6);
    analyzer.setValue("spectrum_xRangeEnd:", 1000e6);
    analyzer.setValue("spectrum_xUnits:", "Hz");
    analyzer.setValue("spectrum_yRangeBegin:", -100.0);
    analyzer.setValue("spectrum_yRangeEnd:", 0.0);
    analyzer.setValue("spectrum_yUnits:", "dBm");
    analyzer.setVector("spectrum_yData:doubleARRAY:", {-90.0, -20.0, -85.0});
    BusPublisher audio("audio");
    audio.setVector("spectrum_yData:doubleARRAY:", {-90.0, -20.0, -85.0});
    BusPublisher spectrogram("spectrogram");
    spectrogram.setVector("levels_yData:doubleARRAY:", {-90.0, -40.0, -85.0});
    BusPublisher logger("logger");
    for (const QString channel : {"ch1", "ch2"}) {
        logger.setValue(channel + "_yUnits:", channel == "ch1" ? "V" : "A");
        logger.setVector(channel + "_yData:doubleARRAY:", {12.0, 12.5, 12.2});
    }

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(document, QUrl("qrc:/chart.qml"));
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    const std::unique_ptr<QObject> root(component.create());
    auto *item = qobject_cast<QQuickItem *>(root.get());
    QVERIFY(item);
    QQuickWindow window;
    window.resize(item->size().toSize());
    item->setParentItem(window.contentItem());
    QSignalSpy painted(&window, &QQuickWindow::afterRendering);
    window.show();
    QTRY_VERIFY(!painted.isEmpty());

    QQmlComponent diagnosis(&engine);
    diagnosis.setData("import graph_kit 1.0; Diagnosis {}", QUrl());
    QList<QQuickItem *> items = root->findChildren<QQuickItem *>();
    items.append(item);
    for (QQuickItem *view : qAsConst(items)) {
        if (!view->inherits("GraphView"))
            continue;
        QScopedPointer<QQuickItem> doctor(qobject_cast<QQuickItem *>(diagnosis.create()));
        doctor->setParentItem(view);
        QVERIFY(QMetaObject::invokeMethod(doctor.data(), "handleTime"));
        QCOMPARE(doctor->property("messages").toStringList(), QStringList());
    }

    for (const QQuickItem *child : root->findChildren<QQuickItem *>()) {
        if (child->inherits("AbstractPlot") && child->property("plotData").value<QObject *>())
            QTRY_VERIFY(child->property("valid").toBool());
    }
}

QTEST_MAIN(TestExamples)
#include "tst_examples.moc"
