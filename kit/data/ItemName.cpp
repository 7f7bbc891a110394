#include "kit/data/ItemName.h"

#include <QMetaProperty>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QRegularExpression>

namespace graph {

namespace {

QString idOf(const QObject *object)
{
    auto *named = const_cast<QObject *>(object);
    const QQmlContext *context = qmlContext(object);
    QString id = context ? context->nameForObject(named) : QString();
    if (!id.isEmpty())
        return id;
    // What a legend calls it.
    if (object->inherits("AbstractPlot") && object->objectName().isEmpty())
        return object->property("name").toString();
    // Some objects number themselves, which does not help to find them.
    static const QRegularExpression number(QStringLiteral("^(PD|WP|ZR)[0-9]+$"));
    return number.match(object->objectName()).hasMatch() ? QString() : object->objectName();
}

} // namespace

QString typeNameOf(const QObject *object)
{
    QString name = QString::fromLatin1(object->metaObject()->className());
    name = name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
    // Types with properties of their own in a document, and those that are a document, have a class each.
    for (const QLatin1String suffix : {QLatin1String("_QML_"), QLatin1String("_QMLTYPE_")})
        name = name.section(suffix, 0, 0);
    for (const QLatin1String builtIn : {QLatin1String("QQuick"), QLatin1String("QQml")}) {
        if (name.startsWith(builtIn))
            return name.mid(builtIn.size());
    }
    return name;
}

namespace {

// What an object made for itself and shows as one of its properties, such as axisX: the name of that.
QString propertyOf(const QObject *owner, const QObject *object)
{
    const QMetaObject *type = owner->metaObject();
    for (int i = 0; i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        if (property.isConstant() && property.read(owner).value<QObject *>() == object)
            return QString::fromLatin1(property.name());
    }
    return typeNameOf(object);
}

} // namespace

QString nameOf(const QObject *object)
{
    const QString id = idOf(object);
    if (!id.isEmpty())
        return QStringLiteral("%1 \"%2\"").arg(typeNameOf(object), id);
    const bool isItem = qobject_cast<const QQuickItem *>(object) && qmlContext(object);
    if (!isItem && object->parent())
        return QStringLiteral("%1 of %2").arg(propertyOf(object->parent(), object), nameOf(object->parent()));
    return typeNameOf(object);
}

} // namespace graph
