#include "PageList.h"

#include <QFileInfo>

#include <algorithm>

namespace gallery {

PageList availablePages(const Options &options)
{
    PageList pages = {
        {"home", "Home", "", "Home.qml", "", {}},
        {"spectrum",
         "Spectrum",
         "Live trace over the bus, cursor, markers, peaks and six plot styles",
         "SpectrumPage.qml",
         "analyzer",
         {"--instrument", "analyzer", "--samples", "2001", "--rate", "20"}},
        {"axes",
         "Axes",
         "Tick modes, all four sides, staggered, decreasing, feet and metres",
         "AxesPage.qml",
         "",
         {}},
        {"scope",
         "Oscilloscope",
         "A million samples a channel on two axes, with two cursors and gaps",
         "ScopePage.qml",
         "scope",
         {"--instrument", "scope", "--samples", "1000000", "--rate", "2"}},
        {"fibre",
         "Fibre",
         "Backscatter trace of a fibre, its events, distance and loss between markers",
         "FibrePage.qml",
         "otdr",
         {"--instrument", "otdr"}},
    };
    if (!options.replayFile.isEmpty()) {
        pages.append({"replay",
                      "Replay",
                      QFileInfo(options.replayFile).fileName(),
                      "ReplayPage.qml",
                      "replay",
                      {"--replay", QFileInfo(options.replayFile).absoluteFilePath()}});
    }
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
