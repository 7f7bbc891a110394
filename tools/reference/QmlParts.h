#pragma once

#include "CommentTexts.h"
#include "QmlTypes.h"

#include <QDir>

namespace reference {

// Adds the types of a module that are written in QML: their members, and the comments /*! */ right before these. A
// comment counts for all declarations that follow it without an empty line. What begins with an underscore is no
// member, nor are functions and read-only properties without a text of their own.
// `moduleFile` is the text of the module's qmldir file, `folder` where its QML files are. Gives the types that documents
// cannot use, which others may be derived from.
QStringList addQmlParts(const QString &moduleFile, const QDir &folder, QmlTypes *types, CommentTexts *texts);

} // namespace reference
