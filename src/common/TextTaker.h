#pragma once

#include <QPainter>

namespace graph {

// A paint device that is given whole texts: on the way to an engine a text is shaped, which takes more than
// everything else that is done to show one that is known already.
class TextTaker
{
public:
    virtual ~TextTaker() = default;

    // In place of the painter's drawText(), with what is set in the painter.
    virtual void takeText(QPainter *painter, const QPointF &at, const QString &text) = 0;
};

// QPainter::drawText, wherever the painter paints.
inline void drawText(QPainter *painter, const QPointF &at, const QString &text)
{
    if (auto *taker = dynamic_cast<TextTaker *>(painter->device()))
        taker->takeText(painter, at, text);
    else
        painter->drawText(at, text);
}

} // namespace graph
