#include "PageList.h"

#include <QFileInfo>

#include <algorithm>

namespace gallery {

namespace {

const char replayService[] = "replay";

PageList simulatedPages()
{
    const QStringList analyzer = {"--instrument", "analyzer", "--samples", "2001", "--rate", "20"};
    return {
        {"home", "Home", "", "Home.qml", "", {}},
        {"chart", "Chart", "A few lines: axes, legend, zoom, readings", "ChartPage.qml", "", {}},
        {"recorder",
         "Recorder",
         "Hours of four channels, the last seconds in view",
         "RecorderPage.qml",
         "",
         {}},
        {"audio", "Audio", "20 Hz to 20 kHz, most and mean, markers, export", "AudioPage.qml", "", {}},
        {"waterfall", "Waterfall", "Levels over frequency and time as colours", "WaterfallPage.qml", "", {}},
        {"spectrum", "Spectrum", "Live trace, cursor, markers, peaks, six styles", "SpectrumPage.qml",
         "analyzer", analyzer},
        {"persistence", "Persistence", "Heat map of many sweeps under the live trace", "PersistencePage.qml",
         "analyzer", analyzer, true},
        // Not the sweep that other pages hold: it waits for its own.
        {"hold", "Hold", "Highest and lowest level of every sample so far", "HoldPage.qml", "analyzer",
         analyzer, false, 2},
        {"masks",
         "Masks",
         "Limit masks that judge every sweep",
         "MasksPage.qml",
         "analyzer",
         {"--instrument", "analyzer", "--samples", "1001", "--rate", "10"}},
        {"channels", "Channels", "Eighty channels with name and power", "ChannelsPage.qml", "", {}},
        {"bands", "Band plan", "Services as bands over the live spectrum", "BandsPage.qml", "analyzer",
         analyzer},
        {"scope",
         "Oscilloscope",
         "A million samples a channel, two axes, two cursors",
         "ScopePage.qml",
         "scope",
         {"--instrument", "scope", "--samples", "1000000", "--rate", "2"}},
        // Half a minute of its recording.
        {"logger",
         "Logger",
         "Four channels that grow while they are watched",
         "LoggerPage.qml",
         "logger",
         {"--instrument", "logger"},
         false,
         749},
        {"fibre",
         "Fibre",
         "Distance and loss between two markers on a fibre",
         "FibrePage.qml",
         "otdr",
         {"--instrument", "otdr"}},
        {"events",
         "Events",
         "Fitted sections, reflections, the whole fibre below",
         "EventsPage.qml",
         "otdr",
         {"--instrument", "otdr"}},
        {"points", "Points", "Eight marks for the points of a scatter plot", "PointsPage.qml", "", {}},
        {"axes", "Axes", "Tick modes, all four sides, feet and metres", "AxesPage.qml", "", {}},
        {"stress", "Stress", "Up to ten million samples, new with every frame", "StressPage.qml", "", {}},
    };
}

Page *pageNamed(PageList *pages, const QString &name)
{
    const auto found =
        std::find_if(pages->begin(), pages->end(), [&name](const Page &page) { return page.name == name; });
    return found == pages->end() ? nullptr : &*found;
}

} // namespace

PageList availablePages(const Options &options)
{
    PageList pages = simulatedPages();
    const Replay &replay = options.replay;
    if (replay.files.isEmpty())
        return pages;
    QStringList arguments;
    for (const QString &file : replay.files)
        arguments << "--replay" << file;
    // The page that is added takes any recording, the others only what their instrument would measure.
    QStringList replayedPages;
    const bool hasTrace = replay.samples > 1;
    if (hasTrace && replay.events > 1)
        replayedPages << "events";
    if (hasTrace && replay.regions > 0)
        replayedPages << "channels"
                      << "bands";
    if (replay.hasSpectra)
        replayedPages << "persistence";
    for (const QString &name : qAsConst(replayedPages)) {
        Page *page = pageNamed(&pages, name);
        page->service = replayService;
        page->simulatorArguments = arguments;
    }
    pages.append({"replay", "Replay", QFileInfo(replay.files.first()).fileName(), "ReplayPage.qml",
                  replayService, arguments});
    return pages;
}

const Page *pageNamed(const PageList &pages, const QString &name)
{
    const auto found =
        std::find_if(pages.cbegin(), pages.cend(), [&name](const Page &page) { return page.name == name; });
    return found == pages.cend() ? nullptr : &*found;
}

QStringList pageNames(const PageList &pages)
{
    QStringList names;
    for (const Page &page : pages)
        names.append(page.name);
    return names;
}

} // namespace gallery
