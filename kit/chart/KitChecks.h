#pragma once

#include <QString>

class AbstractPlot;
class GraphView;
class ValueAxis;

namespace graph {

// What can only be wrong with the kit's own types. Sentences continue the name of the object; empty when all is well.

QString withUnknownTheme(const GraphView &view);
QString withoutNames(const GraphView &view);
QString withUnusedPlaces(const GraphView &view, const AbstractPlot &plot);
QString withAxisOfAnother(const GraphView &view, const AbstractPlot &plot);
QString withoutValues(const GraphView &view, const AbstractPlot &plot);
QString withoutSeries(const GraphView &view, const AbstractPlot &plot);
QString withoutComparison(const GraphView &view, const AbstractPlot &plot);
QString withPlainStyle(const GraphView &view, const AbstractPlot &plot);
QString withTicksElsewhere(const GraphView &view, const ValueAxis &axis);
QString withRangeBesideFollow(const GraphView &view, const ValueAxis &axis);
QString withEmptyAddress(const GraphView &view, const AbstractPlot &plot);
QString withColorOfGround(const GraphView &view, const AbstractPlot &plot);
QString withReversedColors(const GraphView &view, const AbstractPlot &plot);
QString withUselessInterval(const GraphView &view, const ValueAxis &axis);
QString withAnotherUnit(const GraphView &view, const AbstractPlot &plot);

} // namespace graph
