#include "Headless.h"
#include "LogWatch.h"
#include "Options.h"
#include "PageList.h"
#include "PictureTaker.h"
#include "PrivateBus.h"
#include "QmlTypes.h"
#include "Shell.h"

#include "simulator/StopSignals.h"

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickView>

#include <cstdio>
#include <memory>

namespace {

// The window's application can only start when it is known whether there will be a window; the parser wants
// one for its help.
gallery::CommandLineAnswer commandLineAnswer(int argc, char **argv, gallery::Options *options)
{
    const QCoreApplication application(argc, argv);
    return gallery::parsedCommandLine(QCoreApplication::arguments(), options);
}

// Runs the window, or draws the pictures, and gives the exit status.
int runGallery(QGuiApplication *application, const gallery::Options &options)
{
    using namespace gallery;
    const QDir folder(QCoreApplication::applicationDirPath());
    registerQmlTypes();
    Shell shell(options, folder.filePath("graph-simulator"));
    QQuickView view;
    view.engine()->addImportPath(folder.filePath(INSTALLED_QML_DIR));
    view.engine()->addImportPath(folder.filePath("../qml")); // in the build tree
    view.rootContext()->setContextProperty("shell", &shell);
    view.setTitle("Gallery");
    view.setColor(Qt::black);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    // Made before it is resized: the platform for pictures takes the size of a new window for one in its own
    // pixels.
    view.create();
    view.resize(options.size);
    view.setSource(QUrl("qrc:/shell/Main.qml"));
    if (view.status() != QQuickView::Ready)
        return 1;
    view.show();
    if (!options.takesPictures())
        return application->exec();

    PictureTaker taker(&shell, &view);
    QObject::connect(&taker, &PictureTaker::finished, application,
                     [](bool allTaken) { QCoreApplication::exit(allTaken ? 0 : 1); });
    const QStringList pages =
        options.pictureFile.isEmpty() ? pageNames(availablePages(options)) : QStringList(options.page);
    taker.start(pages, options.pictureFile, options.pictureFolder);
    const int status = application->exec();
    // The software scene graph frees the textures of images with the next frame only.
    view.setSource(QUrl());
    view.grabWindow();
    QCoreApplication::processEvents();
    return status == 0 && warningCount() > 0 ? 1 : status;
}

} // namespace

int main(int argc, char **argv)
{
    gallery::Options options;
    const gallery::CommandLineAnswer answer = commandLineAnswer(argc, argv, &options);
    if (!answer.text.isEmpty()) {
        std::fprintf(answer.status ? stderr : stdout, "%s\n", qPrintable(answer.text));
        return answer.status;
    }
    if (options.list) {
        std::printf("%s\n", qPrintable(gallery::pageNames(gallery::availablePages(options)).join('\n')));
        return 0;
    }

    gallery::startCountingWarnings();
    // Before anything that has to be cleaned up at the end.
    StopSignals stopSignals;
    if (gallery::hasNoDisplay() && !options.takesPictures())
        options.pictureFolder = "pictures";
    std::unique_ptr<gallery::HeadlessDrawing> drawing;
    if (options.takesPictures())
        drawing = std::make_unique<gallery::HeadlessDrawing>();
    const gallery::PrivateBus bus;
    if (!bus.errorText().isEmpty())
        qWarning("%s", qPrintable(bus.errorText()));

    QGuiApplication application(argc, argv);
    stopSignals.listen();
    QObject::connect(&stopSignals, &StopSignals::stopRequested, &application,
                     [&options] { QCoreApplication::exit(options.takesPictures() ? 1 : 0); });
    // Also for the texts that plots draw.
    QFont font("Roboto");
    font.setPixelSize(15);
    QGuiApplication::setFont(font);
    return runGallery(&application, options);
}
