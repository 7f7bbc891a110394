#include "data/DataStreams.h"
#include "data/PlotRegions.h"
#include "support/QmlDocument.h"
#include "support/Regions.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

class tst_plotregions : public QObject
{
    Q_OBJECT

private slots:
    void declaredInQml()
    {
        const QmlDocument document(R"(
            PlotRegions {
                PlotRegion { begin: 1; end: 2; plotStyle: PlotRegion.Rectangle }
                PlotRegion { begin: 3; end: 5; value: 4 }
            })");
        auto *regions = qobject_cast<PlotRegions *>(document.root());
        QQmlListProperty<PlotRegion> list = regions->regions();
        QCOMPARE(list.count(&list), 2);
        QCOMPARE(list.at(&list, 0)->plotStyle(), PlotRegion::Rectangle);
        QVERIFY(!list.at(&list, -1));
        QVERIFY(!list.at(&list, 2));
        QCOMPARE(regions->boundingRect(), QRectF(1, 0, 4, 4));
    }

    void removedRegionIsLetGo()
    {
        PlotRegions regions;
        PlotRegion *kept = region(0, 1, 0, &regions);
        PlotRegion *removed = region(2, 3, 0, &regions);
        regions.append(nullptr);
        regions.append(kept);
        regions.append(removed);
        QTest::qWait(10);
        QSignalSpy plotChanged(&regions, SIGNAL(plotChanged()));
        QSignalSpy regionsChanged(&regions, SIGNAL(regionsChanged()));
        regions.remove(nullptr);
        regions.remove(removed);
        regions.remove(removed); // absent by now
        QCOMPARE(regionsChanged.count(), 2);
        removed->setValue(9);
        QTest::qWait(10);
        QCOMPARE(plotChanged.count(), 0);
        // Edits of many regions are told once.
        PlotRegion *other = region(4, 5, 0, &regions);
        QSignalSpy sizes(&regions, SIGNAL(sizeChanged(int)));
        regions.append(other);
        QCOMPARE(sizes, (QList<QVariantList>{{2}}));
        QTRY_COMPARE(plotChanged.count(), 1);
        plotChanged.clear();
        for (PlotRegion *each : {kept, other}) {
            each->setValue(9);
            each->setColor(Qt::red);
        }
        QTRY_COMPARE(plotChanged.count(), 1);
        QTest::qWait(10);
        QCOMPARE(plotChanged.count(), 1);

        regions.clear();
        regions.clear();
        QTRY_COMPARE(plotChanged.count(), 2);
        QCOMPARE(regionsChanged.count(), 4);
        kept->setValue(3);
        QTest::qWait(10);
        QCOMPARE(plotChanged.count(), 2);
    }

    void destroyedRegionLeavesTheList()
    {
        for (int timesAppended : {1, 2}) {
            for (int timesRemoved : {0, 1}) {
                PlotRegions regions;
                regions.append(region(5, 6, 1, &regions));
                auto gone = std::make_unique<PlotRegion>();
                for (int i = 0; i < timesAppended; ++i)
                    regions.append(gone.get());
                for (int i = 0; i < timesRemoved; ++i)
                    regions.remove(gone.get());
                gone.reset();
                QCOMPARE(regions.size(), 1);
                QCOMPARE(regions.samples(QRectF(0, 0, 10, 0)), QVector<QPointF>{QPointF(5, 1)});
            }
        }
    }

    void orderedByBegin()
    {
        PlotRegions regions;
        for (double begin : {5.0, 1.0, 3.0})
            regions.append(region(begin, begin + 1, begin * 10, &regions));
        regions.region(2)->setEnd(-7); // its span is -7..3
        QCOMPARE(regions.samples(QRectF(6, 0, -20, 0)), QVector<QPointF>({{1, 10}, {3, 30}, {5, 50}}));
        QCOMPARE(regions.samples(QRectF(-6, 0, 2, 0)), QVector<QPointF>({{3, 30}}));
        QVERIFY(regions.sampleSpan(qQNaN(), 5).isEmpty());
        QCOMPARE(regions.indexOf(4.9), 2);
        QCOMPARE(regions.indexOf(0.9), -1);
        QCOMPARE(regions.indexOf(qQNaN()), -1);
        regions.sort();
        QCOMPARE(regions.sample(1), QPointF(3, 30));
        QCOMPARE(regions.last(), QPointF(5, 50));
    }

    void streamMakesRegions()
    {
        PlotRegions regions;
        regions.append(region(1, 2, 3, &regions));
        regions.region(0)->setName("one");
        regions.region(0)->setColor(Qt::blue);
        const QByteArray bytes = written(regions);
        PlotRegions copy;
        QVERIFY(isRead(bytes, copy));
        QVERIFY(copy == regions);
        copy.region(0)->setName("two");
        QVERIFY(!(copy == regions));

        const int nameLength = 29, colorKind = nameLength + 4 + 2 * 3;
        const QList<QPair<int, QByteArray>> damages{{0, "ffffffff"},
                                                    {0, "00000002"},
                                                    {0, "7fffffff"},
                                                    {nameLength, "7ffffffe"},
                                                    {colorKind, "06"},
                                                    {colorKind, "ff"},
                                                    {colorKind, "053c0000007c000000"}, // infinitely green
                                                    {bytes.size() - 1, ""}};
        for (const auto &damage : damages) {
            const QByteArray wrong = QByteArray::fromHex(damage.second);
            QByteArray broken = bytes;
            broken.replace(damage.first, qMax(1, wrong.size()), wrong);
            QVERIFY2(!isRead(broken, copy), damage.second);
            QCOMPARE(copy.region(0)->name(), QStringLiteral("two"));
            QCOMPARE(copy.findChildren<PlotRegion *>().size(), 1);
        }
    }
};

QTEST_MAIN(tst_plotregions)
#include "tst_plotregions.moc"
