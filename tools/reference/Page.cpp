#include "Page.h"

#include <algorithm>

namespace reference {

namespace {

QString linked(const QString &type, const QmlTypes &types)
{
    return types.contains(type) ? QStringLiteral("[%1](%1.md)").arg(type) : type;
}

QString capitalised(const QString &name)
{
    return name.left(1).toUpper() + name.mid(1);
}

bool isChangeOf(const QString &signal, const Property &property)
{
    return signal == property.name + "Changed" || signal == "sgn" + capitalised(property.name) + "Changed";
}

bool isSetterOf(const QString &method, const Property &property)
{
    return !property.readOnly &&
           (method == "set" + capitalised(property.name) || method == "reset" + capitalised(property.name));
}

// Of a table, which has no lines.
QString firstSentence(const QString &body)
{
    const QString line = body.section("\n\n", 0, 0).section("\n*", 0, 0).simplified();
    const int end = line.indexOf(". ");
    return QString(end < 0 ? line : line.left(end + 1)).replace('|', "\\|");
}

// One kind of members of a type, under one heading.
class Section
{
public:
    Section(const QString &title, const QString &owner, const CommentTexts &texts, QStringList *missing)
        : m_title(title)
        , m_owner(owner)
        , m_texts(texts)
        , m_missing(missing)
    {
    }

    // Overloads share a heading, and so do members that share a text.
    void add(const QString &member, const QString &heading)
    {
        const QString topic = m_owner + "::" + member;
        if (!m_texts.texts.contains(topic)) {
            m_missing->append(topic);
            return;
        }
        const CommentText text = m_texts.texts.value(topic);
        if (text.internal)
            return;
        const auto shared = std::find_if(m_entries.begin(), m_entries.end(),
                                         [&text](const Entry &entry) { return entry.topics == text.topics; });
        if (shared == m_entries.end())
            m_entries.append({text.topics, {heading}, text.body});
        else
            shared->headings.append(heading);
    }

    // The members of a name, a type and a sentence each, before all that is to be said of them.
    QString table() const
    {
        QString text = "| | | |\n|---|---|---|\n";
        for (const Entry &entry : m_entries) {
            for (const QString &heading : entry.headings) {
                const QString name = heading.section(" : ", 0, 0);
                text += "| " + name + " | " + heading.section(" : ", 1) + " | " + firstSentence(entry.body) +
                        " |\n";
            }
        }
        return m_entries.isEmpty() ? QString() : text + "\n";
    }

    QString markdown(const QString &before = QString()) const
    {
        QString text = before;
        for (const Entry &entry : m_entries)
            text += "### " + entry.headings.join(", ") + "\n\n" + entry.body + "\n\n";
        return text.isEmpty() ? text : "## " + m_title + "\n\n" + text;
    }

private:
    struct Entry
    {
        QStringList topics;
        QStringList headings;
        QString body;
    };

    QString m_title;
    QString m_owner;
    const CommentTexts &m_texts;
    QStringList *m_missing;
    QVector<Entry> m_entries;
};

QString properties(const QString &title, const QString &owner, const QmlType &type, const CommentTexts &texts,
                   QStringList *missing)
{
    Section section(title, owner, texts, missing);
    for (const Property &property : type.properties)
        section.add(
            property.name,
            QStringLiteral("`%1`%2%3")
                .arg(property.name,
                     property.type.isEmpty() ? QString() : " : " + QString(property.type).replace('<', "\\<"),
                     property.readOnly ? " (read-only)" : ""));
    return section.markdown(section.table());
}

// The signals that tell of a changed property and the slots that set one are understood.
QString functions(const QString &title, const QmlType &type, const QVector<Function> &list,
                  bool (*isUnderstood)(const QString &, const Property &), const CommentTexts &texts,
                  QStringList *missing)
{
    Section section(title, type.name, texts, missing);
    for (const Function &function : list) {
        const bool understood =
            std::any_of(type.properties.begin(), type.properties.end(),
                        [&](const Property &property) { return isUnderstood(function.name, property); });
        // A signal of several properties has no text of its own.
        const bool isShared =
            function.name.endsWith("hanged") && !texts.texts.contains(type.name + "::" + function.name);
        if (!understood && !isShared)
            section.add(function.name, "`" + function.signature() + "`");
    }
    return section.markdown();
}

QString enumerations(const QmlType &type)
{
    QString text;
    for (const Enumeration &enumeration : type.enumerations)
        text += QStringLiteral("* `%1`: %2\n").arg(enumeration.name, enumeration.values.join(", "));
    return text.isEmpty() ? text : "## Enumerations\n\n" + text;
}

} // namespace

bool hasPage(const QmlType &type, const QmlTypes &types)
{
    return std::none_of(types.begin(), types.end(),
                        [&type](const QmlType &owner) { return owner.attachedType == type.name; });
}

QString page(const QmlType &type, const QmlTypes &types, const CommentTexts &texts, QStringList *missing)
{
    const CommentText text = texts.texts.value(type.name);
    if (text.brief.isEmpty())
        missing->append(type.name);
    static const QMap<QString, QString> bases = {
        {"QObject", "QtObject"}, {"QQuickItem", "Item"}, {"QQuickPaintedItem", "Item"}};
    QString page = "# " + type.name + "\n\n" + text.brief + "\n\n";
    page += "Inherits " + linked(bases.value(type.base, type.base), types);
    page += type.creatable ? ".\n\n" : "; cannot be created.\n\n";
    if (!text.body.isEmpty())
        page += text.body + "\n\n";
    page += properties("Properties", type.name, type, texts, missing);
    if (types.contains(type.attachedType))
        page += properties("Attached properties", type.name, types.value(type.attachedType), texts, missing);
    page += functions("Methods", type, type.methods, isSetterOf, texts, missing);
    page += functions("Signals", type, type.signalList, isChangeOf, texts, missing);
    page += enumerations(type);
    return page.trimmed() + "\n";
}

QString index(const QString &module, const QmlTypes &types, const CommentTexts &texts)
{
    QString text =
        "# Types of " + module +
        " 1.0\n\n"
        "Written by `make_reference` from the comments in the sources; do not edit.\n\n"
        "A property that can change has a signal, and one that can be written a setter, most often "
        "`<property>Changed`\nand `set<Property>`; the pages do not list these.\n\n"
        "| Type | |\n|---|---|\n";
    for (const QmlType &type : types) {
        if (hasPage(type, types))
            text += "| " + linked(type.name, types) + " | " + texts.texts.value(type.name).brief + " |\n";
    }
    return text;
}

} // namespace reference
