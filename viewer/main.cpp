// Shows one document, or draws it to a picture.
#include "gallery/Headless.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QEventLoop>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

struct Options
{
    QString document;
    QString picture;
    QSize size;
    int wait = 2000;
};

// The application can only start when it is known whether there is a display; the parser wants one for its help.
bool readOptions(int argc, char **argv, Options *options)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("graph-view");
    QCoreApplication::setApplicationVersion(VIEWER_VERSION);
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows a QML document, for example one with a chart.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("document.qml", "What to show.");
    parser.addOption({"shot", "Draw it to this picture and leave; needs no display.", "file.png"});
    parser.addOption({"size", "Of the window, else that of the document.", "WIDTHxHEIGHT"});
    parser.addOption({"wait", "With --shot: how long the document runs before, 2000 ms.", "ms"});
    parser.process(QCoreApplication::arguments());
    const auto refuse = [&parser](const QString &why) {
        std::fputs(qPrintable("graph-view: " + why + "\n\n" + parser.helpText()), stderr);
        return false;
    };
    const auto size = QRegularExpression("^([1-9]\\d{0,4})x([1-9]\\d{0,4})$").match(parser.value("size"));
    bool isNumber = true;
    if (parser.isSet("wait"))
        options->wait = parser.value("wait").toInt(&isNumber);
    if (parser.isSet("size") && !size.hasMatch())
        return refuse("--size takes a width and a height such as 800x480, and is given \"" +
                      parser.value("size") + '"');
    if (!isNumber || options->wait < 0)
        return refuse("--wait takes milliseconds, and is given \"" + parser.value("wait") + '"');
    if (parser.positionalArguments().size() != 1)
        return refuse("it shows one document, and is given " +
                      QString::number(parser.positionalArguments().size()));
    options->document = parser.positionalArguments().first();
    options->picture = parser.value("shot");
    if (size.hasMatch())
        options->size = QSize(size.captured(1).toInt(), size.captured(2).toInt());
    return true;
}

// The window of the document, or one around it; null, with the reason on stderr, when there is nothing to show.
std::unique_ptr<QQuickWindow> windowOf(QQmlComponent *component, const QSize &size)
{
    std::unique_ptr<QObject> root(component->create());
    for (const QQmlError &error : component->errors())
        std::fprintf(stderr, "%s\n", qPrintable(error.toString()));
    if (!root)
        return nullptr;
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(root.get()));
    if (window) {
        static_cast<void>(root.release());
    } else if (auto *item = qobject_cast<QQuickItem *>(root.get())) {
        window = std::make_unique<QQuickWindow>();
        item->setParent(window.get());
        item->setParentItem(window->contentItem());
        static_cast<void>(root.release());
        const bool hasSize = item->width() >= 1.0 && item->height() >= 1.0;
        window->create();
        window->resize(hasSize ? item->size().toSize() : QSize(800, 480));
        const auto fill = [item, view = window.get()] { item->setSize(view->size()); };
        QObject::connect(window.get(), &QWindow::widthChanged, item, fill);
        QObject::connect(window.get(), &QWindow::heightChanged, item, fill);
        if (!hasSize)
            fill();
    } else {
        std::fputs("The document is neither an item nor a window\n", stderr);
        return nullptr;
    }
    if (size.isValid())
        window->resize(size);
    return window;
}

// Saves what the window shows; false, with the reason on stderr, where that is not possible.
bool savePicture(QQuickWindow *window, const QString &file)
{
    // Of the items, not of the window: the platform for pictures does not keep what windows have shown.
    QImage picture(window->size() * window->effectiveDevicePixelRatio(), QImage::Format_RGB32);
    picture.fill(window->color());
    const auto grab = window->contentItem()->grabToImage(picture.size());
    if (grab) {
        QEventLoop loop;
        QObject::connect(grab.data(), &QQuickItemGrabResult::ready, &loop, &QEventLoop::quit);
        loop.exec();
        QPainter(&picture).drawImage(0, 0, grab->image());
    }
    const bool isSaved = grab && picture.save(file);
    if (!isSaved)
        std::fprintf(stderr, "%s cannot be written\n", qPrintable(file));
    return isSaved;
}

int show(QGuiApplication *application, const Options &options)
{
    if (!QFileInfo(options.document).isReadable()) {
        std::fprintf(stderr, "%s cannot be read\n", qPrintable(options.document));
        return 1;
    }
    QQmlEngine engine;
    const QDir folder(QCoreApplication::applicationDirPath());
    engine.addImportPath(folder.filePath(INSTALLED_QML_DIR));
    engine.addImportPath(folder.filePath("../qml")); // in the build tree
    QObject::connect(&engine, &QQmlEngine::quit, application, &QCoreApplication::quit);
    QQmlComponent component(&engine, QUrl::fromLocalFile(QFileInfo(options.document).absoluteFilePath()));
    const auto window = windowOf(&component, options.size);
    if (!window)
        return 1;
    window->setTitle(QFileInfo(options.document).fileName());
    window->show();
    if (!options.picture.isEmpty())
        QTimer::singleShot(options.wait, window.get(), [&] {
            QCoreApplication::exit(savePicture(window.get(), options.picture) ? 0 : 1);
        });
    return application->exec();
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    if (!readOptions(argc, argv, &options))
        return 2;
    if (gallery::hasNoDisplay() && options.picture.isEmpty()) {
        std::fputs("There is no display; --shot picture.png draws the document to a picture\n", stderr);
        return 1;
    }
    std::unique_ptr<gallery::HeadlessDrawing> drawing;
    if (!options.picture.isEmpty())
        drawing = std::make_unique<gallery::HeadlessDrawing>();
    QGuiApplication application(argc, argv);
    if (drawing)
        QGuiApplication::setFont(QFont("Roboto", 11));
    return show(&application, options);
}
