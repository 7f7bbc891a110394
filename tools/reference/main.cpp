#include "Page.h"
#include "QmlParts.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>

using namespace reference;

namespace {

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

CommentTexts commentTexts(const QString &folder)
{
    CommentTexts texts;
    QStringList paths;
    for (QDirIterator files(folder, {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();)
        paths.append(files.next());
    paths.sort();
    for (const QString &path : qAsConst(paths))
        texts.add(contents(path));
    return texts;
}

// The texts of a base's members count for a type that has none of its own for them.
void copyTexts(const QString &base, const QString &type, CommentTexts *texts)
{
    for (const QString &topic : texts->texts.keys()) {
        const QString copy = type + "::" + topic.section("::", 1);
        if (topic.startsWith(base + "::") && !texts->texts.contains(copy))
            texts->texts.insert(copy, texts->texts.value(topic));
    }
}

// Documents do not see a base that is neither exported nor described: its members count as those of the
// types.
void absorbHiddenBases(QmlTypes *types, CommentTexts *texts)
{
    QStringList hidden;
    for (QmlType &type : *types) {
        while (types->contains(type.base) && !types->value(type.base).exported &&
               !texts->texts.contains(type.base)) {
            const QmlType base = types->value(type.base);
            copyTexts(base.name, type.name, texts);
            hidden.append(base.name);
            type.base = base.base;
            type.properties += base.properties;
            type.methods += base.methods;
            type.signalList += base.signalList;
            type.enumerations += base.enumerations;
        }
    }
    for (const QString &name : qAsConst(hidden)) {
        types->remove(name);
        for (const QString &topic : texts->texts.keys()) {
            if (topic.startsWith(name + "::"))
                texts->texts.remove(topic);
        }
    }
}

// What only the module's own documents use.
void removeInternal(QmlTypes *types, CommentTexts *texts)
{
    for (const QString &name : types->keys()) {
        if (!texts->texts.value(name).internal)
            continue;
        types->remove(name);
        texts->texts.remove(name);
    }
}

// A property of painted items, a base from outside of the module, counts as one of the types that have a text
// for it and of those derived from them.
void addRenderTargets(QmlTypes *types, CommentTexts *texts)
{
    const QString property = "renderTarget";
    for (QmlType &type : *types) {
        QString owner = type.name;
        while (types->contains(owner) && !texts->texts.contains(owner + "::" + property))
            owner = types->value(owner).base;
        if (!types->contains(owner))
            continue;
        type.properties.append({property, "enumeration"});
        texts->texts.insert(type.name + "::" + property, texts->texts.value(owner + "::" + property));
    }
}

bool hasMember(const QmlType &type, const QString &name)
{
    const auto isMember = [&name](const Function &function) { return function.name == name; };
    return type.hasProperty(name) || std::any_of(type.methods.begin(), type.methods.end(), isMember) ||
           std::any_of(type.signalList.begin(), type.signalList.end(), isMember);
}

// Properties of a base from the module below that have another text here.
void addInherited(QmlType *type, const CommentTexts &texts)
{
    for (const QString &topic : texts.texts.keys()) {
        const QString member = topic.section("::", 1);
        if (topic.startsWith(type->name + "::") && !hasMember(*type, member))
            type->properties.append({member, QString(), false});
    }
}

// Texts about what the module does not have, most often misspelled.
QStringList strayTopics(const QmlTypes &types, const CommentTexts &texts)
{
    QStringList stray;
    for (const QString &topic : texts.texts.keys()) {
        const QString member = topic.section("::", 1);
        const QmlType type = types.value(topic.section("::", 0, 0));
        const bool known =
            member.isEmpty() || hasMember(type, member) || types.value(type.attachedType).hasProperty(member);
        if (type.name.isEmpty() || !known)
            stray.append(topic);
    }
    return stray;
}

int complaints(const char *problem, const QStringList &names)
{
    for (const QString &name : names)
        std::fprintf(stderr, "%s: %s\n", problem, qPrintable(name));
    return names.size();
}

// Writes the page, or with `check` tells that it differs.
bool publish(const QString &path, const QString &text, bool check)
{
    if (contents(path) == text)
        return true;
    if (check) {
        std::fprintf(stderr, "%s is out of date; build the target `reference`\n", qPrintable(path));
        return false;
    }
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
}

} // namespace

// make_reference [--check] MODULE TYPES SOURCES PAGES: TYPES is the module's plugins.qmltypes file with its qmldir
// beside it, SOURCES the folder whose .cpp files, and .qml files in parts/, hold the comments, PAGES the folder of the pages; the pages of a module that this one is built on
// lie in the folder above. Fails when something public has no text; --check writes nothing and fails when a page is
// not up to date.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool check = arguments.removeAll("--check") > 0;
    if (arguments.size() != 4) {
        std::fprintf(stderr, "usage: make_reference [--check] MODULE TYPES SOURCES PAGES\n");
        return 2;
    }
    QmlTypes types = qmlTypes(contents(arguments.at(1)));
    CommentTexts texts = commentTexts(arguments.at(2));
    const QDir folder(arguments.at(3));
    if (types.isEmpty() || texts.texts.isEmpty() || !folder.mkpath(".")) {
        std::fprintf(stderr, "nothing to read or nowhere to write\n");
        return 2;
    }

    const QStringList internal = addQmlParts(contents(QFileInfo(arguments.at(1)).dir().filePath("qmldir")),
                                             QDir(arguments.at(2) + "/parts"), &types, &texts);
    absorbHiddenBases(&types, &texts);
    removeInternal(&types, &texts);
    for (const QString &type : internal)
        types.remove(type);
    addRenderTargets(&types, &texts);
    for (QmlType &type : types) {
        if (!types.contains(type.base) && folder.exists("../" + type.base + ".md")) {
            addInherited(&type, texts);
            type.base = QStringLiteral("[%1](../%1.md)").arg(type.base);
        }
    }

    QStringList missing;
    QStringList unexpected = folder.entryList({"*.md"});
    int problems = 0;
    // Those of the whole documentation, above the folder of the pages or that of the module below.
    const QString pictures = folder.exists("../pictures") ? "../pictures/" : "../../pictures/";
    QStringList missingPictures;
    const auto write = [&](const QString &name, QString text) {
        unexpected.removeAll(name);
        static const QRegularExpression picture("\\]\\(pictures/([^)]*)\\)");
        for (auto found = picture.globalMatch(text); found.hasNext();) {
            const QString file = found.next().captured(1);
            if (!folder.exists(pictures + file))
                missingPictures.append(file);
        }
        text.replace("](pictures/", "](" + pictures);
        problems += !publish(folder.filePath(name), text, check);
    };
    for (const QmlType &type : types) {
        if (hasPage(type, types))
            write(type.name + ".md", page(type, types, texts, &missing));
    }
    write("README.md", index(arguments.at(0), types, texts));
    problems += complaints("no text for", missing);
    problems += complaints("no picture", missingPictures);
    problems += complaints("text for something unknown", strayTopics(types, texts));
    problems += complaints("more than one text for", texts.repeated);
    problems += complaints("page of no type", unexpected);
    return problems == 0 ? 0 : 1;
}
