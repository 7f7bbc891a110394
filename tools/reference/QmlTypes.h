#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

// What a plugins.qmltypes file says, under the names that QML uses.
namespace reference {

struct Property
{
    QString name;
    QString type;
    bool readOnly = false;
};

// A signal or a method.
struct Function
{
    QString name;
    QString type;
    QStringList parameters; // each with its type

    QString signature() const;
};

struct Enumeration
{
    QString name;
    QStringList values; // NAME VALUE
};

struct QmlType
{
    QString name;
    QString base;
    QString attachedType;
    bool exported = false;
    bool creatable = true;
    QVector<Property> properties;
    QVector<Function> methods;
    QVector<Function> signalList;
    QVector<Enumeration> enumerations;

    bool hasProperty(const QString &property) const;
};

using QmlTypes = QMap<QString, QmlType>;

// Empty when the text is not such a file.
QmlTypes qmlTypes(const QString &text);

} // namespace reference
