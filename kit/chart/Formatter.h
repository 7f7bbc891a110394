#pragma once

#include "common/Export.h"
#include "platform/ui/BaseFormatter.h"

#include <QHash>
#include <QJSValue>
#include <QMutex>
#include <QPointer>

#include <memory>

namespace graph {

// A formatter that a document writes: a function, or a unit and its digits.
class GRAPH_CHARTS_EXPORT Formatter : public BaseFormatter
{
    Q_OBJECT
    Q_PROPERTY(QJSValue text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY changed)
    Q_PROPERTY(int sigDigs READ sigDigs WRITE setSigDigs NOTIFY changed)
    Q_PROPERTY(int precision READ precision WRITE setPrecision NOTIFY changed)

public:
    explicit Formatter(QObject *parent = nullptr);
    ~Formatter() override;

    QJSValue text() const { return m_text; }
    QString unit() const { return m_unit; }
    int sigDigs() const { return m_sigDigs; }
    int precision() const { return m_precision; }

    void setText(const QJSValue &text);
    void setUnit(const QString &unit);

    Q_INVOKABLE QString formatValue(const QVariant &value) const override;
    QString getType() const override { return m_unit; }

public slots:
    void setSigDigs(int sigDigs) override;
    void setPrecision(int precision) override;

signals:
    void changed();

private:
    QString called(double value) const;
    void tellOfFailure(const QJSValue &result) const;
    QString plain(double value) const;
    void forget();
    void tellOwner() const;

    QJSValue m_text;
    QString m_unit;
    int m_sigDigs = 6;
    int m_precision = 6;
    std::unique_ptr<BaseFormatter> m_ofUnit;
    // Axes are painted in another thread, where no document's function can be called.
    mutable QMutex m_mutex;
    mutable QHash<double, QString> m_texts;
};

} // namespace graph
