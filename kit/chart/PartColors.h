#pragma once

#include <QColor>
#include <QList>

class AbstractPlot;

namespace graph {

class ChartTheme;

// The colours that a chart gives to what plots write, and to bands: black ones of the document's could not be told from
// those that it left out.
class PartColors
{
public:
    void give(const QList<AbstractPlot *> &plots, const ChartTheme &theme);

private:
    // The given one for a colour that the document has left to the chart.
    QColor chosen(const QColor &present, const QColor &given) const;

    QColor m_given;
};

} // namespace graph
