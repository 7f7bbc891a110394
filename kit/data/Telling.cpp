#include "kit/data/Telling.h"

#include "kit/data/ItemName.h"
#include "kit/data/KitLog.h"

#include <QHash>
#include <QMessageLogger>
#include <QQmlEngine>
#include <QQmlInfo>
#include <QSet>

#include <cmath>

namespace graph {

namespace {

// Hands the sentence to those who listen to the engine's warnings, without its being printed there, and gives
// the place in a document that the engine knows for the object.
QQmlError report(const QObject *object, const QString &sentence)
{
    QQmlError error;
    // What an item made for itself is where that item is.
    while (!qmlContext(object) && object->parent())
        object = object->parent();
    QQmlEngine *engine = qmlEngine(object);
    if (!engine)
        return error;
    const auto keep = [&error](const QList<QQmlError> &errors) { error = errors.value(0); };
    const QMetaObject::Connection connection = QObject::connect(engine, &QQmlEngine::warnings, keep);
    const bool isPrinted = engine->outputWarningsToStandardError();
    engine->setOutputWarningsToStandardError(false);
    qmlWarning(object) << sentence;
    engine->setOutputWarningsToStandardError(isPrinted);
    QObject::disconnect(connection);
    return error;
}

// Objects may outlive what is destroyed at the end of the process.
QHash<const QObject *, QSet<QByteArray>> &toldMatters()
{
    static auto *const told = new QHash<const QObject *, QSet<QByteArray>>;
    return *told;
}

} // namespace

QString tell(const QObject *about, const QString &sentence)
{
    const QQmlError place = report(about, sentence);
    QString where;
    if (!place.url().isEmpty())
        where = QStringLiteral(" (%1:%2)").arg(place.url().fileName()).arg(place.line());
    QString message = nameOf(about) + where + QLatin1Char(' ') + sentence + QLatin1Char('.');
    if (kitLog().isWarningEnabled())
        QMessageLogger(place.url().toString().toUtf8().constData(), place.line(), nullptr,
                       kitLog().categoryName())
            .warning("%s", qUtf8Printable(message));
    return message;
}

void tellOnce(const QObject *about, const char *matter, const QString &sentence)
{
    if (!toldMatters().contains(about))
        QObject::connect(about, &QObject::destroyed, [about] { toldMatters().remove(about); });
    QSet<QByteArray> &matters = toldMatters()[about];
    if (matters.contains(matter))
        return;
    matters.insert(matter);
    tell(about, sentence);
}

bool wasTold(const QObject *about, const char *matter)
{
    return toldMatters().value(about).contains(matter);
}

void tellOfBound(const QObject *owner, const char *property, double written, double taken, double least,
                 double most)
{
    const auto text = [](double number) { return QString::number(number, 'g', 10); };
    const QString advice = std::isfinite(most) ? text(least) + QStringLiteral(" to ") + text(most)
                                               : text(least) + QStringLiteral(" or more");
    tellOnce(owner, property,
             QStringLiteral("has %1 set to %2, which counts as %3: write %4")
                 .arg(QLatin1String(property), text(written), text(taken), advice));
}

} // namespace graph
