#pragma once

class QPainter;

namespace graph {

// A view that has colours behind all of its items, which exports draw by itself.
class Backdrop
{
public:
    // In the coordinates of the view.
    virtual void paintBackdrop(QPainter *painter) const = 0;

protected:
    ~Backdrop() = default;
};

} // namespace graph
