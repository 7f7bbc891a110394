#include "QmlTypes.h"

#include <QRegularExpression>

#include <algorithm>

namespace reference {

namespace {

// An object of the file: `Kind { name: value; Kind { } }`.
struct Node
{
    QString kind;
    QMap<QString, QStringList> values;
    QVector<Node> children;

    QString value(const QString &name) const { return values.value(name).value(0); }
};

QStringList tokens(QString text)
{
    text.remove(QRegularExpression("(?m)^\\s*(//|import ).*$"));
    static const QRegularExpression token("\"([^\"]*)\"|-?\\w+|[{}\\[\\]:]");
    QStringList list;
    for (auto matches = token.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        list.append(match.captured(match.lastCapturedIndex()));
    }
    return list;
}

// The token at a position, empty behind the end.
class Reader
{
public:
    explicit Reader(const QStringList &tokens)
        : m_tokens(tokens)
    {
    }

    Node node()
    {
        Node node;
        node.kind = next();
        next(); // the opening brace
        while (!m_tokens.value(m_position).isEmpty() && m_tokens.at(m_position) != "}") {
            if (m_tokens.value(m_position + 1) == "{") {
                node.children.append(this->node());
                continue;
            }
            const QString name = next();
            next(); // the colon
            node.values.insert(name, value());
        }
        next();
        return node;
    }

private:
    QString next() { return m_tokens.value(m_position++); }

    QStringList value()
    {
        const QString first = next();
        if (first != "[" && first != "{")
            return {first};
        QStringList list;
        for (QString token = next(); !token.isEmpty() && token != "]" && token != "}"; token = next()) {
            if (token == ":")
                list.last() += " " + next();
            else
                list.append(token);
        }
        return list;
    }

    QStringList m_tokens;
    int m_position = 0;
};

const QString space = QStringLiteral("graph::");

// As documents call it: without the namespace of C++, and what Chart.qml adds its interactive parts to is the chart.
QString withoutNamespace(QString type)
{
    return type == space + "ChartView" ? QStringLiteral("Chart") : type.remove(space);
}

QString qmlName(const Node &node)
{
    static const QMap<QString, QString> names = {
        {"", "void"},
        {"QString", "string"},
        {"QVariant", "var"},
        {"QJSValue", "var"},
        {"QVariantList", "list"},
        {"qlonglong", "int"},
        {"QColor", "color"},
        {"QFont", "font"},
        {"QPointF", "point"},
        {"QRectF", "rect"},
        {"QVector2D", "vector2d"},
        {"qreal", "double"},
        {"QStringList", "list<string>"},
        {"QQuickItem", "Item"},
        {"QObject", "QtObject"},
        {"QQuickPaintedItem", "Item"},
        {"QList<qreal>", "list<double>"},
        {"QVector<qreal>", "list<double>"},
        {"QVector<double>", "list<double>"},
    };
    const QString type = names.value(node.value("type"), withoutNamespace(node.value("type")));
    return node.value("isList") == "true" ? "list<" + type + ">" : type;
}

Function function(const Node &node)
{
    Function function{node.value("name"), qmlName(node), {}};
    for (const Node &parameter : node.children)
        function.parameters.append((qmlName(parameter) + " " + parameter.value("name")).trimmed());
    return function;
}

QmlType qmlType(const Node &component)
{
    QmlType type;
    type.name = withoutNamespace(component.value("name"));
    type.base = withoutNamespace(component.value("prototype"));
    type.attachedType = component.value("attachedType");
    type.exported = component.values.contains("exports");
    type.creatable = type.exported && component.value("isCreatable") != "false";
    for (const Node &child : component.children) {
        if (child.kind == "Property") {
            // A list counts as read-only, although a document may fill it.
            const bool readOnly = child.value("isReadonly") == "true" && child.value("isList") != "true";
            type.properties.append({child.value("name"), qmlName(child), readOnly});
        } else if (child.kind == "Signal") {
            type.signalList.append(function(child));
        } else if (child.kind == "Method") {
            type.methods.append(function(child));
        } else if (child.kind == "Enum") {
            type.enumerations.append({child.value("name"), child.values.value("values")});
        }
    }
    return type;
}

} // namespace

QString Function::signature() const
{
    const QString call = name + "(" + parameters.join(", ") + ")";
    return type == "void" ? call : type + " " + call;
}

bool QmlType::hasProperty(const QString &property) const
{
    return std::any_of(properties.begin(), properties.end(),
                       [&property](const Property &other) { return other.name == property; });
}

QmlTypes qmlTypes(const QString &text)
{
    QmlTypes types;
    // A module with a namespace of its own lists others' types as well, those that it is built on.
    const bool hasSpace = text.contains("name: \"" + space);
    const Node module = Reader(tokens(text)).node();
    for (const Node &child : module.children) {
        if (child.kind == "Component" && (!hasSpace || child.value("name").startsWith(space))) {
            const QmlType type = qmlType(child);
            types.insert(type.name, type);
        }
    }
    return types;
}

} // namespace reference
