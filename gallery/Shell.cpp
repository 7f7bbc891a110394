#include "Shell.h"

#include <QDir>
#include <QFile>
#include <QQuickWindow>
#include <QStandardPaths>

namespace gallery {

namespace {

QVariantMap description(const Page &page)
{
    return {{"name", page.name},
            {"title", page.title},
            {"summary", page.summary},
            {"document", "qrc:/pages/" + page.document},
            {"service", page.service}};
}

} // namespace

Shell::Shell(const Options &options, const QString &simulator, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_pages(availablePages(options))
    , m_page(options.page)
    , m_instrument(simulator)
{
    connect(&m_instrument, &Instrument::changed, this, &Shell::instrumentChanged);
    runInstrument(pageNamed(m_pages, m_page)->heldSweep);
}

QVariantList Shell::pages() const
{
    QVariantList list;
    for (const Page &page : m_pages)
        list.append(description(page));
    return list;
}

QVariantMap Shell::pageInfo() const
{
    return description(*pageNamed(m_pages, m_page));
}

bool Shell::softwareRendering() const
{
    return QQuickWindow::sceneGraphBackend() == "software";
}

bool Shell::instrumentReady() const
{
    return pageNamed(m_pages, m_page)->service.isEmpty() || m_instrument.isReady();
}

void Shell::holdSweep(int number)
{
    if (!takesPictures())
        return;
    runInstrument(number);
    emit sweepHeld();
}

QString Shell::source(const QString &document) const
{
    QFile file(":/pages/" + document);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString Shell::exportFile(const QString &name) const
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QDir(QDir(pictures).exists() ? pictures : QDir::homePath()).filePath(name);
}

void Shell::setPage(const QString &name)
{
    const Page *page = pageNamed(m_pages, name);
    if (!page || m_page == name)
        return;
    m_page = name;
    runInstrument(page->heldSweep);
    emit pageChanged();
}

void Shell::runInstrument(int heldSweep)
{
    const Page *page = pageNamed(m_pages, m_page);
    QStringList arguments = page->simulatorArguments;
    if (page->hasHeatmaps) {
        m_heatmaps.clear();
        arguments << "--heatmap" << m_heatmaps.path();
    }
    if (!arguments.isEmpty()) {
        arguments << "--seed" << QString::number(m_options.seed);
        // A picture shows one sweep and no other, whenever it is taken.
        if (takesPictures())
            arguments << "--hold" << QString::number(heldSweep);
    }
    m_instrument.run(page->service, arguments);
}

} // namespace gallery
