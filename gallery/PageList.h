#pragma once

#include "Options.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace gallery {

// One page and the simulated instrument that feeds it.
struct Page
{
    QString name;
    QString title;
    QString summary;
    QString document;
    // Bus service that the page's data objects read; empty for a page with data of its own.
    QString service;
    QStringList simulatorArguments;
    // The instrument also writes heat maps.
    bool hasHeatmaps = false;
    // The number of the sweep that pictures show.
    int heldSweep = 1;
};

using PageList = QVector<Page>;

// Every page that these options allow; the opening page first.
PageList availablePages(const Options &options);
// Null when there is none of that name. Points into `pages`.
const Page *pageNamed(const PageList &pages, const QString &name);
QStringList pageNames(const PageList &pages);

} // namespace gallery
