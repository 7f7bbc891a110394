#pragma once

#include <QColor>
#include <QFont>
#include <QList>
#include <QString>

class AbstractPlot;

namespace graph {

class ChartTheme;

// The colours and fonts that a chart gives to what plots write, and to bands: what the document writes as it is by default
// could not be told from what it left out.
class PartColors
{
public:
    void give(const QList<AbstractPlot *> &plots, const ChartTheme &theme);

private:
    // The given one for a colour that the document has left to the chart.
    QColor chosen(const QColor &present, const QColor &given) const;

    // Family and size each for itself.
    QFont chosenFont(const QFont &present, const QFont &given) const;

    QColor m_given;
    QFont m_givenFont;
};

} // namespace graph
