#include "CommentTexts.h"

#include <QRegularExpression>

namespace reference {

namespace {

// The name that a topic command introduces; empty for every other line.
QString topic(const QString &line)
{
    static const QRegularExpression type("^\\\\qmltype (\\w+)$");
    static const QRegularExpression member(
        "^\\\\qml(?:property|attachedproperty|method|signal)\\s[^(]*?(\\w+::\\w+)\\s*(?:\\(.*)?$");
    const QRegularExpressionMatch typeMatch = type.match(line);
    return typeMatch.hasMatch() ? typeMatch.captured(1) : member.match(line).captured(1);
}

QString markdown(QString line)
{
    static const QRegularExpression marked("\\\\[cal] (?:\\{([^}]*)\\}|([\\w.:()]+\\b(?:\\(\\))?))");
    return line.replace(marked, "`\\1\\2`");
}

} // namespace

void CommentTexts::add(const QString &source)
{
    static const QRegularExpression comment("/\\*!\\n(.*?)\\*/",
                                            QRegularExpression::DotMatchesEverythingOption);
    for (auto comments = comment.globalMatch(source); comments.hasNext();) {
        CommentText text;
        bool inCode = false;
        QString carried; // the line before, where a command is at its end and its word is not
        for (const QString &indented : comments.next().captured(1).split('\n')) {
            const QString line = carried + indented.trimmed();
            carried = line.endsWith(" \\c") ? line + ' ' : QString();
            if (!carried.isEmpty())
                continue;
            if (line == "\\code" || line == "\\endcode") {
                inCode = line == "\\code";
                text.body += inCode ? "```qml\n" : "```\n\n";
            } else if (inCode) {
                text.body += indented.mid(4) + "\n";
            } else if (!topic(line).isEmpty()) {
                if (!text.body.trimmed().isEmpty() || !text.brief.isEmpty()) {
                    store(text);
                    text = CommentText();
                }
                text.topics.append(topic(line));
            } else if (line.startsWith("\\value ")) {
                // An item of a list for each name.
                static const QRegularExpression item("^\\\\value (\\S+) (.*)$");
                const bool isFirst = !text.body.section("\n", -1).startsWith("* ");
                text.body = text.body.trimmed() + (isFirst && !text.body.isEmpty() ? "\n\n" : "\n") +
                            markdown(QString(line).replace(item, "* `\\1`: \\2"));
            } else if (line.startsWith("\\image ")) {
                text.body +=
                    "\n\n![" + line.section(' ', 2) + "](pictures/" + line.section(' ', 1, 1) + ")\n\n";
            } else if (line == "\\internal") {
                text.internal = true;
            } else if (line == "\\default") {
                text.body += "The default property. ";
            } else if (line.startsWith("\\brief ")) {
                text.brief = markdown(line.mid(7));
            } else if (!text.brief.isEmpty() && text.body.isEmpty() && !line.isEmpty()) {
                text.brief += " " + markdown(line); // the second line of the brief
            } else if (line.isEmpty()) {
                text.body += "\n\n";
            } else if (!line.startsWith("\\inherits") && !line.startsWith("\\inqmlmodule") &&
                       line != "\\readonly") {
                // A paragraph becomes one line: where the comment is wrapped does not matter.
                text.body +=
                    text.body.isEmpty() || text.body.back().isSpace() ? markdown(line) : " " + markdown(line);
            }
        }
        store(text);
    }
}

void CommentTexts::store(CommentText text)
{
    static const QRegularExpression emptyLines("\n{3,}");
    text.body = text.body.replace(emptyLines, "\n\n").trimmed();
    for (const QString &topic : qAsConst(text.topics)) {
        if (texts.contains(topic))
            repeated.append(topic);
        texts.insert(topic, text);
    }
}

} // namespace reference
