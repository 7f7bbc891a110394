#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace reference {

// One text and everything it describes: a type, or members that share it.
struct CommentText
{
    QStringList topics; // "Type" or "Type::member"
    QString brief;
    QString body; // Markdown
    bool internal = false;
};

// The qdoc texts of all sources, found by topic. A topic with two texts is named in `repeated`.
struct CommentTexts
{
    QMap<QString, CommentText> texts;
    QStringList repeated;

    // Adds the texts of one source file.
    void add(const QString &source);

private:
    void store(CommentText text);
};

} // namespace reference
