#include "plots/ArrayElement.h"
#include "plots/GraphPointActiveMarker.h"
#include "plots/GraphPointPictogramMarker.h"
#include "plots/GraphPointReflections.h"
#include "plots/GraphPointShapes.h"
#include "support/Pictures.h"
#include "support/QmlDocument.h"
#include "support/Table.h"

#include <QFontMetrics>
#include <QPainter>
#include <QtTest>

#include <memory>

using PointPointer = std::shared_ptr<GraphPoint>;
Q_DECLARE_METATYPE(PointPointer)

namespace {

constexpr int pointX = 60;
constexpr int pointY = 50;

QImage painted(GraphPoint &point, int x = pointX)
{
    return picture([&](QPainter *painter) { point.paint(painter, x, pointY); }, QSize(120, 120));
}

bool isRed(const QColor &pixel)
{
    return pixel.red() > pixel.green() + 60 && pixel.red() > pixel.blue() + 60;
}

bool isBlue(const QColor &pixel)
{
    return pixel.blue() > pixel.red() + 60;
}

QFontMetrics textMetrics()
{
    QFont font;
    font.setPointSize(12);
    return QFontMetrics(font);
}

} // namespace

class tst_points : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<OrnData *>(); }

    void shapesCoverTheirPixels_data()
    {
        columns<PointPointer, QRect>({"point", "box"});
        QTest::newRow("dot") << PointPointer(new GraphPointDot) << QRect(60, 50, 8, 8);
        QTest::newRow("circle") << PointPointer(new GraphPointCircle) << QRect(53, 43, 15, 15);
        QTest::newRow("horizontal line") << PointPointer(new GraphPointHorizontalLine) << QRect(57, 50, 7, 1);
        QTest::newRow("vertical line") << PointPointer(new GraphPointVerticalLine) << QRect(60, 47, 1, 7);
        QTest::newRow("cross") << PointPointer(new GraphPointCross) << QRect(57, 47, 7, 7);
        QTest::newRow("marker") << PointPointer(new GraphPointMarker) << QRect(60, 47, 1, 7);
    }

    void shapesCoverTheirPixels()
    {
        QFETCH(PointPointer, point);
        QFETCH(QRect, box);
        point->setPointSize(7);
        point->setPenColor(Qt::red);
        const QImage image = painted(*point);
        QCOMPARE(inkBox(image), box);
        QCOMPARE(inkBox(image, isRed), box);
    }

    void valuesAreFollowed()
    {
        GraphPointActiveMarker point;
        auto both = std::make_unique<OrnData>();
        OrnData other;
        point.setFirstLabels(both.get());
        point.setSecondLabels(both.get());
        QSignalSpy first(&point, SIGNAL(firstLabelsChanged(OrnData *)));
        QSignalSpy second(&point, SIGNAL(secondLabelsChanged(OrnData *)));
        QSignalSpy changed(&point, SIGNAL(pointChanged()));

        both->setValue("a");
        QCOMPARE(first.count(), 1);
        QCOMPARE(second.count(), 1);

        // The object that is replaced in one role keeps the other.
        point.setSecondLabels(&other);
        both->setValue("b");
        QCOMPARE(first.count(), 2);
        QCOMPARE(second.count(), 2);

        both.reset();
        QCOMPARE(first.count(), 3);
        QVERIFY(!point.firstLabels());
        QCOMPARE(changed.count(), 5);
        painted(point);
    }

    void elementsOfArrays()
    {
        using graph::arrayElement;
        const QVariant list = QVariantList{1, "two"};
        QCOMPARE(arrayElement(list, 1), QVariant("two"));
        QCOMPARE(arrayElement(QStringList{"a", "b"}, 1), QVariant("b"));
        QCOMPARE(arrayElement(QVariant::fromValue(QVector<double>{0.5, 2.5}), 1), QVariant(2.5));
        QCOMPARE(arrayElement("text", 7), QVariant("text"));
        for (int outside : {-1, 2})
            QVERIFY(!arrayElement(list, outside).isValid());
        QVERIFY(!arrayElement(QVariant(), 0).isValid());
        QVERIFY(graph::isEmptyArray(QStringList()) && graph::isEmptyArray(QVariant()));
        QVERIFY(!graph::isEmptyArray("") && !graph::isEmptyArray(list));
        QCOMPARE(graph::valueText(0.1 + 0.2), QString("0.3"));
    }

    void reflectionLabel_data()
    {
        columns<bool, int, bool>({"selected", "marginTop", "below"});
        QTest::newRow("room above") << false << 50 << false;
        QTest::newRow("margin kept by -1") << false << -1 << false;
        QTest::newRow("no room above") << false << 12 << true;
        QTest::newRow("selected") << true << 50 << true;
    }

    void reflectionLabel()
    {
        QFETCH(bool, selected);
        QFETCH(int, marginTop);
        QFETCH(bool, below);
        OrnData paths;
        paths.setValue(QVariantList{"only the first point has an icon"});
        GraphPointReflections point;
        point.setPointSize(9);
        point.setLineWidth(3);
        point.setPointIndex(11);
        point.setIconPaths(&paths);
        point.setLabelColor(Qt::red);
        point.setMargins(100, 59, 69, 60);
        point.setMargins(marginTop, -1, -1, -1);
        point.setSelected(selected);

        const QImage image = painted(point);
        const QRect text = inkBox(image, isRed);
        QVERIFY(below ? text.top() >= pointY + 9 && text.bottom() < pointY + 30
                      : text.bottom() < pointY - 9 && text.top() > pointY - 30);
        // The text starts one line width left of the point; its first glyph has some space of its own.
        QVERIFY(text.left() >= pointX - 3 && text.left() <= pointX + 1);
        QCOMPARE(image.pixelColor(pointX, pointY), QColor(Qt::black));
    }

    // A list that stands in a document.
    void labelsOfADocument()
    {
        qmlRegisterType<OrnData>("decorations", 1, 0, "OrnData");
        const QmlDocument document("import decorations 1.0\nOrnData { value: ['', 'B'] }");
        GraphPointPictogramMarker point;
        point.setLabels(qobject_cast<OrnData *>(document.root()));
        for (int index : {0, 1}) {
            point.setPointIndex(index);
            QCOMPARE(inkBox(painted(point), [](const QColor &c) { return c != Qt::white; }).isEmpty(),
                     index == 0);
        }
    }

    void missingIcons()
    {
        OrnData paths;
        GraphPointReflections point;
        point.setSelected(true);
        point.setLabelColor(Qt::red);
        const auto paintsTheRest = [&] {
            const QImage image = painted(point);
            return image.pixelColor(pointX, pointY) == QColor(Qt::black) && !inkBox(image, isRed).isEmpty();
        };

        QTest::ignoreMessage(QtWarningMsg, "Icon path orn data is null");
        QVERIFY(paintsTheRest());
        point.setIconPaths(&paths);
        QTest::ignoreMessage(QtWarningMsg, "Icon path array is empty");
        QVERIFY(paintsTheRest());
        paths.setValue(QStringList{"/nowhere/icon.png"});
        QTest::ignoreMessage(QtWarningMsg, "Image file \"/nowhere/icon.png\" could not be opened");
        QVERIFY(paintsTheRest());
        point.setPointIndex(1);
        QVERIFY(paintsTheRest());
    }

    void iconsAreDecodedOnce()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("icon.png");
        QImage file(40, 20, QImage::Format_ARGB32);
        file.fill(Qt::cyan);
        QVERIFY(file.save(path));

        OrnData paths;
        paths.setValue(QVariantList{path});
        GraphPointReflections point;
        point.setLabelFontSize(0);
        point.setSelected(true);
        point.setIconPaths(&paths);
        point.setIconSize(20);
        point.setIconBackgroundColor(Qt::blue);
        point.setInvertColors(true);
        const QImage image = painted(point);
        // The square ends one line width above the line; the wide picture keeps its shape in its middle.
        QCOMPARE(inkBox(image, isBlue), QRect(pointX - 10, pointY - 2 - 1 - 20, 20, 20));
        QCOMPARE(inkBox(image, isRed), QRect(pointX - 10, pointY - 2 - 1 - 15, 20, 10));

        QVERIFY(QFile::remove(path));
        QCOMPARE(painted(point), image);
        point.setInvertColors(false);
        QTest::ignoreMessage(QtWarningMsg, qPrintable("Image file \"" + path + "\" could not be opened"));
        painted(point);
    }

    void activeMarkerStacksItsLabels()
    {
        OrnData first, second;
        first.setValue(QStringList{"HHH"});
        second.setValue(QVariantList{"HHHHH"});
        GraphPointActiveMarker point;
        point.setFirstLabels(&first);
        point.setSecondLabels(&second);
        point.setLabelColor(Qt::red);
        point.setSecondLabelColor(Qt::blue);
        point.setMargins(pointY, 119 - pointX, 119 - pointY, pointX);
        QRect upper = inkBox(painted(point), isRed);
        QRect lower = inkBox(painted(point), isBlue);
        QVERIFY(upper.bottom() < lower.top() && lower.bottom() < pointY - 2);
        QVERIFY(qAbs(upper.center().x() - pointX) <= 1 && qAbs(lower.center().x() - pointX) <= 1);
        QCOMPARE(lower.top() - upper.top(), textMetrics().height() + 2);

        point.setMargins(10, -1, -1, -1);
        upper = inkBox(painted(point), isRed);
        QVERIFY(upper.top() > pointY + 2 && upper.bottom() < inkBox(painted(point), isBlue).top());

        // At the left edge both texts stay whole.
        point.setMargins(-1, 119, -1, 0);
        QCOMPARE(inkBox(painted(point, 0), isRed).size(), upper.size());
        QCOMPARE(inkBox(painted(point, 0), isBlue).size(), lower.size());

        first.setValue(QVariant());
        QCOMPARE(inkBox(painted(point), isBlue).top(), upper.top());
    }

    void pictogramStandsAtTheLowerEdge()
    {
        OrnData labels;
        labels.setValue(QVariantList{4711});
        GraphPointPictogramMarker point;
        point.setLabels(&labels);
        point.setPenColor(Qt::blue);
        point.setLabelColor(Qt::red);
        point.setLineWidth(2);
        point.setMargins(pointY, 119 - pointX, 119 - pointY, pointX);
        const QImage image = painted(point);
        const QFontMetrics metrics = textMetrics();
        const QRect text = inkBox(image, isRed);
        QVERIFY(qAbs(text.bottom() + 1 - (119 - metrics.height() - 2 - 2)) <= 1);
        QVERIFY(qAbs(text.center().x() - pointX) <= 1);
        const QRect frame = inkBox(image);
        QVERIFY(qAbs(frame.width() - (metrics.horizontalAdvance("4711") + 4 + 2)) <= 1);
        QVERIFY(qAbs(frame.height() - (metrics.height() + 4 + 2)) <= 1);
        QVERIFY(frame.contains(text, true));

        point.setPointIndex(1);
        QVERIFY(inkBox(painted(point)).isEmpty());
    }
};

QTEST_MAIN(tst_points)
#include "tst_points.moc"
