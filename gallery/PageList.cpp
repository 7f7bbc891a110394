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
         "Live trace over the bus, six plot styles, pinch to zoom",
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
         "Two channels of a million samples each, down to single ones",
         "ScopePage.qml",
         "scope",
         {"--instrument", "scope", "--samples", "1000000", "--rate", "2"}},
        {"fibre",
         "Fibre",
         "Backscatter trace of a fibre, zoomed to its events",
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
