#pragma once

#include "raster/RecordedStrokes.h"
#include "view/base/ImageChild.h"
#include "view/base/TriangleNode.h"

#include <QSGNode>
#include <QSize>

class QQuickWindow;

namespace graph {

// Shows strokes where a graphics processor draws: as triangles that cover their pixels. A layer would have all of
// the item cleared, painted and blended for each change. Where the item is transformed or translucent it is an
// image all the same, as a layer is shown.
class StrokeShape : public QSGNode
{
public:
    explicit StrokeShape(QQuickWindow *window);
    ~StrokeShape() override;

    // size: of the item.
    void show(const RecordedStrokes &strokes, const QSize &size, bool smooth);

    // Comes before each frame.
    void preprocess() override;

private:
    void showTriangles();
    void showImage();

    RecordedStrokes m_strokes;
    QSize m_size;
    bool m_smooth = false;
    TriangleNode m_triangles;
    ImageChild m_image;
};

} // namespace graph
