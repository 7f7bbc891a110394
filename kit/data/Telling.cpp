#include "kit/data/Telling.h"

#include "kit/data/ItemName.h"
#include "kit/data/KitLog.h"

#include <QMessageLogger>
#include <QQmlEngine>
#include <QQmlInfo>

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

} // namespace

QString tell(const QObject *about, const QString &sentence)
{
    const QQmlError place = report(about, sentence);
    QString where;
    if (!place.url().isEmpty())
        where = QStringLiteral(" (%1:%2)").arg(place.url().fileName()).arg(place.line());
    const QString message = nameOf(about) + where + QLatin1Char(' ') + sentence + QLatin1Char('.');
    if (kitLog().isWarningEnabled())
        QMessageLogger(place.url().toString().toUtf8().constData(), place.line(), nullptr,
                       kitLog().categoryName())
            .warning("%s", qUtf8Printable(message));
    return message;
}

} // namespace graph
