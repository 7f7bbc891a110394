#include "gallery/Options.h"
#include "gallery/PageList.h"
#include "gallery/PrivateBus.h"
#include "gallery/QmlTypes.h"
#include "gallery/Shell.h"
#include "support/Table.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QStyleHints>
#include <QThread>
#include <QTimer>
#include <QtTest>

// All pages of the gallery under fingers, a mouse and keys: nothing is said, nothing ends, and the way back stays.
class tst_hands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // On a busy machine an instrument may answer late.
        QLoggingCategory::setFilterRules("toskorn.*=false\ndefault.debug=false");
        gallery::registerQmlTypes();
        m_view.rootContext()->setContextProperty("shell", &m_shell);
        m_view.setResizeMode(QQuickView::SizeRootObjectToView);
        m_view.resize(800, 480);
        m_view.setSource(QUrl("qrc:/shell/Main.qml"));
        m_view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_view));
    }

    void page_data()
    {
        columns<QString>({"page"});
        for (const QString &page : gallery::pageNames(gallery::availablePages({})))
            QTest::newRow(qPrintable(page)) << page;
    }

    void page()
    {
        QFETCH(QString, page);
        m_shell.setPage(page);
        QTRY_VERIFY_WITH_TIMEOUT(m_view.rootObject()->property("pageReady").toBool(), 20000);
        touch();
        QTest::qWait(50);
        QCOMPARE(m_shell.page() == page, page != "home"); // a tile
        m_shell.setPage(page);
        QTRY_VERIFY_WITH_TIMEOUT(m_view.rootObject()->property("pageReady").toBool(), 20000);
        mouse();
        m_shell.setPage(page);
        QTRY_VERIFY_WITH_TIMEOUT(m_view.rootObject()->property("pageReady").toBool(), 20000);
        for (int key :
             {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_Plus,
              Qt::Key_Minus, Qt::Key_0, Qt::Key_Backspace, Qt::Key_Tab, Qt::Key_P, Qt::Key_Space})
            QTest::keyClick(&m_view, Qt::Key(key));
        // The first one may take a cursor away.
        QTest::keyClick(&m_view, Qt::Key_Escape);
        QTest::keyClick(&m_view, Qt::Key_Escape);
        QCOMPARE(m_shell.page(), QString("home"));
        QVERIFY(!m_view.rootObject()->property("pageBroken").toBool());
    }

    void late_data()
    {
        columns<bool, bool>({"moves", "taps"});
        QTest::newRow("rests") << false << false;
        QTest::newRow("moves") << true << false;
        QTest::newRow("taps") << false << true;
    }

    // What a finger did while the process was busy is told of after the time of a long press.
    void late()
    {
        QFETCH(bool, moves);
        QFETCH(bool, taps);
        m_shell.setPage("chart");
        QTRY_VERIFY(m_view.rootObject()->property("pageReady").toBool());
        const QQuickItem *touch = itemWith(m_view.rootObject(), "mayRest");
        const QQuickItem *chart = itemWith(m_view.rootObject(), "declaredCursor");
        QVERIFY(touch && chart);
        QSignalSpy tapSpy(chart, SIGNAL(tapped(double, double)));
        const QPoint place = at(0.5, 0.5);
        bool isTold = false;
        QTest::mousePress(&m_view, Qt::LeftButton, {}, place);
        QTimer::singleShot(QGuiApplication::styleHints()->mousePressAndHoldInterval() + 60, Qt::PreciseTimer,
                           this, [&] {
                               for (int way = 20; moves && way <= 100; way += 20)
                                   QTest::mouseMove(&m_view, place - QPoint(way, 0));
                               if (taps)
                                   QTest::mouseRelease(&m_view, Qt::LeftButton, {}, place);
                               isTold = true;
                           });
        QThread::msleep(1000);
        QTRY_VERIFY(isTold);
        QTest::qWait(20);
        QCOMPARE(touch->property("holding").toBool(), !moves && !taps);
        if (!taps)
            QTest::mouseRelease(&m_view, Qt::LeftButton, {}, place);
        QCOMPARE(tapSpy.count(), taps ? 1 : 0);
        m_shell.setPage("home");
    }

    void cleanupTestCase()
    {
        m_view.setSource(QUrl());
        // Textures of the tiles, which Qt keeps for a while and deletes in a later frame.
        m_view.releaseResources();
        m_view.grabWindow();
    }

private:
    static const QQuickItem *itemWith(const QQuickItem *item, const char *property)
    {
        if (item->property(property).isValid())
            return item;
        const QQuickItem *found = nullptr;
        const QList<QQuickItem *> children = item->childItems();
        for (int i = 0; i < children.size() && !found; ++i)
            found = itemWith(children.at(i), property);
        return found;
    }

    QPoint at(double x, double y) const { return {int(x * m_view.width()), int(y * m_view.height())}; }

    // In the middle of the page: tap, drag, flick, pinch.
    void touch()
    {
        const auto tap = [this](const QPoint &place) {
            QTest::touchEvent(&m_view, m_screen).press(0, place);
            QTest::touchEvent(&m_view, m_screen).release(0, place);
        };
        QTest::touchEvent(&m_view, m_screen).press(0, at(0.7, 0.5));
        for (double x = 0.7; x > 0.3; x -= 0.02)
            QTest::touchEvent(&m_view, m_screen).move(0, at(x, 0.52));
        QTest::touchEvent(&m_view, m_screen).release(0, at(0.3, 0.52));
        QTest::touchEvent(&m_view, m_screen).press(0, at(0.45, 0.4)).press(1, at(0.55, 0.6));
        for (double way = 0.05; way < 0.25; way += 0.02)
            QTest::touchEvent(&m_view, m_screen).move(0, at(0.5 - way, 0.4)).move(1, at(0.5 + way, 0.6));
        QTest::touchEvent(&m_view, m_screen).release(0, at(0.25, 0.4)).release(1, at(0.75, 0.6));
        QTest::qWait(30);
        tap(at(0.5, 0.5));
        tap(at(0.52, 0.5));
    }

    void mouse()
    {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            QTest::mousePress(&m_view, button, {}, at(0.4, 0.4));
            for (double way = 0.4; way < 0.7; way += 0.05)
                QTest::mouseMove(&m_view, at(way, way));
            QTest::mouseRelease(&m_view, button, {}, at(0.7, 0.7));
        }
        for (const QPoint &place : {at(0.5, 0.5), at(0.02, 0.5), at(0.5, 0.85)}) {
            QWheelEvent turn(place, m_view.mapToGlobal(place), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                             false);
            QCoreApplication::sendEvent(&m_view, &turn);
        }
        QTest::mouseDClick(&m_view, Qt::LeftButton, {}, at(0.6, 0.5));
    }

    static gallery::Options options()
    {
        gallery::Options options;
        options.page = "home";
        return options;
    }

    gallery::Shell m_shell{options(), SIMULATOR};
    QQuickView m_view;
    decltype(QTest::createTouchDevice()) m_screen = QTest::createTouchDevice();
};

int main(int argc, char **argv)
{
    const gallery::PrivateBus bus;
    QGuiApplication application(argc, argv);
    tst_hands test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hands.moc"
