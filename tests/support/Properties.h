#pragma once

#include <QMetaProperty>
#include <QVariantList>

// Writes to each property that the object's class adds to the base the value of its type, if there is one.
inline void writeProperties(QObject *object, const QMetaObject &base, const QVariantList &values)
{
    const QMetaObject *type = object->metaObject();
    for (int i = base.propertyCount(); i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        for (const QVariant &value : values) {
            if (value.userType() == property.userType() && !property.isEnumType())
                property.write(object, value);
        }
    }
}
