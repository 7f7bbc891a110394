#include "QmlParts.h"

#include <QFile>
#include <QRegularExpression>

#include <utility>

namespace reference {

namespace {

QString qmlType(const QString &written)
{
    static const QMap<QString, QString> names = {{"real", "double"}, {"Flickable", "Item"}};
    return names.value(written, written);
}

// A file's root object, read line by line: what belongs to it is indented by four blanks.
class Part
{
public:
    Part(const QString &name, const QString &text, const QmlTypes &types)
        : m_text(text)
        , m_types(types)
    {
        m_type.name = name;
        bool isInside = false;
        QString comment;
        for (const QString &line : text.split('\n')) {
            if (line.trimmed().startsWith("/*!") || !comment.isEmpty()) {
                comment += line + '\n';
                if (line.endsWith("*/")) {
                    m_comment = std::exchange(comment, QString());
                    m_isShared = false;
                }
            } else if (isInside) {
                readMember(line);
            } else if (line.endsWith(" {") && line.at(0).isUpper()) {
                isInside = true;
                m_type.base = line.section(' ', 0, 0);
                describe("\\qmltype " + name);
                m_comment.clear();
            }
        }
    }

    QmlType type() const { return m_type; }
    QString comments() const { return m_comments; }

private:
    void readMember(const QString &line)
    {
        static const QRegularExpression property(
            "^    (?:default )?(readonly )?property ([\\w.<>]+) ([a-zA-Z]\\w*)");
        static const QRegularExpression function("^    (signal|function) ([a-zA-Z]\\w*)\\(([^)]*)\\)");
        const QRegularExpressionMatch propertyMatch = property.match(line);
        const QRegularExpressionMatch functionMatch = function.match(line);
        if (propertyMatch.hasMatch()) {
            const bool readOnly = !propertyMatch.captured(1).isEmpty();
            if (readOnly && (m_comment.isEmpty() || m_isShared))
                return;
            const QString name = propertyMatch.captured(3);
            const QString type = propertyMatch.captured(2);
            m_type.properties.append(
                {name, type == "alias" ? typeOfAlias(line.section(": ", 1)) : qmlType(type), readOnly});
            describe("\\qmlproperty var " + m_type.name + "::" + name);
        } else if (functionMatch.hasMatch()) {
            const bool isSignal = functionMatch.captured(1) == "signal";
            if (!isSignal && m_comment.isEmpty())
                return;
            Function member{functionMatch.captured(2), "void", {}};
            for (const QString &parameter : functionMatch.captured(3).split(',', Qt::SkipEmptyParts))
                member.parameters.append(parameter.trimmed().replace("real ", "double "));
            (isSignal ? m_type.signalList : m_type.methods).append(member);
            describe("\\qmlmethod " + m_type.name + "::" + member.name + "()");
        } else if (line.trimmed().isEmpty()) {
            m_comment.clear();
        }
    }

    // Of a property of an object with an id, which is of a type in C++.
    QString typeOfAlias(const QString &target) const
    {
        const QRegularExpression object("(\\w+) \\{\\n\\s+id: " + target.section('.', 0, 0) + "\\n");
        QString type = object.match(m_text).captured(1);
        for (; m_types.contains(type); type = m_types.value(type).base) {
            for (const Property &property : m_types.value(type).properties) {
                if (property.name == target.section('.', 1))
                    return qmlType(property.type);
            }
        }
        return "var";
    }

    // As a comment in C++ is written, with what it is about in its first line.
    void describe(const QString &topic)
    {
        if (m_comment.isEmpty())
            return;
        const QString text = m_comment.trimmed().mid(3).chopped(2).replace('\n', "\n    ");
        m_comments += "/*!\n" + topic + '\n' + text + "\n*/\n";
        m_isShared = true;
    }

    const QString &m_text;
    const QmlTypes &m_types;
    QmlType m_type;
    QString m_comment;
    bool m_isShared = false; // the comment is that of a declaration before
    QString m_comments;
};

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

QStringList addQmlParts(const QString &moduleFile, const QDir &folder, QmlTypes *types, CommentTexts *texts)
{
    QStringList internal;
    static const QRegularExpression entry("^(internal )?(\\w+) (?:[\\d.]+ )?(\\w+\\.qml)$",
                                          QRegularExpression::MultilineOption);
    for (auto entries = entry.globalMatch(moduleFile); entries.hasNext();) {
        const QRegularExpressionMatch match = entries.next();
        const QString text = contents(folder.filePath(match.captured(3)));
        const Part part(match.captured(2), text, *types);
        QmlType type = part.type();
        texts->add(part.comments());
        // One that is written in both languages.
        if (types->contains(type.name)) {
            QmlType &whole = (*types)[type.name];
            whole.properties += type.properties;
            whole.methods += type.methods;
            whole.signalList += type.signalList;
            continue;
        }
        type.exported = match.captured(1).isEmpty();
        if (!type.exported)
            internal.append(type.name);
        types->insert(type.name, type);
    }
    return internal;
}

} // namespace reference
