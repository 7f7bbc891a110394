#pragma once

#include <QPointF>
#include <QSizeF>

#include <optional>

class QQuickItem;

namespace graph {

// A text in a cursor, as CursorLabels sees it: in this order it is told to find what it says and where it would like
// to be, to write itself there, and, later, to say what of that is new.
class CursorLabel
{
public:
    // Of one that moves to keep clear of the others, in pixels of the cursor.
    struct Wish
    {
        double y = 0.0;
        QSizeF size;
        double topInset = 0.0; // that nobody enters
        int fontSize = 0;
        QQuickItem *legend = nullptr; // that it keeps clear of; null for none
    };

    virtual void read() = 0;
    virtual void show() = 0;
    virtual void tell() = 0;
    // Has CursorLabels::tell() called before the next frame.
    virtual void askForFrame() = 0;

    // The item that the document knows; null outside of one.
    virtual QQuickItem *around() const = 0;
    // None for one that has its place already, or is not shown.
    virtual std::optional<Wish> wish() const { return std::nullopt; }
    virtual void placeLabel(const QPointF &) {}
    // The rows at the bottom that the others keep clear of.
    virtual double foundInset() const { return 0.0; }

protected:
    ~CursorLabel() = default;
};

} // namespace graph
