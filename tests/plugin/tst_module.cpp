#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The names that the module exports, as the description for editors lists them.
QStringList exportedNames()
{
    static const QRegularExpression exported("exports: \\[\"graph_plugin/(\\w+) 1\\.0\"\\]");
    QStringList names;
    for (auto matches = exported.globalMatch(contents(QMLTYPES)); matches.hasNext();)
        names.append(matches.next().captured(1));
    return names;
}

} // namespace

// The plugin as an engine loads it; run under the usual module name and under another one.
class TestModule : public QObject
{
    Q_OBJECT

private slots:
    void baseTypesCannotBeCreated();
    void everythingInOneDocument();

private:
    // The document with the name under which the plugin is imported here.
    void setDocument(QQmlComponent *component, QString document) const
    {
        document.replace("import graph_plugin ", QString("import %1 ").arg(m_module));
        component->setData(document.toUtf8(), QUrl("qrc:/document.qml"));
    }

    QString m_module = qEnvironmentVariable("MODULE", "graph_plugin");
    QQmlEngine m_engine;
};

void TestModule::baseTypesCannotBeCreated()
{
    const QMap<QString, QString> bases{
        {"AbstractPlot", "plots"}, {"GraphPoint", "points"}, {"PlotData", "data"}};
    for (auto base = bases.begin(); base != bases.end(); ++base) {
        QQmlComponent component(&m_engine);
        setDocument(&component, "import graph_plugin 1.0\n" + base.key() + " {}\n");
        QCOMPARE(component.errors().size(), 1);
        QCOMPARE(component.errors().first().description(),
                 QString("Trying to create uncreatable: %1. Use specific types of %2 instead.")
                     .arg(base.key(), *base));
    }
}

void TestModule::everythingInOneDocument()
{
    const QString document = contents(EVERYTHING);
    const QStringList names = exportedNames();
    QCOMPARE(names.size(), 38);
    for (const QString &name : names)
        QVERIFY2(document.contains(QRegularExpression("\\b" + name + "\\b")), qPrintable(name));

    QQmlComponent component(&m_engine);
    setDocument(&component, document);
    const std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));
    QQuickWindow window;
    window.resize(400, 400);
    qobject_cast<QQuickItem *>(root.get())->setParentItem(window.contentItem());
    QSignalSpy painted(&window, &QQuickWindow::afterRendering);
    window.show();
    QTRY_VERIFY(!painted.isEmpty());
}

QTEST_MAIN(TestModule)
#include "tst_module.moc"
