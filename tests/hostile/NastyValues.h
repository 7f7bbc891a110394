#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QVariant>
#include <QVector>

// Values that a careless document or a broken instrument might hand to a chart, mixed with reasonable ones, so that
// charts stay able to draw for a while. The same seed gives the same values.
class NastyValues
{
public:
    // The pointers among the values are chosen from `objects`.
    NastyValues(quint32 seed, const QVector<QPointer<QObject>> &objects)
        : m_random(seed)
        , m_objects(objects)
    {
    }

    int below(int count) { return count > 0 ? m_random.bounded(count) : 0; }
    bool oneIn(int count) { return below(count) == 0; }

    double number();
    int integer();
    int enumerator();
    QString text();
    QVector<double> array();
    // Null, or any living object that inherits the class; of any class when that is null.
    QObject *object(const QMetaObject *wanted);

    // A value of the type with this id or, where it has none, of the enumeration of this name. Not valid for a type
    // that the module does not use.
    QVariant value(int type, const QByteArray &typeName);

private:
    QRandomGenerator m_random;
    const QVector<QPointer<QObject>> &m_objects;
};
