#include "Shell.h"

#include "RecordingHeader.h"

#include <QQuickWindow>

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
    , m_recording(recordingHeader(options.replayFile))
    , m_page("home")
    , m_instrument(simulator)
{
    connect(&m_instrument, &Instrument::changed, this, &Shell::instrumentChanged);
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

void Shell::setPage(const QString &name)
{
    const Page *page = pageNamed(m_pages, name);
    if (!page || m_page == name)
        return;
    QStringList arguments = page->simulatorArguments;
    if (!arguments.isEmpty()) {
        arguments << "--seed" << QString::number(m_options.seed);
        // A picture shows one sweep and no other, whenever it is taken.
        if (takesPictures())
            arguments << "--hold"
                      << "1";
    }
    m_page = name;
    m_instrument.run(page->service, arguments);
    emit pageChanged();
}

} // namespace gallery
