#pragma once

#include "CommentTexts.h"
#include "QmlTypes.h"

namespace reference {

// The page of one type as Markdown. Members without a text are named in `missing`.
QString page(const QmlType &type, const QmlTypes &types, const CommentTexts &texts, QStringList *missing);

// The list of all pages.
QString index(const QString &module, const QmlTypes &types, const CommentTexts &texts);

// Whether the type has a page: attached types are on that of their owner.
bool hasPage(const QmlType &type, const QmlTypes &types);

} // namespace reference
