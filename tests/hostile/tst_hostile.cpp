#include "hostile/HostileChart.h"
#include "support/QmlDocument.h"

#include <QRegularExpression>
#include <QtTest>

#include <cstdio>
#include <iostream>

namespace {

// What a chart, or Qt below it, is right to complain about.
const QRegularExpression knownMessages(
    "^(Graph Point is null|Icon path |Image file |componentComplete  - |No ValueAxis objects "
    "in axes property|"
    ".*No ORNVecDoubleClientItem|ValueAxis.*buildTicks\\(\\) |in "
    "handleOrnVecDoubleItemChanged|        sender\\(\\) not found|Heat map |"
    "\".*\" (cannot be reached|is no name)|"
    // Qt, of values that have no meaning for a property, and of items in each other's way.
    ".*(Unable to assign |(Type)?Error: |depends on non-NOTIFYable|Detected function \"onTapped\")|"
    "[\t ]*\"?(\\w+::visible|Could not convert (argument|array value)|Passing incomp?atible|This will "
    "throw|%entry)|Too many arguments, ignoring |"
    ".*(Binding|Possible anchor) loop detected|QFont::fromString: Invalid "
    "description|QPainter::begin: Paint device returned engine == 0|QPainter::\\w+: Painter "
    "not active| *OpenType support missing|QPen::setDashPattern: Pattern not of even length|"
    "QBackingStore::flush\\(\\) called|QQuickItem::setParentItem: Parent .* is already part of the subtree)");

QStringList unknownMessages;

void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg || qEnvironmentVariableIsSet("GRAPH_HOSTILE_TRACE"))
        std::fprintf(stderr, "%s\n", qPrintable(text));
    if (qstrcmp(context.category, "graph.kit") && !knownMessages.match(text).hasMatch() &&
        !unknownMessages.contains(text))
        unknownMessages.append(text);
}

int environmentNumber(const char *name, int otherwise)
{
    bool ok = false;
    const int number = qEnvironmentVariableIntValue(name, &ok);
    return ok ? number : otherwise;
}

} // namespace

Q_DECLARE_METATYPE(HostileChart::Module)

class tst_hostile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        registerTypes();
        std::cout.setstate(std::ios::failbit); // heat maps print how long they took
    }
    void survivesAnything_data();
    void survivesAnything();
};

// Random mistreatment through the meta-object system. The checks are those of the sanitizers, and that nothing
// unexpected is logged. GRAPH_HOSTILE_ROUNDS and GRAPH_HOSTILE_SEED make it longer and different; a failure is found
// again with its seed and one round, GRAPH_HOSTILE_TRACE writes its steps.
void tst_hostile::survivesAnything_data()
{
    QTest::addColumn<HostileChart::Module>("module");
    QTest::newRow("graph_plugin") << HostileChart::Module{"graph_plugin", PLUGIN_CHART, PLUGIN_TYPES};
    QTest::newRow("graph_kit") << HostileChart::Module{"graph_kit", KIT_CHART, KIT_TYPES};
}
void tst_hostile::survivesAnything()
{
    QFETCH(HostileChart::Module, module);
    const int rounds = environmentNumber("GRAPH_HOSTILE_ROUNDS", 40);
    const int firstSeed = environmentNumber("GRAPH_HOSTILE_SEED", 1);
    for (int seed = firstSeed; seed < firstSeed + rounds; ++seed) {
        unknownMessages.clear();
        const QtMessageHandler former = qInstallMessageHandler(takeMessage);
        {
            if (rounds > 100 || qEnvironmentVariableIsSet("GRAPH_HOSTILE_TRACE"))
                std::fprintf(stderr, "seed %d\n", seed);
            HostileChart chart(module, seed, seed % 4 == 0);
            for (int step = 0; step < environmentNumber("GRAPH_HOSTILE_STEPS", 250); ++step)
                chart.step();
            chart.paintAll();
        }
        qInstallMessageHandler(former);
        if (!unknownMessages.isEmpty())
            QFAIL(qPrintable(QString("seed %1: %2").arg(seed).arg(unknownMessages.join('\n'))));
    }
}

QTEST_MAIN(tst_hostile)
#include "tst_hostile.moc"
