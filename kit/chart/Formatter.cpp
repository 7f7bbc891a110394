#include "kit/chart/Formatter.h"

#include "axis/ValueAxis.h"
#include "kit/axis/UnitText.h"
#include "kit/data/Store.h"
#include "kit/data/Telling.h"
#include "platform/ui/NumberText.h"

#include <QThread>
#include <QUrl>

namespace graph {

namespace {

// As many as a few axes have ticks; when there are more the oldest ones are of zooms long gone.
constexpr int mostTexts = 1000;
// What a double has.
constexpr int mostDigits = 17;

} // namespace

/*!
    \qmltype Formatter
    \inqmlmodule graph_kit
    \brief Texts of values that a document writes, for the formatter of an axis.

    \code
    axisY.formatter: Formatter { text: function (value) { return value > 0 ? "on" : "off" } }
    axisX.formatter: Formatter { unit: "bar"; precision: 1 }
    \endcode
*/
Formatter::Formatter(QObject *parent)
    : BaseFormatter(parent)
{
}

Formatter::~Formatter() = default;

/*!
    \qmlproperty var Formatter::text
    A function that makes a text of a value. It is to depend on nothing but the value, or on what is the same
    for all repaints of an axis. Undefined by default: then unit, sigDigs and precision say how a value is
    written.
*/
void Formatter::setText(const QJSValue &text)
{
    if (!text.isCallable() && !text.isUndefined() && !text.isNull())
        tellOnce(
            this, "text",
            QStringLiteral("has a text that is no function: write text: function (value) { return ... }"));
    m_text = text;
    forget();
}

/*!
    \qmlproperty string Formatter::unit
    The unit, empty by default. Hz, s, m, V, A, W, ohm, bit/s and B are written with prefixes; any other one
    as it is, behind the number.

    \qmlproperty int Formatter::sigDigs
    \qmlproperty int Formatter::precision
    Significant digits and decimals at most, 6 by default; 1 to 17, and 0 to 17.
*/
void Formatter::setUnit(const QString &unit)
{
    if (m_unit == unit)
        return;
    m_unit = unit;
    m_ofUnit.reset(getFormatter(unit));
    if (m_ofUnit) {
        m_ofUnit->setSigDigs(m_sigDigs);
        m_ofUnit->setPrecision(m_precision);
    }
    forget();
}

void Formatter::setSigDigs(int sigDigs)
{
    if (!store(m_sigDigs, bounded(this, "sigDigs", sigDigs, 1, mostDigits)))
        return;
    if (m_ofUnit)
        m_ofUnit->setSigDigs(m_sigDigs);
    forget();
}

void Formatter::setPrecision(int precision)
{
    if (!store(m_precision, bounded(this, "precision", precision, 0, mostDigits)))
        return;
    if (m_ofUnit)
        m_ofUnit->setPrecision(m_precision);
    forget();
}

/*!
    \qmlmethod string Formatter::formatValue(var value)
    The text of the value.
*/
QString Formatter::formatValue(const QVariant &value) const
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (m_text.isCallable() && isNumber)
        return called(number);
    return m_ofUnit ? m_ofUnit->formatValue(value) : plain(number);
}

QString Formatter::called(double value) const
{
    QMutexLocker lock(&m_mutex);
    const auto known = m_texts.constFind(value);
    if (known != m_texts.cend())
        return *known;
    if (QThread::currentThread() != thread()) {
        // The next repaint has it.
        QMetaObject::invokeMethod(
            const_cast<Formatter *>(this),
            [this, value] {
                called(value);
                tellOwner();
            },
            Qt::QueuedConnection);
        return plain(value);
    }
    lock.unlock();
    QJSValue function = m_text;
    const QJSValue result = function.call({QJSValue(value)});
    const bool isText = !result.isError() && !result.isUndefined() && !result.isNull();
    const QString text = isText ? result.toString() : plain(value);
    if (!isText)
        tellOfFailure(result);
    lock.relock();
    if (m_texts.size() >= mostTexts)
        m_texts.clear();
    m_texts.insert(value, text);
    return text;
}

void Formatter::tellOfFailure(const QJSValue &result) const
{
    const QString what =
        result.isError()
            ? QStringLiteral("ends with \"%1\" in line %2 of %3")
                  .arg(result.toString(), result.property(QStringLiteral("lineNumber")).toString(),
                       QUrl(result.property(QStringLiteral("fileName")).toString()).fileName())
            : QStringLiteral("gives nothing back");
    tellOnce(this, "failure",
             QStringLiteral("has a text that %1, so that plain numbers are shown: let it return a text")
                 .arg(what));
}

QString Formatter::plain(double value) const
{
    const QString number = numberText(value, {m_sigDigs, m_precision}, {}).digits;
    return withUnitBehind(number, m_unit);
}

void Formatter::forget()
{
    QMutexLocker lock(&m_mutex);
    m_texts.clear();
    lock.unlock();
    tellOwner();
    emit changed();
}

void Formatter::tellOwner() const
{
    if (auto *axis = qobject_cast<ValueAxis *>(parent()))
        axis->emitAxisChanged();
}

} // namespace graph
