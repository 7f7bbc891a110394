#pragma once

#include "platform/ui/Export.h"
#include "platform/ui/UnitFormatter.h"

// Texts of lengths that are given in feet: feet, or metres where the instrument's region is metric.
class GRAPH_UI_EXPORT FeetFormatter : public UnitFormatter
{
    Q_OBJECT

public:
    // "FeetFormatter", or "FeetFormatterScaled" which goes over to kilometres and kilofeet; null for another
    // name.
    static FeetFormatter *create(const QString &name);

    QString formatValue(const QVariant &value) const override;

private:
    using UnitFormatter::UnitFormatter;
};
