#pragma once

#include "platform/ui/BaseFormatter.h"
#include "platform/ui/Export.h"
#include "platform/ui/NumberText.h"

// Texts of a physical unit such as "2.4 GHz" or "-37.5 dBm".
class GRAPH_UI_EXPORT UnitFormatter : public BaseFormatter
{
    Q_OBJECT

public:
    // Null for a name that is no unit.
    static UnitFormatter *create(const QString &unitName);

    QString formatValue(const QVariant &value) const override;
    QString getType() const override { return m_type; }

public slots:
    void setSigDigs(int sigDigs) override { m_limits.sigDigs = sigDigs; }
    void setPrecision(int precision) override { m_limits.precision = precision; }

protected:
    UnitFormatter(const QString &type, const QString &symbol, graph::PrefixRange range);

    QString text(double value, const QString &symbol) const;

private:
    QString m_type;
    QString m_symbol;
    graph::PrefixRange m_range;
    graph::DigitLimits m_limits;
};
